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
  std::uint32_t separators = 0;
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

/// What masked_decimal() asks of a syntax that has masks.
struct MaskedSyntax {
  explicit MaskedSyntax(const QuickSyntax& syntax) noexcept
      : group(_mm_set1_epi8(syntax.group)),
        decimal(_mm_set1_epi8(syntax.decimal)),
        group_bits(syntax.group_bits),
        decimal_bits(syntax.decimal_bits),
        threes_only(syntax.threes_only) {}

  __m128i group, decimal;
  unsigned group_bits, decimal_bits;
  bool threes_only;
};

namespace masked_decimal_details {

// Where each character of a text stands; a bit a byte.
struct Places {
  Places(const MaskedSyntax& syntax, __m128i bytes) noexcept {
    const __m128i values = _mm_sub_epi8(bytes, _mm_set1_epi8('0'));
    const __m128i is_digit = _mm_cmpeq_epi8(_mm_min_epu8(values, _mm_set1_epi8(9)), values);
    const auto mask_of = [](__m128i equal) {
      return static_cast<unsigned>(_mm_movemask_epi8(equal));
    };
    digits = mask_of(is_digit);
    groups = mask_of(_mm_cmpeq_epi8(bytes, syntax.group)) & syntax.group_bits;
    decimal = mask_of(_mm_cmpeq_epi8(bytes, syntax.decimal)) & syntax.decimal_bits;
  }
  unsigned digits, groups, decimal;
};

// Of a text that is not read. Own symbols alone, from digit to digit, but not where they belong:
// a shape that nobody reads. Apart, so that what is read keeps nothing for it.
[[gnu::noinline]] inline Masked refusal_of(const MaskedSyntax& syntax, __m128i bytes,
                                           std::size_t length) noexcept {
  const auto [digits, groups, decimal] = Places(syntax, bytes);
  const unsigned all = (1U << length) - 1;
  const auto integers = static_cast<unsigned>(std::countr_zero(decimal | (all + 1)));
  const bool misplaced = (decimal & (decimal - 1)) != 0 ||
                         (groups != 0 && groups != grouped[integers & 15].separators);
  const bool framed = (digits & digits >> (length - 1) & 1) != 0;
  const bool is_refused =
      (digits | groups | decimal) == all && framed && misplaced && syntax.threes_only;
  return is_refused ? Masked::refused : Masked::other;
}

}  // namespace masked_decimal_details

/// Writes the text's number; `out` has masked_decimal_room. Nothing is written for what is not
/// read.
template <typename Text>
[[nodiscard]] [[gnu::always_inline]] inline Masked masked_decimal(const MaskedSyntax& syntax,
                                                                  const char* text,
                                                                  std::size_t length, char* out,
                                                                  std::size_t& out_length,
                                                                  std::uint8_t& facts) noexcept {
  using masked_decimal_details::grouped;
  using masked_decimal_details::move_together;
  using masked_decimal_details::Places;
  if (length - 1 >= 16) return Masked::other;
  const std::size_t sign = *text == '-' ? 1 : 0;
  text += sign;
  length -= sign;
  if (length == 0) [[unlikely]]
    return Masked::other;
  const __m128i bytes = Text::load(text, length);
  const auto [digits, groups, decimal] = Places(syntax, bytes);
  const unsigned all = (1U << length) - 1;

  const auto integers = static_cast<unsigned>(std::countr_zero(decimal | (all + 1)));
  const unsigned behind = static_cast<unsigned>(length) - integers;  // the decimal symbol, decimals
  const unsigned with_groups = 0U - (groups != 0 ? 1U : 0U);
  const unsigned row = integers & with_groups & 15;
  const unsigned strange = (digits | groups | decimal) ^ all;
  const unsigned misplaced = (decimal & (decimal - 1)) | (groups ^ grouped[row].separators);
  const unsigned too_many = (behind + 6) >> 4;  // decimals: more than eight
  // No integer, or zeros in front.
  const bool odd_front = static_cast<unsigned char>(*text - '1') > 8 && integers != 1;
  if ((strange | misplaced | too_many) != 0 || odd_front) [[unlikely]] {
    return masked_decimal_details::refusal_of(syntax, bytes, length);
  }

  out[0] = '-';
  char* const begin = out + sign;
  _mm_storeu_si128(reinterpret_cast<__m128i*>(begin), move_together(bytes, grouped[row]));
  const unsigned integer_digits = integers - row / 4;
  begin[integer_digits] = '.';
  out_length = sign + integer_digits + behind;

  // One separator, or three decimals, may be the other of both.
  constexpr unsigned three = 1 + 3;
  constexpr unsigned unusual = 1U << 0 | 1U << 1 | 1U << three;
  facts = JWNLS_DECIDES;
  if ((unusual >> behind & 1) == 0) [[likely]]
    return Masked::read;
  if (behind == 1) {
    --out_length;
  } else if (groups != 0) {
    if (behind == 0 && (groups & (groups - 1)) == 0) facts = JWNLS_TWO_WAYS;
  } else if (behind == 0) {
    facts = 0;
  } else if (integers <= 3 && *text != '0') {
    facts = JWNLS_TWO_WAYS;
  }
  return Masked::read;
}

#else

struct TextAlone {};
struct TextAmongOthers {};

struct MaskedSyntax {
  explicit MaskedSyntax(const QuickSyntax&) noexcept {}
};

template <typename>
[[nodiscard]] inline Masked masked_decimal(const MaskedSyntax&, const char*, std::size_t, char*,
                                           std::size_t&, std::uint8_t&) noexcept {
  return Masked::other;
}

#endif

}  // namespace jwnls::library

#endif  // JWNLS_LIBRARY_NUMBERS_MASKED_DECIMAL_H_
