#include "library/numbers/number_syntax.h"

#include <algorithm>
#include <span>
#include <string>
#include <string_view>
#include <utility>

#include "include/jwnls/jwnls.h"
#include "library/texts/utf8.h"

namespace jwnls::library {
namespace {

constexpr std::uint32_t bit(Separator separator) { return 1U << static_cast<unsigned>(separator); }

// Nothing of more than four bytes.
SymbolBytes bytes_of(std::string_view text) {
  SymbolBytes symbol;
  if (text.size() > 4) return symbol;
  symbol.length = static_cast<std::uint8_t>(text.size());
  for (unsigned i = 0; i < symbol.length; ++i) {
    symbol.bytes |= std::uint32_t{static_cast<unsigned char>(text[i])} << (8 * i);
    symbol.mask |= std::uint32_t{0xFF} << (8 * i);
  }
  return symbol;
}

// The symbols that locales of a class write, the locale's own first.
std::span<const std::string_view> usual_symbols(Separator group) {
  static constexpr std::string_view point[] = {"."};
  static constexpr std::string_view comma[] = {","};
  static constexpr std::string_view apostrophe[] = {"\u2019", "'"};
  static constexpr std::string_view blank[] = {"\u00A0", "\u202F", " "};
  switch (group) {
    case Separator::point:
      return point;
    case Separator::comma:
      return comma;
    case Separator::apostrophe:
      return apostrophe;
    case Separator::blank:
      return blank;
    default:
      return {};
  }
}

// The symbols that go for one layout: the kind's, and the other kind's.
struct Symbols {
  char32_t decimal, group;  // group 0: none
  char32_t other_decimal, other_group;
};

char32_t character_of(std::string_view text) {
  return text.empty() ? 0 : first_character(text).value;
}

Symbols symbols_of(const NumberData& data, const CurrencyData* currency) {
  const NumberSymbols& latin = data.latin;
  const bool own = currency != nullptr && !currency->decimal.empty();
  const char32_t money_decimal = character_of(own ? currency->decimal : latin.money_decimal);
  const char32_t money_group = character_of(own ? currency->group : latin.money_group);
  const char32_t decimal = character_of(latin.decimal);
  const char32_t group = character_of(latin.group);
  Symbols symbols = currency != nullptr ? Symbols{money_decimal, money_group, decimal, group}
                                        : Symbols{decimal, group, money_decimal, money_group};
  // Who groups nothing has no group symbol: it is a foreign one.
  if (latin.kinds[JW_LAYOUT_NUMBER].sizes.primary == 0 || data.minimum_grouping == 0) {
    symbols.group = symbols.other_group = 0;
  }
  return symbols;
}

std::uint32_t group_bit(char32_t group) {
  if (group == 0) return 0;
  const Separator separator = separator_of(group);
  return bit(separator == Separator::none ? Separator::other : separator) |
         bit(Separator::arabic_group);
}

QuickSyntax quick_syntax(const Symbols& symbols, std::string_view minus,
                         const NumberSyntax& syntax) {
  QuickSyntax quick;
  if (symbols.decimal < 0x80 && syntax.fraction) {
    quick.decimal = static_cast<char>(symbols.decimal);
    quick.decimal_bits = 0xFFFF;
  }
  quick.minus = bytes_of(minus);
  if (syntax.groups != groups_locale) return quick;
  const Separator group = separator_of(symbols.group);
  quick.group_is_blank = group == Separator::blank;
  quick.sizes = syntax.sizes[0];
  SymbolBytes* next = quick.groups;
  for (const std::string_view symbol : usual_symbols(group)) *next++ = bytes_of(symbol);
  if (symbols.group != 0 && symbols.group < 0x80 && syntax.sizes[0] == GroupSizes{3, 3}) {
    quick.group = static_cast<char>(symbols.group);
    quick.group_bits = 0xFFFF;
  }
  quick.masks = symbols.group == 0 || quick.group_bits != 0;
  quick.threes_only = quick.masks && std::all_of(std::begin(syntax.sizes), std::end(syntax.sizes),
                                                 [](GroupSizes sizes) {
                                                   return sizes == GroupSizes{3, 3};
                                                 });
  return quick;
}

// False where it is longer.
bool put_affix(std::string_view text, bool is_prefix, AffixBytes& affix) {
  if (text.size() > sizeof affix.bytes) return false;
  text.copy(affix.bytes, text.size());
  affix.length = static_cast<std::uint8_t>(text.size());
  const std::size_t count = std::min<std::size_t>(text.size(), sizeof affix.word);
  const std::string_view compared = text.substr(is_prefix ? 0 : text.size() - count, count);
  const std::size_t first = is_prefix ? 0 : sizeof affix.word - count;
  for (std::size_t i = 0; i < count; ++i) {
    const auto bits = static_cast<unsigned>(8 * (first + i));
    affix.word |= std::uint64_t{static_cast<unsigned char>(compared[i])} << bits;
    affix.mask |= std::uint64_t{0xFF} << bits;
  }
  return true;
}

// Of digits that the full reader takes with the same symbols, in the same classes.
OwnDigits own_digits(const NumberSymbols& symbols, bool money, const NumberSyntax& syntax) {
  OwnDigits own;
  const std::string_view zero = symbols.digits;
  const Utf8Character first = first_character(zero);
  const bool in_a_row = zero.size() == first.bytes && digit_of(first.value).zero == first.value;
  const std::string_view decimal = money ? symbols.money_decimal : symbols.decimal;
  const std::string_view group = money ? symbols.money_group : symbols.group;
  const Separator group_class = syntax.separator(character_of(group));
  constexpr unsigned last_values = 0xC0;  // what the last bytes of ten digits must not reach
  if (first.bytes < 2 || !in_a_row || syntax.groups != groups_locale ||
      !syntax.is_own(group_class) || !syntax.is_decimal(syntax.separator(character_of(decimal))) ||
      static_cast<unsigned char>(zero.back()) + 10U > last_values) {
    return own;
  }
  own.front = bytes_of(zero.substr(0, first.bytes - 1));
  own.zero = static_cast<std::uint8_t>(zero.back());
  own.length = static_cast<std::uint8_t>(first.bytes);
  own.group_is_blank = group_class == Separator::blank;
  if (syntax.fraction) own.decimal = bytes_of(decimal);
  own.group = bytes_of(group);
  (void)put_affix(symbols.minus, true, own.minus);
  const bool decimal_fits = own.decimal.length == 2 || !syntax.fraction;
  own.masks = own.length == 2 && own.group.length == 2 && decimal_fits && !own.group_is_blank &&
              syntax.sizes[0] == GroupSizes{3, 3};
  return own;
}

// As people type it.
std::string with_plain_blanks(std::string_view affix) {
  std::string typed;
  while (!affix.empty()) {
    const std::size_t bytes = first_character(affix).bytes;
    const std::string_view character = affix.substr(0, bytes);
    typed += is_blank(first_character(affix).value) ? std::string_view(" ") : character;
    affix.remove_prefix(bytes);
  }
  return typed;
}

QuickAffixes quick_affixes(const NumberStyle& style, bool typed) {
  QuickAffixes affixes;
  bool differs = !typed;
  bool fits = true;
  for (int i = 0; i < 2; ++i) {
    for (const bool is_prefix : {true, false}) {
      const std::string written((is_prefix ? style.prefix : style.suffix)[i].text<char>());
      const std::string text = typed ? with_plain_blanks(written) : written;
      differs = differs || text != written;
      fits = put_affix(text, is_prefix, (is_prefix ? affixes.prefix : affixes.suffix)[i]) && fits;
    }
  }
  affixes.usable = fits && differs;
  return affixes;
}

void put_units(int kind, const Options& options, const CurrencyData* currency,
               const LocaleRecord& record, const NumberStyle& style, NumberSyntax& syntax) {
  if (kind == JWNLS_PERCENT) {
    syntax.unit = UnitKind::percent;
    syntax.unit_required = options.percent_sign == percent_sign_required;
  } else if (currency != nullptr) {
    syntax.unit = UnitKind::currency;
    syntax.unit_required = options.unit == unit_required;
    syntax.any_fraction = options.fraction == fraction_any;
    syntax.credit = options.credit;
    syntax.currency_decimals = currency->decimals;
    syntax.units = unit_names(*currency, options, record);
    const UnitBytes bytes = unit_bytes(syntax.units);
    syntax.unit_begins = bytes.begins;
    syntax.bytes = bytes.all;
  }
  if (syntax.unit == UnitKind::currency && syntax.unit_required && options.symbol == symbol_none) {
    return;
  }
  syntax.affixes = quick_affixes(style, false);
  syntax.typed_affixes = quick_affixes(style, true);
}

constexpr ByteSet bytes_of_numbers = [] {
  ByteSet bytes;
  bytes.add_all("0123456789.,' \t+-()");
  bytes.add_range(0x80, 0xBF);
  bytes.add_all(leads_of_numbers);
  return bytes;
}();

// Adds what texts may have beside units.
void put_bytes(NumberSyntax& syntax) {
  ByteSet& bytes = syntax.bytes;
  bytes.add_all(bytes_of_numbers);
  if (syntax.exponent) bytes.add_all("eE");
  if (syntax.unit == UnitKind::percent) bytes.add('%');
  if (syntax.unit == UnitKind::currency) bytes.add_all("cCdDrR");
  for (const char32_t symbol : {syntax.decimal_character, syntax.group_character}) {
    char first[4];
    encode_utf8(symbol, first);
    bytes.add(first[0]);
  }
  if (syntax.module_missing) bytes.add_range(0, 0xFF);
}

}  // namespace

NumberSyntax number_syntax(const NumberData& data, int kind, const Options& options,
                           const CurrencyData* currency, const LocaleRecord& record,
                           const NumberStyle& style) {
  NumberSyntax syntax;
  const Symbols symbols = symbols_of(data, currency);
  const bool integers = kind == JWNLS_INTEGER;
  syntax.decimal_character = symbols.decimal;
  syntax.group_character = symbols.group;
  const Separator decimal = separator_of(symbols.decimal);
  syntax.decimal = decimal == Separator::none ? Separator::arabic_decimal : decimal;
  syntax.own_groups = group_bit(symbols.group);
  if (symbols.decimal == symbols.other_decimal) syntax.own_groups |= group_bit(symbols.other_group);
  // Money is written with the decimal symbol of numbers, too, where that is no group symbol.
  const Separator other = separator_of(symbols.other_decimal);
  if (currency != nullptr && other != decimal &&
      ((group_bit(symbols.group) | group_bit(symbols.other_group)) & bit(other)) == 0) {
    syntax.other_decimal = other;
  }
  const NumberSymbols& written = options.digits == digits_own ? data.own : data.latin;
  syntax.sizes[0] = written.kinds[layout_kind(kind, options)].sizes;
  syntax.sizes[1] = data.latin.kinds[JW_LAYOUT_NUMBER].sizes;
  syntax.sizes[2] = data.latin.kinds[JW_LAYOUT_AMOUNT].sizes;
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
  if (kind == JWNLS_AMOUNT || kind == JWNLS_PERCENT) {
    put_units(kind, options, currency, record, style, syntax);
    syntax.exponent = false;
  }
  put_bytes(syntax);
  syntax.quick = quick_syntax(symbols, data.latin.minus, syntax);
  const bool has_money_of_its_own = currency != nullptr && !currency->decimal.empty();
  if (!has_money_of_its_own) {
    syntax.quick.own = own_digits(data.own, currency != nullptr, syntax);
  }
  return syntax;
}

}  // namespace jwnls::library
