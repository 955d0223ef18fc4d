// What a caller may ask for when a number is formatted, one record for each family.
//
// A width is a least one: a longer text is given whole. It counts UTF-16 units. Only the kinds that
// are bound to a width keep to it, and fail where nothing of the number fits.

#ifndef JWNLS_CLIENT_NUMBER_FORMAT_H_
#define JWNLS_CLIENT_NUMBER_FORMAT_H_

#include <optional>

#include "client/result.h"

namespace jwnls::client {

inline constexpr int most_digits = 350;        // before and behind the decimal symbol together
inline constexpr int widest_field = 1000;      // units
inline constexpr int widest_bound_field = 32;  // units, of the kinds that are bound to a width
inline constexpr int no_such_decimals = 99;    // the services take it for the best-fit kind

enum class NumberKind {
  fixed,            // 1234.50
  general,          // fixed or exponent notation by the number's size, without trailing zeros
  exponent,         // 1.2345e+03
  best_fit,         // bound to a width: what tells the most in it, at most 15 digits
  decimal_aligned,  // bound to a width: the decimals asked for as long as they fit
};

enum class SignDisplay {
  negative,  // "-" in front of negative numbers
  always,    // and "+" in front of the others
  blank,     // and a blank in front of the others
};

struct NumberFormat {
  NumberKind kind = NumberKind::fixed;

  /// Digits behind the decimal symbol, 0 to 350 but not 99; for the general kind significant
  /// digits, 1 to 350. Not given: as many as tell the number from every other double (general: at
  /// least 15; decimal-aligned: 2). Best fit chooses itself and takes none.
  std::optional<int> decimals = {};

  /// 0 to 1000. For the kinds bound to a width 1 to 32; best fit without one has 32 places to
  /// choose for, and its text stands alone.
  int width = 0;

  /// Groups integer digits the way the locale does. Not given: for the fixed kind only.
  std::optional<bool> group = {};

  SignDisplay sign = SignDisplay::negative;  // not for the kinds bound to a width
  bool zero_fill = false;                    // likewise; without effect in a left-justified field
  bool left = false;                         // not for the decimal-aligned kind
  bool trailing_zeros = false;               // keep them in the general kind
  bool capital = false;                      // "E"; the kinds bound to a width always have it
  char16_t missing_symbol = u'.';            // what the standard missing value shows
};

enum class Radix { decimal = 10, hexadecimal = 16, octal = 8 };

struct IntegerFormat {
  Radix radix = Radix::decimal;
  int minimum_digits = 1;                    // 1 to 1000; zeros in front, which are not grouped
  int width = 0;                             // 0 to 1000
  bool group = true;                         // decimal only
  SignDisplay sign = SignDisplay::negative;  // decimal only
  bool zero_fill = false;                    // without effect in a left-justified field
  bool left = false;
  bool capital = false;  // hexadecimal digits, and the "X" of the prefix
  bool prefix = false;   // "0x", hexadecimal only
};

struct CurrencyFormat {
  /// 0 to 350 but not 99. Not given: those of the currency (2 for euros, none for yen).
  std::optional<int> decimals = {};
  int width = 0;  // 0 to 1000
  bool left = false;
};

struct PercentFormat {
  /// 0 to 350 but not 99. Not given: as many as the number itself has, less the two that move.
  std::optional<int> decimals = {};
  int width = 0;  // 0 to 1000
  bool left = false;
  bool parentheses = false;  // for negative numbers, in place of the sign
};

/// What is wrong with a format, as formatting with it would say: "width 2000: not 0 to 1000"
/// (not_possible).
[[nodiscard]] Result<void> check(const NumberFormat& format);
[[nodiscard]] Result<void> check(const IntegerFormat& format);
[[nodiscard]] Result<void> check(const CurrencyFormat& format);
[[nodiscard]] Result<void> check(const PercentFormat& format);

}  // namespace jwnls::client

#endif  // JWNLS_CLIENT_NUMBER_FORMAT_H_
