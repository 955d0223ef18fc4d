// One locale of CLDR, as a locale record wants it: read through ICU, every replacement made.

#ifndef JWNLS_GENERATORS_LOCALES_CLDR_LOCALE_H_
#define JWNLS_GENERATORS_LOCALES_CLDR_LOCALE_H_

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace jwnls::generator {

using TextList = std::vector<std::u16string>;

struct CldrLocale {
  std::string name;                       // canonical: "de_DE"
  std::map<std::size_t, TextList> lists;  // by the offset of their first entry in the record
  char16_t decimal_symbol = 0;            //
  char16_t grouping_symbol = 0;           //
  std::uint8_t currency_digits = 0;
  std::uint8_t first_weekday = 0;  // 1 = Sunday
  std::uint8_t minimal_days = 0;   // of the new year, in its first week
};

struct Subtags {
  std::string language, script, region;
};
/// Language, script and region of a name, the likely ones where it has none.
Subtags likely_subtags(const std::string& name);

/// Every locale that ICU has data for, sorted by name.
std::vector<std::string> cldr_locale_names();

/// Parents that are not the name cut short: en_DE's is en_150.
const std::map<std::string, std::string>& cldr_explicit_parents();

/// The locale that an available locale inherits from, or empty when that is none of them.
std::string cldr_parent(const std::string& name);

/// Reads a locale. Throws std::runtime_error, naming the locale and what is wrong, when ICU fails
/// or when the record cannot express what CLDR says.
CldrLocale read_cldr_locale(const std::string& name);

/// A locale's name in a language, such as "German (Austria)", without marks and odd blanks.
std::u16string display_name(const std::string& name, const std::string& language);

}  // namespace jwnls::generator

#endif  // JWNLS_GENERATORS_LOCALES_CLDR_LOCALE_H_
