// What `-h` shows.

#ifndef JWNLS_TOOL_COMMANDS_SHORT_HELP_H_
#define JWNLS_TOOL_COMMANDS_SHORT_HELP_H_

#include <string>

#include "tool/commands/command_rows.h"

namespace jwnls::tool {

/// The program in 24 lines of 80 columns: its commands.
[[nodiscard]] std::string short_help();

/// The same of a command, of one kind or (null) of all: the options that most need.
[[nodiscard]] std::string short_help(const CommandRow& command, const KindRow* kind);

}  // namespace jwnls::tool

#endif  // JWNLS_TOOL_COMMANDS_SHORT_HELP_H_
