// Where the digits of a text stand, as bits, and so its numbers, without a look at every byte.

#ifndef JWNLS_LIBRARY_LOCALE_DATA_NUMBER_RUNS_H_
#define JWNLS_LIBRARY_LOCALE_DATA_NUMBER_RUNS_H_

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>
#include <string_view>

#include "library/locale_data/date_characters.h"

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace jwnls::library {

inline constexpr std::size_t longest_outlined = 64;  // bytes

/// A bit for each byte of a text of at most longest_outlined bytes: whether it is a digit.
[[nodiscard]] inline std::uint64_t digits_of(std::string_view text) noexcept {
#if defined(__SSE2__)
  const auto digits_in = [](__m128i bytes) {
    const __m128i values = _mm_sub_epi8(bytes, _mm_set1_epi8('0'));
    const __m128i digits = _mm_cmpeq_epi8(_mm_min_epu8(values, _mm_set1_epi8(9)), values);
    return std::uint64_t{static_cast<unsigned>(_mm_movemask_epi8(digits))};
  };
  const char* const begin = text.data();
  const std::size_t size = text.size();
  if (size >= 16) {
    const auto block = [begin](std::size_t at) {
      return _mm_loadu_si128(reinterpret_cast<const __m128i*>(begin + at));
    };
    // The last block may overlap the one before: a bit that is set twice is set.
    const std::size_t last = size - 16;
    std::uint64_t digits = digits_in(block(last)) << last;
    for (std::size_t at = 0; at < last; at += 16) digits |= digits_in(block(at)) << at;
    return digits;
  }
  std::uint64_t front = 0;
  if (size < 8) {
    for (std::size_t i = size; i-- > 0;) front = front << 8 | static_cast<unsigned char>(begin[i]);
    return digits_in(_mm_cvtsi64_si128(static_cast<long long>(front)));
  }
  std::uint64_t back = 0;
  std::memcpy(&front, begin, 8);
  std::memcpy(&back, begin + size - 8, 8);
  const std::uint64_t digits =
      digits_in(_mm_set_epi64x(static_cast<long long>(back), static_cast<long long>(front)));
  return (digits & 0xFF) | digits >> 8 << (size - 8);
#else
  std::uint64_t digits = 0;
  for (std::size_t at = 0; at < text.size(); ++at) {
    digits |= std::uint64_t{is_digit(text[at])} << at;
  }
  return digits;
#endif
}

/// The runs of digits of a text of less than 65,536 bytes.
class NumberRuns {
 public:
  struct Run {
    std::uint16_t begin, end;
    [[nodiscard]] std::size_t digits() const noexcept { return std::size_t{end} - begin; }
  };
  static constexpr std::size_t most = 7;  // of a date, a time and a fraction of a second
  std::array<Run, most> run;
  std::size_t count = 0;  // most + 1: more than these

  explicit NumberRuns(std::string_view text) noexcept {
    if (text.size() > longest_outlined) {
      take_long(text);
      return;
    }
    const std::uint64_t digits = digits_of(text);
    for (std::uint64_t edges = digits ^ digits << 1; edges != 0; edges &= edges - 1) {
      if (count == most) {
        count = most + 1;
        return;
      }
      const auto begin = static_cast<std::uint16_t>(std::countr_zero(edges));
      edges &= edges - 1;
      // Behind 64 digits there is none that ends them.
      const auto end = static_cast<std::uint16_t>(std::countr_zero(edges));
      run[count++] = {begin, end};
    }
  }

  /// The first, or the last of them, of which there are as many.
  [[nodiscard]] std::span<const Run> first(std::size_t size) const noexcept {
    return {run.data(), size};
  }
  [[nodiscard]] std::span<const Run> last(std::size_t size) const noexcept {
    return {run.data() + count - size, size};
  }

 private:
  void take_long(std::string_view text) noexcept {
    std::uint64_t before = 0;  // whether the byte before is a digit
    for (std::size_t at = 0; at < text.size(); at += longest_outlined) {
      const std::uint64_t digits = digits_of(text.substr(at, longest_outlined));
      for (std::uint64_t edges = digits ^ (digits << 1 | before); edges != 0; edges &= edges - 1) {
        const std::size_t edge = at + static_cast<std::size_t>(std::countr_zero(edges));
        if (before != 0) {
          run[count++].end = static_cast<std::uint16_t>(edge);
        } else if (count == most) {
          count = most + 1;
          return;
        } else {
          run[count].begin = static_cast<std::uint16_t>(edge);
        }
        before ^= 1;
      }
    }
    if (before != 0) run[count++].end = static_cast<std::uint16_t>(text.size());
  }
};

}  // namespace jwnls::library

#endif  // JWNLS_LIBRARY_LOCALE_DATA_NUMBER_RUNS_H_
