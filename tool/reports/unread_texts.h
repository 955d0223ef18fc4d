// The texts of a column that were not read, each with its count.

#ifndef JWNLS_TOOL_REPORTS_UNREAD_TEXTS_H_
#define JWNLS_TOOL_REPORTS_UNREAD_TEXTS_H_

#include <cstddef>
#include <cstdint>
#include <deque>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace jwnls::tool {

struct UnreadText {
  std::string text;  // its first bytes, where it is long
  bool is_cut = false;
  std::uint64_t count = 0;
  std::uint64_t place = 0;     // where it stands first
  std::string reason = {};     // where it is known
  std::string_view full = {};  // the whole text, for as long as whoever added it says
};

class UnreadTexts {
 public:
  /// Bytes of a text that are kept, and tell it from others.
  static constexpr std::size_t longest = 200;

  /// Where a text is counted: with a count of 0 when it is new. Null where there are `most` others.
  UnreadText* find_or_add(std::string_view text, std::size_t most);

  void clear();

  /// In the order in which they were added first.
  [[nodiscard]] const std::deque<UnreadText>& all() const { return texts_; }

  /// The most frequent ones, of equal ones the first.
  [[nodiscard]] std::vector<const UnreadText*> most_frequent(std::size_t count) const;

 private:
  std::deque<UnreadText> texts_;  // they stay where they are
  std::unordered_map<std::string_view, UnreadText*> found_;
};

}  // namespace jwnls::tool

#endif  // JWNLS_TOOL_REPORTS_UNREAD_TEXTS_H_
