// The commonest dates of all, three numbers with one mark twice: "04.09.2018", "4/9/2018",
// "2018-09-04". Eight bytes are looked at at once.

#ifndef JWNLS_LIBRARY_DATES_PLAIN_DATE_H_
#define JWNLS_LIBRARY_DATES_PLAIN_DATE_H_

#include <cstdint>
#include <cstring>
#include <string_view>

#include "include/jwnls/jwnls.h"
#include "library/dates/date_layout.h"
#include "library/dates/date_parts.h"
#include "library/locale_data/date_characters.h"
#include "module/calendar/civil.h"

namespace jwnls::library {

/// Three numbers as they stand, and where the last of them begins.
struct PlainNumbers {
  std::int32_t first, second, third;
  std::uint8_t last_begin;
  bool year_first;
};

/// What two bytes of ASCII digits say, of eight bytes of digits' values: in every even byte.
constexpr std::uint64_t pairs_of(std::uint64_t digits) noexcept {
  return digits * 10 + (digits >> 8);
}

/// Whether the bytes that `where` names (0xFF each) are values of digits.
constexpr bool are_digits(std::uint64_t values, std::uint64_t where) noexcept {
  constexpr std::uint64_t each = 0x0101010101010101;
  const std::uint64_t beyond = ((values & 0x7F * each) + 0x76 * each) | values;
  return (beyond & where & 0x80 * each) == 0;
}

constexpr bool is_date_mark(char mark) noexcept {
  return mark == '.' || mark == '/' || mark == '-';
}

/// "04.09.2018" and "2018-09-04".
inline bool take_ten_bytes(const char* text, PlainNumbers& numbers) noexcept {
  std::uint64_t bytes = 0;
  std::memcpy(&bytes, text, 8);
  const std::uint64_t values = bytes ^ 0x3030303030303030;
  const std::uint32_t last_tens = static_cast<unsigned char>(text[8] - '0');
  const std::uint32_t last_ones = static_cast<unsigned char>(text[9] - '0');
  if (last_tens > 9 || last_ones > 9) return false;
  const auto last = static_cast<std::int32_t>(last_tens * 10 + last_ones);
  constexpr std::uint64_t year_last = 0xFFFF00FFFF00FFFF;
  constexpr std::uint64_t year_first = 0x00FFFF00FFFFFFFF;
  if (is_date_mark(text[2]) && text[5] == text[2] && are_digits(values, year_last)) {
    const std::uint64_t pairs = pairs_of(values & year_last);
    numbers.first = static_cast<std::int32_t>(pairs & 0xFF);
    numbers.second = static_cast<std::int32_t>(pairs >> 24 & 0xFF);
    numbers.third = static_cast<std::int32_t>(pairs >> 48 & 0xFF) * 100 + last;
    numbers.year_first = false;
    numbers.last_begin = 6;
    return true;
  }
  if (!is_date_mark(text[4]) || text[7] != text[4] || !are_digits(values, year_first)) return false;
  const std::uint64_t pairs = pairs_of(values & year_first);
  // The month's tens stand in an odd byte.
  numbers.first = static_cast<std::int32_t>((pairs & 0xFF) * 100 + (pairs >> 16 & 0xFF));
  numbers.second = static_cast<std::int32_t>(pairs >> 40 & 0xFF);
  numbers.third = last;
  numbers.year_first = true;
  numbers.last_begin = 8;
  return true;
}

/// "04.09.2018" where days or months come first: nearly every date of ten bytes, without a branch
/// that its value decides. False for what read_plain_date() may still take, or refuses.
inline bool read_usual_date(const DateLayout& layout, const char* text, DateRead& read) noexcept {
  std::uint64_t front = 0;
  std::uint32_t year_digits = 0;
  std::memcpy(&front, text, sizeof front);
  std::memcpy(&year_digits, text + 6, sizeof year_digits);
  const std::uint64_t eight =
      (front & 0xFFFF) | (front >> 8 & 0xFFFF'0000) | std::uint64_t{year_digits} << 32;
  const std::uint64_t values = eight ^ 0x3030303030303030;
  const std::uint64_t pairs = pairs_of(values);
  const auto pair = [pairs](int index) {
    return static_cast<std::int32_t>(pairs >> (16 * index) & 0xFF);
  };
  const bool month_first = layout.order == order_mdy;
  const std::int32_t year = pair(2) * 100 + pair(3);
  const std::int32_t month = pair(month_first ? 0 : 1);
  const std::int32_t day = pair(month_first ? 1 : 0);
  const auto mark = static_cast<char>(front >> 16 & 0xFF);
  if (!are_digits(values, ~std::uint64_t{0}) || !is_date_mark(mark) || text[5] != mark ||
      layout.buddhist || layout.order == order_ymd || year < first_year ||
      static_cast<std::uint32_t>(month - 1) > 11 || day < 1 ||
      day > common_month_lengths[month - 1]) {
    return false;
  }
  read.date = {year, month, day};
  const unsigned decides = static_cast<std::uint32_t>(12 - day) >> 31;  // a day above 12
  const unsigned two_ways = (day != month ? 1U : 0U) & (decides ^ 1);
  static_assert(JWNLS_TWO_WAYS == 1 && JWNLS_DECIDES == 2);
  read.facts = static_cast<std::uint8_t>(decides << 1 | two_ways);
  return true;
}

/// "4.9.2018": of 8 or 9 bytes.
inline bool take_short_numbers(std::string_view text, PlainNumbers& numbers) noexcept {
  std::size_t at = 0;
  const auto one_or_two = [&] {
    std::int32_t value = text[at++] - '0';
    if (is_digit(text[at])) value = value * 10 + (text[at++] - '0');
    return value;
  };
  if (!is_digit(text[0])) return false;
  numbers.first = one_or_two();
  const char mark = text[at++];
  if (!is_date_mark(mark) || !is_digit(text[at])) return false;
  numbers.second = one_or_two();
  if (text[at++] != mark || text.size() - at != 4) return false;
  numbers.last_begin = static_cast<std::uint8_t>(at);
  numbers.year_first = false;
  numbers.third = 0;
  for (; at < text.size(); ++at) {
    if (!is_digit(text[at])) return false;
    numbers.third = numbers.third * 10 + (text[at] - '0');
  }
  return true;
}

/// False for every other text, of which `read` says nothing. True: the text is read, or refused
/// for good.
inline bool read_plain_date(const DateLayout& layout, std::string_view text,
                            DateRead& read) noexcept {
  PlainNumbers numbers;
  if (text.size() < 8 || text.size() > 10) return false;
  const bool is_plain =
      text.size() == 10 ? take_ten_bytes(text.data(), numbers) : take_short_numbers(text, numbers);
  if (!is_plain) return false;
  const auto refuse = [&](Refusal refusal, std::size_t place, std::int32_t told) {
    read.refusal = refusal;
    read.place = place;
    read.told = told;
    return true;
  };
  CivilDate date = {numbers.first, numbers.second, numbers.third};
  std::uint8_t facts = 0;
  if (!numbers.year_first) {
    if (layout.order == order_ymd) return refuse(Refusal::year_last, numbers.last_begin, 0);
    date.year = numbers.third;
    date.month = layout.order == order_mdy ? numbers.first : numbers.second;
    date.day = layout.order == order_mdy ? numbers.second : numbers.first;
    if (date.day != date.month) facts = JWNLS_TWO_WAYS;
    if (date.day > 12) facts = JWNLS_DECIDES;
  }
  if (layout.buddhist && date.year >= first_buddhist_year) return false;
  if (static_cast<std::uint32_t>(date.month - 1) > 11 || date.day < 1 ||
      (date.day > 28 && date.day > days_in_month(date.year, date.month))) {
    return refuse(Refusal::no_such_date, text.size(), 0);
  }
  if (date.year < first_year) return refuse(Refusal::years, text.size(), date.year);
  read.date = date;
  read.facts = facts;
  return true;
}

}  // namespace jwnls::library

#endif  // JWNLS_LIBRARY_DATES_PLAIN_DATE_H_
