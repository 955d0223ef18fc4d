// Counts as people read them.

#ifndef JWNLS_TOOL_REPORTS_COUNTED_H_
#define JWNLS_TOOL_REPORTS_COUNTED_H_

#include <cstdint>
#include <string>

#include "tool/reports/table_report.h"

namespace jwnls::tool {

/// "3,945"
[[nodiscard]] std::string grouped(std::uint64_t count);

/// "1 row", "3,945 rows"
[[nodiscard]] std::string counted(std::uint64_t count, const std::string& one,
                                  const std::string& several);

/// "5 rows, separator semicolon, header, UTF-8, LF"
[[nodiscard]] std::string facts_of(const TableReport& report);

}  // namespace jwnls::tool

#endif  // JWNLS_TOOL_REPORTS_COUNTED_H_
