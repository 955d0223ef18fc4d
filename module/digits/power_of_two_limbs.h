// Every tenth power of two from 2^-1080 to 2^970, exactly, in limbs of sixteen decimal digits.
//
// A double is an integer below 2^63 times one of them, so its exact decimal expansion is that
// integer times a row of limbs.

#ifndef JWNLS_MODULE_DIGITS_POWER_OF_TWO_LIMBS_H_
#define JWNLS_MODULE_DIGITS_POWER_OF_TWO_LIMBS_H_

#include <cstdint>

namespace jwnls {

inline constexpr int lowest_power = -108;  // times ten
inline constexpr int highest_power = 97;
inline constexpr int limb_digits = 16;

/// Limb n counts units of 10^(16 n); limbs below `lowest` and above `highest` are zero.
struct LimbRow {
  const std::uint64_t* limbs;  // from `lowest` up
  int lowest;
  int highest;  // that limb is not zero
};

/// The limbs of 2^(10 * power).
LimbRow limbs_of_power(int power) noexcept;

}  // namespace jwnls

#endif  // JWNLS_MODULE_DIGITS_POWER_OF_TWO_LIMBS_H_
