// Time zones in a text: names and numeric offsets.
//
//   name    = blanks { unit } ( " " | end )
//   offset  = blanks [ "+" | "-" ] hours blanks [ ":" ] minutes         [+-]hh[[:]mm]
//   hours   = a fixed-width number of 2, up to 12
//   minutes = lenient: a fixed-width number of 2, up to 59
//             strict:  end | [ " " ] digit [ digit ], 2 units at most, up to 59
//
// Fixed-width numbers may be cut short by the end of the text, as number_fields.h has it.

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
