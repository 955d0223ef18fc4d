#include "tool/layout_words.h"

#include <algorithm>
#include <array>

#include "tool/options_table.h"

namespace jwnls::tool {
namespace {

std::string_view name_of(std::string_view word) { return word.substr(0, word.find('=')); }

bool is_of(std::string_view word, Side side) {
  const OptionRow* const row = find_word(name_of(word));
  if (row == nullptr || side == Side::both) return true;
  const unsigned command = side == Side::reading ? read_command : format_command;
  // A zone is said to both, but `format` has an option of its own for it.
  return (row->commands & command) != 0 || name_of(word) == "zone";
}

}  // namespace

std::string words_of(const std::vector<std::string>& words, Side side) {
  std::string text;
  for (const std::string& word : words) {
    if (is_of(word, side)) text.append(text.empty() ? "" : " ").append(word);
  }
  return text;
}

bool gives(const std::vector<std::string>& words, std::string_view name, std::string_view value) {
  std::string word(name);
  if (!value.empty()) word.append("=").append(value);
  return std::find(words.begin(), words.end(), word) != words.end();
}

std::optional<std::string> take_word(std::vector<std::string>& words, std::string_view name) {
  std::optional<std::string> value;
  std::erase_if(words, [&](const std::string& word) {
    if (name_of(word) != name || word.size() == name.size()) return false;
    value = word.substr(name.size() + 1);
    return true;
  });
  return value;
}

bool give_order(const std::vector<std::string>& words) {
  constexpr std::array orders = {"dmy", "mdy", "ymd"};
  return std::any_of(orders.begin(), orders.end(),
                     [&words](const char* order) { return gives(words, "order", order); });
}

}  // namespace jwnls::tool
