#include "tool/reports/unread_texts.h"

#include <algorithm>

namespace jwnls::tool {
namespace {

// No character is cut in two.
std::string_view first_bytes(std::string_view text) {
  if (text.size() <= UnreadTexts::longest) return text;
  std::size_t size = UnreadTexts::longest;
  constexpr std::size_t shortest = UnreadTexts::longest - 4;
  while (size > shortest && (static_cast<unsigned char>(text[size]) & 0xC0U) == 0x80U) --size;
  return text.substr(0, size);
}

}  // namespace

UnreadText* UnreadTexts::find_or_add(std::string_view text, std::size_t most) {
  const std::string_view kept = first_bytes(text);
  const auto found = found_.find(kept);
  if (found != found_.end()) return found->second;
  if (texts_.size() >= most) return nullptr;
  UnreadText& added = texts_.emplace_back(UnreadText{std::string(kept), kept.size() < text.size()});
  found_.emplace(added.text, &added);
  return &added;
}

void UnreadTexts::clear() {
  if (texts_.empty()) return;
  found_.clear();
  texts_.clear();
}

std::vector<const UnreadText*> UnreadTexts::most_frequent(std::size_t count) const {
  std::vector<const UnreadText*> all;
  all.reserve(texts_.size());
  for (const UnreadText& each : texts_) all.push_back(&each);
  std::stable_sort(all.begin(), all.end(), [](const UnreadText* left, const UnreadText* right) {
    return left->count > right->count;
  });
  all.resize(std::min(all.size(), count));
  return all;
}

}  // namespace jwnls::tool
