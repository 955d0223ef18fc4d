// Works through values, arguments or lines of standard input, and writes a line for each.

#ifndef JWNLS_TOOL_COMMANDS_VALUE_LINES_H_
#define JWNLS_TOOL_COMMANDS_VALUE_LINES_H_

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "tool/exit_code.h"
#include "tool/tables/layout_values.h"
#include "tool/tables/table_job.h"

namespace jwnls::tool {

/// Where values come from, and what becomes of them on their lines.
struct ValueLines {
  std::vector<std::string> values = {};  // empty: lines of standard input
  std::size_t width = 0;                 // the least, in cells of a terminal
  bool left = false;                     // blanks stand behind
  /// What stands for a value that is refused; none: of lines its own text, of arguments nothing.
  std::optional<Invalid> invalid = {};
  std::optional<std::string> null_out = {};  // for missing values; none: a blank line
  bool quiet = false;                        // nothing is said of refused values
  bool tells_currency = false;               // behind the value
};

/// What is to be done about values that could have meant others.
enum class Undecided { ignored, told, refused };

/// Converts each value without the blanks around it, and writes what it becomes on a line. What is
/// refused is named on standard error, with its line's number, and the rest goes on; a line keeps
/// its place unless `invalid` says otherwise.
///
/// Where values could have meant others and none decides, a line at the end says so, as `undecided`
/// asks for; Undecided::refused makes the outcome ExitCode::undecided.
ExitCode write_values(const ValueLines& lines, Undecided undecided, const LayoutValues& values);

}  // namespace jwnls::tool

#endif  // JWNLS_TOOL_COMMANDS_VALUE_LINES_H_
