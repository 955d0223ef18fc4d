// Short decimals in UTF-8, of Latin digits and few decimals, as most are: sixteen digits become the
// integer part, groups and all, by a shuffle of bytes, without a detour through memory.

#ifndef JWNLS_LIBRARY_NUMBERS_SHUFFLED_TEXT_H_
#define JWNLS_LIBRARY_NUMBERS_SHUFFLED_TEXT_H_

#include <cstddef>
#include <cstdint>

#include "library/numbers/short_decimal.h"

namespace jwnls::library {

struct NumberStyle;

/// How a style's texts are shuffled. Groups are counted from the decimal symbol on, so that every
/// integer part is the end of the longest one: of that with separators, or of that without, where
/// digits are too few.
struct ShuffledText {
  static constexpr std::size_t longest = 32;  // bytes of an integer part, in two registers
  static constexpr std::size_t rows = 2;
  static constexpr std::size_t longest_affix = 8;
  static constexpr unsigned most_decimals = 8;

  struct IntegerPart {
    std::uint8_t begin = 0;  // in both arrays below
    std::uint8_t bytes = 0;
  };
  struct Affixes {
    char prefix[longest_affix] = {};
    char suffix[longest_affix] = {};
    std::uint8_t prefix_bytes = 0;
    std::uint8_t suffix_bytes = 0;
  };

  /// From which room on a text is written so, whatever its value: from none where the processor
  /// does not shuffle, or an affix or a part is too long.
  std::size_t room = SIZE_MAX;
  IntegerPart integers[short_digits + 1];  // by the count of digits
  // A part ends in the middle of a row; nothing stands behind it.
  std::uint8_t digit[rows * 2 * longest] = {};  // which of sixteen without decimals; or none
  char separators[rows * 2 * longest] = {};     // zeros where digits stand
  char symbol[4] = {};
  std::uint8_t symbol_bytes = 0;
  Affixes affixes[2];  // of what is not negative, of what is
};

/// Of a style that is complete but for this; `texts` are new.
void prepare_shuffled_text(const NumberStyle& style, ShuffledText& texts) noexcept;

[[nodiscard]] inline bool is_shuffled(const ShuffledText& texts, const ShortDecimal& number,
                                      std::size_t room) noexcept {
  return room >= texts.room && number.decimals <= ShuffledText::most_decimals;
}

/// As lay_out_short(), of what is_shuffled().
int lay_out_shuffled(const ShuffledText& texts, ShortDecimal number, char* out,
                     std::size_t* length) noexcept;

}  // namespace jwnls::library

#endif  // JWNLS_LIBRARY_NUMBERS_SHUFFLED_TEXT_H_
