#include "generators/locales/cldr_locale.h"

#include <unicode/ucal.h>
#include <unicode/uchar.h>
#include <unicode/ucurr.h>
#include <unicode/uloc.h>
#include <unicode/unum.h>
#include <unicode/ures.h>
#include <unicode/utf16.h>

#include <algorithm>

#include "abi/locale_record.h"
#include "generators/locales/date_symbols.h"
#include "generators/locales/icu.h"
#include "generators/locales/pattern_mapping.h"

namespace jwnls::generator {
namespace {

using NumberFormat = icu::LocalUNumberFormatPointer;
using Calendar = icu::LocalUCalendarPointer;
using Resource = icu::LocalUResourceBundlePointer;

TextList typeable_list(TextList list) {
  for (std::u16string& text : list) text = typeable(text);
  return list;
}

// Date patterns 1 to 3, then time, datetime and style-0 pattern.
TextList patterns(const std::string& name, const PatternNames& names) {
  const auto map = [&](UDateFormatStyle date, UDateFormatStyle time, PatternKind kind) {
    return map_pattern(cldr_pattern(name, date, time), names, kind);
  };
  const std::u16string time = map(UDAT_NONE, UDAT_MEDIUM, PatternKind::other);
  return {map(UDAT_SHORT, UDAT_NONE, PatternKind::numeric_date),
          map(UDAT_MEDIUM, UDAT_NONE, PatternKind::other),
          map(UDAT_LONG, UDAT_NONE, PatternKind::other),
          time,
          map(UDAT_MEDIUM, UDAT_MEDIUM, PatternKind::other),
          time};
}

// Grouping sizes as a record writes them: "3", or "3;2" when the further groups differ.
std::u16string grouping(const UNumberFormat* format) {
  const int first = unum_getAttribute(format, UNUM_GROUPING_USED) != 0
                        ? unum_getAttribute(format, UNUM_GROUPING_SIZE)
                        : 0;
  const int further = unum_getAttribute(format, UNUM_SECONDARY_GROUPING_SIZE);
  if (first <= 0) return {};
  std::string text = std::to_string(first);
  if (further > 0 && further != first) text += ';' + std::to_string(further);
  return widened(text);
}

char16_t number_symbol(const UNumberFormat* format, UNumberFormatSymbol symbol) {
  const std::u16string text =
      icu_text<char16_t>("unum_getSymbol", [&](char16_t* out, int32_t room, UErrorCode* error) {
        return unum_getSymbol(format, symbol, out, room, error);
      });
  if (text.size() != 1) throw std::runtime_error("a number symbol of more than one unit");
  return text[0];
}

struct Currency {
  std::u16string code = u"XXX";
  std::u16string symbol = u"\u00A4";
  int digits = 2;
};

// The currency of the locale's region. The world and continents have none: the general sign.
Currency currency_of(const std::string& name, const std::string& region) {
  UErrorCode error = U_ZERO_ERROR;
  char16_t code[4] = {};
  Currency currency;
  const int32_t length = ucurr_forLocale(("und_" + region).c_str(), code, 4, &error);
  if (error == U_MISSING_RESOURCE_ERROR || length == 0) return currency;
  check(error, "ucurr_forLocale");
  currency.code.assign(code, static_cast<std::size_t>(length));

  int32_t symbol_length = 0;
  const char16_t* symbol =
      ucurr_getName(code, name.c_str(), UCURR_SYMBOL_NAME, nullptr, &symbol_length, &error);
  check(error, "ucurr_getName");
  currency.digits = ucurr_getDefaultFractionDigits(code, &error);
  check(error, "ucurr_getDefaultFractionDigits");

  // Blanks inside a symbol stay no-break. Nothing stands between symbol and number but what the
  // symbol brings along, and one that ends in a letter needs a blank there.
  currency.symbol.clear();
  for (const char16_t unit : std::u16string_view(symbol, static_cast<std::size_t>(symbol_length))) {
    const std::u16string typed = typeable({&unit, 1});
    if (!typed.empty()) currency.symbol += unit == typed[0] ? unit : u'\u00A0';
  }
  int32_t end = static_cast<int32_t>(currency.symbol.size());
  UChar32 last = 0;
  U16_PREV(currency.symbol.data(), 0, end, last);
  if (u_isUAlphabetic(last)) currency.symbol += u'\u00A0';
  return currency;
}

void read_week(const std::string& name, CldrLocale& locale) {
  UErrorCode error = U_ZERO_ERROR;
  const Calendar calendar(ucal_open(u"UTC", 3, name.c_str(), UCAL_GREGORIAN, &error));
  check(error, "ucal_open");
  const auto attribute = [&](UCalendarAttribute which) {
    return static_cast<std::uint8_t>(ucal_getAttribute(calendar.getAlias(), which));
  };
  locale.first_weekday = attribute(UCAL_FIRST_DAY_OF_WEEK);
  locale.minimal_days = attribute(UCAL_MINIMAL_DAYS_IN_FIRST_WEEK);
}

std::u16string language_tag(const std::string& name) {
  return widened(icu_text<char>("uloc_toLanguageTag", [&](char* out, int32_t room, UErrorCode* e) {
    return uloc_toLanguageTag(name.c_str(), out, room, true, e);
  }));
}

std::map<std::string, std::string> read_explicit_parents() {
  std::map<std::string, std::string> parents;
  UErrorCode error = U_ZERO_ERROR;
  const Resource data(ures_openDirect(nullptr, "supplementalData", &error));
  const Resource table(ures_getByKey(data.getAlias(), "parentLocales", nullptr, &error));
  check(error, "parentLocales");
  for (int32_t i = 0; i < ures_getSize(table.getAlias()); ++i) {
    const Resource row(ures_getByIndex(table.getAlias(), i, nullptr, &error));
    const bool single = ures_getType(row.getAlias()) == URES_STRING;
    for (int32_t k = 0; k < (single ? 1 : ures_getSize(row.getAlias())); ++k) {
      int32_t length = 0;
      const char16_t* child = single ? ures_getString(row.getAlias(), &length, &error)
                                     : ures_getStringByIndex(row.getAlias(), k, &length, &error);
      check(error, "parentLocales");
      parents[narrowed({child, static_cast<std::size_t>(length)})] = ures_getKey(row.getAlias());
    }
  }
  return parents;
}

}  // namespace

Subtags likely_subtags(const std::string& name) {
  const std::string full =
      icu_text<char>("uloc_addLikelySubtags", [&](char* out, int32_t room, UErrorCode* error) {
        return uloc_addLikelySubtags(name.c_str(), out, room, error);
      });
  const auto part = [&](auto get) {
    return icu_text<char>("uloc_get..", [&](char* out, int32_t room, UErrorCode* error) {
      return get(full.c_str(), out, room, error);
    });
  };
  return {part(uloc_getLanguage), part(uloc_getScript), part(uloc_getCountry)};
}

std::vector<std::string> cldr_locale_names() {
  std::vector<std::string> names;
  names.reserve(static_cast<std::size_t>(uloc_countAvailable()));
  for (int32_t i = 0; i < uloc_countAvailable(); ++i) names.emplace_back(uloc_getAvailable(i));
  std::ranges::sort(names);
  return names;
}

const std::map<std::string, std::string>& cldr_explicit_parents() {
  static const std::map<std::string, std::string> parents = read_explicit_parents();
  return parents;
}

std::string cldr_parent(const std::string& name) {
  const std::map<std::string, std::string>& explicit_parents = cldr_explicit_parents();
  static const std::vector<std::string> available = cldr_locale_names();
  std::string parent = name;
  while (!parent.empty()) {
    const auto found = explicit_parents.find(parent);
    const std::size_t cut = parent.rfind('_');
    parent = found != explicit_parents.end() ? found->second
             : cut == std::string::npos      ? ""
                                             : parent.substr(0, cut);
    if (std::ranges::binary_search(available, parent)) break;
  }
  return parent;
}

std::u16string display_name(const std::string& name, const std::string& language) {
  return typeable(
      icu_text<char16_t>("uloc_getDisplayName", [&](char16_t* out, int32_t room, UErrorCode* e) {
        return uloc_getDisplayName(name.c_str(), language.c_str(), out, room, e);
      }));
}

CldrLocale read_cldr_locale(const std::string& name) try {
  CldrLocale locale;
  locale.name = name;

  const DateFormat format = open_date_format(name, UDAT_MEDIUM, UDAT_NONE);
  const PatternNames texts = pattern_names(format);

  UErrorCode error = U_ZERO_ERROR;
  const NumberFormat numbers(
      unum_open(UNUM_DECIMAL, nullptr, 0, data_locale(name).c_str(), nullptr, &error));
  check(error, "unum_open");
  locale.decimal_symbol = number_symbol(numbers.getAlias(), UNUM_DECIMAL_SEPARATOR_SYMBOL);
  locale.grouping_symbol = number_symbol(numbers.getAlias(), UNUM_GROUPING_SEPARATOR_SYMBOL);
  if (locale.grouping_symbol == u'\u202F') locale.grouping_symbol = u'\u00A0';

  const Subtags subtags = likely_subtags(name);
  const Currency currency = currency_of(name, subtags.region);
  locale.currency_digits = static_cast<std::uint8_t>(currency.digits);
  read_week(name, locale);

  const auto named = [&](UDateFormatSymbolType type, int first, int count) {
    return typeable_list(date_symbols(format, type, first, count));
  };
  locale.lists = {
      {offsetof(LocaleRecord, full_weekdays), named(UDAT_WEEKDAYS, 1, 7)},
      {offsetof(LocaleRecord, short_weekdays), named(UDAT_SHORT_WEEKDAYS, 1, 7)},
      {offsetof(LocaleRecord, full_months), typeable_list(texts.full_months)},
      {offsetof(LocaleRecord, short_months), typeable_list(texts.short_months)},
      {offsetof(LocaleRecord, date_patterns), patterns(name, texts)},
      {offsetof(LocaleRecord, before_noon), named(UDAT_AM_PMS, 0, 2)},
      {offsetof(LocaleRecord, full_quarters), named(UDAT_QUARTERS, 0, 4)},
      {offsetof(LocaleRecord, short_quarters), named(UDAT_SHORT_QUARTERS, 0, 4)},
      {offsetof(LocaleRecord, language_tag), {language_tag(name)}},
      {offsetof(LocaleRecord, grouping_length), {grouping(numbers.getAlias())}},
      {offsetof(LocaleRecord, language),
       {widened(subtags.language), widened(subtags.script), widened(subtags.region)}},
      {offsetof(LocaleRecord, currency_symbol_length), {currency.symbol}},
      {offsetof(LocaleRecord, currency_code), {currency.code}},
      {offsetof(LocaleRecord, own_name), {display_name(name, name)}},
      {offsetof(LocaleRecord, english_name),
       {display_name(name, "en"), widened(cldr_parent(name))}},
  };
  return locale;
} catch (const std::runtime_error& failure) {
  throw std::runtime_error(name + ": " + failure.what());
}

}  // namespace jwnls::generator
