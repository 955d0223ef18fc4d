#include "library/numbers/wide_decimal.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <string_view>

namespace jwnls::library {
namespace {

constexpr Wide wide_limit = Wide{short_limit} * short_limit;
constexpr unsigned most_digits = 2 * short_digits;

// What a finite double is: significand / 2^places, or times 2^-places.
struct Binary {
  std::uint64_t significand;
  int places;

  explicit Binary(double value) noexcept {
    const auto bits = std::bit_cast<std::uint64_t>(value);
    const auto exponent = static_cast<int>(bits >> 52 & 0x7FF);
    significand = (bits & ((std::uint64_t{1} << 52) - 1)) | std::uint64_t{1} << 52;
    places = static_cast<int>(no_places) - exponent;
  }
};

constexpr Wide wide_power(unsigned power) noexcept {
  return power <= short_digits ? Wide{integer_powers[power]}
                               : Wide{short_limit} * integer_powers[power - short_digits];
}

// A quotient that was cut, one more where the rest is beyond its half; of two as near the even one.
Wide nearest(Wide quotient, Wide rest, Wide divisor) noexcept {
  const bool up = 2 * rest > divisor || (2 * rest == divisor && quotient % 2 != 0);
  return quotient + (up ? 1 : 0);
}

// How many digits numbers below 2^power have in front of the decimal symbol, or one more; of
// fractions less than none, the zeros behind it.
constexpr int most_integers(int power) noexcept {
  return (power * 1233 >> 12) + 1;  // 1233/4096 approximates log10(2)
}

// A decimal is taken if its distance to the double is half the distance to the double's neighbours
// or less; at that half the double is meant if it is the even one.
bool is_meant(Wide twice_distance, Wide unit, bool even) noexcept {
  return twice_distance < unit || (even && twice_distance == unit);
}

}  // namespace

bool fixed_wide(double value, unsigned decimals, WideDecimal& number) noexcept {
  const auto [significand, places] = Binary(value);
  if (decimals > short_digits) return false;
  const Wide product = Wide{significand} * integer_powers[decimals];
  number = {0, decimals, std::signbit(value)};
  if (places > 0) {
    // Below 2^107, so that more than 126 places leave nothing, whatever their count.
    number.mantissa = ((product >> (std::min(places, 127) - 1)) + 1) >> 1;
    return true;
  }
  constexpr int most_shift = 106 - 52;  // 2^106 is below 10^32
  if (-places > most_shift || product >= wide_limit >> -places) return false;
  number.mantissa = product << -places;
  return true;
}

// No two decimals of fifteen digits are the same double, so that none has fewer digits than the
// nearest of these, but for zeros; where that is another double, one of sixteen or seventeen digits
// is it. What is compared is multiplied by 2^places and by 10^decimals, and is exact.
bool shortest_wide(double value, WideDecimal& number) noexcept {
  const auto [significand, places] = Binary(value);
  // The distance to the neighbour below a power of two is another one.
  if (significand == std::uint64_t{1} << 52 || places > 52 + 14 || places <= 52 - 70) return false;
  const bool even = significand % 2 == 0;
  number = {0, 0, std::signbit(value)};
  // Fifteen digits or fewer, from the largest number with this power of two on.
  int decimals = 15 - most_integers(53 - places);
  if (places <= 0) {
    const Wide whole = Wide{significand} << -places;
    const Wide unit = Wide{1} << -places;
    for (unsigned zeros = static_cast<unsigned>(-decimals);; --zeros) {
      const Wide power = integer_powers[zeros];
      const Wide quotient = whole / power;
      number.mantissa = nearest(quotient, whole - quotient * power, power) * power;
      const Wide distance = std::max(number.mantissa, whole) - std::min(number.mantissa, whole);
      if (is_meant(2 * distance, unit, even)) return true;
    }
  }
  for (decimals = std::max(decimals, 0);; ++decimals) {
    const Wide unit = wide_power(static_cast<unsigned>(decimals));
    const Wide product = unit * significand;
    const Wide quotient = product >> places;
    number.mantissa = nearest(quotient, product - (quotient << places), Wide{1} << places);
    const Wide decimal = number.mantissa << places;
    const Wide distance = std::max(decimal, product) - std::min(decimal, product);
    if (!is_meant(2 * distance, unit, even)) continue;
    number.decimals = static_cast<unsigned>(decimals);
    return true;
  }
}

// Where there are decimals, the mantissa is one of seventeen digits.
bool adjust_wide(WideDecimal& number, unsigned shift, int wanted) noexcept {
  const unsigned moved = std::min(shift, number.decimals);
  number.mantissa *= integer_powers[shift - moved];
  number.decimals -= moved;
  if (wanted < 0) {
    if (number.decimals == 0) return number.mantissa < wide_limit;
    auto mantissa = static_cast<std::uint64_t>(number.mantissa);
    while (number.decimals != 0 && mantissa % 10 == 0) {
      mantissa /= 10;
      --number.decimals;
    }
    number.mantissa = mantissa;
    return true;
  }
  const auto count = static_cast<unsigned>(wanted);
  const unsigned places =
      count < number.decimals ? number.decimals - count : count - number.decimals;
  if (count >= most_digits || places > short_digits) return false;
  const std::uint64_t power = integer_powers[places];
  if (count < number.decimals) {
    const auto mantissa = static_cast<std::uint64_t>(number.mantissa);
    number.mantissa = power_reciprocals[places].quotient(mantissa + power / 2);
  } else {
    if (number.mantissa >= wide_limit / power) return false;
    number.mantissa *= power;
  }
  number.decimals = count;
  return true;
}

WideDigits::WideDigits(const WideDecimal& number) noexcept {
  const auto low = static_cast<std::uint64_t>(number.mantissa);
  const bool is_word = number.mantissa == low;  // quicker to divide
  const std::uint64_t front =
      is_word ? low / short_limit : static_cast<std::uint64_t>(number.mantissa / short_limit);
  const std::uint64_t behind = low - front * short_limit;
  put_sixteen_digits(front, room_);
  put_sixteen_digits(behind, room_ + short_digits);
  const unsigned count = front == 0 ? digit_count(behind) : short_digits + digit_count(front);
  // One digit stands in front of the decimal symbol, whatever it is.
  const std::string_view all(room_, most);
  const std::size_t begin = most - std::max(count, number.decimals + 1);
  const std::size_t point = most - number.decimals;
  digits_ = {all.substr(begin, point - begin), all.substr(point), 0, number.negative};
}

}  // namespace jwnls::library
