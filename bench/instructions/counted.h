// A call a few hundred times under callgrind, which writes the instructions of each into a file of
// its own. scripts/check-instructions runs the program and compares. Each way that is there for
// speed alone has a call that takes it, so that it can be seen to be taken.

#ifndef JWNLS_BENCH_INSTRUCTIONS_COUNTED_H_
#define JWNLS_BENCH_INSTRUCTIONS_COUNTED_H_

#include <valgrind/callgrind.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>

#include "include/jwnls/jwnls.h"

namespace jwnls::bench {

inline constexpr std::int32_t rounds = 400;

/// Counts `call(i)` for i from 0 on, after a round that warms nothing but what a first call sets
/// up.
template <typename Call>
void count(const char* name, Call call) {
  call(0);
  CALLGRIND_ZERO_STATS;
  for (std::int32_t i = 0; i < rounds; ++i) call(i);
  CALLGRIND_DUMP_STATS_AT(name);
}

/// Values of all magnitudes, the same in every run.
inline double amount(std::int32_t i) { return (i % 17 - 4) * 1234.56 * (1 + i % 9999); }
inline std::int32_t day(std::int32_t i) { return 10'000 + 37 * i; }

inline void check(int code) {
  if (code == JWNLS_OK) return;
  std::fprintf(stderr, "unexpected: %s\n", jwnls_code_text(code));
  std::exit(1);
}

/// For the rest of the run.
inline const jwnls_layout* layout(const char* locale, int kind, const char* options = "") {
  jwnls_layout* opened = nullptr;
  check(jwnls_open(locale, kind, options, &opened, nullptr));
  return opened;
}

void count_services();
void count_reading();
void count_writing();
void count_columns();

}  // namespace jwnls::bench

#endif  // JWNLS_BENCH_INSTRUCTIONS_COUNTED_H_
