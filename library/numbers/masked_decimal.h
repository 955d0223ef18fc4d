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
  std::uint64_t last;  // the last eight bytes; of fewer, zeros in front of them

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
      last = first << (64 - bits);
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
    last =
        load(begin + ((length - 8) & ~none_if_long), std::uint64_t{}) | few << ((64 - bits) & 63);
    // By twice the half: by 64 and more for the texts that have nothing here.
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

// "ddd.ddd." -> "dddddd".
constexpr std::uint64_t without_groups(std::uint64_t bytes) noexcept {
  constexpr std::uint64_t front = 0x0000'0000'00FF'FFFF;
  return (bytes & front) | (bytes >> 8 & front << 24);
}

constexpr std::uint64_t all_if(bool condition) noexcept {
  return std::uint64_t{0} - static_cast<std::uint64_t>(condition);
}

}  // namespace masked_decimal_details

/// Writes the text's number; `out` has masked_decimal_room. Nothing is written for what is not
/// read.
[[nodiscard]] inline Masked masked_decimal(const QuickSyntax& syntax, const char* text,
                                           std::size_t length, char* out, std::size_t& out_length,
                                           std::uint8_t& facts) noexcept {
  using masked_decimal_details::all_if;
  using masked_decimal_details::group_places;
  using masked_decimal_details::without_groups;
  if (!syntax.masks || length - 1 >= 16) return Masked::other;
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
  const unsigned sign = (input.first & 0xFF) == '-' ? 1 : 0;
  const unsigned all = (1U << length) - 1;

  const auto integer_end = static_cast<unsigned>(std::countr_zero(decimal | (all + 1)));
  const unsigned integer_length = integer_end - sign;
  const unsigned has_decimal = decimal != 0 ? 1 : 0;
  const unsigned decimals = static_cast<unsigned>(length) - integer_end - has_decimal;
  const bool grouped = groups != 0;
  const std::uint64_t behind_sign = input.first >> (8 * sign);
  const unsigned led_by_zero = (behind_sign & 0xFF) == '0' ? 1 : 0;
  const auto with_groups = static_cast<unsigned>(all_if(grouped));
  const unsigned misplaced =
      ((digits | groups | decimal | sign) ^ all) | (decimal & (decimal - 1)) |
      (((groups >> sign) ^ group_places.of_length[integer_length & 15]) & with_groups);
  const unsigned too_short = (integer_length - 1) >> 31;
  const unsigned too_long = (decimals + 7) >> 4;  // more than eight
  const unsigned zeros_in_front = led_by_zero & (integer_length != 1 ? 1U : 0U);
  if ((misplaced | too_short | too_long | zeros_in_front) != 0) [[unlikely]] {
    // Own symbols alone, from digit to digit, but not where they belong: a shape that nobody reads.
    const bool own = ((digits | groups | decimal | sign) ^ all) == 0;
    const bool framed = (digits >> sign & digits >> (length - 1) & 1) != 0;
    return own && framed && misplaced != 0 && syntax.threes_only ? Masked::refused : Masked::other;
  }

  // The integer part from its begin on, moved up so that its first group has three places, too. A
  // group is four bytes then, its separator the last of them.
  const std::uint64_t low = sign != 0 ? behind_sign | input.second << 56 : behind_sign;
  const std::uint64_t high = input.second >> (8 * sign);
  const unsigned moved = (8 * (3 - integer_length % 4)) & with_groups;
  const std::uint64_t six = without_groups(low << moved);
  const std::uint64_t next_six = without_groups(high << moved | low >> 1 >> (63 - moved));
  const std::uint64_t joined = six | next_six << 48;
  const std::uint64_t rest = next_six >> 16;
  const std::uint64_t plain_low = joined >> moved | rest << 1 << (63 - moved);
  const std::uint64_t keep = all_if(grouped);
  const std::uint64_t words[] = {(plain_low & keep) | (low & ~keep),
                                 (rest >> moved & keep) | (high & ~keep)};
  char* end = out;
  *end = '-';
  end += sign;
  std::memcpy(end, words, sizeof words);
  end += integer_length - (integer_length / 4 & with_groups);
  *end = '.';
  const std::uint64_t fraction = input.last >> ((64 - 8 * decimals) & 63);
  std::memcpy(end + 1, &fraction, sizeof fraction);
  end += decimals + (decimals != 0 ? 1 : 0);
  out_length = static_cast<std::size_t>(end - out);

  const unsigned one_group = (groups & (groups - 1)) == 0 ? 1 : 0;
  const unsigned grouped_two_ways = one_group & (has_decimal ^ 1);
  const unsigned three_decimals = decimals == 3 ? 1 : 0;
  const unsigned plain_two_ways =
      three_decimals & (led_by_zero ^ 1) & (integer_length <= 3 ? 1U : 0U);
  const unsigned two_ways = (grouped_two_ways & with_groups) | (plain_two_ways & ~with_groups);
  const unsigned marked = (with_groups & 1) | has_decimal;
  static_assert(JWNLS_TWO_WAYS == 1 && JWNLS_DECIDES == 2);
  facts = static_cast<std::uint8_t>((marked & (two_ways ^ 1)) << 1 | two_ways);
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
