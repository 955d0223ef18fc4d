// The pattern walker of date, time and datetime formatting, over both kinds of output unit.
//
//   pattern   = { literal | directive }
//   literal   = any unit but "%", copied as it is
//   directive = "%" [ "?" | "#" ] letter
//
// A letter has two meanings: a lower-case letter, or "?", asks for the lower-case one; "#" asks for
// the upper-case one without padding. What it writes is a row of the table in output_directives.h.

#ifndef JWNLS_MODULE_FORMAT_DATES_PATTERN_FORMATTER_H_
#define JWNLS_MODULE_FORMAT_DATES_PATTERN_FORMATTER_H_

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

#include "abi/locale_handle.h"
#include "abi/status.h"
#include "module/format_dates/output_directives.h"
#include "module/format_dates/shown_parts.h"
#include "module/host_calls/letter_case.h"
#include "module/host_calls/time_zone.h"
#include "module/text/bounded_writer.h"

namespace jwnls {

/// Walks patterns. Everything but the zone is inlined into one loop, whose state the compiler keeps
/// in registers: that is worth a third of the time.
template <typename Unit>
class PatternFormatter {
 public:
  PatternFormatter(LocaleHandle* handle, ShownParts& parts) noexcept
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
      const Step step = directive == nullptr ? Step::refused : write(*directive, unit, end, writer);
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
      return &directives_[letter][capital];
    Manner manner = plain;
    if (letter >= 0x40 && letter < 0x80) [[likely]] {
      manner = letters_.is_lower(letter) ? alternate : plain;
    } else if (letter == u'?' || letter == u'#') {
      manner = letter == u'#' ? bare : alternate;
      if (unit == end) return nullptr;
      letter = *unit++;
    }
    if (letter >= 0x80) [[unlikely]]
      return nullptr;
    const char16_t mapped = letters_.to_upper(letter);
    if (mapped >= 0x80) [[unlikely]]
      return nullptr;
    if (letter <= u'Z' && never_pads(letter) && never_pads(mapped)) manner = bare;
    return &directives_[mapped][manner];
  }

  // The letters whose lower-case forms pad with a blank.
  static constexpr bool never_pads(char16_t letter) noexcept {
    return letter == u'E' || letter == u'O';
  }

  // What most patterns have behind the hour.
  static constexpr std::u16string_view minutes_and_seconds = u":%M:%S";

  // True when these stand at `unit` and their letters are capitals to the host.
  [[gnu::always_inline]] bool minutes_and_seconds_at(const char16_t* unit,
                                                     const char16_t* end) const noexcept {
    return static_cast<std::size_t>(end - unit) >= minutes_and_seconds.size() &&
           std::memcmp(unit, minutes_and_seconds.data(),
                       minutes_and_seconds.size() * sizeof(char16_t)) == 0 &&
           !letters_.is_lower(u'M') && !letters_.is_lower(u'S');
  }

  // Writes one directive, behind whose letter `unit` stands, and of what follows as much as goes
  // with it.
  [[gnu::always_inline]] Step write(const Directive& directive, const char16_t*& unit,
                                    const char16_t* end, Writer& out) noexcept {
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
        out.append(list_entry(record_, directive.list, parts_.number(month) - 1));
        return Step::written_long;
      case Output::designator:
        out.append(parts_.number(hour_0_to_23) < 12 ? record_.before_noon : record_.after_noon);
        return Step::written_long;
      case Output::pair:
        out.append_pair(parts_.number(directive.number));
        return Step::written;
      case Output::number:
        out.append_number(parts_.number(directive.number), directive.style);
        return Step::written;
      case Output::hour:
        out.append_number(parts_.number(directive.number), directive.style);
        if (minutes_and_seconds_at(unit, end)) {
          out.append_clock_pairs(parts_.number(minute), parts_.number(second));
          unit += minutes_and_seconds.size();
        }
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
    __builtin_unreachable();  // unreachable: each output has its case
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
  ShownParts& parts_;
  const pattern_format::DirectiveTable& directives_;
  LetterCase letters_;
};

}  // namespace jwnls

#endif  // JWNLS_MODULE_FORMAT_DATES_PATTERN_FORMATTER_H_
