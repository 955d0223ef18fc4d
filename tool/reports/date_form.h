// In which form a date was written: "d.m.yyyy", "weekday, d month yyyy".

#ifndef JWNLS_TOOL_REPORTS_DATE_FORM_H_
#define JWNLS_TOOL_REPORTS_DATE_FORM_H_

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "tool/reports/table_report.h"

namespace jwnls::tool {

/// Of a text that was read as `date`, "2024-03-05". Days and months are "d" and "m" with and
/// without a zero in front; where the two are equal, `month_first` tells which is which. Empty for
/// texts whose parts are not told apart.
[[nodiscard]] std::string date_form(std::string_view text, std::string_view date, bool month_first);

/// How often each form is there, of the first ones that are.
class DateForms {
 public:
  explicit DateForms(std::size_t most) : most_(most) {}

  /// "": another.
  void add(std::string_view form, std::uint64_t count);
  void add(const DateForms& later);
  void clear() { forms_.clear(); }

  /// The most frequent first, others last.
  [[nodiscard]] std::vector<ReportedForm> reported() const;

 private:
  std::size_t most_;
  std::vector<ReportedForm> forms_;
};

}  // namespace jwnls::tool

#endif  // JWNLS_TOOL_REPORTS_DATE_FORM_H_
