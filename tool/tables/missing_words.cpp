#include "tool/tables/missing_words.h"

#include <algorithm>

#include "tool/trimmed_text.h"

namespace jwnls::tool {

MissingWords::MissingWords(const std::vector<std::string>& words) {
  for (const std::string& word : words) {
    const std::string_view inner = trimmed(word);
    if (inner.empty()) continue;  // blank texts are missing by themselves
    words_.emplace_back(inner);
    begins_[static_cast<std::uint8_t>(inner.front())] = true;
  }
}

bool MissingWords::has(std::string_view text) const noexcept {
  text = trimmed(text);
  if (text.empty() || !begins_[static_cast<std::uint8_t>(text.front())]) return false;
  return std::find(words_.begin(), words_.end(), text) != words_.end();
}

}  // namespace jwnls::tool
