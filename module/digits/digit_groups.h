// Eighteen digits at once in groups of three with a separator behind each, in a register and from
// there into the caller's buffer, without a branch on their number.

#ifndef JWNLS_MODULE_DIGITS_DIGIT_GROUPS_H_
#define JWNLS_MODULE_DIGITS_DIGIT_GROUPS_H_

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#if defined(__SSE2__)
#include <emmintrin.h>
#endif

#include "module/digits/digit_block.h"
#include "module/digits/powers_of_ten.h"

namespace jwnls {

inline constexpr int most_groups = 6;

namespace digit_groups {

// What makes characters of the digits: the units of six groups, each with the place of its
// separator behind.
template <typename Unit>
struct alignas(16) Row {
  Unit zeros[32];       // "0" where a digit is shown
  Unit separators[32];  // all bits in the places of the separators between groups
};

// By the number of digits that are shown behind the last group, and of groups.
template <typename Unit>
inline constexpr auto rows = [] {
  std::array<std::array<Row<Unit>, most_groups + 1>, 4> made{};
  for (std::size_t behind = 0; behind < made.size(); ++behind) {
    for (std::size_t groups = 1; groups <= most_groups; ++groups) {
      Row<Unit>& row = made[behind][groups];
      const std::size_t shown = std::min<std::size_t>(3 * groups + behind, 3 * most_groups);
      for (std::size_t i = 0; i < shown; ++i) row.zeros[i / 3 * 4 + i % 3] = Unit{'0'};
      for (std::size_t i = 1; i < groups; ++i) row.separators[4 * i - 1] = static_cast<Unit>(~0);
    }
  }
  return made;
}();

#if defined(__SSE2__)

// The six groups of a number as numbers below 1000: the first, second and third of its upper and of
// its lower half.
struct Thousands {
  __m128i first, second, third;
};

inline Thousands thousands_of(std::uint64_t number) noexcept {
  const __m128i upper = _mm_cvtsi64_si128(static_cast<std::int64_t>(over_ten_to_9(number)));
  const __m128i lower = _mm_sub_epi64(_mm_cvtsi64_si128(static_cast<std::int64_t>(number)),
                                      _mm_mul_epu32(upper, _mm_set1_epi64x(1'000'000'000)));
  const __m128i halves = _mm_unpacklo_epi64(upper, lower);
  // 2199023256/2^41 and 2251799814/2^51 are the reciprocals of 10^3 and 10^6 for numbers below
  // 10^9.
  const __m128i front = _mm_srli_epi64(_mm_mul_epu32(halves, _mm_set1_epi64x(2199023256)), 41);
  const __m128i first = _mm_srli_epi64(_mm_mul_epu32(halves, _mm_set1_epi64x(2251799814)), 51);
  const __m128i thousand = _mm_set1_epi64x(1000);
  return {first, _mm_sub_epi64(front, _mm_mul_epu32(first, thousand)),
          _mm_sub_epi64(halves, _mm_mul_epu32(front, thousand))};
}

// 656/2^16 and 6554/2^16 are the reciprocals of 100 and 10 for numbers below 1000.

// The digits of the numbers in two words of 64 bits, each digit in 16 bits.
inline __m128i digits_in_words(__m128i numbers) noexcept {
  const __m128i twice = _mm_or_si128(numbers, _mm_slli_epi64(numbers, 16));
  const __m128i leading = _mm_mulhi_epu16(twice, _mm_setr_epi16(656, 6554, 0, 0, 656, 6554, 0, 0));
  // The first digit, the first two, all three; less ten times what stands before each.
  const __m128i all = _mm_or_si128(leading, _mm_slli_epi64(numbers, 32));
  const __m128i tens = digit_block::factor(_mm_setr_epi16(0, 10, 10, 0, 0, 10, 10, 0));
  return _mm_sub_epi16(all, _mm_mullo_epi16(_mm_slli_epi64(all, 16), tens));
}

// The digits of the numbers in four words of 32 bits, each digit in a byte.
inline __m128i digits_in_bytes(__m128i numbers) noexcept {
  const __m128i upper = _mm_slli_epi32(numbers, 16);
  // The first digit and the first two, in 16 bits each.
  const __m128i leading =
      _mm_mulhi_epu16(_mm_or_si128(numbers, upper), _mm_set1_epi32(6554 << 16 | 656));
  // first + 256 * (first two - 10 * first), and 2^16 * (all - 10 * first two).
  const __m128i pair = _mm_madd_epi16(leading, _mm_set1_epi32(256 << 16 | (-2559 & 0xFFFF)));
  const __m128i tens = _mm_mullo_epi16(leading, digit_block::factor(_mm_set1_epi32(10 << 16)));
  return _mm_add_epi16(pair, _mm_sub_epi16(upper, tens));
}

inline __m128i row_part(const void* units) noexcept {
  return _mm_load_si128(static_cast<const __m128i*>(units));
}

// The digits of a row's part from unit `from` on, as characters with their separators.
template <typename Unit>
inline __m128i finished(__m128i digits, const Row<Unit>& row, int from,
                        __m128i separators) noexcept {
  return _mm_or_si128(_mm_add_epi8(digits, row_part(row.zeros + from)),
                      _mm_and_si128(separators, row_part(row.separators + from)));
}

inline void store(std::uint64_t number, const Row<char16_t>& row, std::size_t padding,
                  char16_t separator, char16_t* out) noexcept {
  const Thousands groups = thousands_of(number);
  const __m128i symbols = _mm_set1_epi64x(std::int64_t{separator} << 48);
  const __m128i first =
      finished(digits_in_words(_mm_unpacklo_epi64(groups.first, groups.second)), row, 0, symbols);
  const __m128i middle = _mm_castpd_si128(
      _mm_shuffle_pd(_mm_castsi128_pd(groups.third), _mm_castsi128_pd(groups.first), 2));
  const __m128i second = finished(digits_in_words(middle), row, 8, symbols);
  const __m128i third =
      finished(digits_in_words(_mm_unpackhi_epi64(groups.second, groups.third)), row, 16, symbols);
  const auto front = static_cast<std::uint64_t>(_mm_cvtsi128_si64(first)) >> 16 * padding;
  std::memcpy(out, &front, sizeof front);
  const double behind = _mm_cvtsd_f64(_mm_castsi128_pd(_mm_unpackhi_epi64(first, first)));
  out -= padding;
  std::memcpy(out + 4, &behind, sizeof behind);
  _mm_storeu_si128(reinterpret_cast<__m128i*>(out + 8), second);
  _mm_storeu_si128(reinterpret_cast<__m128i*>(out + 16), third);
}

inline void store(std::uint64_t number, const Row<char>& row, std::size_t padding, char separator,
                  char* out) noexcept {
  const Thousands groups = thousands_of(number);
  const __m128i symbols = _mm_set1_epi32(static_cast<unsigned char>(separator) << 24);
  const __m128i pairs = _mm_or_si128(groups.first, _mm_slli_epi64(groups.second, 32));
  const __m128i middle = _mm_castpd_si128(
      _mm_shuffle_pd(_mm_castsi128_pd(groups.third), _mm_castsi128_pd(groups.first), 2));
  const __m128i four =
      _mm_unpacklo_epi64(pairs, _mm_shuffle_epi32(middle, _MM_SHUFFLE(3, 1, 2, 0)));
  const __m128i two =
      _mm_srli_si128(_mm_or_si128(groups.second, _mm_slli_epi64(groups.third, 32)), 8);
  const __m128i first = finished(digits_in_bytes(four), row, 0, symbols);
  const __m128i second = finished(digits_in_bytes(two), row, 16, symbols);
  const auto front = static_cast<std::uint32_t>(_mm_cvtsi128_si32(first)) >> 8 * padding;
  std::memcpy(out, &front, sizeof front);
  out -= padding;
  _mm_storeu_si128(reinterpret_cast<__m128i*>(out + 4), _mm_srli_si128(first, 4));
  _mm_storel_epi64(reinterpret_cast<__m128i*>(out + 16), second);
}

#else

template <typename Unit>
inline void store(std::uint64_t number, const Row<Unit>& row, std::size_t padding, Unit separator,
                  Unit* out) noexcept {
  Unit units[4 * most_groups];
  for (int i = 4 * most_groups - 1; i >= 0; --i) {
    const bool digit = i % 4 != 3;
    const auto shown = digit ? number % 10 : static_cast<Unit>(row.separators[i] & separator);
    units[i] = static_cast<Unit>(static_cast<Unit>(row.zeros[i]) + shown);
    if (digit) number /= 10;
  }
  std::memcpy(out, units + padding, (4 * most_groups - padding) * sizeof(Unit));
}

#endif

}  // namespace digit_groups

/// Writes 24 - padding units: of the eighteen digits of a number below 10^18 the first `groups` (1
/// to 6) groups of three, without the first `padding` digits (up to 2) and with a separator between
/// them; then a unit that is left to the caller and `behind` digits (up to 3); then zero units. The
/// number's other digits are zeros.
template <typename Unit>
[[gnu::always_inline]] inline void write_18_digits_in_groups(std::uint64_t number,
                                                             std::size_t groups,
                                                             std::size_t padding,
                                                             std::size_t behind, Unit separator,
                                                             Unit* out) noexcept {
  digit_groups::store(number, digit_groups::rows<Unit>[behind][groups], padding, separator, out);
}

}  // namespace jwnls

#endif  // JWNLS_MODULE_DIGITS_DIGIT_GROUPS_H_
