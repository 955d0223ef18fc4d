// The pattern walker of date, time and datetime formatting, over both kinds of output unit.
//
// A pattern is a text in which "%", an optional "?" or "#", and a letter stand for a part of the
// value; every other unit is copied. A lower-case letter (or "?") asks for a letter's lower-case
// meaning, "#" for its upper-case meaning without padding. What a letter writes is a row of the
// table below.

#ifndef JWNLS_MODULE_FORMAT_DATES_PATTERN_FORMATTER_H_
#define JWNLS_MODULE_FORMAT_DATES_PATTERN_FORMATTER_H_

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

#include "abi/locale_handle.h"
#include "abi/status.h"
#include "module/calendar/civil.h"
#include "module/calendar/datetime_value.h"
#include "module/host_calls/letter_case.h"
#include "module/host_calls/time_zone.h"
#include "module/text/bounded_writer.h"

namespace jwnls {

namespace pattern_format {

enum class Output : std::uint8_t {
  refused,
  percent,
  weekday_name,
  month_name,
  designator,
  date_pair,  // pairs are numbers with a zero in front where they need one, as most are written
  date_number,
  small_letter_number,  // of the date; blank-padded, but for the letter in upper case
  clock_pair,
  clock_number,
  year,
  weekday_digit,
  seven,
  zone_name,
  zone_offset,
};

// The numbers below 100 that a value shows.
enum Number : std::uint8_t {
  hour,
  hour_1_to_12,
  hour_1_to_24,
  hour_0_to_12,
  minute,
  second,
  day,
  month,
  number_count
};

// How a letter stands in its pattern: two bits.
using Manner = std::size_t;
inline constexpr Manner alternate = 1;  // with its lower-case meaning
inline constexpr Manner bare = 2;       // behind "#": no padding
inline constexpr std::size_t manners = 4;

struct alignas(8) Directive {
  Output output = Output::refused;
  Number number = hour;
  NumberStyle style = zero_padded;
  std::uint16_t list = 0;  // names: where their list begins in the record
};

/// What a letter (in upper case) writes in a manner. Everything that a pattern can ask for stands
/// in the rows of this function, and nowhere else.
constexpr Directive directive_of(char letter, Manner manner) {
  const bool lower = (manner & alternate) != 0;
  const NumberStyle zero = (manner & bare) != 0 ? unpadded : zero_padded;
  const NumberStyle blank = (manner & bare) != 0 ? unpadded : blank_padded;
  const auto date = [=](Number number) {
    return Directive{zero.single_below == 0 ? Output::date_pair : Output::date_number, number,
                     zero};
  };
  const auto clock = [=](Number number) {
    return Directive{zero.single_below == 0 ? Output::clock_pair : Output::clock_number, number,
                     zero};
  };
  const auto name = [](Output output, std::size_t list) {
    return Directive{output, hour, zero_padded, static_cast<std::uint16_t>(list)};
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
    case 'D': return date(day);
    case 'E': return {Output::small_letter_number, day, blank};
    case 'N': return date(month);
    case 'O': return {Output::small_letter_number, month, blank};
    case 'Y': return {Output::year, hour, zero};
    case 'W': return {Output::weekday_digit};
    case 'U': return {Output::seven};
    case 'H': return clock(hour);
    case 'I': return clock(hour_1_to_12);
    case 'K': return clock(hour_1_to_24);
    case 'L': return clock(hour_0_to_12);
    case 'M': return lower ? date(month) : clock(minute);
    case 'S': return clock(second);
    case 'P': return {Output::designator};
    case 'Z': return {lower ? Output::zone_offset : Output::zone_name};
    default: return {Output::refused};
      // clang-format on
  }
}

using DirectiveTable = std::array<std::array<Directive, manners>, 128>;

/// The directives of values with a clock, and of dates, which refuse those that need one.
template <bool has_clock>
inline constexpr DirectiveTable directives = [] {
  DirectiveTable rows{};
  for (std::size_t letter = 0; letter < rows.size(); ++letter) {
    for (Manner manner = 0; manner < manners; ++manner) {
      Directive& row = rows[letter][manner];
      row = directive_of(static_cast<char>(letter), manner);
      const bool needs_clock = row.output == Output::clock_pair ||
                               row.output == Output::clock_number ||
                               row.output == Output::designator;
      if (needs_clock && !has_clock) row = {};
    }
  }
  return rows;
}();

/// The four ways to show each hour of the day.
inline constexpr auto hour_forms = [] {
  std::array<std::array<std::uint8_t, 4>, 24> forms{};
  for (std::uint8_t h = 0; h < 24; ++h) {
    const auto afternoon = static_cast<std::uint8_t>(h > 12 ? h - 12 : h);
    forms[h][hour] = h;
    forms[h][hour_1_to_12] = h == 0 ? 12 : afternoon;
    forms[h][hour_1_to_24] = h == 0 ? 24 : h;
    forms[h][hour_0_to_12] = afternoon;
  }
  return forms;
}();

}  // namespace pattern_format

/// What a date, or a datetime, shows of itself. A datetime's date is split when it is first asked
/// for.
class FormatParts {
 public:
  /// A date of the calendar; it has no clock.
  explicit FormatParts(CivilDate date) noexcept { set_date(date); }

  /// A datetime value in range.
  explicit FormatParts(double datetime) noexcept : has_clock_(true) {
    using namespace pattern_format;
    const auto [datetime_day, seconds] = split_datetime(datetime);
    day_ = datetime_day;
    const auto& hours = hour_forms[seconds / 3600];
    std::memcpy(numbers_, hours.data(), sizeof hours);
    numbers_[minute] = static_cast<std::uint8_t>(seconds % 3600 / 60);
    numbers_[second] = static_cast<std::uint8_t>(seconds % 60);
  }

  bool has_clock() const noexcept { return has_clock_; }
  std::uint32_t clock_number(pattern_format::Number number) const noexcept {
    return numbers_[number];
  }

  std::uint32_t date_number(pattern_format::Number number) noexcept {
    split_date();
    return numbers_[number];
  }
  std::uint32_t year() noexcept {
    split_date();
    return static_cast<std::uint32_t>(date_.year);
  }

  /// 0 (Sunday) to 6 (Saturday).
  std::uint32_t weekday() const noexcept {
    return weekday_index(has_clock_ ? static_cast<std::uint32_t>(day_ - march_day_zero)
                                    : days_since_march(date_));
  }

 private:
  void split_date() noexcept {
    if (!has_date_) set_date(civil_from_day(day_));
  }

  void set_date(CivilDate date) noexcept {
    date_ = date;
    numbers_[pattern_format::day] = static_cast<std::uint8_t>(date.day);
    numbers_[pattern_format::month] = static_cast<std::uint8_t>(date.month);
    has_date_ = true;
  }

  std::int32_t day_ = 0;  // of a datetime
  CivilDate date_{};
  std::uint8_t numbers_[pattern_format::number_count] = {};
  bool has_date_ = false;
  bool has_clock_ = false;
};

/// Walks patterns. Everything but the zone is inlined into one loop, whose state the compiler keeps
/// in registers: that is worth a third of the time.
template <typename Unit>
class PatternFormatter {
 public:
  PatternFormatter(LocaleHandle* handle, FormatParts& parts) noexcept
      : handle_(handle),
        record_(*handle->record),
        parts_(parts),
        directives_(parts.has_clock() ? pattern_format::directives<true>
                                      : pattern_format::directives<false>),
        letters_(handle->context) {}

  /// Walks a pattern and delivers its text. not_possible (and nothing delivered) for a directive
  /// that is unknown, cut short, or asks for a clock that the value has not, unless the text has
  /// outgrown the work area before it; does_not_fit with what fits.
  [[gnu::always_inline]] Status format(const TextEntry& pattern, Unit* out, std::int64_t capacity,
                                       std::int64_t* length) noexcept {
    Area area;
    Writer writer(area);
    const std::u16string_view text = text_of(pattern);
    const char16_t* unit = text.data();
    const char16_t* const end = unit + text.size();
    while (unit != end) {
      if (*unit != u'%') {
        writer.append(*unit++);
        continue;
      }
      const Directive* directive = read_directive(++unit, end);
      const Step step = directive == nullptr ? Step::refused : write(*directive, unit[-1], writer);
      if (step == Step::written) [[likely]]
        continue;
      if (writer.outgrown()) break;
      if (step == Step::refused) return Status::not_possible;
    }
    return writer.deliver(out, capacity, length);
  }

 private:
  using Directive = pattern_format::Directive;
  using Output = pattern_format::Output;
  using Area = WorkArea<Unit, 512>;
  using Writer = BoundedWriter<Unit, 512>;

  enum class Step : std::uint8_t { written, written_long, refused };  // long: may have outgrown

  // Reads modifier and letter from behind a "%" and moves `unit` past them. Null where the
  // directive is cut short or its letter is no ASCII unit.
  [[gnu::always_inline]] const Directive* read_directive(const char16_t*& unit,
                                                         const char16_t* end) noexcept {
    using namespace pattern_format;
    if (unit == end) [[unlikely]]
      return nullptr;
    char16_t letter = *unit++;
    // A letter from A to Z that the host does not call lower-case is a capital: it need not be
    // asked.
    if (letter >= u'A' && letter <= u'Z' && !letters_.is_lower(letter))
      return &directives_[letter][0];
    Manner manner = 0;
    if (letter >= 0x40 && letter < 0x80) [[likely]] {
      manner = letters_.is_lower(letter) ? alternate : 0;
    } else if (letter == u'?' || letter == u'#') {
      manner = letter == u'#' ? bare : alternate;
      if (unit == end) return nullptr;
      letter = *unit++;
    }
    if (letter >= 0x80) [[unlikely]]
      return nullptr;
    const char16_t capital = letters_.to_upper(letter);
    if (capital >= 0x80) [[unlikely]]
      return nullptr;
    return &directives_[capital][manner];
  }

  // Writes one directive, whose letter stands in the pattern as `written`.
  [[gnu::always_inline]] Step write(const Directive& directive, char16_t written,
                                    Writer& out) noexcept {
    using namespace pattern_format;
    switch (directive.output) {
      case Output::refused:
        return Step::refused;
      case Output::percent:
        out.append_narrow(u'%');
        return Step::written;
      case Output::weekday_name:
        out.append(list_entry(record_, directive.list, parts_.weekday()));
        return Step::written_long;
      case Output::month_name:
        out.append(list_entry(record_, directive.list, parts_.date_number(month) - 1));
        return Step::written_long;
      case Output::designator:
        out.append(parts_.clock_number(hour) < 12 ? record_.before_noon : record_.after_noon);
        return Step::written_long;
      case Output::date_pair:
        out.append_pair(parts_.date_number(directive.number));
        return Step::written;
      case Output::date_number:
        out.append_number(parts_.date_number(directive.number), directive.style);
        return Step::written;
      case Output::small_letter_number: {
        const bool capital = written == u'E' || written == u'O';
        out.append_number(parts_.date_number(directive.number),
                          capital ? unpadded : directive.style);
        return Step::written;
      }
      case Output::clock_pair:
        out.append_pair(parts_.clock_number(directive.number));
        return Step::written;
      case Output::clock_number:
        out.append_number(parts_.clock_number(directive.number), directive.style);
        return Step::written;
      case Output::year:
        write_year(parts_.year(), directive.style, out);
        return Step::written;
      case Output::weekday_digit:
        out.append_digit(parts_.weekday());
        return Step::written;
      case Output::seven:
        out.append_digit(7);  // deliberate: 7 whatever the date; callers rely on it
        return Step::written;
      case Output::zone_name:
        out = write_zone_name(handle_, out);
        return Step::written_long;
      case Output::zone_offset:
        out = write_zone_offset(handle_, out);
        return Step::written_long;
    }
    __builtin_unreachable();
  }

  // Two pairs, each padded by itself: without padding 2005 is "205".
  [[gnu::always_inline]] static void write_year(std::uint32_t year, NumberStyle style,
                                                Writer& out) noexcept {
    std::uint32_t century = year / 100;
    const std::uint32_t year_of_century = year - 100 * century;
    if (century >= 100) [[unlikely]]
      century %= 100;
    out.append_numbers(century, year_of_century, style);
  }

  [[gnu::noinline]] static Writer write_zone_offset(LocaleHandle* handle, Writer out) noexcept {
    ZoneInfo info;
    read_zone_info(handle, info);
    const bool west = info.offset_seconds < 0;
    const auto east = static_cast<std::uint64_t>(info.offset_seconds);
    const std::uint64_t seconds = west ? 0 - east : east;
    out.append_narrow(west ? u'-' : u'+');
    out.append_number(static_cast<unsigned>(seconds / 3600 % 100), zero_padded);
    out.append_number(static_cast<unsigned>(seconds % 3600 / 60), zero_padded);
    return out;
  }

  [[gnu::noinline]] static Writer write_zone_name(LocaleHandle* handle, Writer out) noexcept {
    ZoneInfo info;
    read_zone_info(handle, info);
    // The 8-bit area keeps its last byte free of abbreviations.
    constexpr std::size_t kept_free = sizeof(Unit) == 1 ? 1 : 0;
    std::u16string_view abbreviation(info.abbreviation, info.length);
    if (abbreviation.empty() || abbreviation.size() + kept_free > out.room()) {
      abbreviation = u"XST";
    }
    for (const char16_t unit : abbreviation) out.append_narrow(unit);
    return out;
  }

  LocaleHandle* handle_;
  const LocaleRecord& record_;
  FormatParts& parts_;
  const pattern_format::DirectiveTable& directives_;
  LetterCase letters_;
};

}  // namespace jwnls

#endif  // JWNLS_MODULE_FORMAT_DATES_PATTERN_FORMATTER_H_
