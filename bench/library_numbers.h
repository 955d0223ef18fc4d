// The library's calls for numbers against the services under them, and columns against the peers.

#ifndef JWNLS_BENCH_LIBRARY_NUMBERS_H_
#define JWNLS_BENCH_LIBRARY_NUMBERS_H_

namespace jwnls::bench {

void enter_library_numbers();

}  // namespace jwnls::bench

#endif  // JWNLS_BENCH_LIBRARY_NUMBERS_H_
