// Detection among the locales that a caller names, and what it refuses.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "include/jwnls/jwnls.h"
#include "tests/library/detection.h"

namespace {

using namespace jwnls::test;

TEST(Detection, AsksTheLocalesThatTheCallerNames) {
  struct Row {
    Column column;
    const char* kinds;
    const char* locales;
    int kind;
    int verdict;
    std::vector<std::string> readings;  // "first locale: value"
    const char* options;
    std::size_t text;  // the witness, or what decides
    const char* rival;
  };
  const Row table[] = {
      {{"1.234,50 €", "€ 12,00", "-9,99 EUR"},
       nullptr,
       nullptr,
       JWNLS_AMOUNT,
       JWNLS_PROVED,
       {"fr: "},
       "",
       0,
       nullptr},
      {{"12,5 %", "7%"},
       nullptr,
       "de_DE,en_US",
       JWNLS_PERCENT,
       JWNLS_PROVED,
       {"de_DE: "},
       "",
       0,
       "en_US"},
      {{"US$5.00", "USD 7.25"},
       "amount",
       "en_GB",
       JWNLS_AMOUNT,
       JWNLS_ANY_LOCALE,
       {"en_GB: "},
       "currency=any",
       2,
       ""},
      {{"04.10.2024", "27.03.2024", "05.11.2024"},
       nullptr,
       "de_DE,en_US",
       JWNLS_DATE,
       JWNLS_PROVED,
       {"de_DE: "},
       "",
       1,
       "en_US"},
      {{"1.234,50", "12,00", "9,99"},
       nullptr,
       "de_DE en_US",
       JWNLS_NUMBER,
       JWNLS_PROVED,
       {"de_DE: "},
       "",
       0,
       "en_US"},
      {{"04/10/2024", "05/11/2024"},
       nullptr,
       "en_GB,en_US,de_DE",
       JWNLS_DATE,
       JWNLS_AMBIGUOUS,
       {"en_GB: 2024-10-04", "en_US: 2024-04-10"},
       "",
       0,
       ""},
      {{"1.234", "2.500"},
       "number",
       "en_GB,en_US,de_DE",
       JWNLS_NUMBER,
       JWNLS_AMBIGUOUS,
       {"en_GB: 1.234", "de_DE: 1234"},
       "",
       0,
       ""},
      {{"1.234", "", "2.500"},
       "number",
       "de_DE,*",
       JWNLS_NUMBER,
       JWNLS_AMBIGUOUS,
       {"de_DE: 1234", "en: 1.234"},
       "",
       0,
       ""},
      {{"15-Dec-24", "3-May-24"},
       "date",
       "de_DE",
       JWNLS_DATE,
       JWNLS_ANY_LOCALE,
       {"de_DE: "},
       "names=english",
       2,
       ""},
      {{"5,00-", "7,25", "(3,10)"},
       "number",
       "de_DE,fr_FR",
       JWNLS_NUMBER,
       JWNLS_ANY_LOCALE,
       {"de_DE: "},
       "signs=any",
       3,
       ""},
      {{"20240315", "19991231"},
       nullptr,
       "de_DE",
       JWNLS_DATE,
       JWNLS_ANY_LOCALE,
       {"de_DE: "},
       "",
       2,
       ""},
      {{"20240315", "19991331"},
       nullptr,
       "de_DE",
       JWNLS_INTEGER,
       JWNLS_ANY_LOCALE,
       {"de_DE: "},
       "",
       2,
       ""},
      {{"14:30", "9:05", " 23:59:59"},
       nullptr,
       "de_DE,en_US",
       JWNLS_TIME,
       JWNLS_ANY_LOCALE,
       {"de_DE: "},
       "",
       3,
       ""},
      {{"2024-03-15 14:30", "03/04/2024 9:05:00.25"},
       nullptr,
       "de_DE,en_US",
       JWNLS_DATETIME,
       JWNLS_AMBIGUOUS,
       {"de_DE: 2024-04-03T09:05:00.250000", "en_US: 2024-03-04T09:05:00.250000"},
       "",
       1,
       ""},
      {{"\u25B21,234.50"},
       "number",
       "en_US,ja_JP",
       JWNLS_NUMBER,
       JWNLS_PROVED,
       {"ja_JP: "},
       "",
       0,
       "en_US"},
      {{"15. M\u00E4rz 2024 um 14:30"},
       nullptr,
       "de_DE,en_US",
       JWNLS_DATETIME,
       JWNLS_PROVED,
       {"de_DE: "},
       "",
       0,
       "en_US"},
      {{"", " ", "\u00A0"}, nullptr, "de_DE", 0, 0, {}, "", 3, ""},
      {{"k.A.", "n/a", "1.234,5"}, nullptr, "de_DE,en_US", 0, 0, {}, "", 3, ""},
      {{}, nullptr, nullptr, 0, 0, {}, "", 0, ""},
  };
  for (const Row& row : table) {
    SCOPED_TRACE(row.column.empty() ? "nothing" : row.column.front());
    const Detection detection = detect(row.column, row.kinds, row.locales);
    ASSERT_EQ(jwnls_detection_kind(detection.get()), row.kind);
    if (row.kind == 0) continue;
    const jwnls_detected_kind answer = found(detection);
    EXPECT_EQ(answer.verdict, row.verdict);
    EXPECT_EQ(row.verdict == JWNLS_AMBIGUOUS ? answer.witness : answer.deciding, row.text);
    if (row.rival != nullptr) {
      EXPECT_STREQ(answer.rival, row.rival);
    }
    ASSERT_EQ(answer.readings, row.readings.size());
    for (std::size_t i = 0; i < answer.readings; ++i) {
      const jwnls_detected_reading each = reading(detection, i);
      EXPECT_EQ(jwnls_detected_locale(detection.get(), 0, i, 0) + (": " + std::string(each.value)),
                row.readings[i]);
      EXPECT_STREQ(each.options, row.options);
      EXPECT_EQ(each.kind, row.kind);
    }
  }
  // Languages stand before their regions, those with the most regions first.
  const Detection all = detect({"1.234", "2.500"}, "number");
  std::string first;
  for (std::size_t i = 0; i < 4; ++i) {
    first.append(jwnls_detected_locale(all.get(), 0, 1, i)).append(" ");
  }
  EXPECT_EQ(first, "es pt sr de ");
}

TEST(Detection, RefusesWhatItDoesNotKnow) {
  const jwnls_texts none = {sizeof none, 0, nullptr, nullptr, nullptr, nullptr, nullptr};
  jwnls_detection* detection = nullptr;
  jwnls_error error;
  EXPECT_EQ(jwnls_detect(&none, "date,period", nullptr, &detection, &error), JWNLS_UNKNOWN);
  EXPECT_STREQ(error.text, "kind 'period': nothing that is detected");
  EXPECT_EQ(jwnls_detect(&none, nullptr, "de_DE xx_YY", &detection, &error), JWNLS_UNKNOWN);
  EXPECT_STREQ(error.text, "locale 'xx_YY': unknown");
  EXPECT_EQ(detection, nullptr);
  jwnls_detection_close(detection);

  const Detection dates_alone = detect({"1", "2"}, "date", "de_DE");
  jwnls_detected_kind kind = {};
  kind.size = sizeof kind;
  EXPECT_EQ(jwnls_detected_kind_of(dates_alone.get(), JWNLS_NUMBER, &kind), JWNLS_KIND);
  EXPECT_EQ(jwnls_detected_kind_of(dates_alone.get(), JWNLS_DATE, &kind), JWNLS_OK);
  EXPECT_EQ(kind.verdict, JWNLS_NONE);
  EXPECT_EQ(kind.dirty, 2U);
  jwnls_detected_reading reading = {};
  reading.size = sizeof reading;
  EXPECT_EQ(jwnls_detected_reading_of(dates_alone.get(), JWNLS_DATE, 0, &reading), JWNLS_UNKNOWN);
  EXPECT_EQ(jwnls_detected_locale(dates_alone.get(), JWNLS_DATE, 0, 0), nullptr);
}

}  // namespace
