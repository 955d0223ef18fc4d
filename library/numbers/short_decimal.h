// Decimals of at most sixteen digits, as nearly all are: how a value becomes one, and its digits,
// without a loop or a branch that nothing foretells.

#ifndef JWNLS_LIBRARY_NUMBERS_SHORT_DECIMAL_H_
#define JWNLS_LIBRARY_NUMBERS_SHORT_DECIMAL_H_

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <string_view>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace jwnls::library {

__extension__ using Wide = unsigned __int128;

inline constexpr unsigned short_digits = 16;
inline constexpr std::uint64_t integer_powers[] = {1,
                                                   10,
                                                   100,
                                                   1'000,
                                                   10'000,
                                                   100'000,
                                                   1'000'000,
                                                   10'000'000,
                                                   100'000'000,
                                                   1'000'000'000,
                                                   10'000'000'000,
                                                   100'000'000'000,
                                                   1'000'000'000'000,
                                                   10'000'000'000'000,
                                                   100'000'000'000'000,
                                                   1'000'000'000'000'000,
                                                   10'000'000'000'000'000};
inline constexpr std::uint64_t short_limit = integer_powers[short_digits];

/// Division of mantissas by a power of ten of which a compiler does not know.
struct PowerReciprocal {
  std::uint64_t reciprocal = 0;  // times 2^(63 + shift), rounded up: exact for 62 bits
  unsigned shift = 0;

  [[nodiscard]] std::uint64_t quotient(std::uint64_t mantissa) const noexcept {
    return static_cast<std::uint64_t>(Wide{mantissa << 1} * reciprocal >> 64) >> shift;
  }
};
inline constexpr std::array<PowerReciprocal, short_digits + 1> power_reciprocals = [] {
  std::array<PowerReciprocal, short_digits + 1> all;
  for (std::size_t places = 0; places < all.size(); ++places) {
    const std::uint64_t power = integer_powers[places];
    const auto shift = static_cast<unsigned>(std::bit_width(power)) - 1;
    const Wide scale = Wide{1} << (63 + shift);
    all[places] = {static_cast<std::uint64_t>((scale + power - 1) / power), shift};
  }
  return all;
}();

/// mantissa / 10^decimals.
struct ShortDecimal {
  std::uint64_t mantissa = 0;  // below short_limit
  unsigned decimals = 0;       // below short_digits
  bool negative = false;
  bool shortest = false;  // zeros at the end of the decimals go
};

/// A double with a fixed count of decimals, rounded on its exact value, halves away from zero. Of
/// amounts, as most values are: one word holds them times the power of ten, which makes fifteen
/// digits at most. False for all others, from 2^39 on or below 2^-12 or of more than three
/// decimals; `number` is then of no use.
[[nodiscard]] inline bool fixed_amount(double value, unsigned decimals,
                                       ShortDecimal& number) noexcept {
  const auto bits = std::bit_cast<std::uint64_t>(value);
  const auto exponent = static_cast<unsigned>(bits >> 52 & 0x7FF);
  if (exponent - (1023 - 12) >= 12 + 39 || decimals > 3) return false;
  const std::uint64_t significand = bits << 12 >> 12 | std::uint64_t{1} << 52;
  const std::uint64_t product = significand * integer_powers[decimals];
  number = {((product >> (1074 - exponent)) + 1) >> 1, decimals, bits >> 63 != 0};
  return true;
}

/// A double is its significand / 2^places; integers from 2^52 on, infinities and NaNs have none.
inline constexpr unsigned no_places = 1075;

/// The same of all that take no more digits, and are finite.
[[nodiscard]] inline bool fixed_decimal(double value, unsigned decimals,
                                        ShortDecimal& number) noexcept {
  const auto bits = std::bit_cast<std::uint64_t>(value);
  const auto exponent = static_cast<unsigned>(bits >> 52 & 0x7FF);
  if (exponent >= no_places || decimals >= short_digits) return false;
  // A significand that is not normal has a bit too many here, and rounds to zero all the same.
  const std::uint64_t significand = (bits & ((std::uint64_t{1} << 52) - 1)) | std::uint64_t{1}
                                                                                  << 52;
  // Below 2^103, so that more than 126 places leave nothing, whatever their count.
  const Wide product = Wide{significand} * integer_powers[decimals];
  const unsigned places = std::min(no_places - exponent, 127U);
  const Wide rounded = ((product >> (places - 1)) + 1) >> 1;
  number = {static_cast<std::uint64_t>(rounded), decimals, bits >> 63 != 0};
  return rounded < short_limit;
}

/// How many digits a number has with so many bits free in front of it, or one too few.
inline constexpr std::array<std::uint8_t, 65> digits_behind_zeros = [] {
  std::array<std::uint8_t, 65> digits = {};
  // 1233/4096 approximates log10(2).
  for (unsigned width = 0; width <= 64; ++width) {
    digits[64 - width] = static_cast<std::uint8_t>(width * 1233 >> 12);
  }
  return digits;
}();

/// How many digits a mantissa has, at least one: soon known, long before the digits are.
[[nodiscard]] inline unsigned digit_count(std::uint64_t mantissa) noexcept {
  // An odd number has as many digits as the one below it, or 1 of 0.
  const std::uint64_t odd = mantissa | 1;
  const unsigned count = digits_behind_zeros[static_cast<unsigned>(std::countl_zero(odd))];
  return count + (odd >= integer_powers[count] ? 1 : 0);
}

/// Moves the decimal symbol some places to the right, and rounds or fills up the decimals.
///   wanted  decimals; below 0: those that there are
/// False for what takes more digits; `number` is then of no use.
[[nodiscard]] inline bool adjust(ShortDecimal& number, unsigned shift, int wanted,
                                 bool half_even) noexcept {
  if (shift == 0 && (wanted < 0 || static_cast<unsigned>(wanted) == number.decimals)) return true;
  const unsigned moved = std::min(shift, number.decimals);
  number.decimals -= moved;
  const unsigned more = shift - moved;  // places without a digit: zeros
  const unsigned count = wanted < 0 ? number.decimals : static_cast<unsigned>(wanted);
  if (count + more >= short_digits) return false;
  if (count < number.decimals) {
    const std::uint64_t unit = integer_powers[number.decimals - count];
    const std::uint64_t kept = power_reciprocals[number.decimals - count].quotient(number.mantissa);
    const std::uint64_t twice = (number.mantissa - kept * unit) * 2;
    const bool up = twice > unit || (twice == unit && (!half_even || kept % 2 != 0));
    number.mantissa = kept + (up ? 1 : 0);
  } else {
    const unsigned zeros = count - number.decimals + more;
    if (number.mantissa >= integer_powers[short_digits - zeros]) return false;
    number.mantissa *= integer_powers[zeros];
  }
  number.decimals = count;
  return true;
}

/// A double that is a decimal of so many places and at most fifteen digits: a division of two exact
/// operands rounds as reading does, and fifteen digits are the shortest that give their double
/// back.
///   places  of 10^places, which is `scale`; the double times that is below 10^15
///   shift   places that the decimal symbol moves to the right
///   wanted  decimals, rounded halves away from zero; below 0: those that there are
/// False for all others; `number` is then of no use.
[[nodiscard]] inline bool decimal_of_places(double value, unsigned places, double scale,
                                            unsigned shift, int wanted,
                                            ShortDecimal& number) noexcept {
  const double magnitude = std::abs(value);
  // Whether it is the one is asked next. NOLINTNEXTLINE(bugprone-incorrect-roundings)
  const auto mantissa = static_cast<std::int64_t>(magnitude * scale + 0.5);
  if (static_cast<double>(mantissa) / scale != magnitude) return false;
  number = {static_cast<std::uint64_t>(mantissa), places, std::signbit(value), wanted < 0};
  // Below 0 where zeros stand in front of the decimal symbol.
  const int decimals = static_cast<int>(places) - static_cast<int>(shift);
  if (wanted < 0 && decimals >= 0) [[likely]] {
    number.decimals = static_cast<unsigned>(decimals);
    return true;
  }
  constexpr int most_digits = short_digits;
  const int count = std::max(wanted, 0);
  const int zeros = count - decimals;
  if (count >= most_digits || zeros >= most_digits) return false;
  number.decimals = static_cast<unsigned>(count);
  if (zeros < 0) {
    const auto dropped = static_cast<unsigned>(-zeros);
    const std::uint64_t unit = integer_powers[dropped];
    number.mantissa = power_reciprocals[dropped].quotient(number.mantissa + unit / 2);
  } else {
    if (number.mantissa >= integer_powers[most_digits - zeros]) return false;
    number.mantissa *= integer_powers[zeros];
  }
  return true;
}

/// The same of doubles below 10^9 that have no more than six decimals, as most do.
[[nodiscard]] inline bool few_decimals(double value, unsigned shift, int wanted,
                                       ShortDecimal& number) noexcept {
  return std::abs(value) < 1e9 && decimal_of_places(value, 6, 1e6, shift, wanted, number);
}

/// The same of larger ones, with what fifteen digits leave to their power of two.
[[nodiscard]] inline bool fewer_decimals(double value, unsigned shift, int wanted,
                                         ShortDecimal& number) noexcept {
  constexpr unsigned first = 29;  // 2^29 is below 10^9
  constexpr unsigned last = 49;   // and 2^50 beyond 10^15
  static constexpr auto places_from = [] {
    std::array<std::uint8_t, last - first + 1> places = {};
    for (unsigned power = first; power <= last; ++power) {
      unsigned digits = 1;
      while (std::uint64_t{2} << power > integer_powers[digits]) ++digits;
      places[power - first] = static_cast<std::uint8_t>(15 - std::min(digits, 15U));
    }
    return places;
  }();
  const double magnitude = std::abs(value);
  if (!(magnitude >= 1e9 && magnitude < 1e15)) return false;
  const auto exponent = static_cast<unsigned>(std::bit_cast<std::uint64_t>(magnitude) >> 52);
  const unsigned places = places_from[exponent - 1023 - first];
  const auto scale = static_cast<double>(static_cast<std::int64_t>(integer_powers[places]));
  return decimal_of_places(value, places, scale, shift, wanted, number);
}

/// Takes eight digits at once, if that many stand there.
inline void take_eight_digits(const char*& at, const char* end, std::uint64_t& mantissa) noexcept {
  if (end - at < 8) return;
  std::uint64_t word = 0;
  std::memcpy(&word, at, sizeof word);
  constexpr std::uint64_t zeros = 0x3030'3030'3030'3030;
  constexpr std::uint64_t sixes = 0x0606'0606'0606'0606;
  constexpr std::uint64_t high = 0xF0F0'F0F0'F0F0'F0F0;
  if ((((word ^ zeros) | ((word + sixes) ^ zeros)) & high) != 0) return;
  // Pairs, then fours, then all eight; each step leaves its sums in the upper half of the lanes.
  word -= zeros;
  word = (word * 10 + (word >> 8)) & 0x00FF'00FF'00FF'00FF;
  word = (word * 100 + (word >> 16)) & 0x0000'FFFF'0000'FFFF;
  mantissa = (word * 10'000 + (word >> 32)) & 0xFFFF'FFFF;
  at += 8;
}

/// What a double's shortest digits round to, halves away from zero: the double itself rounds alike
/// where no half is nearer than its next neighbour.
///   shift   places that the decimal symbol moves to the right
///   wanted  decimals
/// False near a half, and for what takes more digits; `number` is then of no use.
[[nodiscard]] inline bool decimals_far_from_half(double value, unsigned shift, unsigned wanted,
                                                 ShortDecimal& number) noexcept {
  const auto bits = std::bit_cast<std::uint64_t>(value);
  const auto exponent = static_cast<unsigned>(bits >> 52 & 0x7FF);
  const unsigned decimals = wanted + shift;
  if (exponent >= no_places || wanted >= short_digits || decimals >= short_digits) return false;
  const std::uint64_t significand = bits << 12 >> 12 | std::uint64_t{1} << 52;
  const Wide product = Wide{significand} * integer_powers[decimals];
  const unsigned places = std::min(no_places - exponent, 127U);
  const Wide half = Wide{1} << (places - 1);
  const Wide rest = product & (2 * half - 1);
  const Wide distance = rest > half ? rest - half : half - rest;
  const Wide rounded = (product + half) >> places;
  number = {static_cast<std::uint64_t>(rounded), wanted, bits >> 63 != 0};
  return distance > integer_powers[decimals] && rounded < short_limit;
}

/// A decimal as text, "-1234.50", of at most fifteen digits; all of them. False for all others.
[[nodiscard]] inline bool decimal_of_text(std::string_view text, ShortDecimal& number) noexcept {
  constexpr std::size_t longest = 1 + 15 + 1;
  if (text.empty() || text.size() > longest) return false;
  number = {.negative = text.front() == '-'};
  const char* const begin = text.data() + (number.negative ? 1 : 0);
  const char* const end = text.data() + text.size();
  const char* at = begin;
  const char* point = end;
  take_eight_digits(at, end, number.mantissa);
  for (; at != end; ++at) {
    const auto digit = static_cast<std::uint64_t>(static_cast<unsigned char>(*at) - '0');
    if (digit > 9) {
      if (*at != '.' || point != end) return false;
      point = at;
      continue;
    }
    number.mantissa = number.mantissa * 10 + digit;
  }
  const auto digits = static_cast<std::size_t>(end - begin) - (point != end ? 1 : 0);
  // Digits on both sides of a point.
  if (digits == 0 || digits >= short_digits || point == begin || point + 1 == end) return false;
  number.decimals = point == end ? 0 : static_cast<unsigned>(end - point - 1);
  return true;
}

#if defined(__SSE2__)
struct alignas(64) DigitDivisors {
  std::uint64_t reciprocal_10000[2] = {0xD1B7'1759, 0xD1B7'1759};  // times 2^45
  std::uint64_t ten_thousand[2] = {10'000, 10'000};
  std::uint32_t reciprocal_100[4] = {5243, 5243, 5243, 5243};  // times 2^19: for four digits
  std::uint32_t hundred[4] = {100, 100, 100, 100};
  std::uint16_t reciprocal_10[8] = {6554, 6554, 6554, 6554, 6554, 6554, 6554, 6554};  // times 2^16
  std::uint16_t tens[8] = {2559, 2559, 2559, 2559, 2559, 2559, 2559, 2559};  // 10 * 256 - 1
};
inline constexpr DigitDivisors digit_divisors;

/// The values of sixteen digits, zeros in front. Every step halves the lanes: a quotient stays in
/// the lower half of its lane, the rest of the division goes into the upper one.
[[nodiscard]] inline __m128i sixteen_values(std::uint64_t mantissa) noexcept {
  // Constants that a compiler knows it makes anew each time, in more steps than loading them takes.
  const DigitDivisors* divisors = &digit_divisors;
  asm("" : "+r"(divisors));
  const auto of = [](const auto& lanes) __attribute__((always_inline)) {
    return _mm_load_si128(reinterpret_cast<const __m128i*>(lanes));
  };
  constexpr std::uint64_t eight = 100'000'000;
  const std::uint64_t front = mantissa / eight;
  const std::uint64_t behind = mantissa - front * eight;
  const __m128i eights =
      _mm_set_epi64x(static_cast<long long>(behind), static_cast<long long>(front));
  const __m128i fours_high =
      _mm_srli_epi64(_mm_mul_epu32(eights, of(divisors->reciprocal_10000)), 45);
  const __m128i fours_low =
      _mm_sub_epi64(eights, _mm_mul_epu32(fours_high, of(divisors->ten_thousand)));
  const __m128i fours = _mm_or_si128(fours_high, _mm_slli_epi64(fours_low, 32));
  const __m128i twos_high = _mm_srli_epi16(_mm_mulhi_epu16(fours, of(divisors->reciprocal_100)), 3);
  const __m128i twos_low = _mm_sub_epi16(fours, _mm_mullo_epi16(twos_high, of(divisors->hundred)));
  const __m128i twos = _mm_or_si128(twos_high, _mm_slli_epi32(twos_low, 16));
  const __m128i tens = _mm_mulhi_epu16(twos, of(divisors->reciprocal_10));
  return _mm_sub_epi16(_mm_slli_epi16(twos, 8), _mm_mullo_epi16(tens, of(divisors->tens)));
}

/// Sixteen ASCII digits, zeros in front.
[[nodiscard]] inline __m128i sixteen_digits(std::uint64_t mantissa) noexcept {
  return _mm_or_si128(sixteen_values(mantissa), _mm_set1_epi8('0'));
}
#else
/// Sixteen ASCII digits, zeros in front.
[[nodiscard]] inline std::array<std::uint64_t, 2> sixteen_digits(std::uint64_t mantissa) noexcept {
  constexpr std::uint64_t eight = 100'000'000;
  const std::uint64_t front = mantissa / eight;
  const std::uint64_t behind = mantissa - front * eight;
  const auto digits_of = [](std::uint64_t number) {
    constexpr std::uint64_t zeros = 0x3030'3030'3030'3030;
    const std::uint64_t fours =
        (number << 32) - number / 10'000 * ((std::uint64_t{10'000} << 32) - 1);
    const std::uint64_t hundreds = fours * 10'486 >> 20 & 0x0000'007F'0000'007F;
    const std::uint64_t twos = (fours << 16) - hundreds * ((100 << 16) - 1);
    const std::uint64_t tens = twos * 103 >> 10 & 0x000F'000F'000F'000F;
    return ((twos << 8) - tens * ((10 << 8) - 1)) | zeros;
  };
  return {digits_of(front), digits_of(behind)};
}
#endif

inline void put_sixteen_digits(std::uint64_t mantissa, char* out) noexcept {
  const auto digits = sixteen_digits(mantissa);
  static_assert(sizeof digits == short_digits);
  std::memcpy(out, &digits, sizeof digits);
}

/// The first lowest. What is stored as a whole and loaded in other pieces waits for memory.
[[nodiscard]] inline Wide wide_digits(std::uint64_t mantissa) noexcept {
  const auto digits = sixteen_digits(mantissa);
#if defined(__SSE2__)
  const __m128i last = _mm_unpackhi_epi64(digits, digits);
  const std::uint64_t words[] = {static_cast<std::uint64_t>(_mm_cvtsi128_si64(digits)),
                                 static_cast<std::uint64_t>(_mm_cvtsi128_si64(last))};
  return Wide{words[1]} << 64 | words[0];
#else
  return Wide{digits[1]} << 64 | digits[0];
#endif
}

}  // namespace jwnls::library

#endif  // JWNLS_LIBRARY_NUMBERS_SHORT_DECIMAL_H_
