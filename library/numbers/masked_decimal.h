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
struct TextAlone {
  static __m128i load(const char* text, std::size_t length) noexcept {
    const auto word_at = [](const char* from, auto word) {
      std::memcpy(&word, from, sizeof word);
      return std::uint64_t{word};
    };
    const auto both = [](std::uint64_t first, std::uint64_t second) {
      return _mm_set_epi64x(static_cast<long long>(second), static_cast<long long>(first));
    };
    const auto bits = static_cast<unsigned>(length) * 8;
    if (length < 4) [[unlikely]] {
      const auto byte = [&](std::size_t at) {
        return word_at(text + at, std::uint8_t{}) << (8 * at);
      };
      return both(byte(0) | byte(length / 2) | byte(length - 1), 0);
    }
    // The eight bytes at either end, or zeros: chosen by an index, since compilers make a jump of a
    // condition.
    static constexpr char zeros[8] = {};
    const char* const begins[] = {zeros, text};
    const unsigned is_long = length >= 8 ? 1 : 0;
    const char* const begin = begins[is_long];
    const std::uint64_t none_if_long = std::uint64_t{is_long} - 1;
    const std::uint64_t few = (word_at(text, std::uint32_t{}) |
                               word_at(text + length - 4, std::uint32_t{}) << ((bits - 32) & 63)) &
                              none_if_long;
    // Moved by twice the half, which may be all 64 bits.
    const std::uint64_t last = word_at(begin + ((length - 8) & ~none_if_long), std::uint64_t{});
    return both(word_at(begin, std::uint64_t{}) | few, last >> (64 - bits / 2) >> (64 - bits / 2));
  }
};

/// The same where 16 bytes may be read from the text's begin, whatever stands behind it.
struct TextAmongOthers {
  static __m128i load(const char* text, std::size_t length) noexcept {
    static constexpr auto kept = [] {
      std::array<std::uint8_t, 32> bytes = {};
      for (std::size_t i = 0; i < 16; ++i) bytes[i] = 0xFF;
      return bytes;
    }();
    return _mm_and_si128(
        _mm_loadu_si128(reinterpret_cast<const __m128i*>(text)),
        _mm_loadu_si128(reinterpret_cast<const __m128i*>(kept.data() + 16 - length)));
  }
};

namespace masked_decimal_details {

// What an integer part of a length has where it is grouped.
struct Grouped {
  // How characters move together over the separators in front of them: each comes from as many
  // places behind as there are separators. 0xFF where a byte moves by so many places.
  alignas(16) std::uint8_t by[4][16];
  // Where the separators stand: every fourth byte before the end. None where that puts one in
  // front.
  std::uint32_t separators;
};
// By the length; the first row for what has no groups, or is longer than all that have.
inline constexpr std::array<Grouped, 16> grouped = [] {
  std::array<Grouped, 16> rows = {};
  for (unsigned integers = 0; integers < rows.size(); ++integers) {
    const unsigned first = integers % 4;
    for (unsigned at = 0; at < 16; ++at) {
      const unsigned passed = at < first ? 0 : std::min((at - first) / 3 + 1, integers / 4);
      rows[integers].by[passed][at] = 0xFF;
    }
    for (unsigned at = integers; at >= 4 && first != 0; at -= 4) {
      rows[integers].separators |= 1U << (at - 4);
    }
  }
  return rows;
}();

template <int places>
__m128i moved(__m128i bytes, const Grouped& row) noexcept {
  const __m128i mask = _mm_load_si128(reinterpret_cast<const __m128i*>(row.by[places]));
  return _mm_and_si128(_mm_srli_si128(bytes, places), mask);
}

inline __m128i move_together(__m128i bytes, const Grouped& row) noexcept {
  return _mm_or_si128(_mm_or_si128(moved<0>(bytes, row), moved<1>(bytes, row)),
                      _mm_or_si128(moved<2>(bytes, row), moved<3>(bytes, row)));
}

}  // namespace masked_decimal_details

/// Writes the text's number; `out` has masked_decimal_room. Nothing is written for what is not
/// read.
template <typename Text>
[[nodiscard]] [[gnu::always_inline]] inline Masked masked_decimal(const QuickSyntax& syntax,
                                                                  const char* text,
                                                                  std::size_t length, char* out,
                                                                  std::size_t& out_length,
                                                                  std::uint8_t& facts) noexcept {
  using masked_decimal_details::grouped;
  using masked_decimal_details::move_together;
  if (!syntax.masks || length - 1 >= 16) return Masked::other;
  const std::size_t sign = *text == '-' ? 1 : 0;
  text += sign;
  length -= sign;
  if (length == 0) [[unlikely]]
    return Masked::other;
  const __m128i bytes = Text::load(text, length);
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
  const unsigned row = groups != 0 ? integers & 15 : 0;
  const unsigned strange = (digits | groups | decimal) ^ all;
  const unsigned misplaced = (decimal & (decimal - 1)) | (groups ^ grouped[row].separators);
  const unsigned too_long = (decimals + 7) >> 4;  // more than eight
  // At least one integer, and no zeros in front of another.
  const unsigned most_integers = *text == '0' ? 1 : 16;
  if ((strange | misplaced | too_long) != 0 || integers - 1 >= most_integers) [[unlikely]] {
    // Own symbols alone, from digit to digit, but not where they belong: a shape that nobody reads.
    const bool framed = (digits & digits >> (length - 1) & 1) != 0;
    return strange == 0 && framed && misplaced != 0 && syntax.threes_only ? Masked::refused
                                                                          : Masked::other;
  }

  out[0] = '-';
  char* const begin = out + sign;
  _mm_storeu_si128(reinterpret_cast<__m128i*>(begin), move_together(bytes, grouped[row]));
  const unsigned integer_digits = integers - row / 4;
  begin[integer_digits] = '.';
  out_length = sign + integer_digits + decimals + (decimals != 0 ? 1 : 0);

  // One separator, or three decimals, may be the other of both.
  if (has_decimal != 0 && decimals != 3) [[likely]] {
    facts = JWNLS_DECIDES;
  } else if (groups != 0) {
    facts = has_decimal == 0 && (groups & (groups - 1)) == 0 ? JWNLS_TWO_WAYS : JWNLS_DECIDES;
  } else if (has_decimal != 0) {
    facts = integers <= 3 && *text != '0' ? JWNLS_TWO_WAYS : JWNLS_DECIDES;
  } else {
    facts = 0;
  }
  return Masked::read;
}

#else

struct TextAlone {};
struct TextAmongOthers {};

template <typename>
[[nodiscard]] inline Masked masked_decimal(const QuickSyntax&, const char*, std::size_t, char*,
                                           std::size_t&, std::uint8_t&) noexcept {
  return Masked::other;
}

#endif

}  // namespace jwnls::library

#endif  // JWNLS_LIBRARY_NUMBERS_MASKED_DECIMAL_H_
