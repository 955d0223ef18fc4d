// The symbols of currencies: the section "currencies".

#include <unicode/dcfmtsym.h>
#include <unicode/uchar.h>
#include <unicode/ucurr.h>
#include <unicode/uenum.h>
#include <unicode/ustring.h>
#include <unicode/utf16.h>

#include <map>
#include <stdexcept>
#include <string>

#include "generators/locales/icu.h"
#include "generators/locales/layout_data.h"

namespace jwnls::generator {
namespace {

constexpr std::size_t longest_symbol = 64;

// A blank stands between digits and a symbol whose character next to them is neither a symbol nor a
// separator: CLDR's one rule of spacing.
bool takes_blank(UChar32 character) {
  return (U_GET_GC_MASK(character) & (U_GC_S_MASK | U_GC_Z_MASK)) == 0;
}

std::size_t blanks_of(const std::u16string& symbol) {
  if (symbol.empty()) return 0;
  UChar32 first = 0;
  UChar32 last = 0;
  std::int32_t begin = 0;
  auto end = static_cast<std::int32_t>(symbol.size());
  U16_NEXT(symbol.data(), begin, end, first);
  U16_PREV(symbol.data(), 0, end, last);
  return (takes_blank(first) ? 1U : 0U) | (takes_blank(last) ? 2U : 0U);
}

std::u16string name_of(const char16_t* code, const std::string& locale, UCurrNameStyle style) {
  UErrorCode error = U_ZERO_ERROR;
  std::int32_t length = 0;
  const char16_t* name = ucurr_getName(code, locale.c_str(), style, nullptr, &length, &error);
  check(error, "ucurr_getName");
  return {name, static_cast<std::size_t>(length)};
}

std::u16string text_of(const icu::UnicodeString& text) {
  return {text.getBuffer(), static_cast<std::size_t>(text.length())};
}

// The decimal and group symbols of money in a currency, and its pattern where it has one.
struct MoneySymbols {
  std::u16string decimal, group, pattern;
  bool operator==(const MoneySymbols&) const = default;
};

MoneySymbols money_symbols(const icu::DecimalFormatSymbols& symbols) {
  using Symbols = icu::DecimalFormatSymbols;
  const char16_t* const pattern = symbols.getCurrencyPattern();
  return {text_of(symbols.getSymbol(Symbols::kMonetarySeparatorSymbol)),
          text_of(symbols.getSymbol(Symbols::kMonetaryGroupingSeparatorSymbol)),
          pattern != nullptr ? pattern : u""};
}

Signs signs_of(const icu::DecimalFormatSymbols& symbols) {
  using Symbols = icu::DecimalFormatSymbols;
  return {text_of(symbols.getSymbol(Symbols::kMinusSignSymbol)),
          text_of(symbols.getSymbol(Symbols::kPlusSignSymbol)),
          text_of(symbols.getSymbol(Symbols::kPercentSymbol)),
          text_of(symbols.getSymbol(Symbols::kPerMillSymbol))};
}

// Every currency in use or remembered, sorted.
std::map<std::u16string, int> currencies() {
  std::map<std::u16string, int> codes;
  UErrorCode error = U_ZERO_ERROR;
  const icu::LocalUEnumerationPointer list(ucurr_openISOCurrencies(UCURR_ALL, &error));
  check(error, "ucurr_openISOCurrencies");
  std::int32_t length = 0;
  while (const char16_t* code = uenum_unext(list.getAlias(), &length, &error)) {
    codes[{code, static_cast<std::size_t>(length)}] = ucurr_getDefaultFractionDigits(code, &error);
    check(error, "ucurr_getDefaultFractionDigits");
  }
  return codes;
}

// What takes_blank() says is the one rule of spacing, on both sides and in every locale.
void check_spacing(const icu::DecimalFormatSymbols& symbols) {
  constexpr const char16_t* rule[UNUM_CURRENCY_SPACING_COUNT] = {u"[[:^S:]&[:^Z:]]", u"[:digit:]",
                                                                 u"\u00A0"};
  for (int which = 0; which < UNUM_CURRENCY_SPACING_COUNT; ++which) {
    for (const UBool before : {UBool{0}, UBool{1}}) {
      UErrorCode error = U_ZERO_ERROR;
      const icu::UnicodeString& text =
          symbols.getPatternForCurrencySpacing(static_cast<UCurrencySpacing>(which), before, error);
      check(error, "getPatternForCurrencySpacing");
      if (text != rule[which]) throw std::runtime_error("a second rule of currency spacing");
    }
  }
}

// What a locale says of each currency, as the section holds it.
using Rows = std::map<std::u16string, std::string>;

// A currency that is written as its code, with two decimals as most have.
std::string plain_row(const std::u16string& code) {
  SectionWriter row;
  row.byte(blanks_of(code) | blanks_of(code) << 2 | 2U << 5);
  row.text(code);
  row.text(code);
  return row.all();
}

Rows rows_of(const std::string& locale) {
  static const std::map<std::u16string, int> codes = currencies();
  UErrorCode error = U_ZERO_ERROR;
  const icu::DecimalFormatSymbols symbols(icu::Locale((locale + "@numbers=latn").c_str()), error);
  check(error, "DecimalFormatSymbols");
  check_spacing(symbols);
  const MoneySymbols usual = money_symbols(symbols);
  std::map<std::u16string, std::u16string> owners;  // symbol -> the currency that it stands for
  Rows rows;
  for (const auto& [code, decimals] : codes) {
    const std::u16string symbol = name_of(code.c_str(), locale, UCURR_SYMBOL_NAME);
    const std::u16string narrow = name_of(code.c_str(), locale, UCURR_NARROW_SYMBOL_NAME);
    const auto [owner, is_new] = owners.try_emplace(symbol, code);
    if (!is_new) {
      throw std::runtime_error("one symbol of two currencies, " + narrowed(owner->second) +
                               " and " + narrowed(code));
    }
    icu::DecimalFormatSymbols with_currency(symbols);
    with_currency.setCurrency(code.c_str(), error);
    check(error, "DecimalFormatSymbols::setCurrency");
    const MoneySymbols own = money_symbols(with_currency);
    SectionWriter row;
    row.byte(blanks_of(symbol) | blanks_of(narrow) << 2 | (own == usual ? 0U : 1U) << 4 |
             static_cast<std::size_t>(decimals) << 5);
    row.text(symbol, longest_symbol);
    row.text(narrow, longest_symbol);
    if (own != usual) {
      row.text(own.decimal);
      row.text(own.group);
      write_affixes(row, own.pattern, signs_of(symbols));
    }
    rows[code] = row.all();
  }
  return rows;
}

template <typename IsUsual>
std::string section_of(const Rows& rows, IsUsual is_usual) {
  SectionWriter all;
  std::size_t count = 0;
  for (const auto& [code, row] : rows) {
    if (is_usual(code, row)) continue;
    for (const char16_t letter : code) all.byte(letter);
    all.bytes(row);
    ++count;
  }
  SectionWriter section;
  section.word(count);
  section.bytes(all.all());
  return section.all();
}

const Rows& root_rows() {
  static const Rows rows = rows_of("root");
  return rows;
}

}  // namespace

std::string common_currency_section() {
  return section_of(root_rows(), [](const std::u16string& code, const std::string& row) {
    return row == plain_row(code);
  });
}

std::string currency_section(const std::string& locale) {
  return section_of(rows_of(locale), [](const std::u16string& code, const std::string& row) {
    return row == root_rows().at(code);
  });
}

}  // namespace jwnls::generator
