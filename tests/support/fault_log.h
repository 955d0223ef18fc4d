// The faults that a test's checks find in what the users of a host do with its objects.

#ifndef JWNLS_TESTS_SUPPORT_FAULT_LOG_H_
#define JWNLS_TESTS_SUPPORT_FAULT_LOG_H_

#include <mutex>
#include <string>
#include <utility>
#include <vector>

namespace jwnls::test {

/// Any thread.
class FaultLog {
 public:
  /// A text without a full stop: "pool 'x': block of 24 bytes freed twice".
  void add(std::string text) {
    const std::lock_guard guard(mutex_);
    texts_.push_back(std::move(text));
  }

  [[nodiscard]] std::vector<std::string> texts() const {
    const std::lock_guard guard(mutex_);
    return texts_;
  }

 private:
  mutable std::mutex mutex_;
  std::vector<std::string> texts_;
};

}  // namespace jwnls::test

#endif  // JWNLS_TESTS_SUPPORT_FAULT_LOG_H_
