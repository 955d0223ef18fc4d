// The range and the sum of a column's values.

#ifndef JWNLS_TOOL_REPORTS_VALUE_TOTALS_H_
#define JWNLS_TOOL_REPORTS_VALUE_TOTALS_H_

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "tool/reports/decimal_sum.h"
#include "tool/reports/table_report.h"

namespace jwnls::tool {

class ValueTotals {
 public:
  /// How values of a kind, "amount", compare, and whether they are added up.
  explicit ValueTotals(std::string_view kind);

  /// A value as programs write it, and its currency ("": none).
  void add(std::string_view value, std::string_view currency);
  /// Values that stand behind those that are here.
  void add(const ValueTotals& later);
  void clear() { groups_.clear(); }

  /// A row for each currency, by its code.
  [[nodiscard]] std::vector<ReportedValues> reported() const;

 private:
  struct Group {
    std::string currency;
    std::uint64_t count = 0;
    std::string least = {};
    std::string greatest = {};
    DecimalSum sum = {};
    bool has_sum = true;  // all are decimals
  };

  Group& group_of(std::string_view currency);
  [[nodiscard]] bool is_less(std::string_view left, std::string_view right) const;
  void widen(Group& group, std::string_view least, std::string_view greatest) const;

  bool are_decimals_;
  bool are_added_up_;
  std::vector<Group> groups_;  // there are as many as a column has currencies
};

}  // namespace jwnls::tool

#endif  // JWNLS_TOOL_REPORTS_VALUE_TOTALS_H_
