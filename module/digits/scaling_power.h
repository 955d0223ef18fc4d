// Powers of ten as 128-bit significands, for the one multiplication that scales a double.

#ifndef JWNLS_MODULE_DIGITS_SCALING_POWER_H_
#define JWNLS_MODULE_DIGITS_SCALING_POWER_H_

#include <cstdint>

namespace jwnls {

inline constexpr int lowest_scaling_power = -310;
inline constexpr int highest_scaling_power = 345;

/// 10^k is at least (high * 2^64 + low) * 2^binary_exponent, and less than two units of `low` more;
/// it is equal for k from 0 to 55. The top bit of `high` is set.
struct ScalingPower {
  std::uint64_t high;
  std::uint64_t low;
};

struct ScalingPowers {
  ScalingPower from_lowest[highest_scaling_power - lowest_scaling_power + 1];
};
extern const ScalingPowers scaling_powers;

inline const ScalingPower& scaling_power(int k) noexcept {
  return scaling_powers.from_lowest[k - lowest_scaling_power];
}

/// The binary exponent that goes with scaling_power(k).
constexpr int binary_exponent_of(int k) noexcept {
  // floor(k * log2(10)) - 127; 217706/2^16 is log2(10) closely enough for every k of the table.
  return (k * 217706 >> 16) - 127;
}

}  // namespace jwnls

#endif  // JWNLS_MODULE_DIGITS_SCALING_POWER_H_
