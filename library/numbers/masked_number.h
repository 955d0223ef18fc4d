// Numbers of at most sixteen characters by masks of where each kind of character stands, and by
// their digits side by side, whatever they are written with.

#ifndef JWNLS_LIBRARY_NUMBERS_MASKED_NUMBER_H_
#define JWNLS_LIBRARY_NUMBERS_MASKED_NUMBER_H_

#include <cstddef>
#include <cstdint>
#include <cstring>

#include "include/jwnls/jwnls.h"
#include "library/numbers/quick_scan.h"

#if defined(__SSE2__)
#include <emmintrin.h>

#include <bit>
#endif

namespace jwnls::library {

[[nodiscard]] constexpr std::uint8_t facts_of(bool two_ways, bool marked) {
  const auto both =
      static_cast<unsigned>(marked && !two_ways) << 1 | static_cast<unsigned>(two_ways);
  static_assert(JWNLS_TWO_WAYS == 1 && JWNLS_DECIDES == 2);
  return static_cast<std::uint8_t>(both);
}

[[nodiscard]] inline std::uint64_t load_8(const char* bytes) {
  std::uint64_t word = 0;
  std::memcpy(&word, bytes, sizeof word);
  return word;
}

[[nodiscard]] inline std::uint64_t load_4(const char* bytes) {
  std::uint32_t word = 0;
  std::memcpy(&word, bytes, sizeof word);
  return word;
}

#if defined(__SSE2__)

namespace masked_number_details {

__extension__ using Wide = unsigned __int128;

// A text of 1 to 16 bytes, the first lowest, zeros above; nothing beside it is read.
[[nodiscard]] inline Wide load_text(const char* text, std::size_t length) {
  if (length >= 8) {
    const std::uint64_t last = load_8(text + length - 8);
    const std::uint64_t high = length == 8 ? 0 : last >> (8 * (16 - length) & 63);
    return Wide{high} << 64 | load_8(text);
  }
  if (length >= 4) return load_4(text) | load_4(text + length - 4) << (8 * (length - 4));
  const auto byte = [text](std::size_t i) {
    return std::uint64_t{static_cast<unsigned char>(text[i])} << (8 * i);
  };
  return byte(0) | byte(length / 2) | byte(length - 1);
}

[[nodiscard]] inline __m128i vector_of(Wide bytes) {
  return _mm_set_epi64x(static_cast<long long>(bytes >> 64), static_cast<long long>(bytes));
}

[[nodiscard]] inline Wide wide_of(__m128i vector) {
  const auto low = static_cast<std::uint64_t>(_mm_cvtsi128_si64(vector));
  const auto high = static_cast<std::uint64_t>(_mm_cvtsi128_si64(_mm_srli_si128(vector, 8)));
  return Wide{high} << 64 | low;
}

// Where the separators stand in front of an integer part's end: every fourth byte from there. The
// bits count from the first digit. A length that puts one in front of it has no groups.
struct GroupMasks {
  std::uint16_t of_length[17];
};

inline constexpr GroupMasks group_masks = [] {
  GroupMasks masks = {};
  for (unsigned length = 0; length <= 16; ++length) {
    std::uint16_t mask = 0;
    for (unsigned at = length; at >= 4; at -= 4) mask |= static_cast<std::uint16_t>(1U << (at - 4));
    masks.of_length[length] = length % 4 == 0 ? 0 : mask;
  }
  return masks;
}();

// What each of four digits counts: with the place of a separator in front, and without.
alignas(16) inline constexpr std::int16_t digit_weights[2][8] = {
    {1000, 100, 10, 1, 1000, 100, 10, 1}, {0, 100, 10, 1, 0, 100, 10, 1}};
alignas(16) inline constexpr std::int16_t block_weights[2][8] = {{10000, 1, 10000, 1, 0, 0, 0, 0},
                                                                 {1000, 1, 1000, 1, 0, 0, 0, 0}};
inline constexpr std::uint64_t half_weights[2] = {100'000'000, 1'000'000};

[[nodiscard]] inline const __m128i& weights(const std::int16_t (&row)[8]) {
  return *reinterpret_cast<const __m128i*>(row);
}

// Digit values of sixteen bytes that end with the last digit, separators as zeros.
[[nodiscard]] inline std::uint64_t integer_of(Wide digits, bool grouped) {
  const __m128i bytes = vector_of(digits);
  const __m128i none = _mm_setzero_si128();
  const __m128i& tens = weights(digit_weights[grouped]);
  const __m128i pairs = _mm_packs_epi32(_mm_madd_epi16(_mm_unpacklo_epi8(bytes, none), tens),
                                        _mm_madd_epi16(_mm_unpackhi_epi8(bytes, none), tens));
  const __m128i blocks = _mm_madd_epi16(pairs, _mm_set1_epi16(1));  // four, below 10,000 each
  const __m128i halves =
      _mm_madd_epi16(_mm_packs_epi32(blocks, none), weights(block_weights[grouped]));
  const auto both = static_cast<std::uint64_t>(_mm_cvtsi128_si64(halves));
  return (both & 0xFFFFFFFF) * half_weights[grouped] + (both >> 32);
}

// Eight digit values, the first lowest.
[[nodiscard]] inline std::uint64_t eight_digits(std::uint64_t digits) {
  constexpr std::uint64_t mask = 0x000000FF000000FF;
  constexpr std::uint64_t outer = 100 + (std::uint64_t{1'000'000} << 32);
  constexpr std::uint64_t inner = 1 + (std::uint64_t{10'000} << 32);
  const std::uint64_t pairs = digits * 10 + (digits >> 8);
  return ((pairs & mask) * outer + (pairs >> 16 & mask) * inner) >> 32;
}

inline constexpr std::uint64_t small_powers[] = {1,       10,        100,        1'000,      10'000,
                                                 100'000, 1'000'000, 10'000'000, 100'000'000};

}  // namespace masked_number_details

/// The characters of a text, the first lowest, and bits that count them from there.
struct MaskedCharacters {
  masked_number_details::Wide values;  // of digits, a byte each; zeros where there are others
  unsigned length;                     // 1 to 16
  unsigned digits;                     // of these and of the next two, each character is one
  unsigned groups;                     //
  unsigned decimal;                    //
  unsigned sign;                       // 1 where the first is a minus sign
};

/// Puts the value of the characters where they are in place; false where not, `number` is then of
/// no use. `hopeless` is for that.
[[nodiscard]] [[gnu::always_inline]] inline bool number_of(const MaskedCharacters& text,
                                                           bool led_by_zero,
                                                           QuickNumber& number) noexcept {
  using namespace masked_number_details;
  // What has its characters all right, and its shape wrong, is no other reader's either.
  number.hopeless = true;
  if ((text.decimal & (text.decimal - 1)) != 0) return false;

  const unsigned all = (1U << text.length) - 1;
  const auto integer_end = static_cast<unsigned>(std::countr_zero(text.decimal | (all + 1)));
  const unsigned integer_length = integer_end - text.sign;
  const bool has_decimal = text.decimal != 0;
  const bool grouped = text.groups != 0;
  const unsigned expected = group_masks.of_length[integer_length];
  if (integer_length == 0 || (grouped && ((text.groups >> text.sign) != expected || led_by_zero))) {
    return false;
  }
  const unsigned decimals = text.length - integer_end - (has_decimal ? 1 : 0);
  if (decimals > 8) {
    number.hopeless = false;
    return false;
  }

  const Wide digits = text.values;
  number.mantissa = integer_of(digits << (8 * (16 - integer_end)), grouped);
  if (decimals != 0) {
    const auto fraction = static_cast<std::uint64_t>(digits >> (8 * (integer_end + 1)));
    number.mantissa =
        number.mantissa * small_powers[decimals] + eight_digits(fraction << (8 * (8 - decimals)));
  }
  number.decimals = decimals;
  number.negative = text.sign != 0;
  const bool one_group = (text.groups & (text.groups - 1)) == 0;
  const bool two_ways =
      grouped ? one_group && !has_decimal : decimals == 3 && integer_length <= 3 && !led_by_zero;
  number.facts = facts_of(two_ways, grouped || has_decimal);
  return true;
}

#endif

}  // namespace jwnls::library

#endif  // JWNLS_LIBRARY_NUMBERS_MASKED_NUMBER_H_
