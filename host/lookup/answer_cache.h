// Answers to texts that were asked before, so that the next time is a look-up without a lock.

#ifndef JWNLS_HOST_LOOKUP_ANSWER_CACHE_H_
#define JWNLS_HOST_LOOKUP_ANSWER_CACHE_H_

#include <cstddef>
#include <deque>
#include <mutex>
#include <string_view>

#include "host/lookup/key_table.h"

namespace jwnls::host {

/// Holds the answers to the first 4,096 texts of up to 128 units, for good: no caller can make it
/// grow without bound. Only answers that are the same each time belong here. Any thread.
template <typename Answer>
class AnswerCache {
 public:
  /// The answer to a text, valid as long as the cache; null when it is not here.
  [[nodiscard]] const Answer* find(std::u16string_view text) const noexcept {
    const auto* entry = table_.find(text.data(), text.size() * sizeof(char16_t));
    return entry != nullptr ? static_cast<const Answer*>(entry->value) : nullptr;
  }

  /// Keeps an answer where there is room for it and none to that text yet. Throws bad_alloc.
  void add(std::u16string_view text, const Answer& answer) {
    constexpr std::size_t most_answers = 4096;
    constexpr std::size_t longest_text = 128;
    if (text.size() > longest_text) return;
    const std::lock_guard guard(mutex_);
    if (answers_.size() >= most_answers || find(text) != nullptr) return;
    answers_.emplace_back(answer);
    try {
      table_.insert(text.data(), text.size() * sizeof(char16_t), &answers_.back());
    } catch (...) {
      answers_.pop_back();
      throw;
    }
  }

 private:
  KeyTable table_;  // UTF-16 text -> an element of answers_
  std::mutex mutex_;
  std::deque<Answer> answers_;
};

}  // namespace jwnls::host

#endif  // JWNLS_HOST_LOOKUP_ANSWER_CACHE_H_
