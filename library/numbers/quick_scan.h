// The quick reader: takes what locales themselves write, and leaves everything else, all refusals
// among it, to scan_number(). What it takes means the same there.

#ifndef JWNLS_LIBRARY_NUMBERS_QUICK_SCAN_H_
#define JWNLS_LIBRARY_NUMBERS_QUICK_SCAN_H_

#include <cstddef>
#include <cstdint>

#include "library/numbers/number_syntax.h"

namespace jwnls::library {

/// mantissa / 10^decimals; the decimals are those of the text, zeros at its end included.
struct QuickNumber {
  std::uint64_t mantissa = 0;
  std::uint32_t decimals = 0;  // at most 18
  bool negative = false;
  bool hopeless = false;  // of what is not taken: no quick reader does
  std::uint8_t facts = 0;
};

/// False for what it does not take; `number` is then of no use. Of at most 16 bytes, by masks.
[[nodiscard]] bool scan_by_masks(const QuickSyntax& syntax, const char* text, std::size_t length,
                                 QuickNumber& number) noexcept;

/// The same of at most 48 bytes, character by character, with any group symbol.
[[nodiscard]] bool scan_by_character(const QuickSyntax& syntax, const char* text,
                                     std::size_t length, QuickNumber& number) noexcept;

/// The same in the locale's own digits.
[[nodiscard]] bool scan_own_digits(const QuickSyntax& syntax, const char* text, std::size_t length,
                                   QuickNumber& number) noexcept;

/// What of these takes a text that does not begin with ASCII, of a locale with digits of its own.
[[nodiscard]] bool scan_beyond_ascii(const QuickSyntax& syntax, const char* text,
                                     std::size_t length, QuickNumber& number) noexcept;

[[nodiscard]] inline bool scan_quickly(const QuickSyntax& syntax, const char* text,
                                       std::size_t length, QuickNumber& number) noexcept {
  // NOLINTNEXTLINE(clang-analyzer-core.UndefinedBinaryOperatorResult): narrowed texts are written
  if (syntax.own.length != 0 && length != 0 && static_cast<unsigned char>(*text) >= 0x80) {
    return scan_beyond_ascii(syntax, text, length, number);
  }
  // The masks know groups of three by an ASCII symbol; whoever writes others goes the second way.
  if (syntax.masks) {
    if (scan_by_masks(syntax, text, length, number)) return true;
    if (number.hopeless) return false;
  }
  return scan_by_character(syntax, text, length, number) ||
         (syntax.own.length != 0 && scan_own_digits(syntax, text, length, number));
}

/// Of an amount or a percentage, written as the layout itself does; its value still counts the
/// places of the percentage.
[[nodiscard]] bool scan_between_affixes(const NumberSyntax& syntax, const char* text,
                                        std::size_t length, QuickNumber& number) noexcept;

}  // namespace jwnls::library

#endif  // JWNLS_LIBRARY_NUMBERS_QUICK_SCAN_H_
