// Which of several locales a column's values are written by.

#ifndef JWNLS_TOOL_TABLES_COLUMN_LOCALES_H_
#define JWNLS_TOOL_TABLES_COLUMN_LOCALES_H_

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "tool/tables/layout_values.h"

namespace jwnls::tool {

/// A locale that may be the column's, and what it reads.
struct LocaleChoice {
  std::string locale;
  LayoutValuesPointer values;
};

/// The values that decide.
struct ColumnSample {
  std::vector<std::string> texts;
  const std::vector<std::uint64_t>& lines;  // on which they stand
};

/// The place of the first locale that reads all texts that any of them reads, where all others that
/// do so give the same values. Throws Failure{undecided} with the text that says why there is none:
///   name      of the column
///   remedy    "-c 'Tag=date:", what a locale behind it makes the right -c
[[nodiscard]] std::size_t decide_locale(const std::string& name, const std::string& remedy,
                                        const std::vector<LocaleChoice>& choices,
                                        const ColumnSample& sample);

}  // namespace jwnls::tool

#endif  // JWNLS_TOOL_TABLES_COLUMN_LOCALES_H_
