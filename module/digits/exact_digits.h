// The exact decimal digits of a double, as many as are asked for, truncated and never rounded.

#ifndef JWNLS_MODULE_DIGITS_EXACT_DIGITS_H_
#define JWNLS_MODULE_DIGITS_EXACT_DIGITS_H_

#include <bit>
#include <cstdint>

namespace jwnls {

/// The most digits behind the point that any number is asked for.
inline constexpr int most_decimals = 350;

/// A positive double as mantissa * 2^exponent.
struct BinaryParts {
  std::uint64_t mantissa;  // below 2^53
  int exponent;            // -1074 to 971
};

constexpr BinaryParts binary_parts(double magnitude) noexcept {
  const auto bits = std::bit_cast<std::uint64_t>(magnitude);
  const std::uint64_t fraction = bits & 0xFFFFFFFFFFFFF;
  const int biased = static_cast<int>(bits >> 52 & 0x7FF);
  if (biased == 0) return {fraction, -1074};
  return {fraction | std::uint64_t{1} << 52, biased - 1075};
}

/// The decimal exponent of a value in [2^binary, 2^(binary + 1)), or one less.
constexpr int estimated_exponent(int binary) noexcept {
  return binary * 78913 >> 18;  // 78913/2^18 approximates log10(2)
}

/// Digits from the first that is not zero on; digit i counts units of 10^(exponent - i).
class ExactDigits {
 public:
  // In front of the digits, for a carry and the zeros of a value below 1.
  static constexpr int room_in_front = 368;

  ExactDigits() noexcept {}  // the buffer stays as it is: only what is written is read
  ExactDigits(const ExactDigits&) = delete;
  ExactDigits& operator=(const ExactDigits&) = delete;

  int count = 0;
  int exponent = 0;  // of the first digit
  char* first = buffer_ + room_in_front;

  /// The place of block i, of sixteen digits each.
  char* block(int i) noexcept { return buffer_ + room_in_front + 16 * i; }

 private:
  // At most 309 integer digits and 351 decimals, in front of them two blocks without digits and
  // around them whole blocks; and what reading in blocks reads behind the end.
  static constexpr int capacity = 309 + 351 + 4 * 16;
  char buffer_[room_in_front + capacity + 32];
};

/// The digits of a finite value above 0 from its first down to units of 10^last, at least; `last`
/// is -720 or more. None when the value is below 10^last.
void exact_digits_to(double magnitude, int last, ExactDigits& out) noexcept;

/// At least its first `wanted` digits, 1 to 352.
void exact_significant_digits(double magnitude, int wanted, ExactDigits& out) noexcept;

}  // namespace jwnls

#endif  // JWNLS_MODULE_DIGITS_EXACT_DIGITS_H_
