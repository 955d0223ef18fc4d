// Digits laid out as a locale writes them: sign, groups, decimal symbol, digits of its own.

#ifndef JWNLS_LIBRARY_NUMBERS_LAY_OUT_H_
#define JWNLS_LIBRARY_NUMBERS_LAY_OUT_H_

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

#include "include/jwnls/jwnls.h"
#include "library/numbers/number_style.h"

namespace jwnls::library {

/// So many bytes behind digits may be read, whatever they are.
inline constexpr std::size_t digits_margin = 8;

/// ASCII digits on both sides of the decimal symbol; at least one in front.
struct NumberDigits {
  std::string_view integers;
  std::string_view fraction;
  std::size_t zeros = 0;  // behind the fraction
  bool negative = false;
};

/// Copies a few digits: most are three, and a call would take longer than they do.
template <typename Unit>
inline void copy_digits(std::string_view digits, Unit* out) noexcept {
  const char* const from = digits.data();
  const std::size_t count = digits.size();
  if (count == 3) {
    for (int i = 0; i < 3; ++i) out[i] = static_cast<Unit>(from[i]);
  } else if (sizeof(Unit) == 1 && count >= 4 && count <= 8) {
    std::uint32_t first = 0;
    std::uint32_t last = 0;
    std::memcpy(&first, from, sizeof first);
    std::memcpy(&last, from + count - sizeof last, sizeof last);
    std::memcpy(out, &first, sizeof first);
    std::memcpy(out + count - sizeof last, &last, sizeof last);
  } else if (count == 1 || count == 2) {
    out[0] = static_cast<Unit>(from[0]);
    out[count - 1] = static_cast<Unit>(from[count - 1]);
  } else {
    for (std::size_t i = 0; i < count; ++i) out[i] = static_cast<Unit>(from[i]);
  }
}

/// Copies an affix, with what lies behind it where `room` bears it, and gives its end.
template <typename Unit>
inline Unit* put_affix(std::basic_string_view<Unit> affix, std::size_t room, Unit* out) noexcept {
  constexpr std::size_t whole = 16 / sizeof(Unit);
  if (affix.size() <= whole && room >= whole) {
    std::memcpy(out, affix.data(), whole * sizeof(Unit));  // text() begins an array of more
  } else {
    affix.copy(out, affix.size());
  }
  return out + affix.size();
}

/// Writes the text, as the functions of jwnls.h: OK, or ROOM with the length that it takes.
template <typename Unit>
[[nodiscard]] int lay_out(const NumberStyle& style, const NumberDigits& number, Unit* out,
                          std::size_t room, std::size_t* length) noexcept {
  const AffixText& prefix = style.prefix[number.negative];
  const AffixText& suffix = style.suffix[number.negative];
  const auto group = style.group.text<Unit>();
  const auto decimal = style.decimal.text<Unit>();
  const std::size_t integers = number.integers.size();
  const std::size_t decimals = number.fraction.size() + number.zeros;
  const std::size_t groups = group_count(style, integers);
  const std::size_t digit_units = style.digits[0].text<Unit>().size();
  *length = prefix.template text<Unit>().size() + suffix.template text<Unit>().size() +
            (integers + decimals) * digit_units + groups * group.size() +
            (decimals != 0 ? decimal.size() : 0);
  if (*length > room) return JWNLS_ROOM;
  const Unit* const begin = out;

  // Whole symbols are copied, with what lies behind them, where the room bears it.
  const bool has_slack = room - *length >= sizeof(SymbolText::bytes);
  const auto put = [&out, has_slack](std::basic_string_view<Unit> text) {
    constexpr std::size_t whole =
        sizeof(Unit) == 1 ? sizeof(SymbolText::bytes) : sizeof(SymbolText::units);
    if (has_slack) {
      std::memcpy(out, text.data(), whole);  // text() begins an array of that size
      out += text.size();
    } else {
      for (const Unit unit : text) *out++ = unit;
    }
  };
  const auto put_digits = [&](std::string_view digits) {
    if (style.native_digits) {
      for (const char digit : digits) put(style.digits[digit - '0'].text<Unit>());
    } else {
      copy_digits(digits, out);
      out += digits.size();
    }
  };
  out = put_affix(prefix.text<Unit>(), room, out);
  std::string_view rest = number.integers;
  std::size_t next = groups == 0 ? integers
                                 : integers - style.sizes.primary -
                                       (groups - 1) * std::size_t{style.sizes.secondary};
  for (std::size_t left = groups; true; --left) {
    put_digits(rest.substr(0, next));
    if (left == 0) break;
    rest.remove_prefix(next);
    put(group);
    next = left == 1 ? style.sizes.primary : style.sizes.secondary;
  }
  if (decimals != 0) {
    put(decimal);
    put_digits(number.fraction);
    for (std::size_t i = 0; i < number.zeros; ++i) put(style.digits[0].text<Unit>());
  }
  put_affix(suffix.text<Unit>(), static_cast<std::size_t>(begin + room - out), out);
  return JWNLS_OK;
}

}  // namespace jwnls::library

#endif  // JWNLS_LIBRARY_NUMBERS_LAY_OUT_H_
