#include "library/numbers/number_style.h"

#include <algorithm>
#include <cmath>

#include "abi/number_flags.h"
#include "library/texts/utf8.h"

namespace jwnls::library {
namespace {

SymbolText character_symbol(char32_t character) {
  if (character == 0) return {};
  char16_t units[2] = {static_cast<char16_t>(character), 0};
  if (character <= 0xFFFF) return symbol_of(std::u16string_view(units, 1));
  units[0] = static_cast<char16_t>(0xD800U + ((character - 0x10000U) >> 10));
  units[1] = static_cast<char16_t>(0xDC00U + (character & 0x3FFU));
  return symbol_of(std::u16string_view(units, 2));
}

}  // namespace

SymbolText symbol_of(std::u16string_view text) noexcept {
  SymbolText symbol;
  if (text.size() > std::size(symbol.units)) return symbol;
  symbol.unit_count = static_cast<std::uint8_t>(text.copy(symbol.units, text.size()));
  symbol.byte_count = static_cast<std::uint8_t>(to_utf8(text, symbol.bytes, sizeof symbol.bytes));
  return symbol;
}

NumberStyle number_style(const NumberData& data, const Options& options,
                         LocaleHandle* handle) noexcept {
  NumberStyle style;
  style.handle = handle;
  style.decimals = options.decimals;
  style.half_even = options.rounding == rounding_half_even;
  style.native_digits = options.digits == digits_own && data.zero != U'0';
  if (options.no_group == 0) style.sizes = data.sizes;
  style.minimum_grouping = static_cast<std::uint8_t>(std::clamp(data.minimum_grouping, 1, 9));
  style.decimal = character_symbol(data.decimal);
  const char32_t group = options.exact != 0 ? data.exact_group : data.group;
  style.group = character_symbol(group);
  style.minus = symbol_of(data.minus);
  if (options.plus != 0) style.plus = symbol_of(data.plus);
  style.infinity = symbol_of(data.infinity);
  const char32_t zero = style.native_digits ? data.zero : U'0';
  for (unsigned digit = 0; digit < 10; ++digit)
    style.digits[digit] = character_symbol(zero + digit);

  const bool grouped = style.sizes.primary != 0;
  static_assert(number_flags::sign == integer_flags::sign &&
                number_flags::group == integer_flags::group);
  if (options.plus != 0) style.service_flags |= number_flags::sign;
  if (grouped) style.service_flags |= number_flags::group;
  style.direct_16bit = !style.native_digits && group == data.group && data.minus == u"-" &&
                       data.plus == u"+" && data.decimal <= 0xFFFF;
  // The 8-bit service takes its long way where it has more to write than ASCII.
  style.direct_8bit = style.direct_16bit && data.decimal < 0x80 && (!grouped || data.group < 0x80);
  if (grouped && style.minimum_grouping > 1) {
    style.direct_from = std::pow(10.0, style.sizes.primary + style.minimum_grouping - 1);
  }
  return style;
}

}  // namespace jwnls::library
