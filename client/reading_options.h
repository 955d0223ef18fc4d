// How a text is to be read, one record for each family.

#ifndef JWNLS_CLIENT_READING_OPTIONS_H_
#define JWNLS_CLIENT_READING_OPTIONS_H_

#include "client/result.h"

namespace jwnls::client {

/// Of dates and datetimes.
struct DateReading {
  /// Marks and blanks as the pattern has them, and all digits of a field; the case of names alone
  /// does not matter. Otherwise blanks may be left out, fields may be shorter, years may have two
  /// digits (60 to 99 are 1960 to 1999, 0 to 59 are 2000 to 2059), digits may be those of any
  /// script up to U+FFFF, and no-break and other blanks count as plain ones.
  bool strict = false;

  /// 0 tries the locale's three date patterns, then seventeen common layouts (15/03/2024,
  /// 2024-03-15, Mar 15 2024, ...; day or month first as in the locale); 1 to 3 is that date
  /// pattern alone.
  int pattern = 0;
};

/// Of times of day.
struct TimeReading {
  /// As above, by the pattern of times alone, if no other is chosen. Where the locale writes AM or
  /// PM before the hour, as Korean does, times and datetimes are not read strictly (not_possible).
  bool strict = false;

  /// 0 tries the pattern of times alone, that of datetimes, and what is left of them without
  /// seconds or designator; 1 is the pattern of datetimes, whose time is taken, always read
  /// strictly; 2 that of times alone.
  int pattern = 0;
};

/// Of numbers: grouping symbols may stand anywhere in front of the decimal symbol but at the end.
/// Digits may be those of any script up to U+FFFF, and what people type for a symbol counts as it:
/// "'" for the apostrophe of Swiss groups, any fixed-width blank for the no-break one, U+2212 for
/// "-".
struct NumberReading {
  bool blank_groups = false;  // a plain blank between digits groups them, too, where a no-break one
                              // does; without it a blank ends the number
};

/// Of integers: likewise.
struct IntegerReading {
  bool hexadecimal = false;   // "FF" or "0xFF", without groups; unsigned types only
  bool fraction = false;      // decimals may follow; they are dropped
  bool blank_groups = false;  // as above
};

/// What is wrong with it, as reading with it would say: "pattern 4: not 0 to 3" (not_possible).
[[nodiscard]] Result<void> check(const DateReading& reading);
[[nodiscard]] Result<void> check(const TimeReading& reading);

}  // namespace jwnls::client

#endif  // JWNLS_CLIENT_READING_OPTIONS_H_
