// Zones that a rule describes, as POSIX has them in TZ: no file, no database.
//
//   rule   = name offset [ name [offset] "," day ["/" time] "," day ["/" time] ]
//   name   = 3 or more letters | "<" 3 or more of letter, digit, "+", "-" ">"
//   offset = time              west of Greenwich above 0; of the summer's: an hour less
//   time   = ["+" | "-"] hours [":" minutes [":" seconds]]       hours 0 to 167, of offsets to 24
//   day    = "M" month "." week "." weekday      week 5 is the last of the month, weekday 0 Sunday
//          | "J" 1 to 365                        29 February is never counted
//          | 0 to 365                            it is counted
//
// The first day begins summer time, the second ends it, at a time of the clock, 02:00 by default.
// A summer time without days is refused: when it begins is nowhere said.

#ifndef JWNLS_LIBRARY_ZONES_POSIX_ZONE_H_
#define JWNLS_LIBRARY_ZONES_POSIX_ZONE_H_

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "library/zones/zone.h"

namespace jwnls::library {

/// The zone of a rule; null for what is no rule, and for one of more than 51 bytes. Its name is the
/// rule's text, but "UTC+5", which is another zone's name, becomes "<UTC>+5". Throws bad_alloc.
[[nodiscard]] std::shared_ptr<const Zone> posix_zone(std::string_view rule);

/// A zone whose clocks never change. Throws bad_alloc.
[[nodiscard]] std::shared_ptr<const Zone> fixed_zone(std::string name, std::string abbreviation,
                                                     std::int32_t offset);

}  // namespace jwnls::library

#endif  // JWNLS_LIBRARY_ZONES_POSIX_ZONE_H_
