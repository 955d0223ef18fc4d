#include <unicode/uchar.h>
#include <unicode/uenum.h>
#include <unicode/uloc.h>
#include <unicode/ures.h>
#include <unicode/ustring.h>

#include <map>
#include <ostream>
#include <set>
#include <stdexcept>

#include "extensions/locale_database/locale_tables.h"
#include "generators/locales/icu.h"
#include "generators/locales/tables.h"

namespace jwnls::generator {
namespace {

using Resource = icu::LocalUResourceBundlePointer;
using Codes = std::map<std::string, std::string>;

// One unit's simple case folding. Names beyond the BMP match in their own case only.
char16_t folded(char16_t unit) {
  const UChar32 result = u_foldCase(unit, U_FOLD_CASE_DEFAULT);
  return result <= 0xFFFF ? static_cast<char16_t>(result) : unit;
}
std::u16string folded(std::u16string text) {
  for (char16_t& unit : text) unit = folded(unit);
  return text;
}

// ---- What CLDR says about names.

std::string language_of(const std::string& name) { return name.substr(0, name.find('_')); }

std::string likely_script(const std::string& name) {
  const auto full =
      icu_text<char>("uloc_addLikelySubtags", [&](char* out, int32_t n, UErrorCode* e) {
        return uloc_addLikelySubtags(name.c_str(), out, n, e);
      });
  return icu_text<char>("uloc_getScript", [&](char* out, int32_t n, UErrorCode* e) {
    return uloc_getScript(full.c_str(), out, n, e);
  });
}

// Names that are kept for what was once written so: zh_TW, iw_IL, sr_YU.
Codes legacy_aliases() {
  Codes result;
  UErrorCode error = U_ZERO_ERROR;
  const icu::LocalUEnumerationPointer names(
      uloc_openAvailableByType(ULOC_AVAILABLE_ONLY_LEGACY_ALIASES, &error));
  while (const char* name = uenum_next(names.getAlias(), nullptr, &error)) {
    const Resource resource(ures_open(nullptr, name, &error));
    result[name] = ures_getLocaleByType(resource.getAlias(), ULOC_VALID_LOCALE, &error);
    check(error, name);
  }
  return result;
}

// CLDR's replacements of codes of a kind ("language", "territory"), those with one replacement.
Codes code_aliases(const char* kind) {
  Codes result;
  UErrorCode error = U_ZERO_ERROR;
  const Resource metadata(ures_openDirect(nullptr, "metadata", &error));
  const Resource alias(ures_getByKey(metadata.getAlias(), "alias", nullptr, &error));
  const Resource table(ures_getByKey(alias.getAlias(), kind, nullptr, &error));
  check(error, kind);
  for (int32_t i = 0; i < ures_getSize(table.getAlias()); ++i) {
    const Resource row(ures_getByIndex(table.getAlias(), i, nullptr, &error));
    int32_t length = 0;
    const char16_t* text = ures_getStringByKey(row.getAlias(), "replacement", &length, &error);
    check(error, kind);
    const std::string code = ures_getKey(row.getAlias());
    const std::string replacement = narrowed({text, static_cast<std::size_t>(length)});
    const bool is_code = code.find('_') == std::string::npos && code.size() <= 3;
    if (is_code && replacement.find(' ') == std::string::npos) result[code] = replacement;
  }
  return result;
}

// Every region's code and English name.
std::map<std::string, std::u16string> region_names(const std::vector<CldrLocale>& locales) {
  std::set<std::string> codes;
  for (const char* const* code = uloc_getISOCountries(); *code != nullptr; ++code) {
    codes.insert(*code);
  }
  for (const CldrLocale& locale : locales) {  // these know "001" and "XK" too
    const std::string code =
        icu_text<char>("uloc_getCountry", [&](char* out, int32_t n, UErrorCode* e) {
          return uloc_getCountry(locale.name.c_str(), out, n, e);
        });
    if (!code.empty()) codes.insert(code);
  }
  std::map<std::string, std::u16string> names;
  for (const std::string& code : codes) {
    names[code] =
        icu_text<char16_t>("uloc_getDisplayCountry", [&](char16_t* out, int32_t n, UErrorCode* e) {
          return uloc_getDisplayCountry(("und_" + code).c_str(), "en", out, n, e);
        });
  }
  return names;
}

// ---- Writing.

// The texts of the tables, each stored once.
template <typename Unit>
class TextStore {
 public:
  // As a row names it.
  std::string add(const std::basic_string<Unit>& text) {
    const auto [place, is_new] = places_.try_emplace(text, all_.size());
    if (is_new) all_ += text;
    if (text.size() > 0xFF || all_.size() > 0xFFFFFF) throw std::runtime_error("long names");
    return '{' + std::to_string(place->second) + ", " + std::to_string(text.size()) + '}';
  }

  void write(std::ostream& out, const char* declaration) const {
    out << "const " << declaration << "[] = {";
    std::size_t column = 0;
    for (const Unit unit : all_) {
      out << (column++ % 16 == 0 ? "\n    " : " ") << static_cast<std::uint32_t>(unit) << ',';
    }
    out << "\n};\n\n";
  }

 private:
  std::map<std::basic_string<Unit>, std::size_t> places_;
  std::basic_string<Unit> all_;
};

// Writes one table: its rows, then the span over them.
class Table {
 public:
  Table(std::ostream& out, std::ostream& counts, std::string type, std::string name)
      : out_(out), counts_(counts), type_(std::move(type)), name_(std::move(name)) {
    out_ << "constexpr " << type_ << ' ' << name_ << "_data[] = {\n";
  }
  ~Table() {
    out_ << "};\nconst std::span<const " << type_ << "> " << name_ << " = " << name_
         << "_data;\n\n";
    counts_ << rows_ << ' ' << name_ << '\n';
  }
  Table(const Table&) = delete;
  Table& operator=(const Table&) = delete;

  template <typename... Members>
  void row(const Members&... members) {
    out_ << "    {";
    ((out_ << members << ", "), ...);
    out_ << "},\n";
    ++rows_;
  }

 private:
  std::ostream& out_;
  std::ostream& counts_;
  std::string type_;
  std::string name_;
  std::size_t rows_ = 0;
};

class NameTables {
 public:
  NameTables(const std::vector<CldrLocale>& locales, std::ostream& out, std::ostream& counts)
      : locales_(locales), out_(out), counts_(counts) {
    for (std::size_t i = 0; i < locales.size(); ++i) {
      numbers_[locales[i].name] = i;
      languages_.insert(language_of(locales[i].name));
    }
  }

  void write() {
    out_ << "#include \"host/locales/name_tables.h\"\n\nnamespace jwnls::host::names {\n\n";
    write_locales();
    write_aliases();
    write_parents();
    write_codes("language_aliases", "language");
    write_codes("region_aliases", "territory");
    write_scripts();
    write_regions();
    write_display_names();
    write_folding();
    bytes_.write(out_, "char bytes");
    texts_.write(out_, "char16_t units");
    out_ << "}  // namespace jwnls::host::names\n";
  }

 private:
  std::string stored(const std::string& text) { return bytes_.add(text); }
  std::string stored(const std::u16string& text) { return texts_.add(text); }
  Table table(const char* type, const char* name) { return {out_, counts_, type, name}; }

  void write_locales() {
    Table rows = table("StoredRow", "locale_rows");
    for (const CldrLocale& locale : locales_) {
      rows.row(stored(locale.name), stored(display_name(locale.name, "en")),
               stored(display_name(locale.name, locale.name)));
    }
  }

  void write_aliases() {
    Table rows = table("NameOf", "aliases");
    for (const auto& [alias, name] : legacy_aliases()) {
      rows.row(stored(alias), numbers_.at(name));
    }
  }

  void write_parents() {
    Table rows = table("NameOf", "parents");
    for (const auto& [child, parent] : cldr_explicit_parents()) {
      if (!numbers_.contains(child) && numbers_.contains(parent) &&
          language_of(child) == language_of(parent)) {
        rows.row(stored(child), numbers_.at(parent));
      }
    }
  }

  void write_codes(const char* name, const char* kind) {
    Table rows = table("CodeAlias", name);
    const bool is_language = std::string_view(kind) == "language";
    for (const auto& [code, canonical] : code_aliases(kind)) {
      if (is_language ? languages_.contains(language_of(canonical)) : code.size() == 2) {
        rows.row(stored(code), stored(canonical));
      }
    }
  }

  void write_scripts() {
    Codes of_languages;
    Codes of_regions;
    const auto regions = region_names(locales_);
    for (const std::string& language : languages_) {
      const std::string script = likely_script(language);
      of_languages[language] = script;
      for (const auto& [region, region_name] : regions) {
        const std::string name = std::string(language).append(1, '_').append(region);
        const std::string script_there = likely_script(name);
        if (script_there != script) of_regions[name] = script_there;
      }
    }
    write_scripts("language_scripts", of_languages);
    write_scripts("region_scripts", of_regions);
  }

  void write_scripts(const char* name, const Codes& scripts) {
    Table rows = table("LikelyScript", name);
    for (const auto& [of, script] : scripts) rows.row(stored(of), stored(script));
  }

  void write_regions() {
    Table rows = table("Region", "regions");
    for (const auto& [code, name] : region_names(locales_)) {
      rows.row(stored(code), stored(folded(name)));
      note_units(name);
    }
  }

  // Where two locales share a name it means the one that the other's name begins with: shi and
  // shi_Tfng. Two strangers of one name stop the build.
  void write_display_names() {
    std::map<std::u16string, std::string> meanings;
    for (const CldrLocale& locale : locales_) {
      for (const std::string& language : {std::string("en"), locale.name}) {
        const std::u16string name = display_name(locale.name, language);
        note_units(name);
        const auto [known, is_new] = meanings.try_emplace(folded(name), locale.name);
        if (!is_new && !locale.name.starts_with(known->second)) {
          throw std::runtime_error(known->second + " and " + locale.name + ": one name for both");
        }
      }
    }
    Table rows = table("DisplayName", "display_names");
    for (const auto& [name, locale] : meanings) rows.row(stored(name), numbers_.at(locale));
  }

  void note_units(const std::u16string& name) {
    for (const char16_t unit : folded(name)) units_.insert(unit);
  }

  void write_folding() {
    Table rows = table("FoldedUnit", "folded_units");
    for (char32_t unit = 0x80; unit <= 0xFFFF; ++unit) {
      const char16_t to = folded(static_cast<char16_t>(unit));
      if (to != unit && units_.contains(to)) {
        rows.row(static_cast<unsigned>(unit), static_cast<unsigned>(to));
      }
    }
  }

  const std::vector<CldrLocale>& locales_;
  std::ostream& out_;
  std::ostream& counts_;
  std::map<std::string, std::size_t> numbers_;
  std::set<std::string> languages_;
  TextStore<char> bytes_;
  TextStore<char16_t> texts_;
  std::set<char16_t> units_;  // all that display names hold, folded
};

}  // namespace

void write_name_tables(const std::vector<CldrLocale>& locales, std::ostream& out,
                       std::ostream& counts) {
  NameTables(locales, out, counts).write();
}

}  // namespace jwnls::generator
