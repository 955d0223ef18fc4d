// How a layout writes its numbers, prepared at the layout's opening.

#ifndef JWNLS_LIBRARY_NUMBERS_NUMBER_STYLE_H_
#define JWNLS_LIBRARY_NUMBERS_NUMBER_STYLE_H_

#include <cstdint>
#include <string_view>

#include "abi/locale_handle.h"
#include "library/layouts/options.h"
#include "library/locale_data/number_data.h"

namespace jwnls::library {

/// A short text in both encodings: a symbol, a sign, a digit.
struct SymbolText {
  char bytes[12] = {};
  char16_t units[4] = {};
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

/// At most four units; nothing of a longer text.
[[nodiscard]] SymbolText symbol_of(std::u16string_view text) noexcept;

struct NumberStyle {
  LocaleHandle* handle = nullptr;
  std::int32_t decimals = -1;         // -1: as many as the value has
  bool half_even = false;             // of decimals; else halves go away from zero
  bool native_digits = false;         // other digits than 0 to 9
  GroupSizes sizes;                   // primary 0: no groups
  std::uint8_t minimum_grouping = 1;  // digits in front of the first group symbol, or no groups
  // What the service writes alike: its flags, in UTF-8 and UTF-16, and the magnitudes from which on
  // it does. Below, minimum grouping keeps it from its groups, which it does not know.
  std::uint32_t service_flags = 0;  // of number_flags and integer_flags: sign, group
  double direct_from = 0;
  bool direct_8bit = false;
  bool direct_16bit = false;
  SymbolText decimal;
  SymbolText group;
  SymbolText minus;
  SymbolText plus;  // empty: none is written
  SymbolText infinity;
  SymbolText digits[10];
};

[[nodiscard]] NumberStyle number_style(const NumberData& data, const Options& options,
                                       LocaleHandle* handle) noexcept;

}  // namespace jwnls::library

#endif  // JWNLS_LIBRARY_NUMBERS_NUMBER_STYLE_H_
