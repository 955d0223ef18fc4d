// The value is an integer M below 2^63 times 2^(10 p). Each limb of the power times M is split into
// a remainder below a few limbs' worth and a quotient that belongs to the limb above; one pass from
// the lowest limb up adds them, settles the carries and writes the digits. Only the limbs that are
// asked for are multiplied, and one below them: what the limbs still further down could carry into
// that one is at most `most_carry`, so they matter only when it stands that close to an overflow,
// and then more of them are taken in.

#include "module/digits/exact_digits.h"

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>

#include "module/digits/digit_block.h"
#include "module/digits/power_of_two_limbs.h"
#include "module/digits/powers_of_ten.h"

namespace jwnls {
namespace {

using Wide = unsigned __int128;

constexpr std::uint64_t most_carry = 1844;  // 2^64 / 10^16

// floor(limb * factor / 10^16) or at most two less, and what is left.
struct Split {
  std::uint64_t quotient;
  std::uint64_t rest;
};

inline Split split_product(std::uint64_t limb, std::uint64_t factor) noexcept {
  // The product is below 2^117. 2^117 / 10^16 rounded down, times its upper bits.
  constexpr auto reciprocal = static_cast<std::uint64_t>((Wide{1} << 117) / ten_to_16);
  const Wide product = Wide{limb} * factor;
  const auto upper = static_cast<std::uint64_t>(product >> 53);
  const auto quotient = static_cast<std::uint64_t>(Wide{upper} * reciprocal >> 64);
  return {quotient, static_cast<std::uint64_t>(product) - quotient * ten_to_16};
}

struct Factors {
  LimbRow row;
  std::uint64_t factor;
};

Factors factors_of(double magnitude) noexcept {
  const auto [mantissa, exponent] = binary_parts(magnitude);
  const int power = (exponent + 1080) / 10 - 108;  // rounded down
  return {limbs_of_power(power), mantissa << (exponent - 10 * power)};
}

// Multiplies limb by limb upwards.
class Multiplication {
 public:
  // Starts at limb `from`, handed what the one below it hands up but for its carry.
  Multiplication(const Factors& factors, int from) noexcept
      : factor_(factors.factor), next_(factors.row.limbs + (from - factors.row.lowest)) {
    if (from > factors.row.lowest) above_ = split_product(next_[-1], factor_).quotient;
  }

  // The next limb of the product.
  std::uint64_t settled_limb() noexcept {
    const Split split = split_product(*next_++, factor_);
    const std::uint64_t sum = split.rest + above_;
    const std::uint64_t carry = over_ten_to_16(sum);
    above_ = split.quotient + carry;
    return sum - carry * ten_to_16;
  }

  // What is left for the limbs above the last.
  std::uint64_t above() const noexcept { return above_; }

 private:
  std::uint64_t factor_;
  const std::uint64_t* next_;
  std::uint64_t above_ = 0;
};

// The product's digits from its first down to the end of limb `last`, with those from `wanted` up
// taken in and one below them. Returns false when the limbs below could still matter.
bool digits_from(const Factors& factors, int wanted, int last, ExactDigits& out) noexcept {
  const LimbRow& row = factors.row;
  int limb = std::clamp(wanted - 1, row.lowest, row.highest);
  Multiplication product(factors, limb);
  std::uint64_t settled = 0;
  if (limb > row.lowest) {
    settled = product.settled_limb();
    if (settled >= ten_to_16 - most_carry) return false;
    ++limb;
  }
  for (; limb < last && limb <= row.highest; ++limb) settled = product.settled_limb();

  // No limb stands higher than two above the row's highest, as the factor is below 2^63.
  char* const top = out.block(0);
  char* const end = top + (row.highest + 2 - last + 1) * limb_digits;
  char* text = top + (row.highest + 2 - limb) * limb_digits;
  // Limbs below the row's own are zero.
  if (limb > last)
    std::memset(text + limb_digits, '0', static_cast<std::size_t>(end - text) - limb_digits);
  for (; limb <= row.highest; ++limb) {
    settled = product.settled_limb();
    write_16_digits(settled, text);
    text -= limb_digits;
  }
  int highest = row.highest;
  if (product.above() != 0) {
    const std::uint64_t carry = over_ten_to_16(product.above());
    settled = product.above() - carry * ten_to_16;
    write_16_digits(settled, top + limb_digits);
    ++highest;
    if (carry != 0) {
      settled = carry;
      write_16_digits(settled, top);
      ++highest;
    }
  }
  const int digits = digit_count(settled);
  out.exponent = highest * limb_digits + digits - 1;
  out.first = top + (row.highest + 3 - highest) * limb_digits - digits;
  out.count = static_cast<int>(std::max<std::ptrdiff_t>(end - out.first, 0));
  return true;
}

}  // namespace

void exact_digits_to(double magnitude, int last, ExactDigits& out) noexcept {
  constexpr int limbs_below = 45;  // 720 decimals
  const Factors factors = factors_of(magnitude);
  const int last_limb = (last + limbs_below * limb_digits) / limb_digits - limbs_below;
  out.count = 0;
  if (last_limb > factors.row.highest + 2) return;
  for (int wanted = last_limb; !digits_from(factors, wanted, last_limb, out); --wanted) {
  }
}

void exact_significant_digits(double magnitude, int wanted, ExactDigits& out) noexcept {
  const auto [mantissa, exponent] = binary_parts(magnitude);
  const int first = estimated_exponent(exponent + 63 - std::countl_zero(mantissa));
  exact_digits_to(magnitude, first - (wanted - 1), out);
}

}  // namespace jwnls
