// Powers of ten, digit counts, and the digits of small numbers.

#ifndef JWNLS_MODULE_DIGITS_POWERS_OF_TEN_H_
#define JWNLS_MODULE_DIGITS_POWERS_OF_TEN_H_

#include <array>
#include <bit>
#include <cstddef>
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

/// number / 10^9, for numbers below 10^18.
constexpr std::uint64_t over_ten_to_9(std::uint64_t number) noexcept {
  constexpr std::uint64_t reciprocal = 0x89705F4136B4A598;  // 2^93 / 10^9, rounded up
  return static_cast<std::uint64_t>(static_cast<unsigned __int128>(number) * reciprocal >> 93);
}

/// number / 10^18, for any number.
constexpr std::uint64_t over_ten_to_18(std::uint64_t number) noexcept {
  constexpr std::uint64_t reciprocal = 0x9392EE8E921E;  // 2^89 / 5^18, rounded up
  return static_cast<std::uint64_t>(static_cast<unsigned __int128>(number >> 18) * reciprocal >>
                                    89);
}

/// number / 10^16, for any number.
constexpr std::uint64_t over_ten_to_16(std::uint64_t number) noexcept {
  constexpr std::uint64_t reciprocal = 0x39A5652FB1137857;  // 2^115 / 10^16, rounded up
  return static_cast<std::uint64_t>(static_cast<unsigned __int128>(number) * reciprocal >> 115);
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

/// What is known of a number by its highest bit.
struct BitRow {
  std::uint64_t more_from;    // from this number on it has a digit more than the least
  std::uint64_t least_count;  // of digits
  // What brings the first digit of a number below 10^16 to the place of the sixteenth: by the least
  // count of digits, and by one more.
  std::uint64_t least_factor;
  std::uint64_t more_factor;

  constexpr int count(std::uint64_t number) const noexcept {
    return static_cast<int>(least_count) + (number >= more_from ? 1 : 0);
  }
  constexpr std::uint64_t factor(std::uint64_t number) const noexcept {
    const std::uint64_t least = least_factor, more = more_factor;  // both loaded: no branch
    return number >= more_from ? more : least;
  }
};

inline constexpr auto bit_rows = [] {
  std::array<BitRow, 64> rows{};
  std::size_t count = 1;
  for (std::size_t i = 0; i < rows.size(); ++i) {
    if (count < 20 && std::uint64_t{1} << i >= powers_of_ten[count]) ++count;
    rows[i] = {count < 20 ? powers_of_ten[count] : ~std::uint64_t{0}, count,
               count <= 16 ? powers_of_ten[16 - count] : 1,
               count <= 15 ? powers_of_ten[15 - count] : 1};
  }
  return rows;
}();

constexpr const BitRow& bit_row_of(std::uint64_t number) noexcept {
  return bit_rows[static_cast<std::size_t>(63 - std::countl_zero(number | 1))];
}

/// How many digits a number has; 0 has one.
constexpr int digit_count(std::uint64_t number) noexcept {
  return bit_row_of(number).count(number);
}

}  // namespace jwnls

#endif  // JWNLS_MODULE_DIGITS_POWERS_OF_TEN_H_
