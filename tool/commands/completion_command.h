// `jwnls completions SHELL`, and the commands that it and the installation use, which nobody needs
// to know.

#ifndef JWNLS_TOOL_COMMANDS_COMPLETION_COMMAND_H_
#define JWNLS_TOOL_COMMANDS_COMPLETION_COMMAND_H_

#include <optional>
#include <string>
#include <vector>

#include "tool/exit_code.h"

namespace jwnls::tool {

/// Writes the script of bash, zsh or fish. Throws Failure{usage} for another.
ExitCode write_completions(const std::string& shell);

/// Runs a hidden command, if the words begin with one:
///   --complete INDEX WORD...   what may stand at that place of a command line; word 0 is the
///                              program. The first line says how to go on ("words": a blank behind,
///                              "open": none, "files": files too); then a line each: the word, a
///                              tab, what it is.
///   --manual                   the manual page, in roff
[[nodiscard]] std::optional<ExitCode> run_hidden(const std::vector<std::string>& words);

}  // namespace jwnls::tool

#endif  // JWNLS_TOOL_COMMANDS_COMPLETION_COMMAND_H_
