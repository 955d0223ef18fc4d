// The candidate patterns of date recognition: the record's three date patterns, then seventeen
// layouts, ordered by whether the locale writes the month before the day.

#ifndef JWNLS_MODULE_DTPARSE_DATE_CANDIDATES_H_
#define JWNLS_MODULE_DTPARSE_DATE_CANDIDATES_H_

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "module/record/locale_record.h"

namespace jwnls {

/// A set of the marks '/', '-', '.' and ','.
using DateMarks = std::uint8_t;

/// The bit of a mark; 0 for every other unit.
constexpr DateMarks date_mark(std::uint32_t unit) noexcept {
  return unit == '/' ? 1 : unit == '-' ? 2 : unit == '.' ? 4 : unit == ',' ? 8 : 0;
}

/// The marks that a text (or a pattern) holds.
template <typename Unit>
constexpr DateMarks date_marks_of(const Unit* text, std::size_t length) noexcept {
  DateMarks marks = 0;
  for (std::size_t i = 0; i < length; ++i) {
    marks = static_cast<DateMarks>(marks | date_mark(static_cast<std::uint32_t>(text[i])));
  }
  return marks;
}

struct DateCandidate {
  std::u16string_view pattern;
  DateMarks marks;  // in the pattern: a text without one of them cannot match in either dialect

  constexpr DateCandidate(std::u16string_view text) noexcept  // NOLINT: tables read better
      : pattern(text), marks(date_marks_of(text.data(), text.size())) {}
};

using DateLayouts = std::array<DateCandidate, 17>;

/// The built-in layouts, in the order that date pattern 1 asks for.
const DateLayouts& date_layouts(std::u16string_view date_pattern_1) noexcept;

/// Offers each candidate in turn to `settles` until it returns true; whether one did. Layouts with
/// marks that the text does not hold are passed over: they could not have settled it.
template <typename Unit, typename Settles>
bool any_date_candidate(const LocaleRecord& record, const Unit* text, std::size_t length,
                        Settles settles) noexcept {
  for (const TextEntry& pattern : record.date_patterns) {
    if (settles(text_of(pattern))) return true;
  }
  const DateMarks held = date_marks_of(text, length);
  for (const DateCandidate& layout : date_layouts(text_of(record.date_patterns[0]))) {
    if ((layout.marks & ~held) == 0 && settles(layout.pattern)) return true;
  }
  return false;
}

}  // namespace jwnls

#endif  // JWNLS_MODULE_DTPARSE_DATE_CANDIDATES_H_
