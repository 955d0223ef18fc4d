// How a layout writes its numbers, prepared at the layout's opening.

#ifndef JWNLS_LIBRARY_NUMBERS_NUMBER_STYLE_H_
#define JWNLS_LIBRARY_NUMBERS_NUMBER_STYLE_H_

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "abi/locale_handle.h"
#include "library/locale_data/currency_data.h"
#include "library/locale_data/number_data.h"
#include "library/numbers/short_decimal.h"
#include "library/numbers/shuffled_text.h"
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

/// How a layout's doubles become short decimals: not at all, with a fixed count of decimals, or
/// with as many as they have or their percentages want.
enum class ShortForm : std::uint8_t { none, fixed, few };

/// The digits of a layout: 0 to 9, or of its own, of so many bytes each and in a row as nearly all
/// are, or any others.
enum class DigitForm : std::uint8_t { latin, two_bytes, three_bytes, four_bytes, listed };

/// Where the digits of an integer part stand, and its separators, in units of one encoding.
struct alignas(16) IntegerPart {
  /// Of those that there are not, any digits, and behind the part.
  struct Run {
    std::uint8_t behind = 0;  // digits behind it
    std::uint8_t unused = 0;  // bits of a word of the four digits that end it
    std::uint8_t at = 0;
  };
  std::uint8_t units = 0;   // all of it
  std::uint8_t groups = 0;  // separators
  bool in_one_run = false;  // for so many digits there may be no group
  Run run[3];               // up to the first separator, and behind one of the first two
};

/// Digits of the locale's own as texts, as bits of memory.
struct OwnDigitTexts {
  std::uint64_t first[16] = {};   // by what each is worth; none is asked whether it is one
  std::uint64_t second[16] = {};  // where it stands behind one of these
  // Of digits in a row, what ASCII digits in their last units want to be their texts: a text behind
  // the other, but of three bytes two in each.
  std::uint64_t zeros[2] = {};
};

/// What short forms go by in one of both encodings.
struct ShortTexts {
  IntegerPart integers[short_digits + 1];  // by their digits
  OwnDigitTexts own_digits;
  DigitForm digit_form = DigitForm::listed;
};

/// Symbols and digits are at most so many bytes in short forms.
inline constexpr std::size_t short_symbol = 4;

struct NumberStyle {  // NOLINT(clang-analyzer-optin.performance.Padding): hot members first
  LocaleHandle* handle = nullptr;
  std::int32_t decimals = -1;         // -1: as many as the value has
  int shift = 0;                      // places that the decimal symbol moves: 2 in percentages
  bool half_even = false;             // of decimals; else halves go away from zero
  bool native_digits = false;         // other digits than 0 to 9
  GroupSizes sizes;                   // primary 0: no groups
  std::uint8_t minimum_grouping = 1;  // digits in front of the first group symbol, or no groups
  // What the service writes alike, and quickest: numbers of ASCII symbols between its own signs.
  // With its flags, and from a magnitude on: below, minimum grouping keeps it from its groups.
  bool by_service_8bit = false;
  bool by_service_16bit = false;
  std::uint32_t service_flags = 0;  // of number_flags and integer_flags: sign, group
  double service_from = 0;
  // What is quick to lay out: doubles, integers below a limit.
  ShortForm short_form = ShortForm::none;
  std::uint64_t short_integers = 0;
  std::uint64_t integer_scale = 1;  // the power of ten of their decimals and places
  ShortTexts short_texts[2];        // in UTF-8, in UTF-16
  ShuffledText shuffled;            // in UTF-8
  SymbolText decimal;
  SymbolText group;
  SymbolText digits[10];
  AffixText prefix[2], suffix[2];  // of what is not negative, of what is
  AffixText infinity;

  template <typename Unit>
  [[nodiscard]] const ShortTexts& short_texts_in() const noexcept {
    return short_texts[sizeof(Unit) - 1];
  }
};

/// Of no numbers yet. A copy of it is made sooner than one from the start.
inline constexpr NumberStyle plain_style;

/// The separators of an integer part.
[[nodiscard]] inline std::size_t group_count(const NumberStyle& style,
                                             std::size_t digits) noexcept {
  const std::size_t primary = style.sizes.primary;
  if (primary == 0 || digits < primary + style.minimum_grouping) return 0;
  return 1 + (digits - primary - 1) / style.sizes.secondary;
}

/// Which kind of the layout data a layout writes: JW_LAYOUT_NUMBER ...
[[nodiscard]] int layout_kind(int kind, const Options& options) noexcept;

/// Of a kind of jwnls.h; `currency` is the amount's, of other kinds null. Throws bad_alloc.
[[nodiscard]] NumberStyle number_style(const NumberData& data, int kind, const Options& options,
                                       const CurrencyData* currency, LocaleHandle* handle);

}  // namespace jwnls::library

#endif  // JWNLS_LIBRARY_NUMBERS_NUMBER_STYLE_H_
