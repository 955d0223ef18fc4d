// How far a long run is: on a terminal, and for whoever asks with SIGUSR1.

#ifndef JWNLS_TOOL_TABLES_PROGRESS_LINE_H_
#define JWNLS_TOOL_TABLES_PROGRESS_LINE_H_

#include <atomic>
#include <chrono>
#include <cstdint>
#include <mutex>
#include <string>

namespace jwnls::tool {

/// "1.2 of 4.1 GB, 15.2 M rows, 290 MB/s, 10 s left, 12 not read". Any thread may call.
class ProgressLine {
 public:
  /// `is_shown`: without being asked, after 2 s and twice a second; `total_bytes`: 0 when unknown.
  ProgressLine(bool is_shown, std::uint64_t total_bytes);
  ~ProgressLine();
  ProgressLine(const ProgressLine&) = delete;
  ProgressLine& operator=(const ProgressLine&) = delete;

  /// What is done by now.
  void advance(std::uint64_t bytes, std::uint64_t rows, std::uint64_t refused);
  /// Shows the line if it is time to.
  void tick();
  /// Makes way for a message.
  void clear();

 private:
  using Clock = std::chrono::steady_clock;
  [[nodiscard]] std::string text(double seconds) const;

  const bool is_shown_;
  const bool is_terminal_;
  const std::uint64_t total_bytes_;
  const Clock::time_point begin_ = Clock::now();
  std::atomic<std::uint64_t> bytes_ = 0;
  std::atomic<std::uint64_t> rows_ = 0;
  std::atomic<std::uint64_t> refused_ = 0;
  std::mutex mutex_;
  Clock::time_point next_ = begin_ + std::chrono::seconds(2);
  bool is_on_screen_ = false;
};

}  // namespace jwnls::tool

#endif  // JWNLS_TOOL_TABLES_PROGRESS_LINE_H_
