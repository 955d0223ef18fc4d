// Time zones in a text: names and numeric offsets.
//
//   name    = blanks { unit but blank } ( blank | end )
//   offset  = blanks [ "+" | "-" ] hours blanks [ ":" ] minutes
//   hours   = 2 units: digits with blanks before them, up to 12
//   minutes = 2 units likewise, up to 59; fewer or none at the end of the text count as they are
//             and, in the strict dialect, one digit before anything else
#ifndef JWNLS_MODULE_READ_DATES_ZONE_FIELDS_H_
#define JWNLS_MODULE_READ_DATES_ZONE_FIELDS_H_

#include "abi/locale_handle.h"
#include "module/read_dates/date_time_parts.h"
#include "module/read_dates/dialect.h"
#include "module/text/text_cursor.h"

namespace jwnls {

/// Reads a zone's name up to and including the next blank, or to the end, and looks it up. False,
/// with nothing read and the zone null, when there is no such zone.
template <typename Unit>
bool read_zone_name(LocaleHandle*, TextCursor<Unit>& input, DateTimeParts&) noexcept;

/// Reads a numeric offset, "-05:30", "+0530" or "05", in the units of the dialect.
template <typename Unit>
bool read_zone_offset(TextCursor<Unit>& input, Dialect, DateTimeParts&) noexcept;

}  // namespace jwnls

#endif  // JWNLS_MODULE_READ_DATES_ZONE_FIELDS_H_
