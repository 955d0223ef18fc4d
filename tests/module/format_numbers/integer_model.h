// One call of an integer member, and what it has to do: the text built as it is stated, least
// significant character first, without any of the module's code but the decoding of a record's
// lengths.

#ifndef JWNLS_TESTS_MODULE_FORMAT_NUMBERS_INTEGER_MODEL_H_
#define JWNLS_TESTS_MODULE_FORMAT_NUMBERS_INTEGER_MODEL_H_

#include <algorithm>
#include <cstdint>
#include <ostream>
#include <string>
#include <type_traits>
#include <vector>

#include "tests/module/format_numbers/number_call.h"
#include "tests/support/encoded.h"

namespace jwnls::test {

template <typename Integer>
struct IntegerCall {
  Integer value;
  std::int32_t width = 0;
  std::int32_t minimum = 1;
  std::uint32_t flags = 0;
  std::int64_t capacity = 60;

  friend std::ostream& operator<<(std::ostream& out, const IntegerCall& call) {
    return out << call.value << std::hex << ", flags " << call.flags << std::dec << ", width "
               << call.width << ", minimum " << call.minimum << ", capacity " << call.capacity;
  }
};

// The low-order units of a text that lies reversed, in their order, then zero units.
template <typename Unit>
Outcome<Unit> delivered(const std::basic_string<Unit>& reversed, std::int64_t capacity) {
  Outcome<Unit> outcome;
  outcome.length = std::ssize(reversed);
  outcome.status = outcome.length > capacity ? Status::does_not_fit : Status::ok;
  const auto room = static_cast<std::size_t>(capacity);
  outcome.text = reversed.substr(0, room);
  std::reverse(outcome.text.begin(), outcome.text.end());
  outcome.text.resize(room, Unit{0});
  return outcome;
}

// Digit values; 0 stands for the end mark.
inline std::vector<std::size_t> group_sizes(const LocaleRecord& record) {
  std::vector<std::size_t> sizes;
  for (const char16_t unit : grouping_of(record)) {
    if (unit == u'-') sizes.push_back(0);
    if (unit >= u'0' && unit <= u'9') sizes.push_back(static_cast<std::size_t>(unit - u'0'));
    if (!sizes.empty() && sizes.back() == 0) break;
  }
  if (sizes.empty()) sizes.push_back(0);
  return sizes;
}

template <typename Unit>
std::basic_string<Unit> reversed_separator(char16_t unit) {
  const std::basic_string<Unit> text = text_in<Unit>({&unit, 1});
  return {text.rbegin(), text.rend()};
}

template <typename Integer, typename Unit>
Outcome<Unit> expected_integer(const LocaleRecord& record, const IntegerCall<Integer>& call) {
  using namespace integer_flags;
  constexpr bool is_signed = std::is_signed_v<Integer>;
  const auto asks = [&](std::uint32_t bits) { return (call.flags & bits) != 0; };
  const std::int64_t capacity = std::max<std::int64_t>(call.capacity, 0);
  const std::int32_t minimum = call.minimum < 0 ? 6 : call.minimum;
  if (minimum > capacity || call.width > capacity) {
    return {Status::does_not_fit, untouched_length, {}};
  }
  std::basic_string<Unit> text;
  if (call.value == 0 && minimum == 0) return delivered(text, capacity);

  const bool hexadecimal = !is_signed && asks(hexadecimal_small | hexadecimal_capital);
  const bool octals = !is_signed && !hexadecimal && asks(octal);
  const unsigned radix = hexadecimal ? 16 : octals ? 8 : 10;
  const char* digits = asks(hexadecimal_small) ? "0123456789abcdef" : "0123456789ABCDEF";
  const bool negative = is_signed && call.value < 0;
  const auto bits = static_cast<std::uint64_t>(call.value);
  const auto sizes = group_sizes(record);
  std::size_t group_index = 0, in_group = 0;
  for (std::uint64_t rest = negative ? ~bits + 1 : bits; rest != 0; rest /= radix) {
    if (asks(group) && radix == 10 && sizes[group_index] != 0 && in_group == sizes[group_index]) {
      text += reversed_separator<Unit>(record.grouping_symbol);
      if (group_index + 1 < sizes.size()) ++group_index;
      in_group = 0;
    }
    text += static_cast<Unit>(digits[rest % radix]);
    ++in_group;
  }

  const auto fill_to = [&](std::int64_t length, char unit) {
    while (std::ssize(text) < length) text += static_cast<Unit>(unit);
  };
  const bool signs = is_signed && (negative || asks(sign | blank));
  const bool prefixed = hexadecimal && asks(prefix);
  fill_to(minimum, '0');
  if (asks(zero_fill) && !asks(left) && call.width >= 1 && minimum == 0) {
    fill_to(call.width - (signs || prefixed ? 1 : 0), '0');
  }
  if (signs) text += static_cast<Unit>(negative ? '-' : asks(sign) ? '+' : ' ');
  if (prefixed) {
    text += static_cast<Unit>(asks(hexadecimal_small) ? 'x' : 'X');
    text += Unit{'0'};
  }
  if (octals && asks(octal_zero) && std::ssize(text) < call.width) text += Unit{'0'};
  if (!asks(left)) fill_to(call.width, ' ');
  Outcome<Unit> outcome = delivered(text, capacity);
  if (outcome.length < call.width) {
    const auto length = static_cast<std::size_t>(outcome.length);
    outcome.text.replace(length, static_cast<std::size_t>(call.width) - length,
                         static_cast<std::size_t>(call.width) - length, Unit{' '});
    outcome.length = call.width;
  }
  return outcome;
}

}  // namespace jwnls::test

#endif  // JWNLS_TESTS_MODULE_FORMAT_NUMBERS_INTEGER_MODEL_H_
