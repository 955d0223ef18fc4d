// --explain: what would be done with a table, and why, before anything is done.

#ifndef JWNLS_TOOL_TABLES_EXPLAIN_TABLE_H_
#define JWNLS_TOOL_TABLES_EXPLAIN_TABLE_H_

#include <string>
#include <vector>

#include "tool/tables/open_columns.h"
#include "tool/tables/table_job.h"

namespace jwnls::tool {

/// "semicolon"; of one that has no name the character.
[[nodiscard]] std::string separator_name(char separator);

/// Writes the plan to standard output: the separator and why it is that, the header, and of each
/// column its number, name, kind, layout and first values. Then the run ends: throws Failure{ok}.
[[noreturn]] void explain_table(const TableJob& job, const TableHeader& header,
                                const std::vector<OpenedColumn>& columns,
                                const TableSample& sample);

}  // namespace jwnls::tool

#endif  // JWNLS_TOOL_TABLES_EXPLAIN_TABLE_H_
