// Walking a pattern over a text: literal units and '%' directives, in two dialects.
//
// Strict: literals match exactly, most numbers are fixed-width fields. Lenient: literals match
// without regard to case, a blank of the pattern may be absent, numbers are free-width, and more
// directives are known. '#', '0' and '?' after the '%' are modifiers; only '#' means anything.

#ifndef JWNLS_MODULE_READ_DATES_PATTERN_WALKER_H_
#define JWNLS_MODULE_READ_DATES_PATTERN_WALKER_H_

#include <cstdint>
#include <string_view>

#include "module/read_dates/date_time_parts.h"
#include "module/read_dates/zone_fields.h"
#include "module/text/text_cursor.h"

namespace jwnls {

inline constexpr std::uint32_t lenient_bits = 0x1FC;

/// The dialect that a service's mode word asks for.
constexpr Dialect dialect_of(std::uint32_t mode) noexcept {
  return (mode & lenient_bits) != 0 ? Dialect::lenient : Dialect::strict;
}

/// What becomes of a two-digit year in the lenient dialect.
enum class ShortYear : std::uint8_t {
  widened,  // 60 to 99 are 1960 to 1999, 0 to 59 are 2000 to 2059, whatever the year cutoff
  kept,     // 0 to 99, for the caller to widen
};

/// Walks `pattern` over the text from `input` on, leading blanks skipped, into fresh `parts`.
/// True when every unit of the pattern was read; `input` then stands behind what was read, and the
/// text may go on. False: `input` and `parts` are somewhere on the way. A pattern that ends inside
/// a directive has been read whole.
template <Dialect dialect, typename Unit>
[[nodiscard]] bool walk_pattern_in(LocaleHandle*, TextCursor<Unit>& input,
                                   std::u16string_view pattern, DateTimeParts& parts,
                                   ShortYear = ShortYear::widened) noexcept;

/// In a dialect that is not known before.
template <typename Unit>
[[nodiscard]] bool walk_pattern(LocaleHandle* handle, TextCursor<Unit>& input,
                                std::u16string_view pattern, Dialect dialect,
                                DateTimeParts& parts) noexcept {
  return dialect == Dialect::lenient
             ? walk_pattern_in<Dialect::lenient>(handle, input, pattern, parts)
             : walk_pattern_in<Dialect::strict>(handle, input, pattern, parts);
}

}  // namespace jwnls

#endif  // JWNLS_MODULE_READ_DATES_PATTERN_WALKER_H_
