// `jwnls detect`: which kind a column of texts, or each column of a table, is, and which locales
// read it.

#ifndef JWNLS_TOOL_COMMANDS_DETECT_COMMAND_H_
#define JWNLS_TOOL_COMMANDS_DETECT_COMMAND_H_

#include "tool/exit_code.h"
#include "tool/given_options.h"

namespace jwnls::tool {

/// Of a table a line for each column (detect_table.h). Of lines what they are as one line, "KIND  N
/// of M  VERDICT", and lines on values that no locale reads and on values that could be meant
/// otherwise. Undecided where a person has to choose or nothing reads the column.
///
/// The input is a table when an option of tables is given, or its file's name ends so, or its first
/// line holds a separator other than a comma.
ExitCode run_detect(const GivenOptions& options);

}  // namespace jwnls::tool

#endif  // JWNLS_TOOL_COMMANDS_DETECT_COMMAND_H_
