// The tables behind match_locale_name(): generated at build time from CLDR.
//
// Each is sorted by its first member, so that a binary search finds a row. "A locale" is a row of
// locale_rows, by its number. Codes are in canonical case: "de", "Latn", "DE".

#ifndef JWNLS_HOST_LOCALES_NAME_TABLES_H_
#define JWNLS_HOST_LOCALES_NAME_TABLES_H_

#include <cstdint>
#include <span>
#include <string_view>

#include "host/locales/locale_names.h"

namespace jwnls::host::names {

/// Another name of a locale (zh_TW), or its parent where that is not the name cut short (pt_FR).
struct NameOf {
  std::string_view name;
  std::uint16_t locale;
};

/// A code that is written as another: "iw" is "he", "deu" is "de", "UK" is "GB".
struct CodeAlias {
  std::string_view code;
  std::string_view canonical;  // a language's may bring a script or region: "sr_Latn"
};

/// The script that a language, or a language in a region, is written in when the name has none.
struct LikelyScript {
  std::string_view name;  // "zh" or "zh_TW"
  std::string_view script;
};

struct Region {
  std::string_view code;
  std::u16string_view folded_name;  // in English
};

/// A locale's English or own name, every unit folded.
struct DisplayName {
  std::u16string_view folded_name;
  std::uint16_t locale;
};

struct FoldedUnit {
  char16_t unit;
  char16_t folded;
};

extern const char* const data_version;  // what all of this was made of: "CLDR 42"
extern const std::span<const LocaleRow> locale_rows;
extern const std::span<const NameOf> aliases;
extern const std::span<const NameOf> parents;
extern const std::span<const CodeAlias> language_aliases;
extern const std::span<const CodeAlias> region_aliases;
extern const std::span<const LikelyScript> language_scripts;
extern const std::span<const LikelyScript> region_scripts;  // where it is not the language's
extern const std::span<const Region> regions;
extern const std::span<const DisplayName> display_names;
extern const std::span<const FoldedUnit> folded_units;  // beyond ASCII; all that names hold

}  // namespace jwnls::host::names

#endif  // JWNLS_HOST_LOCALES_NAME_TABLES_H_
