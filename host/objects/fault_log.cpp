#include "host/objects/fault_log.h"

namespace jwnls::host {

void FaultLog::add(std::string_view text) noexcept {
  constexpr std::size_t most_texts = 1000;
  try {
    outlet_.write(journal_fault, std::u16string(text.begin(), text.end()));
    const std::lock_guard guard(mutex_);
    if (texts_.size() < most_texts) texts_.emplace_back(text);
  } catch (...) {  // NOLINT(bugprone-empty-catch): without memory the fault goes unrecorded
  }
}

std::vector<std::string> FaultLog::texts() const {
  const std::lock_guard guard(mutex_);
  return texts_;
}

}  // namespace jwnls::host
