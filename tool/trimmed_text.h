// A value as it stands on a line or in a field, without what people put around it.

#ifndef JWNLS_TOOL_TRIMMED_TEXT_H_
#define JWNLS_TOOL_TRIMMED_TEXT_H_

#include <string_view>

namespace jwnls::tool {

/// The text without the blanks and tabs around it.
[[nodiscard]] inline std::string_view trimmed(std::string_view text) {
  constexpr std::string_view blanks = " \t";
  const std::size_t begin = text.find_first_not_of(blanks);
  if (begin == std::string_view::npos) return {};
  return text.substr(begin, text.find_last_not_of(blanks) - begin + 1);
}

}  // namespace jwnls::tool

#endif  // JWNLS_TOOL_TRIMMED_TEXT_H_
