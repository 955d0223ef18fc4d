// Sixteen decimal digits in a register, and how they are stored as units of either width.
//
// Digits that go through memory on their way to the text cost a stall where a load spans two
// stores, so short numbers stay here until their units are final.

#ifndef JWNLS_MODULE_NUMFMT_DIGIT_BLOCK_H_
#define JWNLS_MODULE_NUMFMT_DIGIT_BLOCK_H_

#include <bit>
#include <cstdint>
#include <cstring>

#include "module/numfmt/digit_text.h"

namespace jwnls {

inline constexpr int block_digits = 16;

/// ASCII digits, the first in the lowest byte.
struct DigitBlock {
  unsigned __int128 bytes;

  /// The digits from digit i (0 to 15) on.
  DigitBlock from(int i) const noexcept { return {bytes >> 8 * i}; }
};

/// The last `count` (1 to 16) digits of a number below 10^16, zeros in front.
inline DigitBlock last_digits(std::uint64_t number, int count) noexcept {
  const std::uint64_t upper = over_ten_to_8(number);
  const std::uint64_t high = eight_digits(static_cast<std::uint32_t>(upper));
  const std::uint64_t low = eight_digits(static_cast<std::uint32_t>(number - ten_to_8 * upper));
  const unsigned __int128 all =
      static_cast<unsigned __int128>(low + ascii_zeros) << 64 | (high + ascii_zeros);
  return DigitBlock{all}.from(block_digits - count);
}

/// The last `count` (1 to 16) hexadecimal digits of a number; `letters` is what lies between '9'
/// and the letter for ten, less one: 39 for small letters, 7 for capitals.
inline DigitBlock last_hexadecimal_digits(std::uint64_t number, int count,
                                          unsigned letters) noexcept {
  const auto eight = [letters](std::uint32_t half) {
    std::uint64_t x = __builtin_bswap32(half);
    x = (x | x << 16) & 0x0000FFFF0000FFFF;
    x = (x | x << 8) & 0x00FF00FF00FF00FF;
    x = (x >> 4 | x << 8) & 0x0F0F0F0F0F0F0F0F;
    const std::uint64_t tens = (x + 0x0606060606060606) >> 4 & 0x0101010101010101;
    return x + ascii_zeros + tens * letters;
  };
  const unsigned __int128 all =
      static_cast<unsigned __int128>(eight(static_cast<std::uint32_t>(number))) << 64 |
      eight(static_cast<std::uint32_t>(number >> 32));
  return DigitBlock{all}.from(block_digits - count);
}

/// Stores sixteen units, whatever lies behind the block's digits.
template <typename Unit>
inline void store_block(DigitBlock block, Unit* out) noexcept {
  if constexpr (sizeof(Unit) == 1) {
    std::memcpy(out, &block.bytes, sizeof block.bytes);
  } else {
    typedef unsigned char Bytes __attribute__((vector_size(8)));
    typedef char16_t Units __attribute__((vector_size(16)));
    for (int half = 0; half < 2; ++half) {
      const auto word = static_cast<std::uint64_t>(block.bytes >> 64 * half);
      const Units units = __builtin_convertvector(std::bit_cast<Bytes>(word), Units);
      std::memcpy(out + 8 * half, &units, sizeof units);
    }
  }
}

/// The zeros that end the first `count` (1 to 16) digits.
inline int count_trailing_zeros(DigitBlock block, int count) noexcept {
  // Digits to their values, the wanted ones to the upper end; a guard below stops the count at all.
  const unsigned __int128 zeros = static_cast<unsigned __int128>(ascii_zeros) << 64 | ascii_zeros;
  const unsigned __int128 values = (block.bytes ^ zeros) << 8 * (block_digits - count);
  const auto high = static_cast<std::uint64_t>(values >> 64);
  const auto low = static_cast<std::uint64_t>(values);
  const int bits = high != 0 ? std::countl_zero(high) : low != 0 ? 64 + std::countl_zero(low) : 128;
  const int bytes = bits / 8;
  return bytes < count ? bytes : count;
}

/// A run of ASCII digits in memory, of which whole blocks may be read.
struct DigitRun {
  const char* text;
};

/// Stores `count` digits from digit `i` on; up to 15 units more are overwritten.
template <typename Unit>
inline void store_digits(DigitBlock digits, int i, int /*count*/, Unit* out) noexcept {
  store_block(digits.from(i), out);
}

template <typename Unit>
inline void store_digits(DigitRun digits, int i, int count, Unit* out) noexcept {
  const char* from = digits.text + i;
  for (int done = 0; done < count; done += block_digits) {
    DigitBlock block;
    std::memcpy(&block.bytes, from + done, sizeof block.bytes);
    store_block(block, out + done);
  }
}

}  // namespace jwnls

#endif  // JWNLS_MODULE_NUMFMT_DIGIT_BLOCK_H_
