#include "host/objects/message_outlet.h"

#include <utility>

namespace jwnls::host {

MessageOutlet::MessageOutlet(JournalSink journal, ErrorReporter errors)
    : journal_(std::move(journal)), errors_(std::move(errors)) {}

void MessageOutlet::write(std::uint32_t level, std::u16string_view message) noexcept {
  if (!journal_) return;
  try {
    const std::lock_guard guard(one_at_a_time_);
    journal_(level, message);
  } catch (...) {  // NOLINT(bugprone-empty-catch): nothing may leave through a slot
  }
}

void MessageOutlet::report(std::uint32_t severity, std::uint32_t status) noexcept {
  if (!errors_) return;
  try {
    const std::lock_guard guard(one_at_a_time_);
    errors_(severity, status);
  } catch (...) {  // NOLINT(bugprone-empty-catch): as above
  }
}

}  // namespace jwnls::host
