// `jwnls format`, `jwnls read` and `jwnls convert` on tables: with -c.

#ifndef JWNLS_TOOL_COMMANDS_TABLE_COMMAND_H_
#define JWNLS_TOOL_COMMANDS_TABLE_COMMAND_H_

#include <string>
#include <vector>

#include "tool/exit_code.h"
#include "tool/given_options.h"
#include "tool/kinds.h"
#include "tool/tables/layout_values.h"
#include "tool/tables/table_job.h"

namespace jwnls::tool {

/// `kind`: of the columns that name none; may be null.
ExitCode run_table(Command command, const KindRow* kind, const GivenOptions& options);

/// What all commands on tables take: the file, the separator, the header, quotes. Throws Failure.
[[nodiscard]] TableJob job_of(const GivenOptions& options);

/// The character that -F means: itself, or by its name ("tab"). Throws Failure{usage}.
[[nodiscard]] char separator_of(const std::string& text);

/// "keep" and the others.
[[nodiscard]] Invalid invalid_of_name(const std::string& name);

}  // namespace jwnls::tool

#endif  // JWNLS_TOOL_COMMANDS_TABLE_COMMAND_H_
