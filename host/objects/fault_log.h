// The faults that a checking host finds in what its users do with blocks, locks and other objects.

#ifndef JWNLS_HOST_OBJECTS_FAULT_LOG_H_
#define JWNLS_HOST_OBJECTS_FAULT_LOG_H_

#include <mutex>
#include <string>
#include <string_view>
#include <vector>

#include "host/objects/message_outlet.h"

namespace jwnls::host {

/// Keeps the first 1,000 faults and writes each to the journal at level journal_fault. Any thread.
class FaultLog {
 public:
  explicit FaultLog(MessageOutlet& outlet) : outlet_(outlet) {}

  /// Adds a fault, an ASCII text without a full stop: "pool 'x': block of 24 bytes freed twice".
  void add(std::string_view text) noexcept;

  [[nodiscard]] std::vector<std::string> texts() const;

 private:
  MessageOutlet& outlet_;
  mutable std::mutex mutex_;
  std::vector<std::string> texts_;
};

}  // namespace jwnls::host

#endif  // JWNLS_HOST_OBJECTS_FAULT_LOG_H_
