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

/// A text of the tables, which stands in `bytes` or `units`: without a pointer, which every process
/// would have to fill in.
template <typename Unit>
struct StoredText {
  std::uint32_t begin : 24;
  std::uint32_t size : 8;

  [[nodiscard]] std::basic_string_view<Unit> view() const noexcept;
};

/// A LocaleRow as it is stored.
struct StoredRow {
  StoredText<char> name;
  StoredText<char16_t> english_name, own_name;
};

/// Another name of a locale (zh_TW), or its parent where that is not the name cut short (pt_FR).
struct NameOf {
  StoredText<char> name;
  std::uint16_t locale;
};

/// A code that is written as another: "iw" is "he", "deu" is "de", "UK" is "GB".
struct CodeAlias {
  StoredText<char> code;
  StoredText<char> canonical;  // a language's may bring a script or region: "sr_Latn"
};

/// The script that a language, or a language in a region, is written in when the name has none.
struct LikelyScript {
  StoredText<char> name;  // "zh" or "zh_TW"
  StoredText<char> script;
};

struct Region {
  StoredText<char> code;
  StoredText<char16_t> folded_name;  // in English
};

/// A locale's English or own name, every unit folded.
struct DisplayName {
  StoredText<char16_t> folded_name;
  std::uint16_t locale;
};

struct FoldedUnit {
  char16_t unit;
  char16_t folded;
};

extern const char bytes[];
extern const char16_t units[];
extern const char* const data_version;  // what all of this was made of: "CLDR 42"
extern const std::span<const StoredRow> locale_rows;
extern const std::span<const NameOf> aliases;
extern const std::span<const NameOf> parents;
extern const std::span<const CodeAlias> language_aliases;
extern const std::span<const CodeAlias> region_aliases;
extern const std::span<const LikelyScript> language_scripts;
extern const std::span<const LikelyScript> region_scripts;  // where it is not the language's
extern const std::span<const Region> regions;
extern const std::span<const DisplayName> display_names;
extern const std::span<const FoldedUnit> folded_units;  // beyond ASCII; all that names hold

template <>
inline std::string_view StoredText<char>::view() const noexcept {
  return {bytes + begin, size};
}
template <>
inline std::u16string_view StoredText<char16_t>::view() const noexcept {
  return {units + begin, size};
}

}  // namespace jwnls::host::names

#endif  // JWNLS_HOST_LOCALES_NAME_TABLES_H_
