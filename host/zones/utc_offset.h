// Time zones that are a fixed offset from UTC, by names such as "UTC+05:30".

#ifndef JWNLS_HOST_ZONES_UTC_OFFSET_H_
#define JWNLS_HOST_ZONES_UTC_OFFSET_H_

#include <optional>
#include <string_view>

namespace jwnls::host {

/// The offset in seconds, east of Greenwich above 0; nothing for any other text.
///
///   name    = "UTC" ("+" | "-") (hour [":" minute] | hh minute)     "UTC" in any letter case
///   hour    1 or 2 digits, 0 to 23      hh  the same in 2 digits
///   minute  2 digits, 00 to 59
[[nodiscard]] std::optional<int> parse_utc_offset(std::u16string_view name) noexcept;

}  // namespace jwnls::host

#endif  // JWNLS_HOST_ZONES_UTC_OFFSET_H_
