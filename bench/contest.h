// Contests: one task, done by the module and by its peers over the same varied values in one run.
//
// Every contestant walks the same 16,384 values, so that no branch predictor learns their order,
// and the contestants of all tasks take turns, so that a change of the machine's speed meets all of
// them.

#ifndef JWNLS_BENCH_CONTEST_H_
#define JWNLS_BENCH_CONTEST_H_

#include <benchmark/benchmark.h>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>

namespace jwnls::bench {

inline constexpr std::size_t value_count = 16384;

// A reference is shown but is no peer: it does less than the task asks, such as a pattern that is
// fixed when the program is compiled.
enum class Side { ours, peer, reference, icu };

struct Task {
  std::string name;
  double peer_target;  // our time at most this share of the best peer's; 0: no target
  double icu_target;   // and of ICU's; 0: no target
};

/// Declares a task; its contestants name it.
void declare(Task task);

/// Adds a contestant. `run` does the task for the value of an index below value_count.
void enter(const std::string& task, Side side, const std::string& contestant,
           std::function<void(benchmark::State&)> run);

/// A loop over the values: `body(index)` for each iteration. The order changes within every block
/// of values, round by round: a branch predictor of today learns 16,384 values that come again as
/// they were.
template <typename Body>
void walk(benchmark::State& state, Body body) {
  constexpr std::size_t block = 64;
  std::uint64_t random = 1;
  std::size_t index = 0;
  std::size_t order = 0;  // of the present block
  for ([[maybe_unused]] auto iteration : state) {
    if (index % block == 0) {
      random = random * 6364136223846793005 + 1442695040888963407;
      order = static_cast<std::size_t>(random >> 32) % block;
    }
    body(index ^ order);
    index = (index + 1) % value_count;
  }
}

/// Runs what the command line asks for and prints a table of ratios. Returns the exit code.
int run_contests(int argc, char** argv);

}  // namespace jwnls::bench

#endif  // JWNLS_BENCH_CONTEST_H_
