// How a layout writes its numbers, prepared at the layout's opening.

#ifndef JWNLS_LIBRARY_NUMBERS_NUMBER_STYLE_H_
#define JWNLS_LIBRARY_NUMBERS_NUMBER_STYLE_H_

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "abi/locale_handle.h"
#include "library/locale_data/currency_data.h"
#include "library/locale_data/number_data.h"
#include "library/options/options.h"

namespace jwnls::library {

/// A short text in both encodings.
template <std::size_t most_bytes, std::size_t most_units>
struct ShortText {
  char bytes[most_bytes] = {};
  char16_t units[most_units] = {};
  std::uint8_t byte_count = 0;
  std::uint8_t unit_count = 0;

  template <typename Unit>
  [[nodiscard]] std::basic_string_view<Unit> text() const noexcept {
    if constexpr (sizeof(Unit) == 1) {
      return {bytes, byte_count};
    } else {
      return {units, unit_count};
    }
  }
};

/// A symbol, a digit: one character.
using SymbolText = ShortText<12, 4>;

/// What stands in front of the digits or behind them: signs, the unit, blanks, marks.
struct AffixText : ShortText<144, 144> {
  bool has_blank = false;  // next to the digits, for their sake: an infinity goes without it

  /// As it stands beside an infinity.
  template <typename Unit>
  [[nodiscard]] std::basic_string_view<Unit> without_blank(bool is_prefix) const noexcept {
    constexpr std::size_t blank = sizeof(Unit) == 1 ? 2 : 1;  // U+00A0
    std::basic_string_view<Unit> all = text<Unit>();
    if (!has_blank) return all;
    return is_prefix ? all.substr(0, all.size() - blank) : all.substr(blank);
  }
};

struct NumberStyle {
  LocaleHandle* handle = nullptr;
  std::int32_t decimals = -1;         // -1: as many as the value has
  int shift = 0;                      // places that the decimal symbol moves: 2 in percentages
  bool half_even = false;             // of decimals; else halves go away from zero
  bool native_digits = false;         // other digits than 0 to 9
  GroupSizes sizes;                   // primary 0: no groups
  std::uint8_t minimum_grouping = 1;  // digits in front of the first group symbol, or no groups
  // What the service writes alike: its flags, in UTF-8 and UTF-16, and the magnitudes from which on
  // it does. Below, minimum grouping keeps it from its groups, which it does not know.
  std::uint32_t service_flags = 0;  // of number_flags and integer_flags: sign, group
  double direct_from = 0;
  bool service_affixes = false;  // nothing stands around the digits but the service's own signs
  bool direct_8bit = false;
  bool direct_16bit = false;
  SymbolText decimal;
  SymbolText group;
  SymbolText digits[10];
  AffixText prefix[2], suffix[2];  // of what is not negative, of what is
  AffixText infinity;
};

/// Which kind of the layout data a layout writes: JW_LAYOUT_NUMBER ...
[[nodiscard]] int layout_kind(int kind, const Options& options) noexcept;

/// Of a kind of jwnls.h; `currency` is the amount's, of other kinds null. Throws bad_alloc.
[[nodiscard]] NumberStyle number_style(const NumberData& data, int kind, const Options& options,
                                       const CurrencyData* currency, LocaleHandle* handle);

}  // namespace jwnls::library

#endif  // JWNLS_LIBRARY_NUMBERS_NUMBER_STYLE_H_
