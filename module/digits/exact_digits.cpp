// The value is an integer M below 2^63 times 2^(10 p). Each limb of the power times M is split into
// a remainder below a few limbs' worth and a quotient that belongs to the limb above; one pass from
// the lowest limb up adds them and settles the carries. Only the limbs that are asked for are
// multiplied, and one below them: what the limbs still further down could carry into that one is at
// most `most_carry`, so they matter only when it stands that close to an overflow, and then more of
// them are taken in.

#include "module/digits/exact_digits.h"

#include <algorithm>
#include <bit>
#include <cstdint>

#include "module/digits/digit_block.h"
#include "module/digits/power_of_two_limbs.h"
#include "module/digits/powers_of_ten.h"

namespace jwnls {
namespace {

using Wide = unsigned __int128;

constexpr int most_limbs = 62;
constexpr std::uint64_t most_carry = 1844;  // 2^64 / 10^16

// The settled limbs of a product, limb `lowest` first.
struct Product {
  std::uint64_t limbs[most_limbs];
  int lowest;
  int highest;  // not zero
};

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

// Multiplies the limbs from `wanted` up. Returns false when the limbs below could still matter.
bool multiply(const LimbRow& row, std::uint64_t factor, int wanted, Product& out) noexcept {
  const int from = std::max(row.lowest, wanted - 1);
  std::uint64_t above = 0;  // what the limb before hands up: its quotient and its carry
  if (from > row.lowest) above = split_product(row.limbs[from - 1 - row.lowest], factor).quotient;
  out.lowest = from;
  std::uint64_t* limb = out.limbs;
  for (int i = from; i <= row.highest; ++i) {
    const Split split = split_product(row.limbs[i - row.lowest], factor);
    const std::uint64_t sum = split.rest + above;
    const std::uint64_t carry = over_ten_to_16(sum);
    *limb = sum - carry * ten_to_16;
    ++limb;
    above = split.quotient + carry;
  }
  if (from > row.lowest && out.limbs[0] >= ten_to_16 - most_carry) return false;
  out.highest = row.highest;
  if (above != 0) {
    const std::uint64_t carry = over_ten_to_16(above);
    *limb = above - carry * ten_to_16;
    ++out.highest;
    if (carry != 0) {
      limb[1] = carry;
      ++out.highest;
    }
  }
  return true;
}

// The product's digits from its first down to the end of limb `last`.
void write_digits(const Product& product, int last, ExactDigits& out) noexcept {
  out.count = 0;
  if (product.highest < last) return;
  const std::uint64_t* limb = product.limbs + (product.highest - product.lowest);
  const int digits = digit_count(*limb);
  out.exponent = product.highest * limb_digits + digits - 1;
  // The zeros of the first limb fall into the room in front.
  char* text = out.text() + digits - limb_digits;
  write_16_digits(*limb, text);
  text += limb_digits;
  const std::uint64_t* const end = product.limbs + std::max(last - product.lowest, 0);
  while (limb != end) {
    write_16_digits(*--limb, text);
    text += limb_digits;
  }
  // Limbs below the product's own are zero.
  for (int zero = product.lowest; zero > last; --zero) {
    std::fill_n(text, limb_digits, '0');
    text += limb_digits;
  }
  out.count = static_cast<int>(text - out.text());
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

void digits_to_limb(const Factors& factors, int last, ExactDigits& out) noexcept {
  // The factor, below 2^63, reaches two limbs above the row's highest, and no digit stands higher.
  if (last > factors.row.highest + 2) {
    out.count = 0;
    return;
  }
  Product product;
  for (int wanted = last; !multiply(factors.row, factors.factor, wanted, product); --wanted) {
  }
  write_digits(product, last, out);
}

}  // namespace

void exact_digits_to(double magnitude, int last, ExactDigits& out) noexcept {
  constexpr int limbs_below = 45;  // 720 decimals
  digits_to_limb(factors_of(magnitude),
                 (last + limbs_below * limb_digits) / limb_digits - limbs_below, out);
}

void exact_significant_digits(double magnitude, int wanted, ExactDigits& out) noexcept {
  const auto [mantissa, exponent] = binary_parts(magnitude);
  const int first = estimated_exponent(exponent + 63 - std::countl_zero(mantissa));
  exact_digits_to(magnitude, first - (wanted - 1), out);
}

}  // namespace jwnls
