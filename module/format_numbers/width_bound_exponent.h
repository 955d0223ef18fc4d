// The exponent form of the width-bound kinds: "1.2345E+10" in as many places as there are.

#ifndef JWNLS_MODULE_FORMAT_NUMBERS_WIDTH_BOUND_EXPONENT_H_
#define JWNLS_MODULE_FORMAT_NUMBERS_WIDTH_BOUND_EXPONENT_H_

#include <cstdint>

#include "abi/status.h"

namespace jwnls {

/// Asks for as many mantissa decimals as fit.
inline constexpr std::int32_t as_many_as_fit = 99;

/// Writes mantissa digits, the decimal symbol and a suffix "E+5" without leading zeros. The value
/// is rounded half up to 15 significant digits, and those once more to the ones that are shown.
///   room            the places there are, 0 to 32
///   decimals        as_many_as_fit: the most that fit, at most 14; -n: exactly n
///   trim            takes trailing zeros of the mantissa away, and the point with the last of them
/// Returns ok; decimals_dropped when fewer than -n decimals fitted; does_not_fit when not even one
/// digit and its suffix do. `out` has room for 32 units, and `length` is how many are used.
Status write_exponent_form(double magnitude, int room, std::int32_t decimals, bool trim,
                           char16_t decimal_symbol, char16_t* out, int& length) noexcept;

}  // namespace jwnls

#endif  // JWNLS_MODULE_FORMAT_NUMBERS_WIDTH_BOUND_EXPONENT_H_
