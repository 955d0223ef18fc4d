// The numbers of a short text, without a look at every byte of it.

#ifndef JWNLS_LIBRARY_DATES_TEXT_OUTLINE_H_
#define JWNLS_LIBRARY_DATES_TEXT_OUTLINE_H_

#include <bit>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "library/dates/date_parts.h"
#include "library/locale_data/number_runs.h"

namespace jwnls::library {

/// Whether digits stand in three runs, as in a date of numbers.
[[nodiscard]] constexpr bool has_three_runs(std::uint64_t digits) noexcept {
  const std::uint64_t begins = digits & ~(digits << 1);
  const std::uint64_t later = begins & (begins - 1);
  const std::uint64_t last = later & (later - 1);
  return last != 0 && (last & (last - 1)) == 0;
}

/// The numbers of a text of at most longest_outlined bytes, of which the digits are known.
[[nodiscard]] inline Numbers numbers_of(std::string_view text, std::uint64_t digits) noexcept {
  Numbers numbers;
  for (std::uint64_t begins = digits & ~(digits << 1); begins != 0; begins &= begins - 1) {
    if (numbers.count == 3) {
      numbers.count = 4;
      break;
    }
    const auto begin = static_cast<std::size_t>(std::countr_zero(begins));
    // Behind 64 digits there is none that ends them.
    const std::uint64_t ends = ~(digits >> begin);
    const std::size_t size = ends == 0 ? 64 : static_cast<std::size_t>(std::countr_zero(ends));
    numbers.add(text, begin, begin + size);
  }
  return numbers;
}

}  // namespace jwnls::library

#endif  // JWNLS_LIBRARY_DATES_TEXT_OUTLINE_H_
