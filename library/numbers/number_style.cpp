#include "library/numbers/number_style.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <iterator>
#include <string>

#include "abi/number_flags.h"
#include "include/jwnls/jwnls.h"
#include "library/texts/utf8.h"

namespace jwnls::library {
namespace {

constexpr std::string_view currency_sign = "\u00A4";
constexpr std::string_view no_break_blank = "\u00A0";
constexpr std::string_view narrow_blank = "\u202F";

// Nothing of a text that outgrows it.
template <std::size_t most_bytes, std::size_t most_units>
void put_text(std::string_view text, ShortText<most_bytes, most_units>& out) {
  char16_t units[most_bytes];
  if (text.size() > most_bytes) return;
  const auto count = to_utf16(text, units, most_units);
  if (!count) return;
  out.byte_count = static_cast<std::uint8_t>(text.copy(out.bytes, text.size()));
  out.unit_count = static_cast<std::uint8_t>(*count);
  std::copy_n(units, *count, out.units);
}

SymbolText symbol_of(std::string_view text) {
  SymbolText symbol;
  put_text(text, symbol);
  return symbol;
}

std::string replaced(std::string text, std::string_view from, std::string_view to) {
  const std::size_t at = text.find(from);
  if (at != text.npos) text.replace(at, from.size(), to);
  return text;
}

// What a value that is not negative has around it when all have a sign: the affixes of a negative
// one with a plus sign for the minus, or, where those have no minus sign, its own behind a plus.
Affixes with_plus(const KindData& kind, const NumberSymbols& symbols) {
  const AffixTexts& negative = kind.negative;
  const std::string_view minus = symbols.minus;
  Affixes affixes;
  if (negative.prefix.find(minus) == minus.npos && negative.suffix.find(minus) == minus.npos) {
    affixes = Affixes(kind.positive);
    affixes.prefix.insert(0, symbols.plus);
  } else {
    affixes.prefix = replaced(std::string(negative.prefix), minus, symbols.plus);
    affixes.suffix = replaced(std::string(negative.suffix), minus, symbols.plus);
  }
  return affixes;
}

// The symbol of a currency as the options want it; none where they want none.
CurrencySymbol symbol_for(const Options& options, const CurrencyData& currency) {
  switch (options.symbol) {
    case symbol_narrow:
      return currency.narrow;
    case symbol_code:
      return {currency.code};
    case symbol_none:
      return {"", false, false};
    default:
      return currency.symbol;
  }
}

// An affix without the symbol, and without the blanks that stood around it.
std::string without_symbol(std::string affix) {
  const std::size_t at = affix.find(currency_sign);
  if (at == affix.npos) return affix;
  affix.erase(at, currency_sign.size());
  for (const std::string_view blank : {no_break_blank, narrow_blank, std::string_view(" ")}) {
    const std::size_t before = at >= blank.size() ? at - blank.size() : affix.npos;
    if (affix.compare(at, blank.size(), blank) == 0) {
      return affix.erase(at, blank.size());
    }
    if (before != affix.npos && affix.compare(before, blank.size(), blank) == 0) {
      return affix.erase(before, blank.size());
    }
  }
  return affix;
}

// `out` is new.
void put_affix(std::string_view text, bool is_prefix, const CurrencySymbol* symbol,
               AffixText& out) {
  if (symbol == nullptr) {
    put_text(text, out);
    return;
  }
  std::string affix(text);
  if (symbol->text.empty()) {
    put_text(without_symbol(affix), out);
    return;
  }
  const std::size_t at = affix.find(currency_sign);
  if (at != affix.npos) {
    const bool beside_digits = is_prefix ? at + currency_sign.size() == affix.size() : at == 0;
    affix.replace(at, currency_sign.size(), symbol->text);
    out.has_blank = beside_digits && (is_prefix ? symbol->blank_behind : symbol->blank_before);
    if (out.has_blank) affix.insert(is_prefix ? affix.size() : 0, no_break_blank);
  }
  put_text(affix, out);
}

void put_affixes(const KindData& kind, const NumberSymbols& symbols, const Options& options,
                 const CurrencyData* currency, NumberStyle& style) {
  CurrencySymbol symbol;
  const CurrencySymbol* unit = nullptr;
  if (currency != nullptr) {
    symbol = symbol_for(options, *currency);
    unit = &symbol;
  }
  Affixes signed_affixes;
  if (options.plus != 0) signed_affixes = with_plus(kind, symbols);
  const AffixTexts both[] = {options.plus != 0 ? signed_affixes.texts() : kind.positive,
                             kind.negative};
  for (int i = 0; i < 2; ++i) {
    put_affix(both[i].prefix, true, unit, style.prefix[i]);
    put_affix(both[i].suffix, false, unit, style.suffix[i]);
  }
}

constexpr auto latin_digits = [] {
  std::array<SymbolText, 10> symbols;
  for (std::size_t i = 0; i < symbols.size(); ++i) {
    symbols[i].bytes[0] = static_cast<char>('0' + i);
    symbols[i].units[0] = static_cast<char16_t>(u'0' + i);
    symbols[i].byte_count = symbols[i].unit_count = 1;
  }
  return symbols;
}();

void put_digits(std::string_view digits, NumberStyle& style) {
  if (!style.native_digits) {
    std::copy(latin_digits.begin(), latin_digits.end(), style.digits);
    return;
  }
  char32_t digit = 0;
  for (SymbolText& symbol : style.digits) {
    char text[4];
    digit = digits.empty() ? digit + 1 : first_character(digits).value;
    if (!digits.empty()) digits.remove_prefix(first_character(digits).bytes);
    const std::size_t bytes = encode_utf8(digit, text);
    symbol = symbol_of({text, bytes});
  }
}

// The services take longer for other groups than those of three.
void find_service_forms(const NumberData& data, const Options& options, std::string_view decimal,
                        std::string_view group, NumberStyle& style) {
  const bool grouped = style.sizes.primary != 0;
  const auto is = [](const AffixText& affix, std::string_view text) {
    return affix.text<char>() == text;
  };
  static_assert(number_flags::sign == integer_flags::sign &&
                number_flags::group == integer_flags::group);
  if (options.plus != 0) style.service_flags |= number_flags::sign;
  if (grouped) style.service_flags |= number_flags::group;
  style.by_service_16bit =
      is(style.prefix[0], options.plus != 0 ? "+" : "") && is(style.prefix[1], "-") &&
      is(style.suffix[0], "") && is(style.suffix[1], "") && !style.native_digits &&
      style.shift == 0 && decimal == data.record_decimal.text() &&
      (!grouped || (group == data.record_group.text() && style.sizes == data.record_sizes &&
                    style.sizes == GroupSizes{3, 3}));
  // The 8-bit service takes its long way where it has more to write than ASCII.
  style.by_service_8bit =
      style.by_service_16bit && decimal.size() == 1 && (!grouped || group.size() == 1);
  if (grouped && style.minimum_grouping > 1) {
    style.service_from = std::pow(10.0, style.sizes.primary + style.minimum_grouping - 1);
  }
}

constexpr std::size_t longest_run = 4;

// What the parts of an encoding go by: the units of a digit, of a separator.
struct PartUnits {
  std::size_t digit, separator;
  bool operator==(const PartUnits&) const = default;
};
template <typename Unit>
PartUnits part_units(const NumberStyle& style) {
  return {style.digits[0].text<Unit>().size(), style.group.text<Unit>().size()};
}

IntegerPart integer_part(const NumberStyle& style, std::size_t digits, const PartUnits& units) {
  const auto narrow = [](std::size_t value) { return static_cast<std::uint8_t>(value); };
  const std::size_t groups = group_count(style, digits);
  std::size_t behind = groups == 0 ? 0 : style.sizes.primary + (groups - 1) * style.sizes.secondary;
  IntegerPart part;
  part.units = narrow(digits * units.digit + groups * units.separator);
  part.groups = narrow(groups);
  part.in_one_run = digits - behind > longest_run || style.sizes.primary == 0;
  std::size_t run = digits - behind;
  std::size_t at = 0;
  for (std::size_t i = 0; i < std::size(part.run); ++i) {
    part.run[i] = {narrow(behind), narrow(8 * (longest_run - std::min(run, longest_run))),
                   narrow(at)};
    if (run != 0) at += run * units.digit + units.separator;
    run = i >= groups ? 0 : i + 1 == groups ? style.sizes.primary : style.sizes.secondary;
    behind -= run;
  }
  return part;
}

void put_integer_parts(NumberStyle& style) {
  auto& [narrow, wide] = style.short_texts;
  const PartUnits bytes = part_units<char>(style);
  const PartUnits units = part_units<char16_t>(style);
  for (std::size_t digits = 1; digits <= short_digits; ++digits) {
    narrow.integers[digits] = integer_part(style, digits, bytes);
    wide.integers[digits] = units == bytes ? narrow.integers[digits]  // as most are
                                           : integer_part(style, digits, units);
  }
}

// False for digits that differ in length, or are too long.
template <typename Unit>
bool put_own_digits(const SymbolText (&symbols)[10], OwnDigitTexts& own) {
  const std::size_t units = symbols[0].text<Unit>().size();
  const std::size_t bytes = units * sizeof(Unit);
  for (std::size_t i = 0; i < std::size(symbols); ++i) {
    const auto text = symbols[i].text<Unit>();
    if (text.size() != units || bytes > short_symbol) return false;
    std::memcpy(&own.first[i], text.data(), bytes);
    own.second[i] = own.first[i] << 8 * bytes;
  }
  return true;
}

template <typename Unit>
DigitForm digit_form_of(const SymbolText (&symbols)[10], OwnDigitTexts& own) {
  const std::size_t bytes = symbols[0].text<Unit>().size() * sizeof(Unit);
  const std::size_t last = bytes - sizeof(Unit);
  const std::uint64_t step = std::uint64_t{1} << 8 * last;
  // In a row are those that differ in their last unit alone, each by 1 from the one before it.
  for (std::size_t i = 0; i < std::size(symbols); ++i) {
    if (own.first[i] != own.first[0] + i * step) return DigitForm::listed;
  }
  const std::uint64_t zero = own.first[0] - '0' * step;
  for (std::uint64_t& texts : own.zeros) {
    for (std::size_t at = 0; at + bytes <= sizeof texts; at += bytes) texts |= zero << 8 * at;
  }
  switch (bytes) {
    case 2:
      return DigitForm::two_bytes;
    case 3:
      return DigitForm::three_bytes;
    case 4:
      return DigitForm::four_bytes;
    default:                     // unreachable: the digits are in a row, and digits are characters
      return DigitForm::listed;  // unreachable: of two to four bytes, but for those of ASCII
  }
}

template <typename Unit>
bool put_digit_texts(NumberStyle& style) {
  ShortTexts& texts = style.short_texts[sizeof(Unit) - 1];
  if (!style.native_digits) {
    texts.digit_form = DigitForm::latin;
    return true;
  }
  if (!put_own_digits<Unit>(style.digits, texts.own_digits)) return false;
  texts.digit_form = digit_form_of<Unit>(style.digits, texts.own_digits);
  return true;
}

// What lay_out_short() goes by.
void prepare_short_forms(int kind, NumberStyle& style) {
  const auto is_short = [](const SymbolText& symbol) { return symbol.byte_count <= short_symbol; };
  if (!is_short(style.decimal) || !is_short(style.group) || style.sizes.primary > longest_run ||
      style.sizes.secondary > longest_run || !put_digit_texts<char>(style) ||
      !put_digit_texts<char16_t>(style)) {
    return;
  }
  put_integer_parts(style);
  if (kind != JWNLS_INTEGER) {
    style.short_form = style.decimals >= 0 && style.shift == 0 ? ShortForm::fixed : ShortForm::few;
  }
  const int places = std::max(style.decimals, 0) + style.shift;
  if (places >= static_cast<int>(short_digits)) return;
  style.integer_scale = integer_powers[places];
  style.short_integers = short_limit / style.integer_scale;
}

}  // namespace

int layout_kind(int kind, const Options& options) noexcept {
  if (kind == JWNLS_PERCENT) return JW_LAYOUT_PERCENT;
  if (kind != JWNLS_AMOUNT) return JW_LAYOUT_NUMBER;
  return options.accounting != 0 ? JW_LAYOUT_ACCOUNTING : JW_LAYOUT_AMOUNT;
}

NumberStyle number_style(const NumberData& data, int kind, const Options& options,
                         const CurrencyData* currency, LocaleHandle* handle) {
  NumberStyle style = plain_style;
  const NumberSymbols& symbols = options.digits == digits_own ? data.own : data.latin;
  const int index = layout_kind(kind, options);
  KindData own_kind = symbols.kinds[index];
  if (index == JW_LAYOUT_AMOUNT && currency != nullptr &&
      (currency->positive.prefix + currency->positive.suffix).find(currency_sign) !=
          std::string::npos) {
    own_kind.positive = currency->positive.texts();
    own_kind.negative = currency->negative.texts();
  }
  style.handle = handle;
  style.decimals = options.decimals;
  style.half_even = options.rounding == rounding_half_even;
  style.native_digits = symbols.digits != "0";
  style.minimum_grouping = static_cast<std::uint8_t>(std::clamp(data.minimum_grouping, 1U, 9U));
  if (options.no_group == 0 && data.minimum_grouping != 0) style.sizes = own_kind.sizes;

  std::string_view decimal = symbols.decimal;
  std::string_view group = symbols.group;
  if (currency != nullptr) {
    decimal = symbols.money_decimal;
    group = symbols.money_group;
    if (!currency->decimal.empty()) decimal = currency->decimal;
    if (!currency->group.empty()) group = currency->group;
    if (style.decimals < 0) style.decimals = currency->decimals;
  }
  if (kind == JWNLS_PERCENT) style.shift = 2;
  // As the record has it; whoever types it types a plain or a no-break blank.
  if (options.exact == 0 && group == narrow_blank) group = no_break_blank;
  style.decimal = symbol_of(decimal);
  style.group = symbol_of(group);
  put_text(symbols.infinity, style.infinity);
  put_digits(symbols.digits, style);
  put_affixes(own_kind, symbols, options, currency, style);
  find_service_forms(data, options, decimal, group, style);
  prepare_short_forms(kind, style);
  prepare_shuffled_text(style, style.shuffled);
  return style;
}

}  // namespace jwnls::library
