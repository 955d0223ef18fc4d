// Numbers and integers out, against std::to_chars, {fmt}, double-conversion, std::num_put, absl and
// ICU.

#ifndef JWNLS_BENCH_NUMBER_FORMATTING_H_
#define JWNLS_BENCH_NUMBER_FORMATTING_H_

namespace jwnls::bench {

void enter_number_formatting();

}  // namespace jwnls::bench

#endif  // JWNLS_BENCH_NUMBER_FORMATTING_H_
