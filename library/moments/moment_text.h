// Reads times of day, datetimes, instants and periods.

#ifndef JWNLS_LIBRARY_MOMENTS_MOMENT_TEXT_H_
#define JWNLS_LIBRARY_MOMENTS_MOMENT_TEXT_H_

#include <cstdint>
#include <optional>
#include <string_view>

#include "library/dates/date_grammar.h"
#include "library/layouts/layout.h"
#include "library/moments/time_layout.h"
#include "library/process/process.h"

namespace jwnls::library {

// All texts here are trimmed and have at most 1,024 bytes.

/// Microseconds since midnight of a time of day, read by the service; a fraction of its seconds is
/// read to microseconds, what lies beyond is dropped. Nothing where it is no time.
[[nodiscard]] std::optional<std::int64_t> read_time_text(const TimeLayout& layout,
                                                         std::string_view text) noexcept;

/// What was read, or why not; `date.refusal` and `date.place` tell.
struct MomentRead {
  DateRead date;
  std::int64_t microseconds = 0;  // from 1970, on the wall or in UTC as the layout's kind has it
};
/// With a place the refusal of a text is the one that goes farthest; without, the first.
[[nodiscard]] MomentRead read_moment_text(const jwnls_layout& layout, std::string_view text,
                                          bool with_place = false) noexcept;

/// By the services alone: pattern=, loose, and periods. The value counts as the layout's kind does:
/// days, or microseconds, from 1970.
[[nodiscard]] std::optional<std::int64_t> read_loosely(const jwnls_layout& layout,
                                                       std::string_view text) noexcept;

}  // namespace jwnls::library

#endif  // JWNLS_LIBRARY_MOMENTS_MOMENT_TEXT_H_
