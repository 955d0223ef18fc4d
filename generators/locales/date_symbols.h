// Names and patterns of dates as ICU has them, for the Gregorian calendar and the digits 0 to 9.

#ifndef JWNLS_GENERATORS_LOCALES_DATE_SYMBOLS_H_
#define JWNLS_GENERATORS_LOCALES_DATE_SYMBOLS_H_

#include <unicode/udat.h>

#include <string>
#include <vector>

#include "generators/locales/pattern_mapping.h"

namespace jwnls::generator {

using DateFormat = icu::LocalUDateFormatPointer;

/// The locale with the calendar and the digits of records.
std::string data_locale(const std::string& name);

// All of these throw std::runtime_error when ICU fails.
DateFormat open_date_format(const std::string& name, UDateFormatStyle date, UDateFormatStyle time);
std::u16string cldr_pattern(const std::string& name, UDateFormatStyle date, UDateFormatStyle time);
std::vector<std::u16string> date_symbols(const DateFormat& format, UDateFormatSymbolType type,
                                         int first, int count);

/// What patterns of the locale need.
PatternNames pattern_names(const DateFormat& format);

}  // namespace jwnls::generator

#endif  // JWNLS_GENERATORS_LOCALES_DATE_SYMBOLS_H_
