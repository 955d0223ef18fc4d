// Locale names as people write them, and the locale that each of them means.
//
//   match_locale_name(u"de_DE.UTF-8")   ok, "de_DE"
//   match_locale_name(u"zh-TW")         ok, "zh_Hant_TW": an alias
//   match_locale_name(u"de_US")         resolved_with_warning, "de": the parent
//   match_locale_name(u"german")        resolved_with_warning, "de"
//   match_locale_name(u"tlh")           lookup_failed
//
// There is no default locale here: a name that is not understood fails. The tables are generated at
// build time; nothing allocates, and any thread may call.

#ifndef JWNLS_HOST_LOCALES_LOCALE_NAMES_H_
#define JWNLS_HOST_LOCALES_LOCALE_NAMES_H_

#include <cstddef>
#include <iterator>
#include <string_view>

#include "abi/status.h"

namespace jwnls::host {

struct LocaleMatch {
  Status status;
  std::string_view canonical;  // lives as long as the program; empty when the lookup failed
};

/// Finds the locale that a name means. In this order:
///   1. A charset (".UTF-8") is stripped, a modifier ("@latin") mapped to the script that it stands
///      for, "-" read as "_", letter case corrected; "C" and "POSIX" are "en_US_POSIX".
///   2. An available locale or an alias of one (zh_TW, iw, deu_DE, en_UK): ok.
///   3. A parent (de_US: de), or a locale that is left when a keyword ("-u-co-phonebk",
///      "@calendar=..") is dropped: resolved_with_warning. A parent writes the same script, and the
///      region must exist.
///   4. A locale's English or own name in any letter case ("german", "Deutsch (Schweiz)",
///      "German_Germany.1252"): resolved_with_warning.
/// Anything else, and a name of more than 80 units: lookup_failed.
[[nodiscard]] LocaleMatch match_locale_name(std::u16string_view name) noexcept;

struct LocaleRow {
  std::string_view name;             // canonical: "de_DE"
  std::u16string_view english_name;  // "German (Germany)"
  std::u16string_view own_name;      // "Deutsch (Deutschland)"
};

/// Every locale that the locale database knows, sorted by name. Rows are made as they are looked
/// at.
class LocaleRows {
 public:
  class Iterator {
   public:
    using iterator_category = std::forward_iterator_tag;
    using value_type = LocaleRow;
    using difference_type = std::ptrdiff_t;
    using pointer = void;
    using reference = LocaleRow;

    Iterator() = default;
    explicit Iterator(std::size_t index) noexcept : index_(index) {}
    LocaleRow operator*() const noexcept { return LocaleRows()[index_]; }
    Iterator& operator++() noexcept {
      ++index_;
      return *this;
    }
    Iterator operator++(int) noexcept { return Iterator(index_++); }
    bool operator==(const Iterator&) const noexcept = default;

   private:
    std::size_t index_ = 0;
  };

  [[nodiscard]] LocaleRow operator[](std::size_t index) const noexcept;
  [[nodiscard]] static std::size_t size() noexcept;
  [[nodiscard]] static Iterator begin() noexcept { return Iterator(0); }
  [[nodiscard]] static Iterator end() noexcept { return Iterator(size()); }
};
[[nodiscard]] inline LocaleRows available_locales() noexcept { return {}; }

}  // namespace jwnls::host

#endif  // JWNLS_HOST_LOCALES_LOCALE_NAMES_H_
