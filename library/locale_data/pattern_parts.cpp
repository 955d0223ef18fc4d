#include "library/locale_data/pattern_parts.h"

#include <algorithm>
#include <utility>

#include "library/locale_data/date_characters.h"
#include "library/texts/folding.h"

namespace jwnls::library {

PatternParts::PatternParts(std::string_view pattern) {
  const auto directives = std::count(pattern.begin(), pattern.end(), '%');
  parts.reserve(2 * static_cast<std::size_t>(directives) + 1);
  std::string literal;
  const auto end_literal = [&] {
    if (!literal.empty()) parts.push_back({0, std::exchange(literal, {})});
  };
  while (!pattern.empty()) {
    const std::size_t mark = std::min(pattern.find('%'), pattern.size());
    literal.append(pattern, 0, mark);
    const std::size_t at = pattern.find_first_not_of("#0?", mark + 1);
    if (at >= pattern.size()) break;
    if (pattern[at] == '%') {
      literal += '%';
    } else {
      end_literal();
      parts.push_back({pattern[at], ""});
    }
    pattern.remove_prefix(at + 1);
  }
  end_literal();
}

std::vector<std::string> words_of(std::string_view literal) {
  char folded[600];
  const std::string_view text(folded, fold_text(literal, folded, sizeof folded).value_or(0));
  std::vector<std::string> words;
  for (std::size_t at = 0; at < text.size();) {
    const std::size_t end = end_of_run(text, at);
    if (end > at) words.emplace_back(text.substr(at, end - at));
    at = end > at ? end : at + 1;
  }
  return words;
}

std::string letters_at_end(std::string_view literal) {
  std::size_t begin = literal.size();
  while (begin > 0 && is_letter(literal[begin - 1])) --begin;
  return std::string(literal.substr(begin));
}

std::string letters_at_begin(std::string_view literal) {
  std::size_t end = 0;
  while (end < literal.size() && is_letter(literal[end])) ++end;
  return std::string(literal.substr(0, end));
}

}  // namespace jwnls::library
