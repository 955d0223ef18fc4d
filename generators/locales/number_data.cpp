// Symbols, affixes and group sizes: the section "numbers".
//
//   pattern = subpattern [ ";" subpattern ]
//   subpattern = affix digits affix         digits: of the set "#0123456789,.@E"
//   affix = { "'" text "'" | "-" | "+" | "%" | "\u2030" | "\u00A4" | other }

#include <unicode/unum.h>
#include <unicode/unumberformatter.h>
#include <unicode/unumsys.h>

#include <algorithm>
#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>

#include "generators/locales/icu.h"
#include "generators/locales/layout_data.h"

namespace jwnls::generator {
namespace {

using NumberFormat = icu::LocalUNumberFormatPointer;

constexpr std::size_t longest_affix = 32;
constexpr std::size_t longest_name = 64;  // of what is no number

NumberFormat open_format(UNumberFormatStyle style, const std::string& locale,
                         const std::string& digits) {
  UErrorCode error = U_ZERO_ERROR;
  NumberFormat format(
      unum_open(style, nullptr, 0, (locale + "@numbers=" + digits).c_str(), nullptr, &error));
  check(error, "unum_open");
  return format;
}

std::u16string symbol(const NumberFormat& format, UNumberFormatSymbol which) {
  return icu_text<char16_t>("unum_getSymbol", [&](char16_t* out, int32_t room, UErrorCode* error) {
    return unum_getSymbol(format.getAlias(), which, out, room, error);
  });
}

// The affix at the beginning of `pattern`, which moves behind it: up to the digits, a ";" or the
// end.
std::u16string read_affix(std::u16string_view& pattern, const Signs& signs) {
  constexpr std::u16string_view digits = u"#0123456789,.@";
  std::u16string affix;
  bool quoted = false;
  for (; !pattern.empty(); pattern.remove_prefix(1)) {
    const char16_t unit = pattern.front();
    const char16_t meant = quoted ? u'\0' : unit;
    if (unit == u'\'') {
      if (pattern.size() > 1 && pattern[1] == u'\'') {
        affix += u'\'';
        pattern.remove_prefix(1);
      } else {
        quoted = !quoted;
      }
    } else if (meant == u';' || digits.find(meant) != digits.npos) {
      break;
    } else if (meant == u'-') {
      affix += signs.minus;
    } else if (meant == u'+') {
      affix += signs.plus;
    } else if (meant == u'%') {
      affix += signs.percent;
    } else if (meant == u'\u2030') {
      affix += signs.per_mille;
    } else {
      affix += unit;
    }
  }
  return affix;
}

void pass_digits(std::u16string_view& pattern) {
  pattern.remove_prefix(std::min(pattern.find_first_not_of(u"#0123456789,.@"), pattern.size()));
}

void write_kind(SectionWriter& out, const NumberFormat& format, const Signs& signs) {
  const bool grouped = unum_getAttribute(format.getAlias(), UNUM_GROUPING_USED) != 0;
  const auto size = [&](UNumberFormatAttribute which) {
    const int32_t value = unum_getAttribute(format.getAlias(), which);
    return static_cast<std::size_t>(grouped && value > 0 ? value : 0);
  };
  const std::size_t primary = size(UNUM_GROUPING_SIZE);
  const std::size_t secondary = size(UNUM_SECONDARY_GROUPING_SIZE);
  out.byte(primary);
  out.byte(secondary != 0 ? secondary : primary);

  const std::u16string text =
      icu_text<char16_t>("unum_toPattern", [&](char16_t* to, int32_t room, UErrorCode* error) {
        return unum_toPattern(format.getAlias(), false, to, room, error);
      });
  write_affixes(out, text, signs);
}

// The zero, and the others where they do not follow it in Unicode: Chinese numerals.
std::u16string digits_of(const NumberFormat& format) {
  const std::u16string zero = symbol(format, UNUM_ZERO_DIGIT_SYMBOL);
  std::u16string next = zero;
  std::u16string all = zero;
  bool consecutive = true;
  for (int which = UNUM_ONE_DIGIT_SYMBOL; which <= UNUM_NINE_DIGIT_SYMBOL; ++which) {
    const std::u16string digit = symbol(format, static_cast<UNumberFormatSymbol>(which));
    ++next.back();
    consecutive = consecutive && digit == next;
    all += digit;
  }
  return consecutive ? zero : all;
}

void check_decimal_symbol(const std::u16string& symbol) {
  if (symbol.size() != 1 || symbol.front() >= 0x80) {
    throw std::runtime_error("a decimal symbol that is not one ASCII character");
  }
}

void write_system(SectionWriter& out, const std::string& locale, const std::string& digits) {
  const NumberFormat number = open_format(UNUM_DECIMAL, locale, digits);
  const Signs signs = {symbol(number, UNUM_MINUS_SIGN_SYMBOL),
                       symbol(number, UNUM_PLUS_SIGN_SYMBOL), symbol(number, UNUM_PERCENT_SYMBOL),
                       symbol(number, UNUM_PERMILL_SYMBOL)};
  const NumberFormat amount = open_format(UNUM_CURRENCY, locale, digits);
  const std::u16string decimal = symbol(number, UNUM_DECIMAL_SEPARATOR_SYMBOL);
  const std::u16string money_decimal = symbol(amount, UNUM_MONETARY_SEPARATOR_SYMBOL);
  if (digits == "latn") {
    check_decimal_symbol(decimal);
    check_decimal_symbol(money_decimal);
  }
  out.text(digits_of(number), longest_affix);
  out.text(decimal);
  out.text(symbol(number, UNUM_GROUPING_SEPARATOR_SYMBOL));
  out.text(money_decimal);
  out.text(symbol(amount, UNUM_MONETARY_GROUPING_SEPARATOR_SYMBOL));
  for (const std::u16string& sign : {signs.minus, signs.plus, signs.percent, signs.per_mille,
                                     symbol(number, UNUM_INFINITY_SYMBOL)}) {
    out.text(sign, longest_affix);
  }
  out.text(symbol(number, UNUM_NAN_SYMBOL), longest_name);
  write_kind(out, number, signs);
  write_kind(out, amount, signs);
  write_kind(out, open_format(UNUM_CURRENCY_ACCOUNTING, locale, digits), signs);
  write_kind(out, open_format(UNUM_PERCENT, locale, digits), signs);
}

// The fewest digits in front of the first group symbol, as the formatter shows them; 0: no groups.
std::size_t minimum_grouping(const std::string& locale) {
  UErrorCode error = U_ZERO_ERROR;
  const icu::LocalUNumberFormatterPointer formatter(
      unumf_openForSkeletonAndLocale(u"", 0, (locale + "@numbers=latn").c_str(), &error));
  const icu::LocalUFormattedNumberPointer result(unumf_openResult(&error));
  check(error, "unumf_openForSkeletonAndLocale");
  std::int64_t value = 1000;
  for (std::size_t fewest = 1; fewest <= 3; ++fewest, value *= 10) {
    unumf_formatInt(formatter.getAlias(), value, result.getAlias(), &error);
    const std::u16string text =
        icu_text<char16_t>("unumf_resultToString", [&](char16_t* out, int32_t room, UErrorCode* e) {
          return unumf_resultToString(result.getAlias(), out, room, e);
        });
    if (text.size() > fewest + 3) return fewest;
  }
  return 0;
}

// The numbering system that the locale has for its own, where it has decimal digits.
std::string own_digits(const std::string& locale) {
  UErrorCode error = U_ZERO_ERROR;
  const icu::LocalUNumberingSystemPointer system(
      unumsys_open((locale + "@numbers=native").c_str(), &error));
  check(error, "unumsys_open");
  const bool decimal =
      unumsys_getRadix(system.getAlias()) == 10 && !unumsys_isAlgorithmic(system.getAlias());
  return decimal ? unumsys_getName(system.getAlias()) : "latn";
}

}  // namespace

void write_affixes(SectionWriter& out, std::u16string_view pattern, const Signs& signs) {
  const std::u16string prefix = read_affix(pattern, signs);
  pass_digits(pattern);
  const std::u16string suffix = read_affix(pattern, signs);
  std::u16string negative_prefix = signs.minus + prefix;
  std::u16string negative_suffix = suffix;
  if (pattern.starts_with(u';')) {
    pattern.remove_prefix(1);
    negative_prefix = read_affix(pattern, signs);
    pass_digits(pattern);
    negative_suffix = read_affix(pattern, signs);
  }
  for (const std::u16string& affix : {prefix, suffix, negative_prefix, negative_suffix}) {
    out.text(affix, longest_affix);
  }
}

std::string number_section(const std::string& locale) {
  SectionWriter out;
  out.byte(minimum_grouping(locale));
  const std::string own = own_digits(locale);
  out.byte(own == "latn" ? 1 : 2);
  write_system(out, locale, "latn");
  if (own != "latn") write_system(out, locale, own);
  return out.all();
}

}  // namespace jwnls::generator
