// Sixteen digits at once as units of either width, without tables or branches.
//
// The sixteen digits of a number are written into a small block, zeros in front; what a text shows
// of them is then copied in whole blocks from wherever it begins, so the number of digits costs
// nothing.

#ifndef JWNLS_MODULE_NUMFMT_DIGIT_BLOCK_H_
#define JWNLS_MODULE_NUMFMT_DIGIT_BLOCK_H_

#include <bit>
#include <cstdint>
#include <cstring>
#if defined(__SSE2__)
#include <emmintrin.h>
#endif

#include "module/numfmt/digit_text.h"

namespace jwnls {

inline constexpr int block_digits = 16;

namespace digit_block {

#if defined(__SSE2__)

// The eight digits of a number below 10^8, as 16-bit values.
inline __m128i eight_values(std::uint32_t number) noexcept {
  // Upper and lower four digits: 3518437209/2^45 is 1/10^4 for all 32-bit numbers.
  const __m128i all = _mm_cvtsi32_si128(static_cast<int>(number));
  const __m128i upper =
      _mm_srli_epi64(_mm_mul_epu32(all, _mm_set1_epi32(static_cast<int>(3518437209u))), 45);
  const __m128i lower = _mm_sub_epi32(all, _mm_mul_epu32(upper, _mm_set1_epi32(10000)));
  // Four times each half in four lanes; the lanes divide by 1000, 100, 10 and 1, in two steps whose
  // constants are reciprocals of 16 bits: 8389/2^23, 5243/2^19, 13108/2^17, 32768/2^15.
  const __m128i halves = _mm_slli_epi64(_mm_unpacklo_epi16(upper, lower), 2);
  const __m128i pairs = _mm_unpacklo_epi16(halves, halves);
  const __m128i lanes = _mm_unpacklo_epi32(pairs, pairs);
  const __m128i scaled =
      _mm_mulhi_epu16(lanes, _mm_setr_epi16(8389, 5243, 13108, static_cast<short>(32768), 8389,
                                            5243, 13108, static_cast<short>(32768)));
  const __m128i leading = _mm_mulhi_epu16(
      scaled, _mm_setr_epi16(1 << 7, 1 << 11, 1 << 13, static_cast<short>(1 << 15), 1 << 7, 1 << 11,
                             1 << 13, static_cast<short>(1 << 15)));
  // The leading digits "a", "ab", "abc", "abcd" less ten times the ones before.
  const __m128i tenfold = _mm_mullo_epi16(leading, _mm_set1_epi16(10));
  return _mm_sub_epi16(leading, _mm_slli_epi64(tenfold, 16));
}

struct Values {
  __m128i high, low;
};

inline Values sixteen_values(std::uint64_t number) noexcept {
  const std::uint64_t upper = over_ten_to_8(number);
  return {eight_values(static_cast<std::uint32_t>(upper)),
          eight_values(static_cast<std::uint32_t>(number - ten_to_8 * upper))};
}

inline void store(Values values, char16_t* out) noexcept {
  const __m128i zeros = _mm_set1_epi16('0');
  _mm_storeu_si128(reinterpret_cast<__m128i*>(out), _mm_add_epi16(values.high, zeros));
  _mm_storeu_si128(reinterpret_cast<__m128i*>(out + 8), _mm_add_epi16(values.low, zeros));
}

inline void store(Values values, char* out) noexcept {
  const __m128i bytes = _mm_packus_epi16(values.high, values.low);
  _mm_storeu_si128(reinterpret_cast<__m128i*>(out), _mm_add_epi8(bytes, _mm_set1_epi8('0')));
}

// A bit for each digit that is zero, the first lowest.
inline std::uint32_t zero_bits(Values values) noexcept {
  const __m128i bytes = _mm_packus_epi16(values.high, values.low);
  return static_cast<std::uint32_t>(_mm_movemask_epi8(_mm_cmpeq_epi8(bytes, _mm_setzero_si128())));
}

template <typename Unit>
inline void store_hexadecimal(std::uint64_t number, char ten, Unit* out) noexcept {
  const auto bytes = static_cast<std::int64_t>(__builtin_bswap64(number));
  const __m128i nibble = _mm_set1_epi8(0xF);
  const __m128i pairs = _mm_cvtsi64_si128(bytes);
  const __m128i digits = _mm_unpacklo_epi8(_mm_and_si128(_mm_srli_epi16(pairs, 4), nibble),
                                           _mm_and_si128(pairs, nibble));
  const __m128i letters = _mm_and_si128(_mm_cmpgt_epi8(digits, _mm_set1_epi8(9)),
                                        _mm_set1_epi8(static_cast<char>(ten - '0' - 10)));
  const __m128i text = _mm_add_epi8(_mm_add_epi8(digits, _mm_set1_epi8('0')), letters);
  if constexpr (sizeof(Unit) == 1) {
    _mm_storeu_si128(reinterpret_cast<__m128i*>(out), text);
  } else {
    const __m128i zeros = _mm_setzero_si128();
    _mm_storeu_si128(reinterpret_cast<__m128i*>(out), _mm_unpacklo_epi8(text, zeros));
    _mm_storeu_si128(reinterpret_cast<__m128i*>(out + 8), _mm_unpackhi_epi8(text, zeros));
  }
}

#else

template <typename Unit>
inline void store_hexadecimal(std::uint64_t number, char ten, Unit* out) noexcept {
  for (int i = 0; i < block_digits; ++i) {
    const auto digit = static_cast<int>(number >> (60 - 4 * i) & 0xF);
    out[i] = static_cast<Unit>(digit < 10 ? '0' + digit : ten + digit - 10);
  }
}

struct Values {
  std::uint64_t bytes[2];
};

inline Values sixteen_values(std::uint64_t number) noexcept {
  const std::uint64_t upper = over_ten_to_8(number);
  return {{eight_digits(static_cast<std::uint32_t>(upper)),
           eight_digits(static_cast<std::uint32_t>(number - ten_to_8 * upper))}};
}

template <typename Unit>
inline void store(const Values& values, Unit* out) noexcept {
  for (int i = 0; i < block_digits; ++i) {
    out[i] = static_cast<Unit>('0' + (values.bytes[i / 8] >> i % 8 * 8 & 0xFF));
  }
}

inline std::uint32_t zero_bits(const Values& values) noexcept {
  std::uint32_t bits = 0;
  for (int i = 0; i < block_digits; ++i) {
    if ((values.bytes[i / 8] >> i % 8 * 8 & 0xFF) == 0) bits |= 1u << i;
  }
  return bits;
}

#endif

}  // namespace digit_block

/// Writes a number below 10^16 as sixteen digits, zeros in front.
inline void write_16_digits(std::uint64_t number, char* out) noexcept {
  digit_block::store(digit_block::sixteen_values(number), out);
}

/// Writes a number below 10^18 as eighteen digits, zeros in front.
inline void write_18_digits(std::uint64_t number, char* out) noexcept {
  const std::uint64_t front = number / ten_to_16;
  out[0] = static_cast<char>('0' + front / 10);
  out[1] = static_cast<char>('0' + front % 10);
  write_16_digits(number - front * ten_to_16, out + 2);
}

/// The digits of one number; behind them a block of zero units, so that whole blocks can be copied
/// from any digit.
template <typename Unit>
class DigitBlock {
 public:
  /// A number below 10^16.
  explicit DigitBlock(std::uint64_t number) noexcept {
    const digit_block::Values values = digit_block::sixteen_values(number);
    digit_block::store(values, units_);
    std::memset(units_ + block_digits, 0, block_digits * sizeof(Unit));
    // Without a branch, which numbers of all lengths would take at random.
    count_ = block_digits - std::countr_zero(~digit_block::zero_bits(values) | 0x8000);
  }

  /// The hexadecimal digits of any number, in letters from `ten` on.
  DigitBlock(std::uint64_t number, char ten) noexcept {
    digit_block::store_hexadecimal(number, ten, units_);
    std::memset(units_ + block_digits, 0, block_digits * sizeof(Unit));
  }

  /// How many digits a decimal number has; 0 has one.
  int count() const noexcept { return count_; }

  /// The last `count` digits, 0 to 16.
  const Unit* last(int count) const noexcept { return units_ + block_digits - count; }

 private:
  int count_ = 0;
  Unit units_[2 * block_digits];
};

/// Copies sixteen units.
template <typename Unit>
inline void copy_block(const Unit* from, Unit* to) noexcept {
  Unit block[block_digits];
  std::memcpy(block, from, sizeof block);
  std::memcpy(to, block, sizeof block);
}

/// Of the first `kept` of a number's last `count` digits (at most 16), how many stay when their
/// trailing zeros go.
inline int without_trailing_zeros(std::uint64_t number, int count, int kept) noexcept {
  const int first = block_digits - count;
  const std::uint32_t zeros = digit_block::zero_bits(digit_block::sixteen_values(number));
  const std::uint32_t others = ~zeros & ((1u << (first + kept)) - 1);
  const int behind_last = 32 - std::countl_zero(others);
  return behind_last > first ? behind_last - first : 0;
}

/// A run of ASCII digits in memory.
struct DigitRun {
  const char* text;
};

/// Stores `count` digits from digit `i` on; up to 15 units more are overwritten.
template <typename Unit>
inline void store_digits(DigitRun digits, int i, int count, Unit* out) noexcept {
  const char* from = digits.text + i;
  int done = 0;
  for (; done + block_digits <= count; done += block_digits) {
    for (int k = 0; k < block_digits; ++k) {
      out[done + k] = static_cast<Unit>(static_cast<unsigned char>(from[done + k]));
    }
  }
  // One by one: behind the digits lies what the stack held before, which no output may show.
  for (; done < count; ++done)
    out[done] = static_cast<Unit>(static_cast<unsigned char>(from[done]));
}

/// The last `count` digits of a number below 10^16, for layouts that take either kind.
struct ShortDigits {
  std::uint64_t number = 0;
  int count = 1;
};

}  // namespace jwnls

#endif  // JWNLS_MODULE_NUMFMT_DIGIT_BLOCK_H_
