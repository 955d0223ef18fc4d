// What a locale is made of, item by item; the names that people give it; missing values.

#include <gtest/gtest.h>

#include <bit>
#include <cstdint>
#include <limits>
#include <string>
#include <string_view>

#include "tests/library/opened_layout.h"

namespace {

using jwnls::test::open_layout;

struct Item {
  const char* locale;
  int item;
  std::size_t index;
  const char* text;  // null: there is none
};

constexpr Item items[] = {
    {"de_DE", JWNLS_MONTH, 2, "März"},
    {"de_DE", JWNLS_MONTH, 12, nullptr},
    {"de_DE", JWNLS_SHORT_MONTH, 0, "Jan."},
    {"de_DE", JWNLS_WEEKDAY, 6, "Samstag"},
    {"de_DE", JWNLS_WEEKDAY, 7, nullptr},
    {"de_DE", JWNLS_SHORT_WEEKDAY, 0, "So."},
    {"ko_KR", JWNLS_DAY_HALF, 1, "오후"},
    {"ko_KR", JWNLS_DAY_HALF, 2, nullptr},
    {"de_DE", JWNLS_DATE_PATTERN, 2, "%E. %B %Y"},
    {"de_DE", JWNLS_DATE_PATTERN, 3, nullptr},
    {"de_DE", JWNLS_TIME_PATTERN, 0, "%H:%M:%S"},
    {"de_DE", JWNLS_DATETIME_PATTERN, 0, "%d.%m.%Y, %H:%M:%S"},
    {"de_DE", JWNLS_DECIMAL_SYMBOL, 0, ","},
    {"de_DE", JWNLS_DECIMAL_SYMBOL, 1, nullptr},
    {"de_CH", JWNLS_GROUP_SYMBOL, 0, "’"},
    {"hi_IN", JWNLS_GROUP_SIZES, 0, "3;2"},
    {"en_GB", JWNLS_CURRENCY_SYMBOL, 0, "£"},
    {"ja_JP", JWNLS_CURRENCY_CODE, 0, "JPY"},
    {"ja_JP", JWNLS_CURRENCY_DECIMALS, 0, "0"},
    {"de_DE", JWNLS_FIRST_WEEKDAY, 0, "1"},
    {"en_US", JWNLS_FIRST_WEEKDAY, 0, "0"},
    {"ff_Adlm", JWNLS_MONTH, 0, "𞤅𞤭𞥅𞤤𞤮"},  // beyond U+FFFF
    {"de_DE", 0, 0, nullptr},
    {"de_DE", 999, 0, nullptr},
};

TEST(Conventions, AreGivenItemByItem) {
  for (const Item& row : items) {
    SCOPED_TRACE(std::string(row.locale) + " " + std::to_string(row.item) + " " +
                 std::to_string(row.index));
    const auto layout = open_layout(row.locale, JWNLS_DATE);
    char text[64] = {};
    std::size_t length = 99;
    const int code =
        jwnls_convention(layout.get(), row.item, row.index, text, sizeof text, &length);
    EXPECT_EQ(code, row.text != nullptr ? JWNLS_OK : JWNLS_UNKNOWN);
    EXPECT_EQ(std::string(text, length), row.text != nullptr ? row.text : "");
    if (row.text == nullptr) continue;
    const std::size_t needed = length;
    EXPECT_EQ(jwnls_convention(layout.get(), row.item, row.index, nullptr, 0, &length), JWNLS_ROOM);
    EXPECT_EQ(length, needed);
  }
}

TEST(LocaleNames, AreTakenAsPeopleWriteThem) {
  struct Name {
    const char* name;
    const char* canonical;  // null: unknown
    bool exact;
  };
  constexpr Name names[] = {
      {"de-DE", "de_DE", true}, {"C.UTF-8", "en_US_POSIX", true}, {"german", "de", false},
      {"de_US", "de", false},   {"xx_YY", nullptr, false},        {"\xFF\xFE", nullptr, false},
      {"", nullptr, false},
  };
  for (const Name& row : names) {
    char canonical[64];
    int exact = -1;
    const int code = jwnls_match_locale(row.name, canonical, &exact);
    EXPECT_EQ(code, row.canonical != nullptr ? JWNLS_OK : JWNLS_UNKNOWN) << row.name;
    if (row.canonical == nullptr) continue;
    EXPECT_STREQ(canonical, row.canonical) << row.name;
    EXPECT_EQ(exact, row.exact ? 1 : 0) << row.name;
  }
}

// Columns that were stored hold these bits.
TEST(Versions, AreThoseOfTheHeader) {
  EXPECT_STREQ(jwnls_version(), JWNLS_VERSION);
  EXPECT_STREQ(jwnls_interface_version(), "6.1");
  EXPECT_EQ(std::string_view(jwnls_data_version()).substr(0, 5), "CLDR ");
  EXPECT_STREQ(jwnls_code_text(JWNLS_OK), "read");
  EXPECT_STREQ(jwnls_code_text(JWNLS_KIND), "not for layouts of this kind");
  // What a visitor throws goes no further.
  const auto visit = [](void*, const jwnls_locale_info*) -> int { throw 1; };
  EXPECT_EQ(jwnls_locales(visit, nullptr), JWNLS_LOAD);
  for (const int code : {-1, JWNLS_KIND + 1}) {
    EXPECT_STREQ(jwnls_code_text(code), "no code of jwnls.h");
  }
}

TEST(MissingValues, HaveTheBitsThatEveryStoredOneHas) {
  EXPECT_EQ(std::bit_cast<std::uint64_t>(jwnls_missing()), 0xFFFFD10000000000U);
  for (const std::uint64_t bits : {0xFFFFD10000000000U, 0xFFFFD20000000000U, 0xFFFFBE0000000000U,
                                   0xFFFFA50000000000U, 0xFFFFFFFFFFFFFFFFU}) {
    EXPECT_EQ(jwnls_is_missing(std::bit_cast<double>(bits)), 1) << std::hex << bits;
  }
  using Limits = std::numeric_limits<double>;
  for (const double magnitude : {0.0, 1.0, Limits::infinity(), Limits::quiet_NaN()}) {
    EXPECT_EQ(jwnls_is_missing(magnitude), 0) << magnitude;
    EXPECT_EQ(jwnls_is_missing(-magnitude), 0) << -magnitude;
  }
}

}  // namespace
