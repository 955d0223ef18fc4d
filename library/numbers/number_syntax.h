// How a layout's numbers are written: what the scanners go by, prepared at the layout's opening.

#ifndef JWNLS_LIBRARY_NUMBERS_NUMBER_SYNTAX_H_
#define JWNLS_LIBRARY_NUMBERS_NUMBER_SYNTAX_H_

#include <cstddef>
#include <cstdint>
#include <vector>

#include "library/locale_data/byte_set.h"
#include "library/locale_data/currency_data.h"
#include "library/locale_data/number_data.h"
#include "library/numbers/characters.h"
#include "library/numbers/number_style.h"
#include "library/numbers/unit_names.h"
#include "library/options/options.h"
#include "library/texts/longest_text.h"

namespace jwnls::library {

/// A symbol as the quick scanner compares it: up to four bytes of UTF-8.
struct SymbolBytes {
  std::uint32_t bytes = 0;  // little-endian
  std::uint32_t mask = 0;   // of the bytes in use
  std::uint8_t length = 0;  // 0: no symbol
};

/// An affix as the quick reader compares it: eight bytes of UTF-8 at once, the rest where it is
/// longer.
struct AffixBytes {
  std::uint64_t word = 0;  // the first eight bytes, little-endian; of a suffix the last, at the top
  std::uint64_t mask = 0;  // of the bytes in use
  std::uint8_t length = 0;
  char bytes[40] = {};
};

/// A locale's own digits, which have all bytes but the last in common, and the symbols beside them.
struct OwnDigits {
  SymbolBytes front;      // of a digit: all but its last byte; 0 bytes long where it has only that
  std::uint8_t zero = 0;  // the last byte of the first digit
  std::uint8_t length = 0;  // of a digit; 0: there are none, or they are not taken quickly
  bool group_is_blank = false;
  bool masks = false;  // all of two bytes, and groups of three: texts are tried by masks first
  SymbolBytes decimal, group;
  AffixBytes minus;
};

/// What the quick scanners take, all of it written as the locale itself would.
struct QuickSyntax {
  SymbolBytes groups[3];         // own group symbols; unused ones last
  SymbolBytes minus;             // beside '-'
  GroupSizes sizes;              //
  char decimal = '0';            // '0', which never stands behind digits: no fraction
  char group = '\0';             // the one symbol where it is ASCII, for groups of three
  std::uint16_t group_bits = 0;  // all ones where `group` counts
  std::uint16_t decimal_bits = 0;
  bool group_is_blank = false;
  bool masks = true;         // texts are tried by masks first
  bool threes_only = false;  // and nobody reads other groups than theirs
  OwnDigits own;
};

/// What stands around a number beside signs.
enum class UnitKind : std::uint8_t { none, currency, percent };

/// What the layout itself writes around the digits of an amount or a percentage.
struct QuickAffixes {
  AffixBytes prefix[2], suffix[2];  // of what is not negative, of what is
  bool usable = false;
};

struct NumberSyntax {
  char32_t decimal_character = U'.';
  char32_t group_character = 0;               // 0: none
  Separator decimal = Separator::point;       //
  Separator other_decimal = Separator::none;  // taken too: of the number, in an amount
  std::uint32_t own_groups = 0;               // bit sets of separators
  GroupSizes sizes[3] = {};                   // that are taken: the layout's own first
  std::uint8_t groups = groups_locale;        // Groups
  bool signs_anywhere = false;                // signs=any
  bool exponent = true;                       //
  bool fraction = true;                       //
  bool triangle_minus = false;                //
  bool module_missing = false;                // "." and ".A" are missing values
  UnitKind unit = UnitKind::none;
  bool unit_required = false;
  bool any_fraction = false;            // fraction=any
  std::uint8_t credit = credit_refuse;  // Credit
  int currency_decimals = 2;
  std::vector<UnitName> units;
  ByteSet unit_begins;  // the first bytes of units
  ByteSet bytes;        // that texts may have: what has others is not read
  QuickSyntax quick;
  QuickAffixes affixes;
  QuickAffixes typed_affixes;  // the same with plain blanks, where they have others

  [[nodiscard]] bool is_own(Separator separator) const noexcept {
    return (own_groups >> static_cast<unsigned>(separator) & 1U) != 0;
  }
  /// Of a character, in this syntax.
  [[nodiscard]] Separator separator(char32_t c) const noexcept {
    if (c == decimal_character) return decimal;
    const Separator known = separator_of(c);
    return known == Separator::none && c == group_character ? Separator::other : known;
  }
  [[nodiscard]] bool is_decimal(Separator separator) const noexcept {
    return separator == decimal || separator == Separator::arabic_decimal ||
           (separator == other_decimal && separator != Separator::none && !is_own(separator));
  }
};

/// Of a kind of jwnls.h; `currency` is the amount's, of other kinds null. Throws bad_alloc.
[[nodiscard]] NumberSyntax number_syntax(const NumberData& data, int kind, const Options& options,
                                         const CurrencyData* currency, const LocaleRecord& record,
                                         const NumberStyle& style);

}  // namespace jwnls::library

#endif  // JWNLS_LIBRARY_NUMBERS_NUMBER_SYNTAX_H_
