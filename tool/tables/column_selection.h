// Which columns of a table the -c of a command line mean.

#ifndef JWNLS_TOOL_TABLES_COLUMN_SELECTION_H_
#define JWNLS_TOOL_TABLES_COLUMN_SELECTION_H_

#include <cstddef>
#include <string>
#include <vector>

#include "tool/tables/column_spec.h"
#include "tool/tables/table_job.h"

namespace jwnls::tool {

struct SelectedColumn {
  std::size_t field = 0;  // from 0
  std::string name;       // of the header, else its number
  const ColumnSpec* spec = nullptr;
};

/// The columns that the specs mean, in their order. Throws Failure{usage}: a column that is not
/// there, with the nearest name; a name that is there twice; a column that would be replaced twice;
/// a new column whose name is taken, or that is one for several.
[[nodiscard]] std::vector<SelectedColumn> select_columns(const std::vector<ColumnSpec>& specs,
                                                         const TableHeader& header);

/// The names that the specs ask for as they are: the header has them all.
[[nodiscard]] std::vector<std::string> plain_names(const std::vector<ColumnSpec>& specs);

}  // namespace jwnls::tool

#endif  // JWNLS_TOOL_TABLES_COLUMN_SELECTION_H_
