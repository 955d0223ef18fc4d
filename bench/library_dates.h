// Dates by the calls of jwnls.h, against the services under them and ICU.

#ifndef JWNLS_BENCH_LIBRARY_DATES_H_
#define JWNLS_BENCH_LIBRARY_DATES_H_

namespace jwnls::bench {

void enter_library_dates();

}  // namespace jwnls::bench

#endif  // JWNLS_BENCH_LIBRARY_DATES_H_
