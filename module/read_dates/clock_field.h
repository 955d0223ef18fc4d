// A whole time of day as one word: by far the most common one.
//
//   clock = digit digit ":" digit digit ":" digit digit       "14:30:15", no digit behind it

#ifndef JWNLS_MODULE_READ_DATES_CLOCK_FIELD_H_
#define JWNLS_MODULE_READ_DATES_CLOCK_FIELD_H_

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>
#if defined(__SSE2__)
#include <emmintrin.h>
#endif

#include "module/read_dates/date_time_parts.h"
#include "module/text/text_cursor.h"

namespace jwnls {

/// What a pattern goes on with behind "%H" when it asks for such a time.
inline constexpr std::u16string_view clock_pattern_rest = u":%M:%S";

/// True when the pattern units from `at` on are clock_pattern_rest.
inline bool is_clock_pattern_rest(const char16_t* at, const char16_t* end) noexcept {
  constexpr std::size_t units = clock_pattern_rest.size();
  return end - at >= static_cast<std::ptrdiff_t>(units) &&
         std::memcmp(at, clock_pattern_rest.data(), units * sizeof(char16_t)) == 0;
}

namespace clock_field {

inline constexpr std::size_t units = 8;

// The eight units as bytes, the first one lowest; what is no byte becomes one that is no digit.
inline std::uint64_t bytes_of(const char* text) noexcept {
  std::uint64_t bytes = 0;
  std::memcpy(&bytes, text, sizeof bytes);
  return bytes;
}
inline std::uint64_t bytes_of([[maybe_unused]] const char16_t* text) noexcept {
#if defined(__SSE2__)
  const __m128i eight = _mm_loadu_si128(reinterpret_cast<const __m128i*>(text));
  return static_cast<std::uint64_t>(_mm_cvtsi128_si64(_mm_packus_epi16(eight, eight)));
#else
  return 0;
#endif
}

}  // namespace clock_field

/// Reads two digits, ':', two digits, ':' and two digits that no digit follows, all in range;
/// false, and nothing read, for anything else, which may be a time all the same.
template <typename Unit>
[[gnu::always_inline]] inline bool read_clock(TextCursor<Unit>& input,
                                              DateTimeParts& parts) noexcept {
  if constexpr (std::endian::native != std::endian::little) return false;
  if (input.remaining() < clock_field::units) return false;
  // Digits become their values and colons 0; any other unit exceeds the largest that its place
  // allows: "29:59:59".
  const std::uint64_t values = clock_field::bytes_of(input.position()) ^ 0x30303A30303A3030;
  constexpr std::uint64_t to_overflow = 0x767A7F767A7F767D;  // 127 less the largest, a byte each
  if ((((values + to_overflow) | values) & 0x8080808080808080) != 0) return false;
  const std::uint64_t pairs = values * 10 + (values >> 8);  // bytes 0, 3 and 6
  const auto hour = static_cast<std::int32_t>(pairs & 0xFF);
  TextCursor<Unit> ahead = input;
  ahead.step_over(clock_field::units);
  if (hour > 23 || (!ahead.at_end() && ahead.digit() <= 9)) return false;
  parts.hour = hour;
  parts.minute = static_cast<std::int32_t>(pairs >> 24 & 0xFF);
  parts.second = static_cast<std::int32_t>(pairs >> 48 & 0xFF);
  input = ahead;
  return true;
}

}  // namespace jwnls

#endif  // JWNLS_MODULE_READ_DATES_CLOCK_FIELD_H_
