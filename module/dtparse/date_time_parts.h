// What walking a pattern over a text finds out.

#ifndef JWNLS_MODULE_DTPARSE_DATE_TIME_PARTS_H_
#define JWNLS_MODULE_DTPARSE_DATE_TIME_PARTS_H_

#include <cstdint>

#include "module/frame/host_tables.h"

namespace jwnls {

inline constexpr std::int32_t no_zone_offset = 72123;

enum : std::int32_t { no_designator, before_noon_designator, after_noon_designator };

struct DateTimeParts {
  std::int32_t year = 0;         // 1582 to 20000; 0 when none was read
  std::int32_t month = 0;        // 1 to 12
  std::int32_t day = 0;          // 1 to 31
  std::int32_t hour = 0;         // 0 to 23
  std::int32_t minute = 0;       // 0 to 59
  std::int32_t second = 0;       // 0 to 59
  std::int32_t millisecond = 0;  // 0 to 999
  // East of the meridian: seconds in the strict dialect, minutes in the lenient one (deliberate:
  // whoever reads it knows the dialect).
  std::int32_t zone_offset = no_zone_offset;
  std::int32_t designator = no_designator;
  std::int32_t quarter = 0;  // 1 to 4
  std::int32_t week = 0;     // 0 to 53, and 100 for %U, 200 for %V, 300 for %W
  Zone* zone = nullptr;      // owned by the handle's zone track
};

}  // namespace jwnls

#endif  // JWNLS_MODULE_DTPARSE_DATE_TIME_PARTS_H_
