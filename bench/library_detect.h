// Detection of a column's locales, against reading the column once.

#ifndef JWNLS_BENCH_LIBRARY_DETECT_H_
#define JWNLS_BENCH_LIBRARY_DETECT_H_

namespace jwnls::bench {

void enter_library_detect();

}  // namespace jwnls::bench

#endif  // JWNLS_BENCH_LIBRARY_DETECT_H_
