// Walking a pattern over a text: literal units and '%' directives, in one of the two dialects.
//
//   pattern   = { directive | literal } [ "%" { modifier } ]
//   directive = "%" { modifier } letter
//   modifier  = "#" | "0" | "?" | "%"     only "#" means anything: a number of free width
//
//   What a directive or literal reads of the text:
//   number    = fixed width: blanks and digits, together as many units as the field has
//             | free width: blanks, then 1 to as many digits as the field has and none behind them
//   year      = number of 4 | number of 2 (lenient)
//   name      = blanks, an entry of the directive's first list or, failing that, of its second
//   zone      = see zone_fields.h
//   literal   = the unit itself | the unit in another case (lenient) | nothing for a blank
//   (lenient)

#ifndef JWNLS_MODULE_READ_DATES_PATTERN_WALKER_H_
#define JWNLS_MODULE_READ_DATES_PATTERN_WALKER_H_

#include <cstdint>
#include <string_view>

#include "abi/locale_handle.h"
#include "module/read_dates/date_time_parts.h"
#include "module/read_dates/dialect.h"
#include "module/text/text_cursor.h"

namespace jwnls {

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
