// Words of ASCII letters, eight bytes at once.

#ifndef JWNLS_LIBRARY_DATES_ASCII_WORD_H_
#define JWNLS_LIBRARY_DATES_ASCII_WORD_H_

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>

#include "library/locale_data/date_characters.h"

namespace jwnls::library {

/// Folds up to eight ASCII letters at `at`, of a text that has eight bytes at least and ends at
/// `end`, and gives how many there are; zeros stand behind them in `folded`.
[[nodiscard]] inline std::size_t fold_ascii(const char* at, const char* end,
                                            std::uint64_t& folded) noexcept {
  std::uint64_t bytes = 0;
  if (end - at >= 8) {
    std::memcpy(&bytes, at, 8);
  } else {
    std::memcpy(&bytes, end - 8, 8);
    bytes >>= 8 * (8 - (end - at));
  }
  constexpr std::uint64_t each = 0x0101010101010101;
  const std::uint64_t lower = bytes | 0x20 * each;
  const std::uint64_t seven = lower & 0x7F * each;
  const std::uint64_t letters =
      (seven + (0x80 - 'a') * each) & ~(seven + (0x7F - 'z') * each) & ~bytes & 0x80 * each;
  const std::uint64_t others = letters ^ 0x80 * each;
  const int count = others == 0 ? 8 : std::countr_zero(others) / 8;
  folded = count == 8 ? lower : lower & ((std::uint64_t{1} << 8 * count) - 1);
  return static_cast<std::size_t>(count);
}

/// Whether a run of letters before `at` certainly ends there, as before most ASCII characters.
[[nodiscard]] inline bool ends_word(const char* at, const char* end) noexcept {
  return at == end || *at == ' ' ||
         (is_ascii(*at) && *at != '\0' && *at != '\'' && *at != '-' &&
          (*at != '.' || end - at == 1 || !is_letter(at[1])));
}

}  // namespace jwnls::library

#endif  // JWNLS_LIBRARY_DATES_ASCII_WORD_H_
