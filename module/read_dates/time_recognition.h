// Reading a time of day: by the record's time patterns, by shorter ones derived from them, and by
// two that every locale knows.
//
//   time = pattern 2 | pattern 1 | "%H:%M:%S" | "%H:%M:%SZ"
//        | pattern 2 up to its minutes or seconds, with or without its designator
//        | pattern 1 up to its minutes or seconds                        the first that reads it
//
// "Time pattern 1" is the record's datetime pattern, "time pattern 2" its style-0 pattern.

#ifndef JWNLS_MODULE_READ_DATES_TIME_RECOGNITION_H_
#define JWNLS_MODULE_READ_DATES_TIME_RECOGNITION_H_

#include <cstdint>
#include <string_view>

#include "abi/locale_handle.h"
#include "module/read_dates/date_time_parts.h"
#include "module/read_dates/pattern_walker.h"
#include "module/text/text_cursor.h"

namespace jwnls {

enum class TimeCandidates : std::uint8_t {
  of_both_patterns,  // time patterns 2 and 1, the common ones, those derived from either
  of_time_alone,     // without time pattern 1 and what derives from it
};

/// Reads the whole text as a time of day in the lenient dialect, by the first candidate that does.
/// A designator that contradicts the hour fails at once. On success `parts` holds the time.
template <typename Unit>
[[nodiscard]] bool recognize_time(LocaleHandle*, TextCursor<Unit> text, TimeCandidates,
                                  DateTimeParts& parts) noexcept;

/// Moves a 12-hour clock's hour by the designator that was read, if one was: before noon 12 is 0,
/// after noon all but 12 gain 12. False when they contradict each other: an hour above 12, or 0
/// after noon.
[[nodiscard]] bool apply_designator(DateTimeParts&) noexcept;

/// Seconds since midnight, the milliseconds as their fraction.
inline double time_value(const DateTimeParts& parts) noexcept {
  const std::int32_t seconds = (parts.hour * 60 + parts.minute) * 60 + parts.second;
  return parts.millisecond == 0 ? seconds : seconds + parts.millisecond / 1000.0;
}

}  // namespace jwnls

#endif  // JWNLS_MODULE_READ_DATES_TIME_RECOGNITION_H_
