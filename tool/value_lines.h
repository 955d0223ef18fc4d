// Works through values, arguments or lines of standard input, and writes a line for each.

#ifndef JWNLS_TOOL_VALUE_LINES_H_
#define JWNLS_TOOL_VALUE_LINES_H_

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "client/jwnls.h"
#include "tool/exit_code.h"

namespace jwnls::tool {

/// What a value became.
struct ValueText {
  ValueText() = default;
  ValueText(std::string the_text, std::string the_note = {})
      : text(std::move(the_text)), note(std::move(the_note)) {}

  std::string text;
  std::string note;  // what the text had to do without; empty: nothing
};

using WorkOnValue = std::function<client::Result<ValueText>(std::string_view value)>;

/// Gives `work` each value without the blanks around it, and writes what it makes of it. Errors and
/// notes go to standard error with the line's number, and the rest goes on. Without `values`, lines
/// of standard input are read.
ExitCode write_values(const std::vector<std::string>& values, const WorkOnValue& work);

}  // namespace jwnls::tool

#endif  // JWNLS_TOOL_VALUE_LINES_H_
