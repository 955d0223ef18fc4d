#include "library/numbers/number_syntax.h"

#include <string_view>

#include "library/texts/utf8.h"

namespace jwnls::library {
namespace {

constexpr std::uint32_t bit(Separator separator) { return 1U << static_cast<unsigned>(separator); }

SymbolBytes bytes_of(char16_t character) {
  char text[3] = {};
  SymbolBytes symbol;
  symbol.length =
      static_cast<std::uint8_t>(to_utf8(std::u16string_view(&character, 1), text, sizeof text));
  for (unsigned i = 0; i < symbol.length; ++i) {
    symbol.bytes |= std::uint32_t{static_cast<unsigned char>(text[i])} << (8 * i);
    symbol.mask |= std::uint32_t{0xFF} << (8 * i);
  }
  return symbol;
}

// The symbols that locales of a class write, the locale's own first.
std::u16string_view usual_symbols(Separator group) {
  switch (group) {
    case Separator::point:
      return u".";
    case Separator::comma:
      return u",";
    case Separator::apostrophe:
      return u"\u2019'";
    case Separator::blank:
      return u"\u00A0\u202F ";
    default:
      return {};
  }
}

QuickSyntax quick_syntax(const NumberData& data, const NumberSyntax& syntax) {
  QuickSyntax quick;
  if (data.decimal < 0x80 && syntax.fraction) {
    quick.decimal = static_cast<char>(data.decimal);
    quick.decimal_bits = 0xFFFF;
  }
  if (data.minus.size() == 1) quick.minus = bytes_of(data.minus.front());
  if (syntax.groups != groups_locale) return quick;
  const Separator group = separator_of(data.group);
  quick.group_is_blank = group == Separator::blank;
  quick.sizes = syntax.sizes[0];
  SymbolBytes* next = quick.groups;
  for (const char16_t symbol : usual_symbols(group)) *next++ = bytes_of(symbol);
  if (data.group != 0 && data.group < 0x80 && syntax.sizes[0] == GroupSizes{3, 3}) {
    quick.group = static_cast<char>(data.group);
    quick.group_bits = 0xFFFF;
  }
  quick.masks = data.group == 0 || quick.group_bits != 0;
  return quick;
}

}  // namespace

NumberSyntax number_syntax(const NumberData& data, const Options& options, bool integers) noexcept {
  NumberSyntax syntax;
  syntax.decimal_character = data.decimal;
  syntax.group_character = data.group;
  const Separator decimal = separator_of(data.decimal);
  syntax.decimal = decimal == Separator::none ? Separator::arabic_decimal : decimal;
  if (data.group != 0) {
    const Separator group = separator_of(data.group);
    syntax.own_groups =
        bit(group == Separator::none ? Separator::other : group) | bit(Separator::arabic_group);
  }
  syntax.sizes[0] = data.sizes;
  syntax.sizes[1] = data.amount_sizes;
  // Who groups nothing is still read where others group by three.
  for (GroupSizes& sizes : syntax.sizes) {
    if (sizes.primary == 0) sizes = {3, 3};
  }
  syntax.groups = options.groups;
  syntax.signs_anywhere = options.signs == signs_any;
  syntax.exponent = !integers;
  syntax.fraction = !integers;
  syntax.triangle_minus = data.triangle_minus;
  syntax.module_missing = options.missing == missing_module;
  syntax.quick = quick_syntax(data, syntax);
  return syntax;
}

}  // namespace jwnls::library
