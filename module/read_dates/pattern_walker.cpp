#include "module/read_dates/pattern_walker.h"

#include "module/calendar/civil.h"
#include "module/read_dates/clock_field.h"
#include "module/read_dates/input_directives.h"
#include "module/read_dates/quick_names.h"
#include "module/read_dates/zone_fields.h"

namespace jwnls {
namespace {

constexpr NumberField short_year_field = {2, 0, 99};
constexpr std::int32_t short_year_pivot = 1960;  // the lenient dialect's own

// A directive from behind its '%' on.
struct Directive {
  const char16_t* at;  // behind the letter; null when the pattern ends before one
  char16_t letter;
  bool sharp;
};

// What may stand between a '%' and its letter. A second '%' opens the directive anew: "%%" is no
// literal here.
constexpr bool is_modifier(char16_t unit) noexcept {
  return unit == u'#' || unit == u'0' || unit == u'?' || unit == u'%';
}
[[gnu::noinline]] Directive skip_modifiers(const char16_t* at, const char16_t* end) noexcept {
  bool sharp = false;
  for (; at != end; ++at) {
    if (!is_modifier(*at)) return {at + 1, *at, sharp};
    sharp = *at == u'#';
  }
  return {nullptr, 0, false};
}

// Fixed width or, with '#', free.
template <typename Unit>
bool read_padded(TextCursor<Unit>& input, const NumberField& field, bool sharp,
                 std::int32_t& value) noexcept {
  return sharp ? read_free(input, field, value) : read_fixed(input, field, value);
}

// Lives in registers, as text_cursor.h explains: everything is inlined into walk_pattern_in, and
// whatever is not is handed a copy of the cursor.
template <typename Unit, Dialect dialect>
class Walk {
 public:
  Walk(LocaleHandle* handle, const TextCursor<Unit>& input, DateTimeParts& parts,
       ShortYear short_year) noexcept
      : handle_(handle), start_(input), input_(input), parts_(parts), short_year_(short_year) {}

  [[gnu::always_inline]] bool run(std::u16string_view pattern) noexcept {
    input_.skip_blanks();
    const char16_t* at = pattern.data();
    const char16_t* const end = at + pattern.size();
    while (at != end && !input_.at_end()) {
      const char16_t unit = *at++;
      if (unit != u'%') {
        if (!read_literal(unit)) return false;
        continue;
      }
      if (at == end) return true;
      Directive directive = {at + 1, *at, false};
      if (!is_directive_letter(directive.letter)) [[unlikely]] {
        directive = skip_modifiers(at, end);
        if (directive.at == nullptr) return true;
        if (!is_directive_letter(directive.letter)) return false;
      }
      at = directive.at;
      if (!read_directive(directive.letter, directive.sharp, at, end)) return false;
    }
    return at == end;
  }

  const TextCursor<Unit>& input() const noexcept { return input_; }

 private:
  [[gnu::always_inline]] bool read_literal(char16_t unit) noexcept {
    if (input_.at_unit(unit)) [[likely]] {
      input_.step();
      return true;
    }
    TextCursor<Unit> ahead = input_;
    const char16_t next = ahead.next();
    constexpr bool lenient = dialect == Dialect::lenient;
    if (next == unit || (lenient && same_unit_nocase(next, unit))) {
      input_ = ahead;
      return true;
    }
    return lenient && unit == u' ';
  }

  // `at` stands behind the letter; what follows it in the pattern may be taken together with it.
  [[gnu::always_inline]] bool read_directive(char16_t letter, bool sharp, const char16_t*& at,
                                             const char16_t* end) noexcept {
    constexpr const DirectiveTable& directives =
        dialect == Dialect::lenient ? lenient_directives : strict_directives;
    const InputDirective& row = directives[directive_index(letter)];
    std::int32_t value = 0;
    switch (row.reader) {
      case Reader::none:
        return false;
      case Reader::fixed:
        if (!read_fixed(input_, row.number, value)) return false;
        break;
      case Reader::free:
        if (!read_free(input_, row.number, value)) return false;
        break;
      case Reader::one_or_two_digits:
        if (!read_one_or_two_digits(input_, row.number, value)) return false;
        break;
      case Reader::hour:
        if (is_clock_pattern_rest(at, end) && read_clock(input_, parts_)) {
          at += clock_pattern_rest.size();
          return true;
        }
        [[fallthrough]];
      case Reader::padded:
        if (dialect == Dialect::lenient
                ? !read_one_or_two_digits(input_, row.number, value)
                : !read_padded(input_, sharp ? row.sharp_number : row.number, sharp, value)) {
          return false;
        }
        break;
      case Reader::year:
        if (!sharp && read_common_year()) return true;
        return read_any_year(sharp);
      case Reader::name:
        if (!read_listed_name(row, value)) return false;
        break;
      case Reader::zone_name:
      case Reader::zone_offset:
        return read_zone(row.reader);
      default:                    // unreachable: each reader has its case
        __builtin_unreachable();  // unreachable: likewise
    }
    parts_.*row.field = value;
    return row.adjust == nullptr || row.adjust(parts_);
  }

  // Four digits at once, in range.
  [[gnu::always_inline]] bool read_common_year() noexcept {
    TextCursor<Unit> ahead = input_;
    std::int32_t year = 0;
    if (!ahead.four_digits(year) || !year_field.holds(year)) return false;
    parts_.year = year;
    input_ = ahead;
    return true;
  }

  [[gnu::always_inline]] bool read_any_year(bool sharp) noexcept {
    TextCursor<Unit> input = input_;
    const bool read = uncommon_year(input, sharp, short_year_, parts_.year);
    input_ = input;
    return read;
  }

  [[gnu::noinline]] static bool uncommon_year(TextCursor<Unit>& input, bool sharp,
                                              ShortYear short_year, std::int32_t& year) noexcept {
    const TextCursor<Unit> start = input;
    if (read_padded(input, year_field, sharp, year)) return true;
    if (dialect == Dialect::strict) return false;
    input = start;
    if (!read_padded(input, short_year_field, sharp, year)) return false;
    if (short_year == ShortYear::widened) {
      year = static_cast<std::int32_t>(widen_year(year, short_year_pivot));
    }
    return true;
  }

  // The place in the list, from 1.
  [[gnu::always_inline]] bool read_listed_name(const InputDirective& row,
                                               std::int32_t& place) noexcept {
    const LocaleRecord& record = *handle_->record;
    input_.skip_blanks();
    if (!input_.at_end()) [[likely]] {
      const NameMatch match =
          match_name(start_.position(), input_.position(), input_.end(), record, row.lists);
      if (match.index >= 0) [[likely]] {
        place = static_cast<std::int32_t>(match.index) + 1;
        input_.step_over(static_cast<std::size_t>(match.units));
        return true;
      }
      if (match.index == NameMatch::none) return false;
    }
    TextCursor<Unit> input = input_;
    place = uncommon_name(input, record, row.lists) + 1;
    input_ = input;
    return place > 0;
  }

  // The second list begins where the first one did.
  [[gnu::noinline]] static std::int32_t uncommon_name(TextCursor<Unit>& input,
                                                      const LocaleRecord& record,
                                                      const NameList (&lists)[2]) noexcept {
    const std::int32_t index = read_name(input, record, lists[0]);
    return index >= 0 ? index : read_name(input, record, lists[1]);
  }

  [[gnu::always_inline]] bool read_zone(Reader reader) noexcept {
    TextCursor<Unit> input = input_;
    const bool read = reader == Reader::zone_name ? read_zone_name(handle_, input, parts_)
                                                  : read_zone_offset(input, dialect, parts_);
    input_ = input;
    return read;
  }

  LocaleHandle* handle_;
  const TextCursor<Unit>& start_;
  TextCursor<Unit> input_;
  DateTimeParts& parts_;
  ShortYear short_year_;
};

}  // namespace

template <Dialect dialect, typename Unit>
bool walk_pattern_in(LocaleHandle* handle, TextCursor<Unit>& input, std::u16string_view pattern,
                     DateTimeParts& parts, ShortYear short_year) noexcept {
  parts = nothing_read;
  Walk<Unit, dialect> walk(handle, input, parts, short_year);
  const bool read = walk.run(pattern);
  input = walk.input();
  return read;
}

template bool walk_pattern_in<Dialect::strict>(LocaleHandle*, TextCursor<char16_t>&,
                                               std::u16string_view, DateTimeParts&,
                                               ShortYear) noexcept;
template bool walk_pattern_in<Dialect::strict>(LocaleHandle*, TextCursor<char>&,
                                               std::u16string_view, DateTimeParts&,
                                               ShortYear) noexcept;
template bool walk_pattern_in<Dialect::lenient>(LocaleHandle*, TextCursor<char16_t>&,
                                                std::u16string_view, DateTimeParts&,
                                                ShortYear) noexcept;
template bool walk_pattern_in<Dialect::lenient>(LocaleHandle*, TextCursor<char>&,
                                                std::u16string_view, DateTimeParts&,
                                                ShortYear) noexcept;

}  // namespace jwnls
