// What date, time and datetime patterns can ask for: the table of output directives.

#ifndef JWNLS_MODULE_FORMAT_DATES_OUTPUT_DIRECTIVES_H_
#define JWNLS_MODULE_FORMAT_DATES_OUTPUT_DIRECTIVES_H_

#include <array>
#include <cstddef>
#include <cstdint>

#include "abi/locale_record.h"
#include "module/text/bounded_writer.h"

namespace jwnls::pattern_format {

enum class Output : std::uint8_t {
  refused,
  percent,
  weekday_name,
  month_name,
  designator,
  pair,    // a number with a zero in front where it needs one, as most are written
  number,  // a number in another style
  hour,    // in any style; minutes and seconds often follow
  year,
  weekday_digit,
  seven,
  zone_name,
  zone_offset,
};

// The numbers below 100 that a value shows: those of its clock, then those of its date.
enum Number : std::uint8_t {
  hour_0_to_23,
  hour_1_to_12,
  hour_1_to_24,
  hour_0_to_12,
  minute,
  second,
  day,
  month,
  number_count
};
inline constexpr Number first_of_date = day;

// How a letter stands in its pattern.
enum Manner : std::uint8_t {
  plain,      // with its upper-case meaning
  alternate,  // with its lower-case meaning
  bare,       // behind "#": with its upper-case meaning, and no padding
  capital,    // a capital itself: plain, but E and O do not pad
  manner_count
};

struct alignas(8) Directive {
  Output output = Output::refused;
  Number number = hour_0_to_23;
  NumberStyle style = zero_padded;
  std::uint16_t list = 0;  // names: where their list begins in the record
};

/// What a letter (in upper case) writes in a manner. Everything that a pattern can ask for stands
/// in the rows of this function, and nowhere else.
constexpr Directive directive_of(char letter, Manner manner) {
  const bool lower = manner == alternate;
  const NumberStyle zero = manner == bare ? unpadded : zero_padded;
  const NumberStyle blank = manner == bare || manner == capital ? unpadded : blank_padded;
  const auto two_digits = [=](Number number) {
    return Directive{zero.single_below == 0 ? Output::pair : Output::number, number, zero};
  };
  const auto hour = [=](Number number) { return Directive{Output::hour, number, zero}; };
  const auto name = [](Output output, std::size_t list) {
    return Directive{output, {}, zero_padded, static_cast<std::uint16_t>(list)};
  };
  constexpr std::size_t full_weekdays = offsetof(LocaleRecord, full_weekdays);
  constexpr std::size_t short_weekdays = offsetof(LocaleRecord, short_weekdays);
  constexpr std::size_t full_months = offsetof(LocaleRecord, full_months);
  constexpr std::size_t short_months = offsetof(LocaleRecord, short_months);
  switch (letter) {
    // clang-format off
    case '%': return {Output::percent};
    case 'A': return name(Output::weekday_name, lower ? short_weekdays : full_weekdays);
    case 'F': return name(Output::weekday_name, full_weekdays);
    case 'B': return name(Output::month_name, lower ? short_months : full_months);
    case 'C': return name(Output::month_name, full_months);
    case 'D': return two_digits(day);
    case 'E': return {Output::number, day, blank};
    case 'N': return two_digits(month);
    case 'O': return {Output::number, month, blank};
    case 'Y': return {Output::year, {}, zero};
    case 'W': return {Output::weekday_digit};
    case 'U': return {Output::seven};
    case 'H': return hour(hour_0_to_23);
    case 'I': return hour(hour_1_to_12);
    case 'K': return hour(hour_1_to_24);
    case 'L': return hour(hour_0_to_12);
    case 'M': return lower ? two_digits(month) : two_digits(minute);
    case 'S': return two_digits(second);
    case 'P': return {Output::designator};
    case 'Z': return {lower ? Output::zone_offset : Output::zone_name};
    default: return {Output::refused};
      // clang-format on
  }
}

using DirectiveTable = std::array<std::array<Directive, manner_count>, 128>;

/// The directives of values with a clock, and of dates, which refuse those that need one.
template <bool has_clock>
inline constexpr DirectiveTable directives = [] {
  DirectiveTable rows{};
  for (std::size_t letter = 0; letter < rows.size(); ++letter) {
    for (std::size_t manner = 0; manner < manner_count; ++manner) {
      Directive& row = rows[letter][manner];
      row = directive_of(static_cast<char>(letter), static_cast<Manner>(manner));
      const bool is_number = row.output == Output::pair || row.output == Output::number;
      const bool needs_clock = row.output == Output::hour || row.output == Output::designator ||
                               (is_number && row.number < first_of_date);
      if (needs_clock && !has_clock) row = {};
    }
  }
  return rows;
}();

}  // namespace jwnls::pattern_format

#endif  // JWNLS_MODULE_FORMAT_DATES_OUTPUT_DIRECTIVES_H_
