// Short decimals in UTF-8, of few decimals, as most are: sixteen digits become a text, groups,
// decimal symbol and all, by a shuffle of bytes, without a detour through memory.

#ifndef JWNLS_LIBRARY_NUMBERS_SHUFFLED_TEXT_H_
#define JWNLS_LIBRARY_NUMBERS_SHUFFLED_TEXT_H_

#include <cstddef>
#include <cstdint>

#include "library/numbers/short_decimal.h"

namespace jwnls::library {

struct NumberStyle;

/// How a style's texts are shuffled. Their places are counted from the decimal symbol on, so that
/// every one is a part of the longest: of that with separators, or of that without, where digits
/// are too few.
struct ShuffledText {
  static constexpr unsigned most_decimals = 8;
  static constexpr std::size_t step = 16;              // bytes of a register
  static constexpr std::size_t line = 64;              // of the cache
  static constexpr std::size_t longest_integers = 96;  // bytes of an integer part
  // With the decimals, and a step behind them. Latin digits, 32 bytes in front of the decimal
  // symbol and as many from it on, stand in one line: what crosses lines, or a page, waits.
  static constexpr std::size_t row = 3 * line;
  static constexpr std::size_t longest_affix = step;

  struct IntegerPart {
    std::uint16_t begin = 0;  // in both arrays below
    std::uint8_t bytes = 0;
  };
  struct Affixes {
    char prefix[longest_affix] = {};
    char suffix[longest_affix] = {};
    std::uint64_t prefix_bytes = 0;
    std::uint64_t suffix_bytes = 0;
  };

  /// From which room on a text is written so, whatever its value: from none where the processor
  /// does not shuffle, or an affix or a part is too long.
  std::size_t room = SIZE_MAX;
  /// The same of values as they are, of so many decimals: the least, and how many more.
  std::size_t scaled_room = SIZE_MAX;
  unsigned least_decimals = 0;
  unsigned more_decimals = 0;

  std::size_t at_once = 0;                              // bytes that are written of every text
  IntegerPart integers[short_digits + 1];               // by the count of digits
  std::uint8_t fraction_bytes[most_decimals + 1] = {};  // by the count of digits, with the symbol
  alignas(line) std::uint8_t digit[2 * row] = {};  // which of sixteen without decimals; or none
  // What is added to the value of the digit at a place, or stands there by itself.
  alignas(line) std::uint8_t added[2 * row] = {};
  Affixes affixes[2];  // of what is not negative, of what is
};

/// Of a style that is complete but for this; `texts` are new.
void prepare_shuffled_text(const NumberStyle& style, ShuffledText& texts) noexcept;

[[nodiscard]] inline bool is_shuffled(const ShuffledText& texts, unsigned decimals,
                                      std::size_t room) noexcept {
  return room >= texts.room && decimals <= ShuffledText::most_decimals;
}

/// As lay_out_short(), of what is_shuffled().
int lay_out_shuffled(const ShuffledText& texts, ShortDecimal number, char* out,
                     std::size_t* length) noexcept;

/// Whether the style writes such a value as it is, and so.
[[nodiscard]] inline bool is_shuffled_as_it_is(const ShuffledText& texts, std::uint64_t magnitude,
                                               std::int32_t scale, std::size_t room) noexcept {
  return room >= texts.scaled_room && magnitude < short_limit &&
         static_cast<unsigned>(scale) - texts.least_decimals <= texts.more_decimals;
}

int lay_out_as_it_is(const ShuffledText& texts, std::uint64_t magnitude, unsigned decimals,
                     char* out, bool negative, std::size_t* length) noexcept;

}  // namespace jwnls::library

#endif  // JWNLS_LIBRARY_NUMBERS_SHUFFLED_TEXT_H_
