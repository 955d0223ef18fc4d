// The exponent behind a number's digits: "e+05", "E-123" of the plain kinds, "E+5" of the
// width-bound ones.

#ifndef JWNLS_MODULE_PLACEMENT_EXPONENT_SUFFIX_H_
#define JWNLS_MODULE_PLACEMENT_EXPONENT_SUFFIX_H_

#include "module/text/bounded_writer.h"

namespace jwnls {

constexpr unsigned exponent_size(int exponent) noexcept {
  return static_cast<unsigned>(exponent < 0 ? -exponent : exponent);
}

/// The units of a suffix: the letter, the sign and two digits, or three.
constexpr int exponent_suffix_length(int exponent) noexcept {
  return exponent_size(exponent) >= 100 ? 5 : 4;
}

/// Writes a suffix and returns its end. `out` has room for 5 units.
template <typename Unit>
[[gnu::always_inline]] inline Unit* write_exponent_suffix(int exponent, bool capital,
                                                          Unit* out) noexcept {
  const unsigned size = exponent_size(exponent);
  out[0] = capital ? Unit{'E'} : Unit{'e'};
  out[1] = exponent < 0 ? Unit{'-'} : Unit{'+'};
  out[2] = static_cast<Unit>('0' + size / 100);
  out += size >= 100 ? 3 : 2;
  const auto& pair = digit_pairs<Unit>[size % 100];
  out[0] = pair[0];
  out[1] = pair[1];
  return out + 2;
}

/// The units of a suffix without leading zeros: "E", the sign and one to three digits.
constexpr int short_exponent_suffix_length(int exponent) noexcept {
  const unsigned size = exponent_size(exponent);
  return 3 + (size >= 10 ? 1 : 0) + (size >= 100 ? 1 : 0);
}

/// Writes a suffix without leading zeros and returns its end. `out` has room for 5 units.
template <typename Unit>
Unit* write_short_exponent_suffix(int exponent, Unit* out) noexcept {
  const unsigned size = exponent_size(exponent);
  *out++ = Unit{'E'};
  *out++ = exponent < 0 ? Unit{'-'} : Unit{'+'};
  if (size >= 100) *out++ = static_cast<Unit>('0' + size / 100);
  if (size >= 10) *out++ = static_cast<Unit>('0' + size / 10 % 10);
  *out++ = static_cast<Unit>('0' + size % 10);
  return out;
}

}  // namespace jwnls

#endif  // JWNLS_MODULE_PLACEMENT_EXPONENT_SUFFIX_H_
