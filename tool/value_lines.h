// Works through values, arguments or lines of standard input, and writes a line for each.

#ifndef JWNLS_TOOL_VALUE_LINES_H_
#define JWNLS_TOOL_VALUE_LINES_H_

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "jwnls/jwnls.hpp"
#include "tool/exit_code.h"

namespace jwnls::tool {

/// The text without the blanks and tabs around it.
[[nodiscard]] std::string_view trimmed(std::string_view text);

/// Where values come from and how what they become is laid out.
struct ValueLines {
  std::vector<std::string> values;  // empty: lines of standard input
  std::size_t width = 0;            // the least, in cells of a terminal
  bool left = false;                // blanks stand behind
};

/// What a value became, and whether its text could have meant another value or excludes that.
struct ValueText {
  std::string text;
  bool two_ways = false;
  bool decides = false;
};

/// What is to be done about values that could have meant others.
enum class Undecided { ignored, told, refused };

using WorkOnValue = std::function<Result<ValueText>(std::string_view value)>;

/// Gives `work` each value without the blanks around it, and writes what it makes of it. Errors go
/// to standard error with the line's number, and the rest goes on.
///
/// Where values could have meant others and none decides, a line at the end says so, as `undecided`
/// asks for; Undecided::refused makes the outcome ExitCode::undecided.
ExitCode write_values(const ValueLines& lines, Undecided undecided, const WorkOnValue& work);

}  // namespace jwnls::tool

#endif  // JWNLS_TOOL_VALUE_LINES_H_
