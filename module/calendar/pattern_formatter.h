// The pattern walker of date, time and datetime formatting, over both kinds of output unit.
//
// A pattern is a text in which "%", an optional "?" or "#", and a letter stand for a part of the
// value; every other unit is copied. A lower-case letter (or "?") asks for a letter's lower-case
// meaning, "#" for its upper-case meaning without padding. What a letter writes is a row of the
// table below.

#ifndef JWNLS_MODULE_CALENDAR_PATTERN_FORMATTER_H_
#define JWNLS_MODULE_CALENDAR_PATTERN_FORMATTER_H_

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "module/calendar/civil.h"
#include "module/calendar/time_zone.h"
#include "module/frame/locale_handle.h"
#include "module/record/status.h"
#include "module/text/bounded_writer.h"
#include "module/text/letter_case.h"

namespace jwnls {

/// The parts of a value that directives show. A date has no clock.
struct FormatParts {
  std::int32_t day_number;  // since 1 January 1960, for the weekday
  CivilDate date;
  std::uint32_t hour = 0;
  std::uint32_t minute = 0;
  std::uint32_t second = 0;  // whole
  bool has_clock = false;
};

namespace pattern_format {

enum class Output : std::uint8_t {
  refused,
  percent,
  weekday_name,  // either list
  month_name,    // either list
  designator,
  two_digits,    // "0" in front
  blank_padded,  // " " in front, and nothing in front of the letter written in upper case
  year,
  weekday_digit,
  seven,
  zone,
};

enum class Part : std::uint8_t {
  none,
  day,
  month,
  hour,
  hour_1_to_12,
  hour_1_to_24,
  hour_0_to_12,
  minute,
  second
};

struct Directive {
  Output output = Output::refused;
  Part part = Part::none;
  bool needs_clock = false;
  bool first_list_only = false;  // names: the second list whatever the letter's case
};

/// What each letter writes, by its upper-case form. "N" is the month number: "m" arrives there too.
inline constexpr auto directives = [] {
  std::array<Directive, 128> rows{};
  rows['%'] = {Output::percent};
  rows['A'] = {Output::weekday_name};
  rows['F'] = {.output = Output::weekday_name, .first_list_only = true};
  rows['B'] = {Output::month_name};
  rows['C'] = {.output = Output::month_name, .first_list_only = true};
  rows['D'] = {Output::two_digits, Part::day};
  rows['E'] = {Output::blank_padded, Part::day};
  rows['N'] = {Output::two_digits, Part::month};
  rows['O'] = {Output::blank_padded, Part::month};
  rows['Y'] = {Output::year};
  rows['W'] = {Output::weekday_digit};
  rows['U'] = {Output::seven};
  rows['H'] = {Output::two_digits, Part::hour, true};
  rows['I'] = {Output::two_digits, Part::hour_1_to_12, true};
  rows['K'] = {Output::two_digits, Part::hour_1_to_24, true};
  rows['L'] = {Output::two_digits, Part::hour_0_to_12, true};
  rows['M'] = {Output::two_digits, Part::minute, true};
  rows['S'] = {Output::two_digits, Part::second, true};
  rows['P'] = {Output::designator, Part::none, true};
  rows['Z'] = {Output::zone};
  return rows;
}();

/// One directive as a pattern wrote it.
struct Request {
  char16_t written;  // the letter as it stands
  char16_t letter;   // in upper case, "m" as N
  bool alternate;    // the letter's lower-case meaning
  bool padded = true;
};

}  // namespace pattern_format

template <typename Unit>
class PatternFormatter {
 public:
  static constexpr std::size_t work_area = 512;  // units

  PatternFormatter(LocaleHandle* handle, const FormatParts& parts) noexcept
      : handle_(handle), record_(*handle->record), parts_(parts), letters_(handle->context) {}

  /// Walks a pattern and delivers its text. not_possible (and nothing delivered) for a directive
  /// that is unknown, cut short, or asks for a clock that the value has not; does_not_fit with what
  /// fits.
  Status format(const TextEntry& pattern, Unit* out, std::int64_t capacity,
                std::int64_t* length) noexcept {
    const std::u16string_view text = text_of(pattern);
    for (std::size_t i = 0; i < text.size();) {
      if (text[i] != u'%') {
        out_.append(text[i++]);
      } else {
        pattern_format::Request request;
        if (!read_request(text, ++i, request) || !write(request)) return Status::not_possible;
      }
      if (out_.outgrown()) [[unlikely]]
        break;
    }
    return out_.deliver(out, capacity, length);
  }

 private:
  using Output = pattern_format::Output;
  using Part = pattern_format::Part;

  // Reads modifier and letter behind a "%" and moves `i` past them.
  bool read_request(std::u16string_view text, std::size_t& i,
                    pattern_format::Request& request) noexcept {
    if (i == text.size()) return false;
    char16_t unit = text[i++];
    const char16_t modifier = unit == u'?' || unit == u'#' ? unit : u'\0';
    if (modifier != 0) {
      if (i == text.size()) return false;
      unit = text[i++];
    }
    if (unit >= 0x80) return false;  // only ASCII units are directive letters
    request.written = unit;
    request.padded = modifier != u'#';
    request.alternate = modifier == 0 ? letters_.is_lower(unit) : modifier == u'?';
    request.letter = letters_.to_upper(unit);
    if (request.letter == u'M' && request.alternate) request.letter = u'N';
    return request.letter < 0x80;
  }

  // Writes one directive; false when it is refused.
  bool write(const pattern_format::Request& request) noexcept {
    const pattern_format::Directive& directive = pattern_format::directives[request.letter];
    if (directive.needs_clock && !parts_.has_clock) return false;
    const bool second_list = request.alternate && !directive.first_list_only;
    switch (directive.output) {
      case Output::refused:
        return false;
      case Output::percent:
        out_.append_narrow(u'%');
        return true;
      case Output::weekday_name:
        out_.append((second_list ? record_.short_weekdays : record_.full_weekdays)[weekday() - 1]);
        return true;
      case Output::month_name:
        out_.append((second_list ? record_.short_months : record_.full_months)[month() - 1]);
        return true;
      case Output::designator:
        out_.append(parts_.hour < 12 ? record_.before_noon : record_.after_noon);
        return true;
      case Output::two_digits:
        write_number(value_of(directive.part), request.padded ? u'0' : u'\0');
        return true;
      case Output::blank_padded: {
        const bool upper = request.written == request.letter;
        write_number(value_of(directive.part), request.padded && !upper ? u' ' : u'\0');
        return true;
      }
      case Output::year: {
        // Two pairs, each padded by itself: without padding 2005 is "205".
        const auto year = static_cast<std::uint32_t>(parts_.date.year);
        write_number(year / 100 % 100, request.padded ? u'0' : u'\0');
        write_number(year % 100, request.padded ? u'0' : u'\0');
        return true;
      }
      case Output::weekday_digit:
        out_.append_digit(weekday() - 1);
        return true;
      case Output::seven:
        out_.append_digit(7);  // deliberate: 7 whatever the date; callers rely on it
        return true;
      case Output::zone:
        write_zone(request.alternate);
        return true;
    }
    return false;
  }

  // A number below 100; `padding` stands in front of a single digit, 0 for nothing.
  void write_number(std::uint32_t number, char16_t padding) noexcept {
    if (number >= 10 || padding == u'0') {
      out_.append_pair(number);
      return;
    }
    if (padding != 0) out_.append_narrow(padding);
    out_.append_digit(number);
  }

  void write_zone(bool as_offset) noexcept {
    ZoneInfo info;
    read_zone_info(handle_, info);
    if (as_offset) {
      const bool west = info.offset_seconds < 0;
      const std::uint64_t offset = west ? 0 - static_cast<std::uint64_t>(info.offset_seconds)
                                        : static_cast<std::uint64_t>(info.offset_seconds);
      out_.append_narrow(west ? u'-' : u'+');
      out_.append_pair(static_cast<unsigned>(offset / 3600 % 100));
      out_.append_pair(static_cast<unsigned>(offset % 3600 / 60));
      return;
    }
    // The 8-bit area keeps its last byte free of abbreviations.
    constexpr std::size_t kept_free = sizeof(Unit) == 1 ? 1 : 0;
    std::u16string_view abbreviation(info.abbreviation, info.length);
    if (abbreviation.empty() || abbreviation.size() + kept_free > out_.room()) {
      abbreviation = u"XST";
    }
    for (const char16_t unit : abbreviation) out_.append_narrow(unit);
  }

  std::uint32_t weekday() const noexcept {
    return static_cast<std::uint32_t>(weekday_from_day(parts_.day_number));
  }
  std::uint32_t month() const noexcept { return static_cast<std::uint32_t>(parts_.date.month); }

  std::uint32_t value_of(Part part) const noexcept {
    const std::uint32_t hour = parts_.hour;
    switch (part) {
      case Part::day:
        return static_cast<std::uint32_t>(parts_.date.day);
      case Part::month:
        return month();
      case Part::hour:
        return hour;
      case Part::hour_1_to_12:
        return hour == 0 ? 12 : hour > 12 ? hour - 12 : hour;
      case Part::hour_1_to_24:
        return hour == 0 ? 24 : hour;
      case Part::hour_0_to_12:
        return hour > 12 ? hour - 12 : hour;
      case Part::minute:
        return parts_.minute;
      case Part::second:
        return parts_.second;
      case Part::none:
        break;
    }
    return 0;
  }

  LocaleHandle* handle_;
  const LocaleRecord& record_;
  const FormatParts& parts_;
  LetterCase letters_;
  BoundedWriter<Unit, work_area> out_;
};

}  // namespace jwnls

#endif  // JWNLS_MODULE_CALENDAR_PATTERN_FORMATTER_H_
