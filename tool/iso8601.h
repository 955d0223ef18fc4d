// Reads and writes dates, times of day and datetimes as ISO 8601 writes them.
//
//   value     = date | time [offset] | date ("T" | "t" | " ") clock [offset]
//   date      = (YYYY | YYYYY) "-" MM "-" DD | YYYYMMDD
//   time      = hh ":" mm [":" ss [fraction]] | ("T" | "t") clock
//   clock     = hh ":" mm [":" ss [fraction]] | hh mm [ss [fraction]]
//   fraction  = ("." | ",") digit {digit}
//   offset    = [" "] ("Z" | "z" | ("+" | "-") hh [[":"] mm])
//
//   2024-03-15   20240315   12024-03-15   14:30   T143005   14:30:05.25
//   2024-03-15T14:30:05Z   2024-03-15 14:30 +01:00   20240315t1430-0330

#ifndef JWNLS_TOOL_ISO8601_H_
#define JWNLS_TOOL_ISO8601_H_

#include <chrono>
#include <optional>
#include <string>
#include <string_view>

#include "jwnls/jwnls.hpp"

namespace jwnls::tool {

struct IsoValue {
  std::optional<std::chrono::year_month_day> date;
  std::optional<std::chrono::seconds> time;  // since midnight, fractions dropped
  std::optional<std::chrono::minutes>
      offset;  // from UTC; absent: a wall clock, of no zone in particular
};

/// Reads the whole text: a date, a time or both. The error is the reason for a person, without the
/// text itself: "month 13 is not 01 to 12".
[[nodiscard]] Result<IsoValue> read_iso8601(std::string_view text);

/// "14:30:05", "2024-03-15T14:30:05"; a fraction of a second only where there is one.
[[nodiscard]] std::string iso_text(Microseconds since_midnight);
[[nodiscard]] std::string iso_text(std::chrono::local_time<Microseconds> time);

}  // namespace jwnls::tool

#endif  // JWNLS_TOOL_ISO8601_H_
