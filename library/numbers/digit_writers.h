// ASCII digits on their way into a text, some at a time: as they come, or as digits of the locale's
// own.

#ifndef JWNLS_LIBRARY_NUMBERS_DIGIT_WRITERS_H_
#define JWNLS_LIBRARY_NUMBERS_DIGIT_WRITERS_H_

#include <cstddef>
#include <cstdint>
#include <cstring>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

#include "library/numbers/number_style.h"

namespace jwnls::library {

template <typename Word>
[[nodiscard]] inline std::uint64_t word_at(const char* digits) noexcept {
  Word word = 0;
  std::memcpy(&word, digits, sizeof word);
  return word;
}

/// Widens where units are wider. Of all eight units, or of the first four.
template <std::size_t count, typename Unit>
inline void put_word(std::uint64_t digits, Unit* out) noexcept {
  if constexpr (sizeof(Unit) == 1) {
    std::memcpy(out, &digits, count);
  } else {
#if defined(__SSE2__)
    const __m128i narrow = _mm_cvtsi64_si128(static_cast<long long>(digits));
    const __m128i wide = _mm_unpacklo_epi8(narrow, _mm_setzero_si128());
    std::memcpy(out, &wide, count * sizeof(Unit));
#else
    for (unsigned i = 0; i < count; ++i) out[i] = static_cast<Unit>(digits >> (8 * i) & 0xFF);
#endif
  }
}

/// 0 to 9.
template <typename Unit>
struct LatinDigits {
  static constexpr std::size_t units = 1;
  static constexpr std::size_t most_units = 1;

  explicit LatinDigits(const NumberStyle&) noexcept {}

  static void put_four(std::uint64_t digits, Unit* out) noexcept { put_word<4>(digits, out); }
  static void put_eight(std::uint64_t digits, unsigned, Unit* out) noexcept {
    put_word<8>(digits, out);
  }
};

/// Any others, of one length: the texts of two are copied together.
template <typename Unit>
class ListedDigits {
 public:
  static constexpr std::size_t most_units = short_symbol / sizeof(Unit);
  const std::size_t units;

  explicit ListedDigits(const NumberStyle& style) noexcept
      : units(style.digits[0].text<Unit>().size()),
        digits_(style.short_texts_in<Unit>().own_digits) {}

  void put_four(std::uint64_t digits, Unit* out) const noexcept {
    const std::uint64_t values = digits & 0x0F0F'0F0F;
    put_two(values, out);
    put_two(values >> 16, out + 2 * units);
  }

  /// So many of them, or some more.
  void put_eight(std::uint64_t digits, unsigned count, Unit* out) const noexcept {
    put_four(digits, out);
    if (count > 4) put_four(digits >> 32, out + 4 * units);
  }

 private:
  void put_two(std::uint64_t values, Unit* out) const noexcept {
    const std::uint64_t texts = digits_.first[values & 0xFF] | digits_.second[values >> 8 & 0xFF];
    std::memcpy(out, &texts, sizeof texts);
  }

  const OwnDigitTexts& digits_;
};

#if defined(__SSE2__)
/// Ten in a row, as nearly all are: what each is worth is added to the text of zeros, where its
/// last unit ends. Of two to four bytes: their texts side by side, or two in either half of a
/// register.
template <typename Unit, std::size_t digit_units>
class AddedDigits {
 public:
  static constexpr std::size_t most_units = short_symbol / sizeof(Unit);
  static constexpr std::size_t units = digit_units;

  explicit AddedDigits(const NumberStyle& style) noexcept
      : zeros_(load(style.short_texts_in<Unit>().own_digits.zeros)) {}

  void put_four(std::uint64_t digits, Unit* out) const noexcept {
    const __m128i twice = doubled(_mm_cvtsi32_si128(static_cast<int>(digits)));
    if constexpr (bytes == 2) {
      _mm_storel_epi64(reinterpret_cast<__m128i*>(out), _mm_add_epi16(in_last_unit(twice), zeros_));
      return;
    }
    // Each digit stands four times, a byte of which is where its text wants it.
    const __m128i four_times = _mm_unpacklo_epi16(twice, twice);
    if constexpr (bytes == 3) {
      const __m128i apart = _mm_and_si128(four_times, _mm_set1_epi64x(0xFF00'00FF'0000));
      const __m128i texts = _mm_add_epi64(apart, zeros_);
      _mm_storel_epi64(reinterpret_cast<__m128i*>(out), texts);
      _mm_storeh_pi(reinterpret_cast<__m64*>(out + 2 * units), _mm_castsi128_ps(texts));
    } else {
      constexpr unsigned last = sizeof(Unit) == 1 ? 0xFF00'0000 : 0x00FF'0000;
      const __m128i apart = _mm_and_si128(four_times, _mm_set1_epi32(static_cast<int>(last)));
      store(_mm_add_epi32(apart, zeros_), out);
    }
  }

  /// So many of them, or some more.
  void put_eight(std::uint64_t digits, unsigned count, Unit* out) const noexcept {
    if constexpr (bytes == 2) {
      const __m128i twice = doubled(_mm_cvtsi64_si128(static_cast<long long>(digits)));
      store(_mm_add_epi16(in_last_unit(twice), zeros_), out);
    } else {
      put_four(digits, out);
      if (count > 4) put_four(digits >> 32, out + 4 * units);
    }
  }

 private:
  static constexpr std::size_t bytes = digit_units * sizeof(Unit);
  static_assert(bytes >= 2 && bytes <= 4 && (bytes != 3 || sizeof(Unit) == 1));

  static __m128i doubled(__m128i digits) noexcept { return _mm_unpacklo_epi8(digits, digits); }
  static __m128i in_last_unit(__m128i doubled_digits) noexcept {
    return sizeof(Unit) == 1 ? _mm_slli_epi16(doubled_digits, 8)
                             : _mm_srli_epi16(doubled_digits, 8);
  }
  static __m128i load(const std::uint64_t* two) noexcept {
    return _mm_loadu_si128(reinterpret_cast<const __m128i*>(two));
  }
  static void store(__m128i texts, Unit* out) noexcept {
    _mm_storeu_si128(reinterpret_cast<__m128i*>(out), texts);
  }

  const __m128i zeros_;
};
#else
template <typename Unit, std::size_t>
using AddedDigits = ListedDigits<Unit>;
#endif

}  // namespace jwnls::library

#endif  // JWNLS_LIBRARY_NUMBERS_DIGIT_WRITERS_H_
