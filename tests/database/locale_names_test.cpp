#include "host/locale_names.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

namespace jwnls::host {
namespace {

constexpr Status exact = Status::ok;
constexpr Status near = Status::resolved_with_warning;

struct NameCase {
  std::u16string_view name;
  Status status;
  std::string_view canonical;
};

constexpr NameCase names[] = {
    // Spellings of an available locale.
    {u"de_DE", exact, "de_DE"},
    {u"de-DE", exact, "de_DE"},
    {u"DE-de", exact, "de_DE"},
    {u"  de_DE ", exact, "de_DE"},
    {u"de_DE.UTF-8", exact, "de_DE"},
    {u"de_DE.ISO8859-15@euro", exact, "de_DE"},
    {u"SR-LATN-RS", exact, "sr_Latn_RS"},
    {u"es_419", exact, "es_419"},
    {u"en-us-posix", exact, "en_US_POSIX"},
    {u"C", exact, "en_US_POSIX"},
    {u"C.UTF-8", exact, "en_US_POSIX"},
    {u"POSIX", exact, "en_US_POSIX"},
    {u"de_Latn_DE", exact, "de_DE"},  // the script goes without saying

    // Modifiers.
    {u"sr_RS@latin", exact, "sr_Latn_RS"},
    {u"sr_RS.UTF-8@latin", exact, "sr_Latn_RS"},
    {u"sr_RS@cyrillic", exact, "sr_Cyrl_RS"},
    {u"uz_UZ@cyrillic", exact, "uz_Cyrl_UZ"},
    {u"sd_IN@devanagari", exact, "sd_Deva_IN"},
    {u"sr_Latn_RS@latin", exact, "sr_Latn_RS"},
    {u"ca_ES@valencia", near, "ca_ES"},
    {u"sr_Cyrl_RS@latin", Status::lookup_failed, ""},
    {u"tt_RU@iqtelif", Status::lookup_failed, ""},
    {u"de_DE@nonsense", Status::lookup_failed, ""},
    {u"de_DE@", Status::lookup_failed, ""},

    // Aliases of names and of their codes.
    {u"zh_TW", exact, "zh_Hant_TW"},
    {u"zh-cn", exact, "zh_Hans_CN"},
    {u"sr_RS", exact, "sr_Cyrl_RS"},
    {u"iw", exact, "he"},
    {u"iw_IL", exact, "he_IL"},
    {u"tl", exact, "fil"},
    {u"no_NO", exact, "no"},
    {u"sh_BA", exact, "sr_Latn_BA"},
    {u"deu_DE", exact, "de_DE"},
    {u"ger", exact, "de"},
    {u"en_UK", exact, "en_GB"},
    {u"zho_TW", exact, "zh_Hant_TW"},
    {u"prs", exact, "fa_AF"},

    // Parents: same script, and the region exists.
    {u"de_US", near, "de"},
    {u"deu_US", near, "de"},
    {u"pt_FR", near, "pt_PT"},
    {u"zh_AU", near, "zh_Hant"},
    {u"zh_Hans_TW", near, "zh_Hans"},
    {u"zh_Hant_SG", near, "zh_Hant"},
    {u"uz_Cyrl_KZ", near, "uz_Cyrl"},
    {u"de_DE_1996", near, "de_DE"},
    {u"de_XQ", Status::lookup_failed, ""},
    {u"az_IR", Status::lookup_failed, ""},
    {u"de_Cyrl", Status::lookup_failed, ""},
    {u"de_Cyrl_DE", Status::lookup_failed, ""},

    // Dropped keywords.
    {u"de-DE-u-co-phonebk", near, "de_DE"},
    {u"de_DE@collation=phonebook", near, "de_DE"},
    {u"zh-TW-u-nu-hanidec-x-mine", near, "zh_Hant_TW"},
    {u"de-DE-u", Status::lookup_failed, ""},
    {u"u-co-phonebk", Status::lookup_failed, ""},
    {u"de_DE@=x", Status::lookup_failed, ""},

    // Names of languages and locales.
    {u"german", near, "de"},
    {u"GERMAN", near, "de"},
    {u"Deutsch", near, "de"},
    {u"РУССКИЙ", near, "ru"},
    {u"日本語", near, "ja"},
    {u"Français (Canada)", near, "fr_CA"},
    {u"norwegian bokmål", near, "nb"},
    {u"German_Germany.1252", near, "de_DE"},
    {u"English_United States", near, "en_US"},
    {u"Chinese (Simplified)_China.936", near, "zh_Hans_CN"},
    {u"German_Atlantis", Status::lookup_failed, ""},
    {u"German_", Status::lookup_failed, ""},
    {u"Germ", Status::lookup_failed, ""},

    // Nothing that there is.
    {u"", Status::lookup_failed, ""},
    {u"   ", Status::lookup_failed, ""},
    {u"tlh", Status::lookup_failed, ""},
    {u"xx_DE", Status::lookup_failed, ""},
    {u"und", Status::lookup_failed, ""},
    {u"root", Status::lookup_failed, ""},
    {u"d", Status::lookup_failed, ""},
    {u"_DE", Status::lookup_failed, ""},
    {u"de__DE", Status::lookup_failed, ""},
    {u"de_DE_", Status::lookup_failed, ""},
    {u"de_DE.", Status::lookup_failed, ""},
    {u"de DE", Status::lookup_failed, ""},
    {u"dé_DE", Status::lookup_failed, ""},
    {u"\xD83E", Status::lookup_failed, ""},
    {u"../de_DE", Status::lookup_failed, ""},
};

std::string printable(std::u16string_view name) {
  std::string text;
  for (const char16_t unit : name) text += unit < 0x80 ? static_cast<char>(unit) : '?';
  return text;
}

TEST(LocaleNames, AreReadAsPeopleWriteThem) {
  for (const NameCase& row : names) {
    const LocaleMatch match = match_locale_name(row.name);
    EXPECT_EQ(match.status, row.status) << printable(row.name);
    EXPECT_EQ(match.canonical, row.canonical) << printable(row.name);
  }
}

TEST(LocaleNames, OfAnyLengthFailOrMatch) {
  for (std::size_t length = 0; length <= 200; ++length) {
    for (const std::u16string_view part : {u"a", u"_", u"-a", u"de_", u"_posix", u"_u_", u"."}) {
      std::u16string name = u"de";
      while (name.size() < length) name += part;
      const LocaleMatch match = match_locale_name(name);
      EXPECT_EQ(match.status == Status::lookup_failed, match.canonical.empty());
      if (length > 80) {
        EXPECT_EQ(match.status, Status::lookup_failed) << printable(name);
      }
    }
  }
}

TEST(LocaleNames, EveryAvailableLocaleMatchesItselfAndItsNames) {
  const auto locales = available_locales();
  ASSERT_GT(locales.size(), 800u);
  EXPECT_TRUE(std::ranges::is_sorted(locales, {}, &LocaleRow::name));
  for (const LocaleRow& row : locales) {
    const LocaleMatch match = match_locale_name(std::u16string(row.name.begin(), row.name.end()));
    EXPECT_EQ(match.status, Status::ok) << row.name;
    EXPECT_EQ(match.canonical, row.name);
    for (const std::u16string_view name : {row.english_name, row.own_name}) {
      ASSERT_FALSE(name.empty()) << row.name;
      // A short name may be a code too ("Lao"), and one name may serve a locale and its parent.
      const LocaleMatch named = match_locale_name(name);
      EXPECT_NE(named.status, Status::lookup_failed) << row.name;
      EXPECT_TRUE(row.name.starts_with(named.canonical)) << row.name << ' ' << named.canonical;
    }
  }
}

}  // namespace
}  // namespace jwnls::host
