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
  void add(std::string_view text, std::string_view currency);
  /// Values that stand behind those that are here.
  void add(const ValueTotals& later);
  void clear() { groups_.clear(); }

  /// A row for each currency, by its code.
  [[nodiscard]] std::vector<ReportedValues> reported() const;

 private:
  // A value, taken apart once.
  struct Value {
    std::string_view text;
    DecimalParts decimal = {};  // of those kinds
  };
  // The same, which stays.
  class Bound {
   public:
    void set(const Value& value);
    [[nodiscard]] Value value() const;
    [[nodiscard]] const std::string& text() const { return text_; }

   private:
    std::string text_;
    bool is_negative_ = false;
    std::size_t whole_at_ = 0;
    std::size_t whole_size_ = 0;
    std::size_t fraction_size_ = 0;  // at the end
  };
  struct Group {
    std::string currency;
    std::uint64_t count = 0;
    Bound least = {};
    Bound greatest = {};
    DecimalSum sum = {};
    bool has_sum = true;  // all are decimals
  };

  Group& group_of(std::string_view currency);
  [[nodiscard]] bool is_less(const Value& left, const Value& right) const;
  void widen(Group& group, const Value& least, const Value& greatest) const;

  bool are_decimals_;
  bool are_added_up_;
  std::vector<Group> groups_;  // there are as many as a column has currencies
};

}  // namespace jwnls::tool

#endif  // JWNLS_TOOL_REPORTS_VALUE_TOTALS_H_
