#include "generators/locales/date_symbols.h"

#include "generators/locales/icu.h"

namespace jwnls::generator {

std::string data_locale(const std::string& name) {
  return name + "@calendar=gregorian;numbers=latn";
}

DateFormat open_date_format(const std::string& name, UDateFormatStyle date, UDateFormatStyle time) {
  UErrorCode error = U_ZERO_ERROR;
  DateFormat format(
      udat_open(time, date, data_locale(name).c_str(), u"UTC", 3, nullptr, 0, &error));
  check(error, "udat_open");
  return format;
}

std::u16string cldr_pattern(const std::string& name, UDateFormatStyle date, UDateFormatStyle time) {
  const DateFormat format = open_date_format(name, date, time);
  return icu_text<char16_t>("udat_toPattern", [&](char16_t* out, int32_t room, UErrorCode* error) {
    return udat_toPattern(format.getAlias(), false, out, room, error);
  });
}

std::vector<std::u16string> date_symbols(const DateFormat& format, UDateFormatSymbolType type,
                                         int first, int count) {
  std::vector<std::u16string> list;
  for (int i = first; i < first + count; ++i) {
    list.push_back(
        icu_text<char16_t>("udat_getSymbols", [&](char16_t* out, int32_t room, UErrorCode* error) {
          return udat_getSymbols(format.getAlias(), type, i, out, room, error);
        }));
  }
  return list;
}

PatternNames pattern_names(const DateFormat& format) {
  return {date_symbols(format, UDAT_MONTHS, 0, 12), date_symbols(format, UDAT_SHORT_MONTHS, 0, 12),
          date_symbols(format, UDAT_ERAS, 1, 1)[0]};
}

}  // namespace jwnls::generator
