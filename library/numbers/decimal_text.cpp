#include "library/numbers/decimal_text.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>
#include <system_error>

#include "include/jwnls/jwnls.h"

namespace jwnls::library {
namespace {

constexpr int furthest_exponent = 100'000;
constexpr int most_decimals_of_a_double = 1074;

// Below, the fixed form of a floating number has no other digits than its shortest form.
template <typename Float>
constexpr Float shortest_as_written = Float{1} / std::numeric_limits<Float>::epsilon();

bool is_digit(char c) { return c >= '0' && c <= '9'; }

// The exponent behind an "e" or "E", kept within bounds; false for what is none.
bool read_exponent(std::string_view text, int& exponent) {
  const bool negative = !text.empty() && text.front() == '-';
  if (!text.empty() && (negative || text.front() == '+')) text.remove_prefix(1);
  if (text.empty() || !std::all_of(text.begin(), text.end(), is_digit)) return false;
  for (const char digit : text) {
    exponent = std::min(10 * exponent + (digit - '0'), furthest_exponent);
  }
  if (negative) exponent = -exponent;
  return true;
}

// Whether a decimal stands as write_canonical() writes it: most do, as databases give them.
bool is_canonical(std::string_view text) {
  const std::size_t first = text.front() == '-' ? 1 : 0;
  std::size_t at = first;
  while (at < text.size() && is_digit(text[at])) ++at;
  if (at == first || (text[first] == '0' && at != first + 1)) return false;
  if (at == text.size()) return true;
  if (text[at] != '.' || ++at == text.size()) return false;
  while (at < text.size() && is_digit(text[at])) ++at;
  return at == text.size();
}

}  // namespace

void DecimalText::split(const char* text, std::size_t length) noexcept {
  std::string_view digits(text, length);
  number_.negative = !digits.empty() && digits.front() == '-';
  if (number_.negative) digits.remove_prefix(1);
  const std::size_t point = std::min(digits.find('.'), digits.size());
  number_.integers = digits.substr(0, point);
  number_.fraction = digits.substr(std::min(point + 1, digits.size()));
  number_.zeros = 0;
}

int DecimalText::read(std::string_view text) noexcept {
  if (text.empty()) return JWNLS_MISSING;
  if (text.size() > longest_text) return JWNLS_UNREAD;
  if (is_canonical(text)) {
    split(room_ + 1, text.copy(room_ + 1, text.size()));
    return JWNLS_OK;
  }
  Decimal decimal;
  decimal.negative = text.front() == '-';
  if (decimal.negative || text.front() == '+') text.remove_prefix(1);
  if (const std::size_t letter = text.find_first_of("eE"); letter != text.npos) {
    if (!read_exponent(text.substr(letter + 1), decimal.exponent)) return JWNLS_UNREAD;
    text = text.substr(0, letter);
  }
  char digits[longest_text];
  const std::size_t point = std::min(text.find('.'), text.size());
  std::size_t count = text.copy(digits, point);
  if (point < text.size()) {
    count += text.substr(point + 1).copy(digits + count, text.npos);
    decimal.exponent -= static_cast<int>(text.size() - point - 1);
  }
  if (count == 0 || !std::all_of(digits, digits + count, is_digit)) return JWNLS_UNREAD;
  decimal.digits = {digits, count};
  const auto length = write_canonical(decimal, room_ + 1);
  if (!length) return JWNLS_RANGE;
  split(room_ + 1, *length);
  return JWNLS_OK;
}

template <typename Float>
void DecimalText::shortest_of(Float value) noexcept {
  char* const text = room_ + 1;
  char* const end = room_ + sizeof room_;
  if (std::abs(value) < shortest_as_written<Float>) {
    char* const stop = std::to_chars(text, end, value, std::chars_format::fixed).ptr;
    return split(text, static_cast<std::size_t>(stop - text));
  }
  // The fixed form of a large value has all its binary digits, where zeros are meant.
  char shortest[32];
  char* const stop =
      std::to_chars(shortest, shortest + sizeof shortest, value, std::chars_format::scientific).ptr;
  (void)read({shortest, static_cast<std::size_t>(stop - shortest)});
}

void DecimalText::shortest(double value) noexcept { shortest_of(value); }
void DecimalText::shortest(float value) noexcept { shortest_of(value); }

void DecimalText::exact(double value) noexcept {
  char* const text = room_ + 1;
  char* const stop = std::to_chars(text, room_ + sizeof room_, value, std::chars_format::fixed,
                                   most_decimals_of_a_double)
                         .ptr;
  split(text, static_cast<std::size_t>(stop - text));
}

// Of the last digit that is kept.
void DecimalText::add_one() noexcept {
  const auto add_to = [](std::string_view digits) {
    char* const begin = const_cast<char*>(digits.data());  // in room_
    char* digit = begin + digits.size();
    while (digit != begin && digit[-1] == '9') *--digit = '0';
    if (digit == begin) return false;
    ++digit[-1];
    return true;
  };
  if (add_to(number_.fraction) || add_to(number_.integers)) return;
  // All nines: a digit more, in front, in place of the minus sign or of what rounding keeps free.
  char* const first = const_cast<char*>(number_.integers.data()) - 1;
  *first = '1';
  number_.integers = {first, number_.integers.size() + 1};
}

void DecimalText::round(std::int32_t decimals, bool half_even) noexcept {
  const auto wanted = static_cast<std::size_t>(decimals);
  const std::string_view fraction = number_.fraction;
  if (fraction.size() <= wanted) {
    number_.zeros = wanted - fraction.size();
    return;
  }
  number_.fraction = fraction.substr(0, wanted);
  const std::string_view rest = fraction.substr(wanted);
  const bool is_half = rest.front() == '5' && rest.find_first_not_of('0', 1) == rest.npos;
  const char last = wanted != 0 ? fraction[wanted - 1] : number_.integers.back();
  const bool up = half_even && is_half ? (last - '0') % 2 != 0 : rest.front() >= '5';
  if (up) add_one();
}

void DecimalText::shift(int places) noexcept {
  for (; places != 0; --places) {
    // The first decimal, or a zero, takes the place of the point, which moves to its own.
    std::string_view& integers = number_.integers;
    const bool has_fraction = !number_.fraction.empty();
    const char digit = has_fraction ? number_.fraction.front() : '0';
    if (has_fraction) number_.fraction.remove_prefix(1);
    const_cast<char*>(integers.data())[integers.size()] = digit;  // in room_
    integers = {integers.data(), integers.size() + 1};
    if (integers.front() == '0') integers.remove_prefix(1);
  }
}

bool DecimalText::drop_fraction() noexcept {
  if (number_.fraction.find_first_not_of('0') != number_.fraction.npos) return false;
  number_.fraction = {};
  return true;
}

}  // namespace jwnls::library
