// The command line: what can be asked for, and its help.

#ifndef JWNLS_TOOL_COMMANDS_COMMAND_LINE_H_
#define JWNLS_TOOL_COMMANDS_COMMAND_LINE_H_

#include "tool/exit_code.h"

namespace jwnls::tool {

/// Runs the program: parses the arguments, runs the command, reports what failed.
ExitCode run(int argument_count, const char* const* arguments);

}  // namespace jwnls::tool

#endif  // JWNLS_TOOL_COMMANDS_COMMAND_LINE_H_
