// Rows of cells in aligned columns.

#ifndef JWNLS_TOOL_TABLE_H_
#define JWNLS_TOOL_TABLE_H_

#include <cstddef>
#include <string>
#include <vector>

#include "tool/output.h"

namespace jwnls::tool {

class Table {
 public:
  /// `indent` blanks stand before each row.
  explicit Table(std::size_t indent = 0) : indent_(indent) {}

  /// Adds a row of UTF-8 cells. Rows may differ in length.
  void add(std::vector<std::string> cells) { rows_.push_back(std::move(cells)); }

  [[nodiscard]] bool empty() const { return rows_.empty(); }

  /// Writes the rows, a column as wide as its widest cell, two blanks between columns. Where a row
  /// is wider than `columns` (0: no limit), its last cell goes on a line of its own.
  void write(Output& output, std::size_t columns) const;

 private:
  std::size_t indent_;
  std::vector<std::vector<std::string>> rows_;
};

}  // namespace jwnls::tool

#endif  // JWNLS_TOOL_TABLE_H_
