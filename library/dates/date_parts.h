// What the text of a date comes to, and what it is made of: numbers and the marks between them.

#ifndef JWNLS_LIBRARY_DATES_DATE_PARTS_H_
#define JWNLS_LIBRARY_DATES_DATE_PARTS_H_

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <utility>

#include "library/locale_data/date_characters.h"
#include "module/calendar/civil.h"

namespace jwnls::library {

/// Why a text is no date of a layout.
enum class Refusal : std::uint8_t {
  none,
  undecided,     // the quick way cannot tell
  too_long,      // more than 1,024 bytes
  not_utf8,      //
  blank,         // no value
  no_date,       // nothing that looks like one
  too_many,      // numbers left over
  unknown_word,  // or a mark out of place
  marks,         // between the numbers
  digits,        // a number of three, five or more digits
  no_month,      // two numbers and no month's name
  two_names,     // two months, two weekdays, or in no order
  two_months,    // a name that two months have
  year_last,     // three numbers where the locale writes the year first
  short_year,    // two digits are no year here
  no_year,       // no number can be the year
  no_such_date,  // no date of the calendar
  years,         // outside the calendar: the year is told
  weekday,       // another one: the right one is told
  // Of datetimes and times.
  no_time,
  no_such_time,
  offset,
  no_offset,
  gap,
  overlap,
  two_places,
  range,
};

struct DateRead {
  CivilDate date = {};
  std::uint8_t facts = 0;
  Refusal refusal = Refusal::none;
  std::int32_t told = 0;  // the year, or the weekday
  std::size_t place = 0;  // what fits of the text that was taken apart
};

/// A text's numbers and what stands around them.
struct Numbers {
  struct Number {
    std::int32_t value;
    std::size_t begin, end;
    [[nodiscard]] std::size_t digits() const noexcept { return end - begin; }
  };
  Number number[3];
  std::size_t count = 0;  // 4: more than three

  Numbers() = default;
  explicit Numbers(std::string_view text) noexcept;

  /// Takes the digits from `begin` to `end`; of more than eight no value.
  void add(std::string_view text, std::size_t begin, std::size_t end) noexcept {
    const auto digit = [at = text.data() + begin](std::size_t i) { return at[i] - '0'; };
    std::int32_t value = 0;
    switch (end - begin) {
      case 1:
        value = digit(0);
        break;
      case 2:
        value = digit(0) * 10 + digit(1);
        break;
      case 4:
        value = ((digit(0) * 10 + digit(1)) * 10 + digit(2)) * 10 + digit(3);
        break;
      default:
        for (std::size_t i = 0; i < end - begin && i < 8; ++i) value = value * 10 + digit(i);
    }
    number[count++] = {value, begin, end};
  }
};

inline Numbers::Numbers(std::string_view text) noexcept {
  for (std::size_t at = 0; at < text.size();) {
    if (!is_digit(text[at])) {
      ++at;
      continue;
    }
    if (count == 3) {
      count = 4;
      return;
    }
    std::size_t end = at;
    while (end < text.size() && is_digit(text[end])) ++end;
    add(text, at, end);
    at = end;
  }
}

/// The only mark of a gap: one of "." "-" "/", or a blank; 0 when there is another, or two.
constexpr char only_mark(std::string_view gap) noexcept {
  char mark = gap.empty() ? '\0' : ' ';
  for (const char each : gap) {
    if (is_blank(each)) continue;
    if (mark != ' ' || (each != '.' && each != '-' && each != '/')) return '\0';
    mark = each;
  }
  return mark;
}

/// Whether a gap, without blanks and a comma, is `marks`.
constexpr bool same_marks(std::string_view gap, std::string_view marks) noexcept {
  std::size_t at = 0;
  bool has_comma = false;
  for (const char each : gap) {
    if (is_blank(each)) continue;
    if (each == ',' && !std::exchange(has_comma, true)) continue;
    if (at == marks.size() || marks[at] != each) return false;
    ++at;
  }
  return at == marks.size();
}

}  // namespace jwnls::library

#endif  // JWNLS_LIBRARY_DATES_DATE_PARTS_H_
