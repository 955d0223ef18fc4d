// Numbers of at most sixteen bytes as "-1234567.89" without their value: the digits of the text are
// those of the decimal, so that they only move together. Takes what scan_by_masks() takes, but for
// zeros in front.

#ifndef JWNLS_LIBRARY_NUMBERS_MASKED_DECIMAL_H_
#define JWNLS_LIBRARY_NUMBERS_MASKED_DECIMAL_H_

#include <cstddef>
#include <cstdint>

#include "library/numbers/number_syntax.h"

#if defined(__SSE2__)
#include <emmintrin.h>

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>

#include "include/jwnls/jwnls.h"
#endif

namespace jwnls::library {

/// What masked_decimal() says of a text; `refused`: no reader takes it.
enum class Masked : std::uint8_t { read, refused, other };

/// Room that masked_decimal() needs.
inline constexpr std::size_t masked_decimal_room = 32;

#if defined(__SSE2__)

/// A text of 1 to 16 bytes, zeros behind it; nothing beside it is read. No branch depends on the
/// length from 4 on: lengths of numbers are what nothing foretells.
struct SixteenBytes {
  std::uint64_t first, second;

  SixteenBytes(const char* text, std::size_t length) noexcept {
    const auto load = [](const char* from, auto word) {
      std::memcpy(&word, from, sizeof word);
      return std::uint64_t{word};
    };
    const auto bits = static_cast<unsigned>(length) * 8;
    if (length < 4) [[unlikely]] {
      const auto byte = [&](std::size_t at) { return load(text + at, std::uint8_t{}) << (8 * at); };
      first = byte(0) | byte(length / 2) | byte(length - 1);
      second = 0;
      return;
    }
    // The eight bytes at either end, or zeros: chosen by an index, since compilers make a jump of a
    // condition.
    static constexpr char zeros[8] = {};
    const char* const begins[] = {zeros, text};
    const unsigned is_long = length >= 8 ? 1 : 0;
    const char* const begin = begins[is_long];
    const std::uint64_t none_if_long = std::uint64_t{is_long} - 1;
    const std::uint64_t few = (load(text, std::uint32_t{}) |
                               load(text + length - 4, std::uint32_t{}) << ((bits - 32) & 63)) &
                              none_if_long;
    first = load(begin, std::uint64_t{}) | few;
    // Moved by twice the half, which may be all 64 bits.
    const std::uint64_t last = load(begin + ((length - 8) & ~none_if_long), std::uint64_t{});
    second = last >> (64 - bits / 2) >> (64 - bits / 2);
  }
};

namespace masked_decimal_details {

// Where the separators stand in an integer part of a length, seen from its begin: every fourth byte
// before its end. A length that puts one in front of it has no groups.
struct GroupPlaces {
  std::uint16_t of_length[16];  // sixteen, as zero, have none
};
inline constexpr GroupPlaces group_places = [] {
  GroupPlaces places = {};
  for (unsigned length = 0; length < 16; ++length) {
    std::uint16_t mask = 0;
    for (unsigned at = length; at >= 4; at -= 4) mask |= static_cast<std::uint16_t>(1U << (at - 4));
    places.of_length[length] = length % 4 == 0 ? 0 : mask;
  }
  return places;
}();

// How characters move together over the separators in front of them: each comes from as many places
// behind as there are separators. Rows by the length of the integer part; the first row for what
// has no groups.
struct Moves {
  alignas(16) std::uint8_t by[4][16];  // 0xFF where a byte moves by so many places
};
inline constexpr std::array<Moves, 16> moves = [] {
  std::array<Moves, 16> rows = {};
  for (unsigned integers = 0; integers < rows.size(); ++integers) {
    const unsigned first = integers % 4;
    for (unsigned at = 0; at < 16; ++at) {
      const unsigned passed = at < first ? 0 : std::min((at - first) / 3 + 1, integers / 4);
      rows[integers].by[passed][at] = 0xFF;
    }
  }
  return rows;
}();

template <int places>
__m128i moved(__m128i bytes, const Moves& row) noexcept {
  const __m128i mask = _mm_load_si128(reinterpret_cast<const __m128i*>(row.by[places]));
  return _mm_and_si128(_mm_srli_si128(bytes, places), mask);
}

inline __m128i move_together(__m128i bytes, const Moves& row) noexcept {
  return _mm_or_si128(_mm_or_si128(moved<0>(bytes, row), moved<1>(bytes, row)),
                      _mm_or_si128(moved<2>(bytes, row), moved<3>(bytes, row)));
}

}  // namespace masked_decimal_details

/// Writes the text's number; `out` has masked_decimal_room. Nothing is written for what is not
/// read.
[[nodiscard]] [[gnu::always_inline]] inline Masked masked_decimal(const QuickSyntax& syntax,
                                                                  const char* text,
                                                                  std::size_t length, char* out,
                                                                  std::size_t& out_length,
                                                                  std::uint8_t& facts) noexcept {
  using masked_decimal_details::group_places;
  using masked_decimal_details::move_together;
  using masked_decimal_details::moves;
  if (!syntax.masks || length - 1 >= 16) return Masked::other;
  const std::size_t sign = *text == '-' ? 1 : 0;
  text += sign;
  length -= sign;
  if (length == 0) [[unlikely]]
    return Masked::other;
  const SixteenBytes input(text, length);
  const __m128i bytes =
      _mm_set_epi64x(static_cast<long long>(input.second), static_cast<long long>(input.first));
  const __m128i values = _mm_sub_epi8(bytes, _mm_set1_epi8('0'));
  const __m128i is_digit = _mm_cmpeq_epi8(_mm_min_epu8(values, _mm_set1_epi8(9)), values);
  const auto places_of = [bytes](char symbol) {
    return static_cast<unsigned>(_mm_movemask_epi8(_mm_cmpeq_epi8(bytes, _mm_set1_epi8(symbol))));
  };
  const auto digits = static_cast<unsigned>(_mm_movemask_epi8(is_digit));
  const unsigned groups = places_of(syntax.group) & syntax.group_bits;
  const unsigned decimal = places_of(syntax.decimal) & syntax.decimal_bits;
  const unsigned all = (1U << length) - 1;

  const auto integers = static_cast<unsigned>(std::countr_zero(decimal | (all + 1)));
  const unsigned has_decimal = decimal != 0 ? 1 : 0;
  const unsigned decimals = static_cast<unsigned>(length) - integers - has_decimal;
  const unsigned with_groups = 0U - (groups != 0 ? 1U : 0U);
  const unsigned strange = (digits | groups | decimal) ^ all;
  const unsigned misplaced =
      (decimal & (decimal - 1)) | ((groups ^ group_places.of_length[integers & 15]) & with_groups);
  const unsigned too_short = (integers - 1) >> 31;
  const unsigned too_long = (decimals + 7) >> 4;  // more than eight
  const bool led_by_zero = (input.first & 0xFF) == '0';
  const unsigned zeros_in_front = (led_by_zero ? 1U : 0U) & (integers != 1 ? 1U : 0U);
  if ((strange | misplaced | too_short | too_long | zeros_in_front) != 0) [[unlikely]] {
    // Own symbols alone, from digit to digit, but not where they belong: a shape that nobody reads.
    const bool framed = (digits & digits >> (length - 1) & 1) != 0;
    return strange == 0 && framed && misplaced != 0 && syntax.threes_only ? Masked::refused
                                                                          : Masked::other;
  }

  const unsigned row = integers & with_groups & 15;
  out[0] = '-';
  char* const begin = out + sign;
  _mm_storeu_si128(reinterpret_cast<__m128i*>(begin), move_together(bytes, moves[row]));
  const unsigned integer_digits = integers - row / 4;
  begin[integer_digits] = '.';
  out_length = sign + integer_digits + decimals + (decimals != 0 ? 1 : 0);

  // One separator, or three decimals, may be the other of both.
  if (has_decimal != 0 && decimals != 3) [[likely]] {
    facts = JWNLS_DECIDES;
  } else if (groups != 0) {
    facts = has_decimal == 0 && (groups & (groups - 1)) == 0 ? JWNLS_TWO_WAYS : JWNLS_DECIDES;
  } else if (has_decimal != 0) {
    facts = integers <= 3 && !led_by_zero ? JWNLS_TWO_WAYS : JWNLS_DECIDES;
  } else {
    facts = 0;
  }
  return Masked::read;
}

#else

[[nodiscard]] inline Masked masked_decimal(const QuickSyntax&, const char*, std::size_t, char*,
                                           std::size_t&, std::uint8_t&) noexcept {
  return Masked::other;
}

#endif

}  // namespace jwnls::library

#endif  // JWNLS_LIBRARY_NUMBERS_MASKED_DECIMAL_H_
