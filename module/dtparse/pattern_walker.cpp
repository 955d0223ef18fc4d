#include "module/dtparse/pattern_walker.h"

#include "module/calendar/calendar.h"
#include "module/dtparse/input_directives.h"

namespace jwnls {
namespace {

constexpr NumberField short_year_field = {2, 0, 99};
constexpr std::int32_t short_year_pivot = 1960;  // the lenient dialect's own

// Lives in registers: everything is inlined into walk_pattern, and whatever is not gets a copy of
// the cursor.
template <typename Unit>
class Walk {
 public:
  Walk(LocaleHandle* handle, const TextCursor<Unit>& input, Dialect dialect, DateTimeParts& parts,
       ShortYear short_year) noexcept
      : handle_(handle),
        input_(input),
        parts_(parts),
        directives_(dialect == Dialect::lenient ? lenient_directives : strict_directives),
        dialect_(dialect),
        short_year_(short_year) {}

  [[gnu::always_inline]] bool run(std::u16string_view pattern) noexcept {
    input_.skip_blanks();
    std::size_t at = 0;
    bool in_directive = false;
    for (; at < pattern.size() && !input_.at_end(); ++at) {
      const char16_t unit = pattern[at];
      if (unit == u'%') {
        // A second '%' opens the directive anew: "%%" is no literal here.
        in_directive = true;
        parts_.modifier = 0;
      } else if (!in_directive) {
        if (!read_literal(unit)) return false;
      } else if (unit == u'#' || unit == u'0' || unit == u'?') {
        parts_.modifier = unit;
      } else {
        if (!read_directive(unit)) return false;
        in_directive = false;
      }
    }
    return at == pattern.size();
  }

  const TextCursor<Unit>& input() const noexcept { return input_; }

 private:
  [[gnu::always_inline]] bool read_literal(char16_t unit) noexcept {
    TextCursor<Unit> ahead = input_;
    const char16_t next = ahead.next();
    const bool lenient = dialect_ == Dialect::lenient;
    if (next == unit || (lenient && same_unit_nocase(next, unit))) {
      input_ = ahead;
      return true;
    }
    return lenient && unit == u' ';
  }

  [[gnu::always_inline]] bool read_directive(char16_t letter) noexcept {
    if (letter < first_directive_letter || letter > last_directive_letter) return false;
    const InputDirective& row =
        directives_[static_cast<std::size_t>(letter - first_directive_letter)];
    std::int32_t value = 0;
    switch (row.reader) {
      case Reader::none:
        return false;
      case Reader::fixed:
        if (!read_fixed(input_, row.number, value)) return false;
        break;
      case Reader::padded:
        if (!read_padded(row.number, row.sharp_number, value)) return false;
        break;
      case Reader::free:
        if (!read_free(input_, row.number, value)) return false;
        break;
      case Reader::year:
        if (!read_year(row.number, value)) return false;
        break;
      case Reader::name:
        if (!read_listed_name(row, value)) return false;
        break;
      case Reader::zone_name:
        return read_zone_name(handle_, input_, parts_);
      case Reader::zone_offset:
        return read_zone_offset(input_, dialect_, parts_);
    }
    if (row.field != nullptr) parts_.*row.field = value;
    return row.adjust == nullptr || row.adjust(parts_);
  }

  [[gnu::always_inline]] bool read_padded(const NumberField& fixed, const NumberField& free,
                                          std::int32_t& value) noexcept {
    return parts_.modifier == u'#' ? read_free(input_, free, value)
                                   : read_fixed(input_, fixed, value);
  }

  [[gnu::always_inline]] bool read_year(const NumberField& full, std::int32_t& year) noexcept {
    const TextCursor<Unit> start = input_;
    if (read_padded(full, full, year)) return true;
    input_ = start;
    if (!read_padded(short_year_field, short_year_field, year)) return false;
    if (short_year_ == ShortYear::widened) {
      year = static_cast<std::int32_t>(widen_year(year, short_year_pivot));
    }
    return true;
  }

  // The place in the list, from 1. The second list begins where the first one did.
  [[gnu::always_inline]] bool read_listed_name(const InputDirective& row,
                                               std::int32_t& place) noexcept {
    const LocaleRecord& record = *handle_->record;
    TextCursor<Unit> input = input_;
    std::int32_t index = read_name(input, record, row.lists[0]);
    if (index < 0) index = read_name(input, record, row.lists[1]);
    input_ = input;
    place = index + 1;
    return index >= 0;
  }

  [[gnu::always_inline]] bool read_zone(Reader reader) noexcept {
    TextCursor<Unit> input = input_;
    const bool read = reader == Reader::zone_name ? read_zone_name(handle_, input, parts_)
                                                  : read_zone_offset(input, dialect_, parts_);
    input_ = input;
    return read;
  }

  LocaleHandle* handle_;
  TextCursor<Unit> input_;
  DateTimeParts& parts_;
  const DirectiveTable& directives_;
  Dialect dialect_;
  ShortYear short_year_;
};

}  // namespace

template <typename Unit>
bool walk_pattern(LocaleHandle* handle, TextCursor<Unit>& input, std::u16string_view pattern,
                  Dialect dialect, DateTimeParts& parts, ShortYear short_year) noexcept {
  parts = {};
  Walk<Unit> walk(handle, input, dialect, parts, short_year);
  const bool read = walk.run(pattern);
  input = walk.input();
  return read;
}

template bool walk_pattern(LocaleHandle*, TextCursor<char16_t>&, std::u16string_view, Dialect,
                           DateTimeParts&, ShortYear) noexcept;
template bool walk_pattern(LocaleHandle*, TextCursor<char>&, std::u16string_view, Dialect,
                           DateTimeParts&, ShortYear) noexcept;

}  // namespace jwnls
