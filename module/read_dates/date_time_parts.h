// What walking a pattern over a text finds out.

#ifndef JWNLS_MODULE_READ_DATES_DATE_TIME_PARTS_H_
#define JWNLS_MODULE_READ_DATES_DATE_TIME_PARTS_H_

#include <cstdint>

#include "abi/host_tables.h"

namespace jwnls {

inline constexpr std::int32_t no_zone_offset = 72123;

enum : std::int32_t { no_designator, before_noon_designator, after_noon_designator };

struct DateTimeParts {
  std::int32_t year;         // 1582 to 20000; 0 when none was read
  std::int32_t month;        // 1 to 12
  std::int32_t day;          // 1 to 31
  std::int32_t hour;         // 0 to 23
  std::int32_t minute;       // 0 to 59
  std::int32_t second;       // 0 to 59
  std::int32_t millisecond;  // 0 to 999
  // East of the meridian: seconds in the strict dialect, minutes in the lenient one (deliberate:
  // whoever reads it knows the dialect).
  std::int32_t zone_offset;
  std::int32_t designator;
  std::int32_t quarter;   // 1 to 4
  std::int32_t week;      // 0 to 53, and 100 for %U, 200 for %V, 300 for %W
  std::int32_t not_kept;  // of a weekday, which is read and dropped
  Zone* zone;             // owned by the handle's zone track
};

/// What a walk begins with.
inline constexpr DateTimeParts nothing_read = {
    0, 0, 0, 0, 0, 0, 0, no_zone_offset, no_designator, 0, 0, 0, nullptr};

}  // namespace jwnls

#endif  // JWNLS_MODULE_READ_DATES_DATE_TIME_PARTS_H_
