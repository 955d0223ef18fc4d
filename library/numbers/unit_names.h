// The units that an amount may have: the spellings of currencies, as texts are compared with them.

#ifndef JWNLS_LIBRARY_NUMBERS_UNIT_NAMES_H_
#define JWNLS_LIBRARY_NUMBERS_UNIT_NAMES_H_

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "library/locale_data/byte_set.h"
#include "library/locale_data/currency_data.h"
#include "library/options/options.h"

namespace jwnls::library {

/// Folded: small letters, plain blanks, no marks, no last dot.
struct UnitName {
  std::u32string text;
  std::string bytes;  // the same in UTF-8, where it folds to itself
  std::string code;   // "EUR"
  int decimals = 2;
  bool dotted = false;  // a dot stands behind it
};

/// The spellings of a layout's currency, or with currency=any of every one; the longest first.
/// Throws bad_alloc.
[[nodiscard]] std::vector<UnitName> unit_names(const CurrencyData& own, const Options& options,
                                               const LocaleRecord& record);

/// The bytes that the names have, in any case and whatever stands for them; those in the middle of
/// a character may be others.
struct UnitBytes {
  ByteSet all;     // of their characters the first ones
  ByteSet begins;  // of the names
};
[[nodiscard]] UnitBytes unit_bytes(const std::vector<UnitName>& names) noexcept;

/// The name that a text begins with, in any case, with a dot behind it or not; null: none.
///   decimal  the decimal symbol: "Rs.50" is no unit where that is a dot
///   bytes    gets how many the name takes
[[nodiscard]] const UnitName* match_unit(const std::vector<UnitName>& names, std::string_view text,
                                         char32_t decimal, std::size_t& bytes) noexcept;

}  // namespace jwnls::library

#endif  // JWNLS_LIBRARY_NUMBERS_UNIT_NAMES_H_
