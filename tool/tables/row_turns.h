// The second turnstile: what the threads made of their chunks leaves in the order of the input.

#ifndef JWNLS_TOOL_TABLES_ROW_TURNS_H_
#define JWNLS_TOOL_TABLES_ROW_TURNS_H_

#include <atomic>
#include <condition_variable>
#include <cstdint>
#include <exception>
#include <mutex>

namespace jwnls::tool {

/// Any thread may call any of these.
class RowTurns {
 public:
  /// Waits for the turn of a ticket; false when the run is stopped. Whoever has the turn is alone
  /// up to pass().
  bool await(std::uint64_t ticket) {
    std::unique_lock lock(mutex_);
    changed_.wait(lock, [&] { return turn_ == ticket || is_stopped_; });
    return !is_stopped_;
  }
  void pass() {
    {
      const std::lock_guard lock(mutex_);
      ++turn_;
    }
    changed_.notify_all();
  }
  /// Ends the run; the first failure is kept.
  void stop(std::exception_ptr failure = {}) {
    {
      const std::lock_guard lock(mutex_);
      is_stopped_ = true;
      if (!failure_) failure_ = std::move(failure);
    }
    changed_.notify_all();
  }
  [[nodiscard]] bool is_stopped() const { return is_stopped_; }
  /// To be called when no thread is left.
  [[nodiscard]] std::exception_ptr failure() const { return failure_; }

 private:
  std::mutex mutex_;
  std::condition_variable changed_;
  std::uint64_t turn_ = 0;
  std::atomic<bool> is_stopped_ = false;
  std::exception_ptr failure_;
};

}  // namespace jwnls::tool

#endif  // JWNLS_TOOL_TABLES_ROW_TURNS_H_
