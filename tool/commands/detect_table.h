// `jwnls detect` on a table: which kind each column is, and which locales read it.

#ifndef JWNLS_TOOL_COMMANDS_DETECT_TABLE_H_
#define JWNLS_TOOL_COMMANDS_DETECT_TABLE_H_

#include "tool/exit_code.h"
#include "tool/given_options.h"

namespace jwnls::tool {

/// Writes a line for each column, "NAME  KIND  N of M  VERDICT", or with --jsonl an object. Looks
/// at the rows of the first MiB; with --all at all of them. Undecided where a person has to choose
/// in one of the columns; a column that no kind reads is text, and no matter.
ExitCode detect_table(const GivenOptions& options);

}  // namespace jwnls::tool

#endif  // JWNLS_TOOL_COMMANDS_DETECT_TABLE_H_
