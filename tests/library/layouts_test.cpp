// Layouts: opening, option words, descriptions.

#include <gtest/gtest.h>

#include <new>
#include <string>
#include <system_error>

#include "include/jwnls/jwnls.h"
#include "library/texts/failure.h"

namespace {

std::string description(const jwnls_layout* layout) {
  char text[200];
  size_t length = 0;
  EXPECT_EQ(jwnls_describe(layout, text, sizeof text, &length), JWNLS_OK);
  return {text, length};
}

// locale, kind, options, what the layout says of itself; or the message
struct OpenCase {  // NOLINT(clang-analyzer-optin.performance.Padding): in the order of the rows
  const char* locale;
  int kind;
  const char* options;
  int code;
  const char* text;
};

TEST(Errors, NothingThatIsThrownGoesThrough) {
  using jwnls::library::guarded;
  jwnls_error error = {};
  for (jwnls_error* each : {&error, static_cast<jwnls_error*>(nullptr)}) {
    EXPECT_EQ(guarded(each, [] { throw std::bad_alloc(); }), JWNLS_MEMORY);
    EXPECT_EQ(guarded(each, [] { throw std::system_error(); }), JWNLS_LOAD);
    EXPECT_EQ(guarded(each, [] {}), JWNLS_OK);
  }
  EXPECT_EQ(error.code, JWNLS_OK);
}

constexpr OpenCase openings[] = {
    {"de_DE", JWNLS_NUMBER, "", JWNLS_OK, "de_DE number"},
    {"de-DE.UTF-8", JWNLS_NUMBER, " no-group  decimals=2 ", JWNLS_OK,
     "de_DE number decimals=2 no-group"},
    {"pl_PL", JWNLS_INSTANT, "zone=Europe/Warsaw style=long", JWNLS_OK,
     "pl_PL instant style=long zone=Europe/Warsaw"},
    {"en_US", JWNLS_AMOUNT, "currency=eur", JWNLS_OK, "en_US amount currency=EUR"},
    {"en_US", JWNLS_DATE, "order=mdy order=dmy", JWNLS_OK, "en_US date order=dmy"},
    {"xx_YY", JWNLS_NUMBER, "", JWNLS_UNKNOWN, "locale 'xx_YY': unknown"},
    {"", JWNLS_NUMBER, "", JWNLS_UNKNOWN, "locale '': unknown"},
    {"de_DE", 10, "", JWNLS_UNKNOWN, "no such kind: 10"},
    {"de_DE", JWNLS_NUMBER, "style=long", JWNLS_UNKNOWN,
     "option 'style=long': no word of the kind number"},
    {"de_DE", JWNLS_DATE, "stile=long", JWNLS_UNKNOWN, "option 'stile=long': no such word"},
    {"de_DE", JWNLS_DATE, "style=tall", JWNLS_UNKNOWN,
     "option 'style=tall': the value is one of medium short long full"},
    {"de_DE", JWNLS_NUMBER, "decimals=351", JWNLS_UNKNOWN,
     "option 'decimals=351': the value is a number from 0 to 350"},
    {"de_DE", JWNLS_AMOUNT, "currency=euro", JWNLS_UNKNOWN,
     "option 'currency=euro': the value is own, any, or a code such as EUR"},
    {"de_DE", JWNLS_AMOUNT, "currency=", JWNLS_UNKNOWN, "option 'currency=': the value is missing"},
    {"de_DE", JWNLS_NUMBER, "no-group=1", JWNLS_UNKNOWN,
     "option 'no-group=1': the word takes no value"},
    // 80 bytes are shown, what is longer is cut.
    {"de_DE", JWNLS_DATE,
     "yyyyyyyyyyyyyyyyyyyyyyyyyyyyyyyyyyyyyyyy"
     "yyyyyyyyyyyyyyyyyyyyyyyyyyyyyyyyyyyyyyyy",
     JWNLS_UNKNOWN,
     "option 'yyyyyyyyyyyyyyyyyyyyyyyyyyyyyyyyyyyyyyyy"
     "yyyyyyyyyyyyyyyyyyyyyyyyyyyyyyyyyyyyyyyy': no such word"},
    {"de_DE", JWNLS_DATE,
     "yyyyyyyyyyyyyyyyyyyyyyyyyyyyyyyyyyyyyyyy"
     "yyyyyyyyyyyyyyyyyyyyyyyyyyyyyyyyyyyyyyyyz",
     JWNLS_UNKNOWN,
     "option 'yyyyyyyyyyyyyyyyyyyyyyyyyyyyyyyyyyyyyyyy"
     "yyyyyyyyyyyyyyyyyyyyyyyyyyyyyyyyyyyyyyyy...': no such word"},
    {"de_DE", JWNLS_DATETIME, "zone=Mars/Base\x1B[2J", JWNLS_UNKNOWN,
     "time zone 'Mars/Base\\x1B[2J': unknown"},
};

TEST(Layouts, OpenAndSayWhatTheyAre) {
  for (const OpenCase& row : openings) {
    SCOPED_TRACE(std::string(row.locale) + " " + row.options);
    jwnls_layout* layout = nullptr;
    jwnls_error error;
    ASSERT_EQ(jwnls_open(row.locale, row.kind, row.options, &layout, &error), row.code)
        << error.text;
    if (row.code != JWNLS_OK) {
      EXPECT_EQ(layout, nullptr);
      EXPECT_STREQ(error.text, row.text);
      continue;
    }
    EXPECT_EQ(description(layout), row.text);
    jwnls_layout* again = nullptr;
    ASSERT_EQ(jwnls_open_described(row.text, &again, &error), JWNLS_OK) << error.text;
    EXPECT_EQ(description(again), row.text);
    jwnls_close(again);
    jwnls_close(layout);
  }
  jwnls_layout* layout = nullptr;
  jwnls_error error;
  EXPECT_EQ(jwnls_open_described("de_DE numbr decimals=2", &layout, &error), JWNLS_UNKNOWN);
  EXPECT_STREQ(error.text, "layout 'de_DE numbr decimals=2': no kind 'numbr'");
  EXPECT_EQ(jwnls_version_number(), JWNLS_VERSION_NUMBER);
}

}  // namespace
