// Powers of ten, digit counts, and the digits of small numbers.

#ifndef JWNLS_MODULE_NUMFMT_DIGIT_TEXT_H_
#define JWNLS_MODULE_NUMFMT_DIGIT_TEXT_H_

#include <bit>
#include <cstdint>

namespace jwnls {

static_assert(std::endian::native == std::endian::little, "the first digit is the lowest byte");

inline constexpr std::uint64_t ten_to_8 = 100'000'000;
inline constexpr std::uint64_t ten_to_16 = ten_to_8 * ten_to_8;
inline constexpr std::uint64_t ten_to_18 = 100 * ten_to_16;

/// Powers of ten that a 64-bit word holds.
inline constexpr std::uint64_t powers_of_ten[20] = {
    1ull,
    10ull,
    100ull,
    1'000ull,
    10'000ull,
    100'000ull,
    1'000'000ull,
    10'000'000ull,
    100'000'000ull,
    1'000'000'000ull,
    10'000'000'000ull,
    100'000'000'000ull,
    1'000'000'000'000ull,
    10'000'000'000'000ull,
    100'000'000'000'000ull,
    1'000'000'000'000'000ull,
    10'000'000'000'000'000ull,
    100'000'000'000'000'000ull,
    1'000'000'000'000'000'000ull,
    10'000'000'000'000'000'000ull,
};

// Quotients by constants as the multiplications they are: where the compiler takes a block for
// unlikely it would divide, which costs more than all the rest of a number's digits.

/// number / 10^8, for any number.
constexpr std::uint64_t over_ten_to_8(std::uint64_t number) noexcept {
  constexpr std::uint64_t reciprocal = 0xABCC77118461CEFD;  // 2^90 / 10^8, rounded up
  return static_cast<std::uint64_t>(static_cast<unsigned __int128>(number) * reciprocal >> 90);
}

/// number / 10^4, for numbers below 10^8.
constexpr std::uint32_t over_ten_to_4(std::uint32_t number) noexcept {
  constexpr std::uint64_t reciprocal = 109951163;  // 2^40 / 10^4, rounded up
  return static_cast<std::uint32_t>(number * reciprocal >> 40);
}

/// The eight decimal digits of a number below 10^8 as the bytes 0 to 9, the first in the lowest
/// byte.
constexpr std::uint64_t eight_digits(std::uint32_t number) noexcept {
  // Split in halves three times, all parts at once: 10486/2^20 is 1/100 for numbers below 10^4, and
  // 103/2^10 is 1/10 for numbers below 100.
  const std::uint32_t upper = over_ten_to_4(number);
  const std::uint64_t fours = upper | std::uint64_t{number - 10000 * upper} << 32;
  const std::uint64_t hundreds = (fours * 10486 >> 20) & 0x0000007F0000007F;
  const std::uint64_t twos = hundreds | (fours - 100 * hundreds) << 16;
  const std::uint64_t tens = (twos * 103 >> 10) & 0x000F000F000F000F;
  return tens | (twos - 10 * tens) << 8;
}

/// How many digits a number has; 0 has none.
constexpr int digit_count(std::uint64_t number) noexcept {
  // 1233/2^12 approximates log10(2); the estimate is the count or one more.
  const int estimate = (64 - std::countl_zero(number)) * 1233 >> 12;
  return estimate + (number >= powers_of_ten[estimate] ? 1 : 0);
}

}  // namespace jwnls

#endif  // JWNLS_MODULE_NUMFMT_DIGIT_TEXT_H_
