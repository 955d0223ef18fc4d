// The directives of input patterns, as data: what each letter reads in each dialect.

#ifndef JWNLS_MODULE_READ_DATES_INPUT_DIRECTIVES_H_
#define JWNLS_MODULE_READ_DATES_INPUT_DIRECTIVES_H_

#include <array>
#include <cstddef>
#include <cstdint>

#include "module/calendar/civil.h"
#include "module/read_dates/date_time_parts.h"
#include "module/read_dates/names.h"
#include "module/read_dates/number_fields.h"

namespace jwnls {

enum class Reader : std::uint8_t {
  none,               // the letter is unknown
  fixed,              // a fixed-width number
  free,               // a free-width number
  one_or_two_digits,  // a free-width number of two digits at most
  padded,             // of the strict dialect: a fixed-width number, with '#' a free-width one
  hour,               // padded or, in the lenient dialect, one or two digits; a whole time of day
                      // where pattern and text have one
  year,               // four digits or, failing that in the lenient dialect, two
  name,               // an entry of the first list or, failing that, of the second
  zone_name,          //
  zone_offset,        //
};

inline constexpr NumberField year_field = {4, first_year, last_year};

using PartsField = std::int32_t DateTimeParts::*;

/// What a number or name becomes once it stands in its field; false when it cannot stand.
using Adjustment = bool(DateTimeParts&);

struct alignas(64) InputDirective {
  Reader reader = Reader::none;
  NumberField number = {};
  NumberField sharp_number = {};  // with '#'
  PartsField field = nullptr;     // of a number or name
  Adjustment* adjust = nullptr;   // null: nothing
  NameList lists[2] = {};         // of a name; its place in the list, from 1, is what is kept
};

inline constexpr char16_t first_directive_letter = u'A';
inline constexpr std::size_t directive_letters = 64;  // up to the end of ASCII

/// The place of a letter's row in the tables.
constexpr std::size_t directive_index(char16_t letter) noexcept {
  return std::size_t{letter} - first_directive_letter;
}
/// Whether the tables have a row for it; rows of unknown letters say so.
constexpr bool is_directive_letter(char16_t letter) noexcept {
  return directive_index(letter) < directive_letters;
}

/// By letter, from 'A'.
using DirectiveTable = std::array<InputDirective, directive_letters>;

extern const DirectiveTable strict_directives;
extern const DirectiveTable lenient_directives;

}  // namespace jwnls

#endif  // JWNLS_MODULE_READ_DATES_INPUT_DIRECTIVES_H_
