// Missing values: doubles whose top 16 bits are all ones. They stand for "no value" in every scale.

#ifndef JWNLS_ABI_MISSING_VALUE_H_
#define JWNLS_ABI_MISSING_VALUE_H_

#include <bit>
#include <cstdint>

namespace jwnls {

inline constexpr std::uint64_t missing_value_bits = 0xFFFFD10000000000;

/// The standard missing value, the only one that the calendar and the date input services write.
inline double missing_value() noexcept { return std::bit_cast<double>(missing_value_bits); }

/// True for every special missing value, the standard one included. Other NaNs are none.
inline bool is_missing(double value) noexcept {
  return std::bit_cast<std::uint64_t>(value) >> 48 == 0xFFFF;
}

}  // namespace jwnls

#endif  // JWNLS_ABI_MISSING_VALUE_H_
