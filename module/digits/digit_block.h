// Sixteen digits at once, in a register, and from there into the caller's buffer as units of either
// width: without tables of digits, without branches on their number, and without a local copy,
// whose loads would wait for the stores before them.
//
// The first digit of a text stands first in the block, so numbers of fewer digits are multiplied by
// a power of ten beforehand; the digits behind the text are zeros then, and as units they become
// zero units.

#ifndef JWNLS_MODULE_DIGITS_DIGIT_BLOCK_H_
#define JWNLS_MODULE_DIGITS_DIGIT_BLOCK_H_

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#if defined(__SSE2__)
#include <emmintrin.h>
#endif

#include "module/digits/powers_of_ten.h"

namespace jwnls {

inline constexpr int block_digits = 16;

namespace digit_block {

// As many characters "0" as the row's index, then zeros.
struct alignas(block_digits) CharacterRow {
  char zeros[block_digits];
};
inline constexpr auto character_rows = [] {
  std::array<CharacterRow, block_digits + 1> rows{};
  for (std::size_t count = 0; count < rows.size(); ++count) {
    for (std::size_t i = 0; i < count; ++i) rows[count].zeros[i] = '0';
  }
  return rows;
}();

// Read from any of its first places on.
inline constexpr unsigned char first_bytes[2 * block_digits] = {
    0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF};

// What a small and a capital letter are above a digit of their value, sixteen times.
inline constexpr auto letter_offsets = [] {
  std::array<std::array<char, block_digits>, 2> offsets{};
  offsets[0].fill('a' - '0' - 10);
  offsets[1].fill('A' - '0' - 10);
  return offsets;
}();

#if defined(__SSE2__)

using Bytes = __m128i;

inline Bytes load(const void* from) noexcept {
  return _mm_loadu_si128(static_cast<const __m128i*>(from));
}

inline Bytes zeros(unsigned count) noexcept {
  return _mm_load_si128(reinterpret_cast<const __m128i*>(character_rows[count].zeros));
}

// A factor that the compiler shall not make sums of shifts of.
inline __m128i factor(__m128i value) noexcept {
  asm("" : "+x"(value));
  return value;
}

// The sixteen digits of a number below 10^16.
inline Bytes decimal_digits(std::uint64_t number) noexcept {
  const __m128i upper = _mm_cvtsi64_si128(static_cast<std::int64_t>(over_ten_to_8(number)));
  const __m128i lower = _mm_sub_epi64(_mm_cvtsi64_si128(static_cast<std::int64_t>(number)),
                                      _mm_mul_epu32(upper, _mm_set1_epi64x(100'000'000)));
  const __m128i eights = _mm_unpacklo_epi64(upper, lower);
  // Each part becomes its quotient and its rest, three times over: parts of eight digits by 10^4
  // (3518437209/2^45 is its reciprocal for all 32-bit numbers), of four by 100 (5243/2^19), of two
  // by 10 (6554/2^16).
  const __m128i myriads = _mm_srli_epi64(_mm_mul_epu32(eights, _mm_set1_epi64x(3518437209)), 45);
  const __m128i swapped = _mm_add_epi64(  // 2^32 * quotient + rest
      eights, _mm_mul_epu32(myriads, _mm_set1_epi64x((std::int64_t{1} << 32) - 10000)));
  const __m128i fours = _mm_shuffle_epi32(swapped, _MM_SHUFFLE(2, 3, 0, 1));
  const __m128i hundreds = _mm_srli_epi16(_mm_mulhi_epu16(fours, _mm_set1_epi16(5243)), 3);
  const __m128i below =
      _mm_sub_epi16(fours, _mm_mullo_epi16(hundreds, factor(_mm_set1_epi16(100))));
  const __m128i twos = _mm_or_si128(hundreds, _mm_slli_epi32(below, 16));
  const __m128i tens = _mm_mulhi_epu16(twos, _mm_set1_epi16(6554));
  // tens + 256 * (twos - 10 * tens)
  return _mm_sub_epi16(_mm_slli_epi16(twos, 8),
                       _mm_mullo_epi16(tens, factor(_mm_set1_epi16(2559))));
}

// The sixteen hexadecimal digits of a number; those above 9 are letters less '0'.
inline Bytes hexadecimal_digits(std::uint64_t number, bool capital) noexcept {
  const __m128i pairs = _mm_cvtsi64_si128(static_cast<std::int64_t>(__builtin_bswap64(number)));
  const __m128i digits =
      _mm_and_si128(_mm_unpacklo_epi8(_mm_srli_epi16(pairs, 4), pairs), _mm_set1_epi8(0xF));
  const __m128i letters = _mm_and_si128(_mm_cmpgt_epi8(digits, _mm_set1_epi8(9)),
                                        load(letter_offsets[capital ? 1 : 0].data()));
  return _mm_add_epi8(digits, letters);
}

inline Bytes add(Bytes a, Bytes b) noexcept { return _mm_add_epi8(a, b); }

// A bit for each byte that is zero, the first lowest.
inline std::uint32_t zero_bits(Bytes bytes) noexcept {
  return static_cast<std::uint32_t>(_mm_movemask_epi8(_mm_cmpeq_epi8(bytes, _mm_setzero_si128())));
}

inline char first_of(Bytes bytes) noexcept { return static_cast<char>(_mm_cvtsi128_si32(bytes)); }

inline void store(Bytes bytes, char* out) noexcept {
  _mm_storeu_si128(reinterpret_cast<__m128i*>(out), bytes);
}
inline void store(Bytes bytes, char16_t* out) noexcept {
  const __m128i zeros = _mm_setzero_si128();
  _mm_storeu_si128(reinterpret_cast<__m128i*>(out), _mm_unpacklo_epi8(bytes, zeros));
  _mm_storeu_si128(reinterpret_cast<__m128i*>(out + 8), _mm_unpackhi_epi8(bytes, zeros));
}

// The first `count` bytes, then the others moved up by one; the byte between them is undefined, the
// last is lost.
inline Bytes parted(Bytes bytes, unsigned count) noexcept {
  const __m128i first = load(first_bytes + (block_digits - count));
  return _mm_or_si128(_mm_and_si128(first, bytes),
                      _mm_andnot_si128(first, _mm_slli_si128(bytes, 1)));
}

#else

struct Bytes {
  unsigned char at[block_digits];
};

inline Bytes load(const void* from) noexcept {
  Bytes bytes;
  std::memcpy(bytes.at, from, sizeof bytes.at);
  return bytes;
}

inline Bytes zeros(unsigned count) noexcept { return load(character_rows[count].zeros); }

inline Bytes decimal_digits(std::uint64_t number) noexcept {
  const std::uint64_t upper = over_ten_to_8(number);
  const std::uint64_t halves[2] = {
      eight_digits(static_cast<std::uint32_t>(upper)),
      eight_digits(static_cast<std::uint32_t>(number - ten_to_8 * upper))};
  return load(halves);
}

inline Bytes hexadecimal_digits(std::uint64_t number, bool capital) noexcept {
  Bytes bytes;
  for (int i = 0; i < block_digits; ++i) {
    const auto digit = static_cast<int>(number >> (60 - 4 * i) & 0xF);
    bytes.at[i] =
        static_cast<unsigned char>(digit + (digit < 10 ? 0 : letter_offsets[capital ? 1 : 0][i]));
  }
  return bytes;
}

inline Bytes add(Bytes a, const Bytes& b) noexcept {
  for (int i = 0; i < block_digits; ++i) a.at[i] = static_cast<unsigned char>(a.at[i] + b.at[i]);
  return a;
}

inline std::uint32_t zero_bits(const Bytes& bytes) noexcept {
  std::uint32_t bits = 0;
  for (int i = 0; i < block_digits; ++i) bits |= bytes.at[i] == 0 ? 1u << i : 0;
  return bits;
}

inline char first_of(const Bytes& bytes) noexcept { return static_cast<char>(bytes.at[0]); }

template <typename Unit>
inline void store(const Bytes& bytes, Unit* out) noexcept {
  for (int i = 0; i < block_digits; ++i) out[i] = static_cast<Unit>(bytes.at[i]);
}

inline Bytes parted(Bytes bytes, unsigned count) noexcept {
  for (unsigned i = block_digits - 1; i > count; --i) bytes.at[i] = bytes.at[i - 1];
  return bytes;
}

#endif

}  // namespace digit_block

/// Writes a number below 10^16 as sixteen digits, zeros in front.
inline void write_16_digits(std::uint64_t number, char* out) noexcept {
  using namespace digit_block;
  store(add(decimal_digits(number), zeros(block_digits)), out);
}

/// Up to sixteen digits of a number, the first of its text in front, and zeros behind.
class DigitBlock {
 public:
  /// The last `count` decimal digits, 0 to 16, of a number below 10^count.
  DigitBlock(std::uint64_t number, int count) noexcept
      : bytes_(digit_block::decimal_digits(number * powers_of_ten[block_digits - count])) {}

  /// A number below 10^16, with zeros in front of it until it has as many digits as `counted`: the
  /// number itself, or a greater one below 10^16. `count` becomes how many those are.
  DigitBlock(std::uint64_t number, std::uint64_t counted, int& count) noexcept {
    const BitRow& row = bit_row_of(counted);
    bytes_ = digit_block::decimal_digits(number * row.factor(counted));
    count = row.count(counted);
  }

  /// The sixteen hexadecimal digits of a number.
  static DigitBlock hexadecimal(std::uint64_t number, bool capital) noexcept {
    return DigitBlock(digit_block::hexadecimal_digits(number, capital));
  }

  /// How many of the first `kept` digits are left when their trailing zeros go.
  int significant(int kept) const noexcept {
    return 32 - std::countl_zero(~digit_block::zero_bits(bytes_) & ((1u << kept) - 1));
  }

  /// Writes sixteen units: the first `shown` digits, behind which the block has only zeros, and
  /// zero units.
  template <typename Unit>
  void write(int shown, Unit* out) const noexcept {
    digit_block::store(characters(shown), out);
  }

  /// Writes seventeen units: the same with `symbol` behind the first digit.
  template <typename Unit>
  void write_first_parted(Unit symbol, int shown, Unit* out) const noexcept {
    const digit_block::Bytes text = characters(shown);
    digit_block::store(text, out + 1);
    out[0] = static_cast<Unit>(digit_block::first_of(text));
    out[1] = symbol;
  }

  /// Writes seventeen units: the same with `symbol` behind the first `integers` (up to 15).
  template <typename Unit>
  void write_parted(int integers, Unit symbol, int shown, Unit* out) const noexcept {
    const digit_block::Bytes text = characters(shown);
    digit_block::store(text, out + 1);
    digit_block::store(digit_block::parted(text, static_cast<unsigned>(integers)), out);
    out[integers] = symbol;
  }

 private:
  explicit DigitBlock(digit_block::Bytes bytes) noexcept : bytes_(bytes) {}

  digit_block::Bytes characters(int shown) const noexcept {
    using namespace digit_block;
    return add(bytes_, zeros(static_cast<unsigned>(shown)));
  }

  digit_block::Bytes bytes_;
};

}  // namespace jwnls

#endif  // JWNLS_MODULE_DIGITS_DIGIT_BLOCK_H_
