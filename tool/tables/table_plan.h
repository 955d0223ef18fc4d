// What is done with each row of a table, once its header is known.

#ifndef JWNLS_TOOL_TABLES_TABLE_PLAN_H_
#define JWNLS_TOOL_TABLES_TABLE_PLAN_H_

#include <cstddef>
#include <string>
#include <vector>

#include "tool/tables/table_head.h"
#include "tool/tables/table_job.h"

namespace jwnls::tool {

struct TablePlan {
  TablePlan(const TableJob& asked, const TableHead& head, std::vector<ConvertedColumn> converted);

  const TableJob& job;
  TableHeader header;
  std::vector<ConvertedColumn> columns;  // in the order of the command line
  // Of `columns`: those that replace their field, in the order of the fields; those that add one;
  // and those that add their currency.
  std::vector<std::size_t> in_place;
  std::vector<std::size_t> added;
  std::vector<std::size_t> currencies;
  std::string null_field;  // what stands for a missing value, in quotes where it needs them

  /// True when rows are handed through as they are, whatever they hold.
  [[nodiscard]] bool changes_nothing() const { return in_place.empty() && added.empty(); }

  /// The header's begin and end with the names of added columns between: "", "a;b" and "\r\n"
  /// become "a;b;new\r\n".
  [[nodiscard]] std::string header_with_added(std::string_view head, std::size_t header_end) const;

  /// Field names as keys: of the header, else numbers from 1.
  [[nodiscard]] std::string key(std::size_t field) const;
};

}  // namespace jwnls::tool

#endif  // JWNLS_TOOL_TABLES_TABLE_PLAN_H_
