#include "host/objects/message_outlet.h"

#include <utility>

namespace jwnls::host {

MessageOutlet::MessageOutlet(JournalSink journal, ErrorReporter errors)
    : journal_(std::move(journal)), errors_(std::move(errors)) {}

// A function of the embedder's that calls back into the host must not wait for itself.
template <typename Call>
void MessageOutlet::one_at_a_time(Call call) noexcept {
  if (caller_.load(std::memory_order_relaxed) == std::this_thread::get_id()) return;
  const std::lock_guard guard(calling_);
  caller_.store(std::this_thread::get_id(), std::memory_order_relaxed);
  try {
    call();
  } catch (...) {  // NOLINT(bugprone-empty-catch): nothing may leave through a slot
  }
  caller_.store(std::thread::id(), std::memory_order_relaxed);
}

void MessageOutlet::write(std::uint32_t level, std::u16string_view message) noexcept {
  if (journal_) one_at_a_time([&] { journal_(level, message); });
}

void MessageOutlet::report(std::uint32_t severity, std::uint32_t status) noexcept {
  if (errors_) one_at_a_time([&] { errors_(severity, status); });
}

}  // namespace jwnls::host
