#include "host/locales/locale_names.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

namespace jwnls::host {
namespace {

std::string printable(std::u16string_view name) {
  std::string text;
  for (const char16_t unit : name) text += unit < 0x80 ? static_cast<char>(unit) : '?';
  return text;
}

TEST(LocaleNames, AreReadAsPeopleWriteThemAndNoOthers) {
  const auto finds = [](Status status, std::string_view canonical, auto... names) {
    for (const std::u16string_view name : {std::u16string_view(names)...}) {
      const LocaleMatch match = match_locale_name(name);
      EXPECT_EQ(match.status, status) << printable(name);
      EXPECT_EQ(match.canonical, canonical) << printable(name);
    }
  };
  constexpr Status exact = Status::ok;
  constexpr Status near = Status::resolved_with_warning;
  // Spellings of an available locale.
  finds(exact, "de_DE", u"de_DE", u"de-DE", u"  de_DE ", u"de_DE.UTF-8", u"de_DE.ISO8859-15@euro");
  finds(exact, "sr_Latn_RS", u"SR-LATN-RS");
  finds(exact, "en_US_POSIX", u"en-us-posix", u"C", u"POSIX");
  finds(exact, "de_DE", u"de_Latn_DE");  // the script goes without saying
  // Modifiers.
  finds(exact, "sr_Latn_RS", u"sr_RS@latin", u"sr_Latn_RS@latin");
  finds(exact, "sr_Cyrl_RS", u"sr_RS@cyrillic");
  finds(exact, "sd_Deva_IN", u"sd_IN@devanagari");
  finds(exact, "az_Latn_AZ", u"az_AZ@iqtelif");
  finds(near, "ca_ES", u"ca_ES@valencia");
  // Aliases of names and of their codes.
  finds(exact, "zh_Hant_TW", u"zh_TW", u"zho_TW");
  finds(exact, "sr_Cyrl_RS", u"sr_RS");
  finds(exact, "he_IL", u"iw_IL");
  finds(exact, "sr_Latn_BA", u"sh_BA");
  finds(exact, "de_DE", u"deu_DE");
  finds(exact, "de", u"ger");
  finds(exact, "en_GB", u"en_UK");
  finds(exact, "fa_AF", u"prs");
  // Parents: same script, and the region exists.
  finds(near, "de", u"de_US");
  finds(near, "pt_PT", u"pt_FR");
  finds(near, "zh_Hant", u"zh_AU");
  finds(near, "zh_Hans", u"zh_Hans_TW");
  finds(near, "de_DE", u"de_DE_1996");
  // Dropped keywords.
  finds(near, "de_DE", u"de-DE-u-co-phonebk", u"de_DE@collation=phonebook");
  finds(near, "zh_Hant_TW", u"zh-TW-u-nu-hanidec-x-mine");
  // Names of languages and locales.
  finds(near, "de", u"german", u"Deutsch");
  finds(near, "ru", u"РУССКИЙ");
  finds(near, "fr_CA", u"Français (Canada)");
  finds(near, "de_DE", u"German_Germany.1252");
  finds(near, "zh_Hans_CN", u"Chinese (Simplified)_China.936");
  // Near misses of all these, and nothing that there is.
  finds(Status::lookup_failed, "", u"sr_Cyrl_RS@latin", u"tt_RU@iqtelif", u"de_DE@nonsense",
        u"de_DE@", u"de_XQ", u"az_IR", u"de_Cyrl", u"de_Cyrl_DE", u"de-DE-u", u"u-co-phonebk",
        u"de_DE@=x", u"de_DE@x=", u"C@euro", u"German_Atlantis", u"German_", u"Germ", u"", u"   ",
        u"tlh", u"xx_DE", u"und", u"root", u"d", u"_DE", u"de__DE", u"de_DE_", u"de_DE.", u"de DE",
        u"dé_DE", u"\xD83E", u"../de_DE");
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
