// Where the digits of a short text stand, as bits, and so its numbers, without a look at every
// byte of it.

#ifndef JWNLS_LIBRARY_DATES_TEXT_OUTLINE_H_
#define JWNLS_LIBRARY_DATES_TEXT_OUTLINE_H_

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

#include "library/dates/date_parts.h"
#include "library/locale_data/date_characters.h"

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace jwnls::library {

inline constexpr std::size_t longest_outlined = 64;  // bytes

/// A bit for each byte of a text of at most longest_outlined bytes: whether it is a digit.
[[nodiscard]] inline std::uint64_t digits_of(std::string_view text) noexcept {
#if defined(__SSE2__)
  const auto digits_in = [](__m128i bytes) {
    const __m128i values = _mm_sub_epi8(bytes, _mm_set1_epi8('0'));
    const __m128i digits = _mm_cmpeq_epi8(_mm_min_epu8(values, _mm_set1_epi8(9)), values);
    return std::uint64_t{static_cast<unsigned>(_mm_movemask_epi8(digits))};
  };
  const char* const begin = text.data();
  const std::size_t size = text.size();
  if (size >= 16) {
    const auto block = [begin](std::size_t at) {
      return _mm_loadu_si128(reinterpret_cast<const __m128i*>(begin + at));
    };
    // The last block may overlap the one before: a bit that is set twice is set.
    const std::size_t last = size - 16;
    std::uint64_t digits = digits_in(block(last)) << last;
    for (std::size_t at = 0; at < last; at += 16) digits |= digits_in(block(at)) << at;
    return digits;
  }
  std::uint64_t front = 0;
  if (size < 8) {
    for (std::size_t i = size; i-- > 0;) front = front << 8 | static_cast<unsigned char>(begin[i]);
    return digits_in(_mm_cvtsi64_si128(static_cast<long long>(front)));
  }
  std::uint64_t back = 0;
  std::memcpy(&front, begin, 8);
  std::memcpy(&back, begin + size - 8, 8);
  const std::uint64_t digits =
      digits_in(_mm_set_epi64x(static_cast<long long>(back), static_cast<long long>(front)));
  return (digits & 0xFF) | digits >> 8 << (size - 8);
#else
  std::uint64_t digits = 0;
  for (std::size_t at = 0; at < text.size(); ++at) {
    digits |= std::uint64_t{is_digit(text[at])} << at;
  }
  return digits;
#endif
}

/// In how many runs digits stand.
[[nodiscard]] constexpr std::size_t number_count(std::uint64_t digits) noexcept {
  std::size_t count = 0;
  for (std::uint64_t begins = digits & ~(digits << 1); begins != 0; begins &= begins - 1) ++count;
  return count;
}

/// Whether digits stand in three runs, as in a date of numbers.
[[nodiscard]] constexpr bool has_three_runs(std::uint64_t digits) noexcept {
  const std::uint64_t begins = digits & ~(digits << 1);
  const std::uint64_t later = begins & (begins - 1);
  const std::uint64_t last = later & (later - 1);
  return last != 0 && (last & (last - 1)) == 0;
}

/// The numbers of a text of at most longest_outlined bytes, of which the digits are known.
[[nodiscard]] inline Numbers numbers_of(std::string_view text, std::uint64_t digits) noexcept {
  Numbers numbers;
  for (std::uint64_t begins = digits & ~(digits << 1); begins != 0; begins &= begins - 1) {
    if (numbers.count == 3) {
      numbers.count = 4;
      break;
    }
    const auto begin = static_cast<std::size_t>(std::countr_zero(begins));
    // Behind 64 digits there is none that ends them.
    const std::uint64_t ends = ~(digits >> begin);
    const std::size_t size = ends == 0 ? 64 : static_cast<std::size_t>(std::countr_zero(ends));
    numbers.add(text, begin, begin + size);
  }
  return numbers;
}

/// The numbers of a text, quickly where it is short.
[[nodiscard]] inline Numbers numbers_of(std::string_view text) noexcept {
  return text.size() > longest_outlined ? Numbers(text) : numbers_of(text, digits_of(text));
}

}  // namespace jwnls::library

#endif  // JWNLS_LIBRARY_DATES_TEXT_OUTLINE_H_
