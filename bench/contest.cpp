#include "bench/contest.h"

#include <algorithm>
#include <cstdio>
#include <map>
#include <utility>
#include <vector>

namespace jwnls::bench {
namespace {

struct Contestant {
  std::string task;
  Side side;
  std::string name;
};

std::vector<Task>& tasks() {
  static std::vector<Task> all;
  return all;
}

std::map<std::string, Contestant>& contestants() {  // by benchmark name
  static std::map<std::string, Contestant> all;
  return all;
}

// Keeps every repetition's time, and prints the tables when all are in.
class RatioReporter : public benchmark::BenchmarkReporter {
 public:
  bool ReportContext(const Context& /*context*/) override { return true; }

  void ReportRuns(const std::vector<Run>& runs) override {
    for (const Run& run : runs) {
      if (run.run_type == Run::RT_Iteration && !run.error_occurred) {
        times_[run.run_name.function_name].push_back(run.GetAdjustedCPUTime());
      } else if (run.error_occurred) {
        std::fprintf(stderr, "%s: %s\n", run.benchmark_name().c_str(), run.error_message.c_str());
      }
    }
  }

  void Finalize() override {
    std::printf("%-34s %-22s %9s   %8s %8s\n", "task", "contestant", "ns", "ours/it", "target");
    for (const Task& task : tasks()) print(task);
  }

 private:
  double median(const std::string& benchmark) const {
    std::vector<double> sorted = times_.at(benchmark);
    std::sort(sorted.begin(), sorted.end());
    return sorted[sorted.size() / 2];
  }

  void print(const Task& task) const {
    double ours = 0;
    double best_peer = 0;
    for (const auto& [benchmark, contestant] : contestants()) {
      if (contestant.task != task.name || !times_.contains(benchmark)) continue;
      const double time = median(benchmark);
      if (contestant.side == Side::ours && ours == 0) ours = time;
      if (contestant.side == Side::peer && (best_peer == 0 || time < best_peer)) best_peer = time;
    }
    bool first = true;
    for (const auto& [benchmark, contestant] : contestants()) {
      if (contestant.task != task.name || !times_.contains(benchmark)) continue;
      const double time = median(benchmark);
      std::printf("%-34s %-22s %9.1f", first ? task.name.c_str() : "", contestant.name.c_str(),
                  time);
      if (contestant.side != Side::ours && ours != 0) {
        std::printf("   %8.3f", ours / time);
        const bool best = contestant.side == Side::peer && time == best_peer;
        const double target =
            contestant.side == Side::icu ? task.icu_target : (best ? task.peer_target : 0);
        if (target != 0) {
          std::printf(" %8.3f %s", target, ours / time <= target ? "met" : "missed");
        }
      }
      std::printf("\n");
      first = false;
    }
  }

  std::map<std::string, std::vector<double>> times_;
};

}  // namespace

void declare(Task task) { tasks().push_back(std::move(task)); }

void enter(const std::string& task, Side side, const std::string& contestant,
           std::function<void(benchmark::State&)> run) {
  // The side's number puts ours first and ICU last among the contestants of a task.
  const std::string name = task + "/" + std::to_string(static_cast<int>(side)) + contestant;
  contestants()[name] = {task, side, contestant};
  benchmark::RegisterBenchmark(name.c_str(),
                               [run = std::move(run)](benchmark::State& state) { run(state); });
}

int run_contests(int argc, char** argv) {
  std::vector<std::string> arguments = {argv[0], "--benchmark_repetitions=5",
                                        "--benchmark_enable_random_interleaving=true",
                                        "--benchmark_min_time=0.1"};
  arguments.insert(arguments.end(), argv + 1, argv + argc);  // the caller's own win
  std::vector<char*> pointers;
  for (std::string& argument : arguments) pointers.push_back(argument.data());
  int count = static_cast<int>(pointers.size());
  benchmark::Initialize(&count, pointers.data());
  if (benchmark::ReportUnrecognizedArguments(count, pointers.data())) return 2;
  RatioReporter reporter;
  benchmark::RunSpecifiedBenchmarks(&reporter);
  return 0;
}

}  // namespace jwnls::bench
