#include "library/numbers/decimal_value.h"

#include <algorithm>
#include <charconv>
#include <cstring>
#include <system_error>

namespace jwnls::library {
namespace {

std::string_view without_leading_zeros(std::string_view digits) {
  return digits.substr(std::min(digits.find_first_not_of('0'), digits.size()));
}

// Any digits that do not begin with a zero.
std::optional<double> rounded(std::string_view digits, int exponent) {
  char text[longest_text + 16];
  digits.copy(text, digits.size());
  char* end = text + digits.size();
  *end++ = 'e';
  end = std::to_chars(end, text + sizeof text, exponent).ptr;
  double value = 0;
  if (std::from_chars(text, end, value).ec == std::errc()) return value;
  // Too small a magnitude is 0, too large a one none.
  if (static_cast<int>(digits.size()) + exponent > 0) return std::nullopt;
  return 0.0;
}

}  // namespace

std::optional<double> double_of(std::uint64_t mantissa, int exponent) noexcept {
  if (mantissa <= exact_mantissas && exponent >= -exact_powers && exponent <= exact_powers) {
    // Both operands are exact, so that the one operation rounds correctly.
    const auto exact = static_cast<double>(mantissa);
    return exponent < 0 ? exact / powers_of_ten[-exponent] : exact * powers_of_ten[exponent];
  }
  if (mantissa == 0) return 0.0;
  char digits[24];
  const char* const end = std::to_chars(digits, digits + sizeof digits, mantissa).ptr;
  return rounded({digits, static_cast<std::size_t>(end - digits)}, exponent);
}

std::optional<double> double_of(const Decimal& decimal) noexcept {
  const std::string_view digits = without_leading_zeros(decimal.digits);
  const auto magnitude = digits.size() <= 19
                             ? double_of(integer_of(digits).value_or(0), decimal.exponent)
                             : rounded(digits, decimal.exponent);
  if (!magnitude) return std::nullopt;
  return decimal.negative ? -*magnitude : *magnitude;
}

std::optional<std::uint64_t> integer_of(std::string_view digits) noexcept {
  std::uint64_t value = 0;
  for (const char digit : digits) {
    if (__builtin_mul_overflow(value, std::uint64_t{10}, &value) ||
        __builtin_add_overflow(value, static_cast<std::uint64_t>(digit - '0'), &value)) {
      return std::nullopt;
    }
  }
  return value;
}

std::optional<std::size_t> write_canonical(const Decimal& decimal, char* out) noexcept {
  const std::string_view digits = decimal.digits;
  const bool is_zero = without_leading_zeros(digits).empty();
  const int exponent = is_zero ? std::min(decimal.exponent, 0) : decimal.exponent;
  constexpr int most_zeros = longest_text;
  if (exponent > most_zeros || -exponent > static_cast<int>(digits.size()) + most_zeros) {
    return std::nullopt;
  }
  char* end = out;
  if (decimal.negative) *end++ = '-';
  const auto append = [&end](std::string_view text) { end += text.copy(end, text.size()); };
  const auto fill = [&end](int count) { end = std::fill_n(end, std::max(count, 0), '0'); };
  const int behind = std::max(-exponent, 0);  // the point
  const auto in_front =
      static_cast<std::size_t>(std::max(static_cast<int>(digits.size()) - behind, 0));
  const std::string_view integers = without_leading_zeros(digits.substr(0, in_front));
  append(integers);
  if (!integers.empty()) fill(exponent);
  if (integers.empty()) *end++ = '0';
  if (behind != 0) {
    *end++ = '.';
    const std::string_view fraction = digits.substr(in_front);
    fill(behind - static_cast<int>(fraction.size()));
    append(fraction);
  }
  return static_cast<std::size_t>(end - out);
}

}  // namespace jwnls::library
