#include "tool/reports/decimal_sum.h"

#include <algorithm>
#include <charconv>
#include <compare>
#include <cstdlib>
#include <system_error>

namespace jwnls::tool {
namespace {

std::size_t leading_digits(std::string_view text) {
  std::size_t count = 0;
  while (count < text.size() && text[count] >= '0' && text[count] <= '9') ++count;
  return count;
}

std::uint64_t number_of(std::string_view digits) {
  std::uint64_t number = 0;
  for (const char digit : digits) number = number * 10 + static_cast<std::uint64_t>(digit - '0');
  return number;
}

int sign_of(std::strong_ordering order) {
  return std::is_lt(order) ? -1 : static_cast<int>(std::is_gt(order));
}

bool is_zero(const DecimalParts& decimal) {
  return decimal.whole.empty() && decimal.fraction.find_first_not_of('0') == std::string_view::npos;
}

// Digits behind the point: the shorter ones go on with zeros.
int compare_fractions(std::string_view left, std::string_view right) {
  const std::size_t both = std::min(left.size(), right.size());
  const int order = sign_of(left.substr(0, both) <=> right.substr(0, both));
  if (order != 0) return order;
  const auto has_more = [both](std::string_view digits) {
    return digits.find_first_not_of('0', both) != std::string_view::npos;
  };
  return static_cast<int>(has_more(left)) - static_cast<int>(has_more(right));
}

}  // namespace

DecimalParts decimal_parts(std::string_view text) {
  DecimalParts parts;
  parts.is_negative = text.starts_with('-');
  if (parts.is_negative) text.remove_prefix(1);
  const std::size_t whole = leading_digits(text);
  parts.whole = text.substr(0, whole);
  text.remove_prefix(whole);
  if (text.starts_with('.')) {
    text.remove_prefix(1);
    parts.fraction = text.substr(0, leading_digits(text));
    text.remove_prefix(parts.fraction.size());
  }
  parts.is_decimal = text.empty() && !(parts.whole.empty() && parts.fraction.empty());
  while (parts.whole.starts_with('0')) parts.whole.remove_prefix(1);
  return parts;
}

std::string_view plain_decimal(std::string_view text, char* out, std::size_t room) {
  std::string_view number = text;
  if (number.starts_with('+')) number.remove_prefix(1);
  const std::size_t mark = number.find_first_of("eE");
  if (mark == std::string_view::npos) return number;
  std::string_view power = number.substr(mark + 1);
  if (power.starts_with('+')) power.remove_prefix(1);
  int exponent = 0;
  const auto [stop, error] = std::from_chars(power.data(), power.data() + power.size(), exponent);
  const DecimalParts parts = decimal_parts(number.substr(0, mark));
  const auto digits = static_cast<int>(parts.whole.size() + parts.fraction.size());
  const auto most = static_cast<int>(room);
  if (error != std::errc() || stop != power.data() + power.size() || !parts.is_decimal ||
      exponent > most || exponent < -most || digits + std::abs(exponent) + 4 > most) {
    return text;
  }
  // Zeros on both sides, so that the point stands among the digits.
  std::string all(exponent < 0 ? static_cast<std::size_t>(-exponent) : 0, '0');
  all.append(parts.whole).append(parts.fraction);
  const int point = std::max(-exponent, 0) + static_cast<int>(parts.whole.size()) + exponent;
  if (static_cast<int>(all.size()) < point) all.resize(static_cast<std::size_t>(point), '0');
  std::string plain(parts.is_negative ? 1 : 0, '-');
  plain.append(1, '0').append(all, 0, static_cast<std::size_t>(point));
  if (static_cast<int>(all.size()) > point) {
    plain.append(1, '.').append(all, static_cast<std::size_t>(point));
  }
  const std::size_t zeros = plain.find_first_not_of('0', parts.is_negative ? 1 : 0);
  const std::size_t begin = parts.is_negative ? 1 : 0;
  const bool keeps_one = zeros == std::string::npos || plain[zeros] == '.';
  plain.erase(begin, std::min(zeros, plain.size()) - begin - (keeps_one ? 1 : 0));
  return {out, plain.copy(out, room)};
}

int compare(const DecimalParts& left, const DecimalParts& right) {
  if (left.is_negative != right.is_negative) {
    if (is_zero(left) && is_zero(right)) return 0;
    return left.is_negative ? -1 : 1;
  }
  int order = sign_of(left.whole.size() <=> right.whole.size());
  if (order == 0) order = sign_of(left.whole <=> right.whole);
  if (order == 0) order = compare_fractions(left.fraction, right.fraction);
  return left.is_negative ? -order : order;
}

// True with a carry. Both are below the base.
bool DecimalSum::add_limb(std::uint64_t& limb, std::uint64_t value) {
  limb += value;
  const bool carries = limb >= limb_base;
  if (carries) limb -= limb_base;
  return carries;
}

void DecimalSum::add_carry(Magnitude& to, std::size_t limb) {
  for (;; ++limb) {
    if (limb == to.whole.size()) to.whole.push_back(0);
    if (!add_limb(to.whole[limb], 1)) return;
  }
}

void DecimalSum::add_digits(Magnitude& to, const DecimalParts& decimal) {
  const std::size_t fractions = (decimal.fraction.size() + limb_digits - 1) / limb_digits;
  if (fractions > to.fraction.size()) to.fraction.resize(fractions);
  bool carry = false;
  for (std::size_t limb = fractions; limb > 0; --limb) {
    const std::string_view digits = decimal.fraction.substr((limb - 1) * limb_digits, limb_digits);
    std::uint64_t value = number_of(digits);
    for (std::size_t i = digits.size(); i < limb_digits; ++i) value *= 10;
    // A carry into a limb that is full already goes on: both together stay below twice the base.
    carry = add_limb(to.fraction[limb - 1], value + (carry ? 1 : 0));
  }
  if (carry) add_carry(to, 0);
  std::string_view rest = decimal.whole;
  for (std::size_t limb = 0; !rest.empty(); ++limb) {
    const std::size_t digits = std::min(rest.size(), limb_digits);
    if (limb == to.whole.size()) to.whole.push_back(0);
    if (add_limb(to.whole[limb], number_of(rest.substr(rest.size() - digits)))) {
      add_carry(to, limb + 1);
    }
    rest.remove_suffix(digits);
  }
}

void DecimalSum::add(Magnitude& to, const Magnitude& from) {
  if (from.fraction.size() > to.fraction.size()) to.fraction.resize(from.fraction.size());
  bool carry = false;
  for (std::size_t limb = from.fraction.size(); limb > 0; --limb) {
    carry = add_limb(to.fraction[limb - 1], from.fraction[limb - 1] + (carry ? 1 : 0));
  }
  if (carry) add_carry(to, 0);
  if (from.whole.size() > to.whole.size()) to.whole.resize(from.whole.size());
  for (std::size_t limb = 0; limb < from.whole.size(); ++limb) {
    if (add_limb(to.whole[limb], from.whole[limb])) add_carry(to, limb + 1);
  }
}

void DecimalSum::add(const DecimalParts& decimal) {
  decimals_ = std::max(decimals_, decimal.fraction.size());
  add_digits(sums_[decimal.is_negative ? 1 : 0], decimal);
}

DecimalSum& DecimalSum::operator+=(const DecimalSum& other) {
  decimals_ = std::max(decimals_, other.decimals_);
  for (std::size_t sign = 0; sign < sums_.size(); ++sign) add(sums_[sign], other.sums_[sign]);
  return *this;
}

// The greatest first, with so many before and behind the point.
std::vector<std::uint64_t> DecimalSum::limbs(const Magnitude& of, std::size_t whole,
                                             std::size_t fraction) {
  std::vector<std::uint64_t> all(whole + fraction);
  std::copy(of.whole.begin(), of.whole.end(), all.rend() - static_cast<std::ptrdiff_t>(whole));
  std::copy(of.fraction.begin(), of.fraction.end(),
            all.begin() + static_cast<std::ptrdiff_t>(whole));
  return all;
}

std::string DecimalSum::text() const {
  const auto& [positive, negative] = sums_;
  const std::size_t whole = std::max(positive.whole.size(), negative.whole.size());
  const std::size_t fraction = std::max(positive.fraction.size(), negative.fraction.size());
  auto greater = limbs(positive, whole, fraction);
  auto less = limbs(negative, whole, fraction);
  const bool is_negative = greater < less;
  if (is_negative) greater.swap(less);
  bool borrow = false;
  std::string digits;
  for (std::size_t limb = greater.size(); limb > 0; --limb) {
    std::uint64_t& value = greater[limb - 1];
    const std::uint64_t taken = less[limb - 1] + (borrow ? 1 : 0);
    borrow = value < taken;
    value = value + (borrow ? limb_base : 0) - taken;
  }
  for (const std::uint64_t limb : greater) {
    const std::string text = std::to_string(limb);
    digits.append(limb_digits - text.size(), '0').append(text);
  }
  const std::size_t point = whole * limb_digits;
  const std::size_t first = std::min(digits.find_first_not_of('0'), point);
  std::string text(is_negative ? 1 : 0, '-');
  text.append(digits, first, point - first);
  if (first == point) text += '0';
  if (decimals_ > 0) text.append(1, '.').append(digits, point, decimals_);
  return text;
}

}  // namespace jwnls::tool
