// Calls of the services that read dates and times, and of those that write them, in either
// encoding. The 8-bit services encode each half of a character beyond U+FFFF by itself, so locales
// that have such characters go by UTF-16.

#ifndef JWNLS_LIBRARY_DATES_SERVICE_CALL_H_
#define JWNLS_LIBRARY_DATES_SERVICE_CALL_H_

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

#include "abi/locale_handle.h"
#include "abi/status.h"
#include "include/jwnls/jwnls.h"
#include "library/process/process.h"
#include "library/texts/give_text.h"
#include "library/texts/utf8.h"

namespace jwnls::library {

// The mode words of the reading services.
inline constexpr std::uint32_t lenient_mode = 0x4;
inline constexpr std::uint32_t datetime_mode = 0x200;

/// The value of a UTF-8 text of at most 1,024 bytes that a reading service reads whole.
inline std::optional<double> read_by_service(const Locale& locale, ReadDate<char>* narrow,
                                             ReadDate<char16_t>* wide, std::uint32_t mode,
                                             std::string_view text) noexcept {
  double value = 0;
  std::uint64_t consumed = 0;
  std::uint64_t length = text.size();
  std::uint32_t status = 0;
  if (!locale.beyond_bmp) {
    status = narrow(locale.handle, text.data(), static_cast<std::int64_t>(length), mode, &value,
                    &consumed);
  } else {
    char16_t units[1024];
    const auto size = to_utf16(text, units, std::size(units));
    if (!size) return std::nullopt;
    length = *size;
    status = wide(locale.handle, units, static_cast<std::int64_t>(length), mode, &value, &consumed);
  }
  // A single pattern may leave text behind its end.
  if (Status{status} != Status::ok || consumed < length) return std::nullopt;
  return value;
}

/// Room for everything that a date or time service can write: 60 units of a pattern, each two of
/// them a name of 60 at most.
inline constexpr std::size_t most_units = 1800;

/// What deliver() does where the caller's room is none or too little: it tells the length.
template <typename Unit, typename Call>
[[gnu::noinline, gnu::cold]] int measure(Call call, Unit* out, std::size_t room,
                                         std::size_t* length) noexcept {
  Unit units[sizeof(Unit) == 1 ? 3 * most_units : most_units];
  std::int64_t written = 0;
  const Status status{call(units, static_cast<std::int64_t>(std::size(units)), &written)};
  if (status != Status::ok) return JWNLS_RANGE;
  return give_text(std::basic_string_view<Unit>(units, static_cast<std::size_t>(written)), out,
                   room, length);
}

/// Writes by a service: call(out, capacity, &length) gives its status.
template <typename Unit, typename Call>
[[gnu::always_inline]] inline int deliver(const Call& call, Unit* out, std::size_t room,
                                          std::size_t* length) noexcept {
  std::int64_t written = 0;
  constexpr std::size_t most_room = 1U << 30U;
  if (room > 0) [[likely]] {
    const Status status{call(out, static_cast<std::int64_t>(std::min(room, most_room)), &written)};
    if (status == Status::ok) [[likely]] {
      *length = static_cast<std::size_t>(written);
      return JWNLS_OK;
    }
    if (status != Status::does_not_fit) return JWNLS_RANGE;
  }
  return measure<Unit>(call, out, room, length);
}

/// By way of UTF-16, for texts that the 8-bit services do not write.
template <typename Call>
[[gnu::noinline]] int deliver_converted(Call call, char* out, std::size_t room,
                                        std::size_t* length) noexcept {
  char16_t units[most_units];
  std::int64_t written = 0;
  const Status status{call(units, static_cast<std::int64_t>(std::size(units)), &written)};
  if (status != Status::ok) return JWNLS_RANGE;
  *length = to_utf8({units, static_cast<std::size_t>(written)}, out, room);
  return *length <= room ? JWNLS_OK : JWNLS_ROOM;
}

}  // namespace jwnls::library

#endif  // JWNLS_LIBRARY_DATES_SERVICE_CALL_H_
