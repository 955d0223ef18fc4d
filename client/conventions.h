// A locale's conventions as an application reads them: names, patterns and symbols, in UTF-8.

#ifndef JWNLS_CLIENT_CONVENTIONS_H_
#define JWNLS_CLIENT_CONVENTIONS_H_

#include <array>
#include <string>
#include <vector>

#include "abi/locale_record.h"

namespace jwnls::client {

/// How much of a date is spelled out: the locale's date patterns 1, 2 and 3.
enum class DateStyle {
  short_numeric = 1,  // 15.03.2024
  medium = 2,         // 15. März 2024, or 15 Mar 2024
  long_form = 3,      // 15. März 2024
};

/// Which of the locale's two datetime patterns is meant.
enum class DatetimeStyle {
  time_only = 0,      // the time of day alone
  date_and_time = 1,  // the medium date and the time of day
};

/// A copy of what a locale record holds, for reading and showing. Patterns are written with the
/// services' own directives ("%d.%m.%Y"). An absent text is empty.
struct Conventions {
  std::array<std::string, 7> full_weekdays;   // Sunday first
  std::array<std::string, 7> short_weekdays;  // Sunday first
  std::array<std::string, 12> full_months;    // January first, in the form that stands in a date
  std::array<std::string, 12> short_months;   //
  std::array<std::string, 4> full_quarters;   //
  std::array<std::string, 4> short_quarters;  //
  std::string before_noon;                    // designators of the 12-hour clock
  std::string after_noon;                     //
  std::array<std::string, 3> date_patterns;   // short, medium, long
  std::string time_pattern;                   //
  std::string datetime_pattern;               // date and time
  std::string time_only_pattern;              // the datetime pattern of DatetimeStyle::time_only
  std::string decimal_symbol;                 //
  std::string grouping_symbol;                //
  std::string grouping;                       // group sizes from the right, as "3" or "3;2"
  std::string currency_symbol;                // as it stands in front of a number
  std::string currency_code;                  // ISO 4217: "EUR"; "XXX" where there is none
  int currency_decimals;                      // of the currency's minor unit: 2, for yen 0

  /// The pattern of a style.
  [[nodiscard]] const std::string& date_pattern(DateStyle style) const {
    return date_patterns.at(static_cast<std::size_t>(style) - 1);
  }
};

/// Digits behind the decimal symbol of an amount: the minor unit of the locale's currency.
[[nodiscard]] int currency_decimals(const LocaleRecord& record) noexcept;

/// Reads a record; no length in it is trusted.
[[nodiscard]] Conventions conventions_of(const LocaleRecord& record);

}  // namespace jwnls::client

#endif  // JWNLS_CLIENT_CONVENTIONS_H_
