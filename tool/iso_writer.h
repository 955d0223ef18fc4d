// Writes dates, times of day and datetimes as ISO 8601 does, without allocating: two digits at a
// time.

#ifndef JWNLS_TOOL_ISO_WRITER_H_
#define JWNLS_TOOL_ISO_WRITER_H_

#include <cstddef>
#include <cstdint>

namespace jwnls::tool {

/// The bytes that each of these takes at most.
constexpr std::size_t iso_room = 48;

/// "2024-03-15", from the days since 1970-01-01; years of other than four digits as std::chrono has
/// them. Gives the end of the text.
[[nodiscard]] char* write_iso_date(char* out, std::int32_t days) noexcept;

/// "14:30:05", from microseconds since midnight; a fraction only where there is one: "14:30:05.25".
[[nodiscard]] char* write_iso_time(char* out, std::int64_t microseconds) noexcept;

/// "2024-03-15T14:30:05", from microseconds since 1970-01-01T00:00:00.
[[nodiscard]] char* write_iso_datetime(char* out, std::int64_t microseconds) noexcept;

}  // namespace jwnls::tool

#endif  // JWNLS_TOOL_ISO_WRITER_H_
