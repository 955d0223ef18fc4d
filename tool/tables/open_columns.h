// The layouts that a table's columns are read and written by.

#ifndef JWNLS_TOOL_TABLES_OPEN_COLUMNS_H_
#define JWNLS_TOOL_TABLES_OPEN_COLUMNS_H_

#include <functional>
#include <string>
#include <vector>

#include "tool/given_options.h"
#include "tool/tables/column_selection.h"
#include "tool/tables/layout_values.h"

namespace jwnls::tool {

/// A column that is ready, and what its values are made by.
struct OpenedColumn {
  SelectedColumn selected;
  const KindRow* kind = nullptr;
  LayoutValuesPointer values;
};

/// What the columns of a command line are opened with.
struct ColumnRequest {
  Command command = read_command;
  const KindRow* kind = nullptr;  // of columns that name none; null: they must
  const GivenOptions* options = nullptr;
};

/// Opens the columns in their order. Of several locales the values decide; the sample is read only
/// then. Throws Failure.
[[nodiscard]] std::vector<OpenedColumn> open_columns(
    const ColumnRequest& request, const std::vector<SelectedColumn>& columns,
    const std::function<const TableSample&()>& sample);

/// The values of `format`. A zone among the words goes before `zone`, which may be empty.
[[nodiscard]] LayoutValuesPointer open_format_values(const std::string& locale, const KindRow& kind,
                                                     std::vector<std::string> words,
                                                     std::string zone, MissingWords missing);

}  // namespace jwnls::tool

#endif  // JWNLS_TOOL_TABLES_OPEN_COLUMNS_H_
