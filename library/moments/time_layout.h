// How a locale writes times of day, found out once, so that most times are read, and most texts
// that are none refused, without asking the service.

#ifndef JWNLS_LIBRARY_MOMENTS_TIME_LAYOUT_H_
#define JWNLS_LIBRARY_MOMENTS_TIME_LAYOUT_H_

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "library/moments/time_shape.h"
#include "library/process/process.h"

namespace jwnls::library {

/// A time at the end of a text.
struct QuickTime {
  enum class Look : std::uint8_t { none, read, no_such_time };
  Look look;
  std::size_t begin;     // in the text
  std::int32_t seconds;  // since midnight
};

/// A part of the day in front of an hour from 1 to 12, and the hours that it has.
struct DayPart {
  std::string_view name;
  std::int32_t first, last;  // of 24
};

struct TimeLayout {
  const Locale* locale;

  // The form "2:30:05 PM", or "오후 2:30:05", or "14.30.05": checked against what the service makes
  // of it, and false where that differs.
  bool is_quick = false;
  char separator = ':';
  bool has_halves = false;
  bool half_first = false;
  std::string gap;        // between the clock and the half
  std::string halves[2];  // before noon, after noon
  std::string behind;     // it all, as in Bulgarian; may be missing
  std::span<const DayPart> day_parts;

  // Two and three numbers are hours, minutes and seconds, in this order.
  bool is_clock = false;
  TimeShape shape;

  /// The time at the end of a trimmed text: "14:30" and "14:30:05", which every locale has, or the
  /// locale's form, of which seconds may be missing. What stands before it is not looked at.
  [[nodiscard]] QuickTime at_end(std::string_view text) const noexcept;
};

/// Of a locale; it stays as long as the process. Throws bad_alloc. Any thread.
const TimeLayout& time_layout_of(const Locale& locale);

}  // namespace jwnls::library

#endif  // JWNLS_LIBRARY_MOMENTS_TIME_LAYOUT_H_
