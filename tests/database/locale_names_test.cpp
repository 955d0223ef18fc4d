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
    {u"  de_DE ", exact, "de_DE"},
    {u"de_DE.UTF-8", exact, "de_DE"},
    {u"de_DE.ISO8859-15@euro", exact, "de_DE"},
    {u"SR-LATN-RS", exact, "sr_Latn_RS"},
    {u"es_419", exact, "es_419"},
    {u"en-us-posix", exact, "en_US_POSIX"},
    {u"C", exact, "en_US_POSIX"},
    {u"POSIX", exact, "en_US_POSIX"},
    {u"de_Latn_DE", exact, "de_DE"},  // the script goes without saying

    // Modifiers.
    {u"sr_RS@latin", exact, "sr_Latn_RS"},
    {u"sr_RS@cyrillic", exact, "sr_Cyrl_RS"},
    {u"sd_IN@devanagari", exact, "sd_Deva_IN"},
    {u"sr_Latn_RS@latin", exact, "sr_Latn_RS"},
    {u"ca_ES@valencia", near, "ca_ES"},

    // Aliases of names and of their codes.
    {u"zh_TW", exact, "zh_Hant_TW"},
    {u"sr_RS", exact, "sr_Cyrl_RS"},
    {u"iw_IL", exact, "he_IL"},
    {u"no_NO", exact, "no"},
    {u"sh_BA", exact, "sr_Latn_BA"},
    {u"deu_DE", exact, "de_DE"},
    {u"ger", exact, "de"},
    {u"en_UK", exact, "en_GB"},
    {u"zho_TW", exact, "zh_Hant_TW"},
    {u"prs", exact, "fa_AF"},

    // Parents: same script, and the region exists.
    {u"de_US", near, "de"},
    {u"pt_FR", near, "pt_PT"},
    {u"zh_AU", near, "zh_Hant"},
    {u"zh_Hans_TW", near, "zh_Hans"},
    {u"de_DE_1996", near, "de_DE"},

    // Dropped keywords.
    {u"de-DE-u-co-phonebk", near, "de_DE"},
    {u"de_DE@collation=phonebook", near, "de_DE"},
    {u"zh-TW-u-nu-hanidec-x-mine", near, "zh_Hant_TW"},

    // Names of languages and locales.
    {u"german", near, "de"},
    {u"Deutsch", near, "de"},
    {u"РУССКИЙ", near, "ru"},
    {u"日本語", near, "ja"},
    {u"Français (Canada)", near, "fr_CA"},
    {u"norwegian bokmål", near, "nb"},
    {u"German_Germany.1252", near, "de_DE"},
    {u"Chinese (Simplified)_China.936", near, "zh_Hans_CN"},
};

std::string printable(std::u16string_view name) {
  std::string text;
  for (const char16_t unit : name) text += unit < 0x80 ? static_cast<char>(unit) : '?';
  return text;
}

TEST(LocaleNames, AreReadAsPeopleWriteThemAndNoOthers) {
  for (const NameCase& row : names) {
    const LocaleMatch match = match_locale_name(row.name);
    EXPECT_EQ(match.status, row.status) << printable(row.name);
    EXPECT_EQ(match.canonical, row.canonical) << printable(row.name);
  }
  const auto refuse = [](auto... refused) {
    for (const std::u16string_view name : {std::u16string_view(refused)...}) {
      EXPECT_EQ(match_locale_name(name).status, Status::lookup_failed) << printable(name);
      EXPECT_EQ(match_locale_name(name).canonical, "") << printable(name);
    }
  };
  // Near misses of all these, and nothing that there is.
  refuse(u"sr_Cyrl_RS@latin", u"tt_RU@iqtelif", u"de_DE@nonsense", u"de_DE@", u"de_XQ", u"az_IR",
         u"de_Cyrl", u"de_Cyrl_DE", u"de-DE-u", u"u-co-phonebk", u"de_DE@=x", u"German_Atlantis",
         u"German_", u"Germ", u"", u"   ", u"tlh", u"xx_DE", u"und", u"root", u"d", u"_DE",
         u"de__DE", u"de_DE_", u"de_DE.", u"de DE", u"dé_DE", u"\xD83E", u"../de_DE");
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
