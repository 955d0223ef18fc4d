// Numbers and integers in, against std::num_get, fast_float, std::from_chars and ICU.

#ifndef JWNLS_BENCH_NUMBER_READING_H_
#define JWNLS_BENCH_NUMBER_READING_H_

namespace jwnls::bench {

void enter_number_reading();

}  // namespace jwnls::bench

#endif  // JWNLS_BENCH_NUMBER_READING_H_
