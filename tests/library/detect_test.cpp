// Detection: which locales read a column, by columns that are made here.

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <functional>
#include <map>
#include <memory>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "include/jwnls/jwnls.h"
#include "library/detect/shapes.h"
#include "tests/library/opened_layout.h"

namespace {

using jwnls::test::open_layout;
using jwnls::test::OpenedLayout;

struct CloseDetection {
  void operator()(jwnls_detection* detection) const { jwnls_detection_close(detection); }
};
using Detection = std::unique_ptr<jwnls_detection, CloseDetection>;
using Column = std::vector<std::string>;

Detection detect(const Column& column, const char* kinds = nullptr, const char* locales = nullptr) {
  std::vector<jwnls_text> texts;
  for (const std::string& text : column) texts.push_back({text.data(), text.size()});
  const jwnls_texts all = {sizeof all, texts.size(), texts.data(), nullptr,
                           nullptr,    nullptr,      nullptr};
  jwnls_detection* detection = nullptr;
  jwnls_error error;
  EXPECT_EQ(jwnls_detect(&all, kinds, locales, &detection, &error), JWNLS_OK) << error.text;
  return Detection(detection);
}

jwnls_detected_kind found(const Detection& detection, int kind = 0) {
  jwnls_detected_kind found = {};
  found.size = sizeof found;
  found.rival = "";
  if (jwnls_detected_kind_of(detection.get(), kind, &found) != JWNLS_OK) found.verdict = 0;
  return found;
}

jwnls_detected_reading reading(const Detection& detection, std::size_t index, int kind = 0) {
  jwnls_detected_reading reading = {};
  reading.size = sizeof reading;
  EXPECT_EQ(jwnls_detected_reading_of(detection.get(), kind, index, &reading), JWNLS_OK);
  return reading;
}

bool has_locale(const Detection& detection, std::size_t reading, std::string_view name) {
  for (std::size_t i = 0;; ++i) {
    const char* const locale = jwnls_detected_locale(detection.get(), 0, reading, i);
    if (locale == nullptr) return false;
    if (locale == name) return true;
  }
}

// ---- Columns

constexpr std::size_t rows = 10'000;

using Random = std::mt19937_64;

Column make(const std::function<std::string(Random&)>& text) {
  Random random(20240315);
  Column column(rows);
  for (std::string& each : column) each = text(random);
  return column;
}

std::string printed(const char* pattern, int a, int b, int c) {
  char text[64];
  std::snprintf(text, sizeof text, pattern, a, b, c);
  return text;
}

struct Day {
  int year, month, day;
};
Day some_day(Random& random, int most_days = 28) {
  return {static_cast<int>(1990 + random() % 40), static_cast<int>(1 + random() % 12),
          static_cast<int>(1 + random() % static_cast<unsigned>(most_days))};
}

// Dates as a locale writes them.
Column dates(const char* locale, const char* style) {
  const OpenedLayout layout = open_layout(locale, JWNLS_DATE, style);
  return make([&](Random& random) {
    char text[200];
    std::size_t length = 0;
    const auto day = static_cast<std::int32_t>(7305 + random() % 14600);
    EXPECT_EQ(jwnls_write_date(layout.get(), day, text, sizeof text, &length), JWNLS_OK);
    return std::string(text, length);
  });
}

Column numbers(const char* locale, int kind = JWNLS_NUMBER) {
  const OpenedLayout layout = open_layout(locale, kind, "decimals=2");
  return make([&](Random& random) {
    char text[200];
    std::size_t length = 0;
    const double value = static_cast<double>(random() % 100'000'000) / 100;
    EXPECT_EQ(jwnls_write_number(layout.get(), value, text, sizeof text, &length), JWNLS_OK);
    return std::string(text, length);
  });
}

Column day_first(const char* pattern, int most_days = 28) {
  return make([=](Random& random) {
    const Day day = some_day(random, most_days);
    return printed(pattern, day.day, day.month, day.year);
  });
}

Column month_first() {
  return make([](Random& random) {
    const Day day = some_day(random);
    return printed("%d/%d/%d", day.month, day.day, day.year);
  });
}

// Every n-th text replaced by one of another column.
Column mixed(Column column, std::size_t n, const std::function<std::string(std::size_t)>& other) {
  for (std::size_t i = n / 2; i < column.size(); i += n) column[i] = other(i);
  return column;
}

Column three_decimals() {
  return make([](Random& random) {
    return printed("%d,%03d", static_cast<int>(random() % 800), static_cast<int>(random() % 1000),
                   0);
  });
}

Column two_digit_years() {
  return make([](Random& random) {
    const Day day = some_day(random);
    return printed("%02d.%02d.%02d", day.day, day.month, 1 + day.year % 24);
  });
}

Column english_short() {
  constexpr const char* months[] = {"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                    "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
  return make([&](Random& random) {
    const Day day = some_day(random);
    return printed("%02d-", day.day, 0, 0) + months[day.month - 1] +
           printed("-%02d", day.year % 100, 0, 0);
  });
}

// ---- Answers

struct ColumnCase {
  const char* name;
  Column column;
  int kind;
  int verdict;
  std::vector<const char*> locales;  // one in each reading
  const char* excluded;              // a locale that is in none; null: not asked
};

std::vector<ColumnCase> column_cases() {
  const Column english = numbers("en_US");
  const Column months = month_first();
  const auto of_english = [&](std::size_t i) { return english[i]; };
  const auto of_months = [&](std::size_t i) { return months[i]; };
  const auto not_available = [](std::size_t) { return std::string("k.A."); };
  constexpr int proved = JWNLS_PROVED;
  return {
      {"de long", dates("de_DE", "style=long"), JWNLS_DATE, proved, {"de_DE"}, "en_US"},
      {"pl medium", dates("pl_PL", ""), JWNLS_DATE, proved, {"pl_PL"}, "hr_HR"},
      {"M/d/yyyy", months, JWNLS_DATE, proved, {"en_US"}, "en_GB"},
      {"ISO", dates("sv_SE", "style=short"), JWNLS_DATE, JWNLS_ANY_LOCALE, {"en_US"}, nullptr},
      {"fr full", dates("fr_FR", "style=full"), JWNLS_DATE, proved, {"fr_FR"}, "en_US"},
      {"ja long", dates("ja_JP", "style=long"), JWNLS_DATE, proved, {"ja_JP"}, "de_DE"},
      {"dd.MM.yyyy", day_first("%02d.%02d.%d"), JWNLS_DATE, proved, {"de_DE"}, "en_US"},
      {"numbers de", numbers("de_DE"), JWNLS_NUMBER, proved, {"de_DE"}, "en_US"},
      {"numbers en", english, JWNLS_NUMBER, proved, {"en_US"}, "de_DE"},
      {"numbers fr", numbers("fr_FR"), JWNLS_NUMBER, proved, {"fr_FR"}, "en_US"},
      {"numbers hi", numbers("hi_IN"), JWNLS_NUMBER, proved, {"hi_IN"}, "en_US"},
      {"numbers de_CH", numbers("de_CH"), JWNLS_NUMBER, proved, {"de_CH"}, "de_DE"},
      {"days to 12",
       day_first("%02d/%02d/%d", 12),
       JWNLS_DATE,
       JWNLS_AMBIGUOUS,
       {"de_DE", "en_US"},
       "sv_SE"},
      {"three decimals", three_decimals(), JWNLS_NUMBER, proved, {"de_DE"}, "en_US"},
      {"dd.MM.yy", two_digit_years(), JWNLS_DATE, JWNLS_AMBIGUOUS, {"de_DE", "ko_KR"}, "en_US"},
      {"dd-MMM-yy", english_short(), JWNLS_DATE, proved, {"en_US"}, "de_DE"},
      {"listopada",
       make([](Random& random) {
         return printed("%d. listopada %d", static_cast<int>(1 + random() % 28),
                        static_cast<int>(1990 + random() % 40), 0);
       }),
       JWNLS_DATE,
       JWNLS_AMBIGUOUS,
       {"hr_HR", "pl_PL"},
       "en_US"},
      {"dd.MM.yyyy, 1 % k.A.",
       mixed(day_first("%02d.%02d.%d"), 100, not_available),
       JWNLS_DATE,
       proved,
       {"de_DE"},
       "en_US"},
      {"d/M, 2 % M/d",
       mixed(day_first("%d/%d/%d"), 50, of_months),
       JWNLS_DATE,
       JWNLS_CONTRADICTION,
       {"de_DE", "en_US"},
       nullptr},
      {"de, 3 % en",
       mixed(numbers("de_DE"), 33, of_english),
       JWNLS_NUMBER,
       JWNLS_CONTRADICTION,
       {"de_DE", "en_US"},
       nullptr},
      {"integers",
       make([](Random& random) { return std::to_string(random() % 100'000); }),
       JWNLS_INTEGER,
       JWNLS_ANY_LOCALE,
       {"de_DE"},
       nullptr},
      {"words",
       make([](Random& random) { return "abc" + std::to_string(random()); }),
       0,
       0,
       {},
       nullptr},
  };
}

// Every text read by one locale: what detection has to find without doing so.
struct ReadColumn {
  std::vector<double> values = std::vector<double>(rows);
  std::vector<std::uint8_t> codes = std::vector<std::uint8_t>(rows);
  jwnls_column_facts facts = {};

  ReadColumn(const Column& column, const char* locale, int kind) {
    const OpenedLayout layout = open_layout(locale, kind);
    std::vector<jwnls_text> texts;
    for (const std::string& text : column) texts.push_back({text.data(), text.size()});
    const jwnls_texts all = {sizeof all, rows, texts.data(), nullptr, nullptr, nullptr, nullptr};
    facts.size = sizeof facts;
    if (kind == JWNLS_DATE) {
      std::vector<std::int32_t> days(rows);
      jwnls_read_dates(layout.get(), &all, days.data(), codes.data(), &facts);
      std::copy(days.begin(), days.end(), values.begin());
    } else if (kind == JWNLS_INTEGER) {
      std::vector<std::int64_t> integers(rows);
      jwnls_read_integers(layout.get(), &all, integers.data(), codes.data(), &facts);
      std::transform(integers.begin(), integers.end(), values.begin(),
                     [](std::int64_t value) { return static_cast<double>(value); });
    } else {
      jwnls_read_numbers(layout.get(), &all, values.data(), codes.data(), &facts);
    }
  }
  [[nodiscard]] bool reads(std::size_t i) const { return codes[i] == JWNLS_OK; }
};

void check_against_layouts(const ColumnCase& row, const Detection& detection,
                           const jwnls_detected_kind& answer) {
  std::vector<ReadColumn> readings;
  for (std::size_t i = 0; i < answer.readings; ++i) {
    const jwnls_detected_reading each = reading(detection, i);
    for (const std::size_t locale : {each.locales - 1, std::size_t{0}}) {
      const char* const name = jwnls_detected_locale(detection.get(), 0, i, locale);
      const ReadColumn read(row.column, name, row.kind);
      EXPECT_EQ(read.facts.read, each.read) << name;
      EXPECT_EQ(read.facts.two_ways, each.two_ways) << name;
      if (locale == 0) readings.push_back(read);
    }
  }
  std::size_t witness = rows;
  std::size_t other = rows;
  for (std::size_t i = rows; i-- > 0 && readings.size() == 2;) {
    if (!readings[0].reads(i) && readings[1].reads(i)) other = i;
    if (readings[0].values[i] != readings[1].values[i] && readings[0].reads(i)) witness = i;
  }
  EXPECT_EQ(answer.witness, row.verdict == JWNLS_AMBIGUOUS ? witness : rows);
  EXPECT_EQ(answer.first_other, row.verdict == JWNLS_CONTRADICTION ? other : rows);
  if (row.verdict != JWNLS_PROVED) return;
  const ReadColumn rival(row.column, answer.rival, row.kind);
  EXPECT_EQ(rival.facts.read, answer.rival_read) << answer.rival;
  std::size_t deciding = 0;
  while (deciding < rows && (rival.reads(deciding) || !readings[0].reads(deciding))) ++deciding;
  EXPECT_EQ(deciding, answer.deciding) << answer.rival;
}

TEST(Detection, SaysWhichLocalesReadAColumn) {
  for (const ColumnCase& row : column_cases()) {
    SCOPED_TRACE(row.name);
    const Detection detection = detect(row.column);
    ASSERT_NE(detection, nullptr);
    ASSERT_EQ(jwnls_detection_kind(detection.get()), row.kind);
    const jwnls_detected_kind answer = found(detection);
    EXPECT_EQ(answer.verdict, row.verdict);
    if (row.kind == 0) continue;
    EXPECT_EQ(answer.values, rows);
    EXPECT_EQ(answer.read + answer.dirty + answer.others, rows);
    ASSERT_EQ(answer.readings, row.locales.size());
    for (std::size_t i = 0; i < answer.readings; ++i) {
      const bool anywhere = row.verdict == JWNLS_AMBIGUOUS;  // in some reading
      bool has = false;
      for (std::size_t j = 0; j < answer.readings; ++j) {
        has = has || ((anywhere || i == j) && has_locale(detection, j, row.locales[i]));
      }
      EXPECT_TRUE(has) << row.locales[i];
      if (row.excluded != nullptr) {
        EXPECT_FALSE(has_locale(detection, i, row.excluded)) << row.excluded;
      }
    }
    check_against_layouts(row, detection, answer);
  }
}

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
      {{"2024-03-15 14:30", "03/04/2024 9:05"},
       nullptr,
       "de_DE,en_US",
       JWNLS_DATETIME,
       JWNLS_AMBIGUOUS,
       {"de_DE: 2024-04-03T09:05:00", "en_US: 2024-03-04T09:05:00"},
       "",
       1,
       ""},
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

// What locales make of a text, as far as a shape has to tell: who reads it, with which facts, and
// which of them agree.
std::string treatment(const std::vector<OpenedLayout>& layouts, const std::string& text) {
  std::string all;
  std::vector<double> values;
  for (const OpenedLayout& layout : layouts) {
    double value = 0;
    std::int64_t microseconds = 0;
    std::int32_t days = 0;
    std::uint8_t facts = 0;
    int code = JWNLS_UNREAD;
    switch (jwnls_layout_kind(layout.get())) {
      case JWNLS_DATE:
        code = jwnls_read_date(layout.get(), text.data(), text.size(), &days, &facts);
        value = days;
        break;
      case JWNLS_TIME:
        code = jwnls_read_time(layout.get(), text.data(), text.size(), &microseconds, &facts);
        value = static_cast<double>(microseconds);
        break;
      default:
        code = jwnls_read_number(layout.get(), text.data(), text.size(), &value, &facts);
    }
    if (code != JWNLS_OK) value = jwnls_missing();
    const auto same = std::find(values.begin(), values.end(), value);
    all += code == JWNLS_OK ? static_cast<char>('a' + (same - values.begin())) : '-';
    all += static_cast<char>('0' + facts);
    values.push_back(value);
  }
  return all;
}

TEST(Detection, TextsOfOneShapeAreTreatedAlike) {
  using jwnls::library::Family;
  constexpr const char* locales[] = {"de_DE", "en_US", "fr_FR", "hi_IN", "ko_KR", "sv_SE", "th_TH"};
  constexpr const char* alphabets[] = {"0123456789..,, '-e", "0011223456789....//-: "};
  Random random(5);
  for (const Family family : {Family::numbers, Family::dates}) {
    std::vector<OpenedLayout> layouts;
    for (const char* locale : locales) {
      layouts.push_back(open_layout(locale, family == Family::numbers ? JWNLS_NUMBER : JWNLS_DATE));
      if (family == Family::dates) layouts.push_back(open_layout(locale, JWNLS_TIME));
    }
    const std::string_view alphabet = alphabets[static_cast<int>(family)];
    std::map<std::string, std::pair<std::string, std::string>> known;
    for (int i = 0; i < 100'000; ++i) {
      std::string text(1 + random() % 10, ' ');
      for (char& each : text) each = alphabet[random() % alphabet.size()];
      if (family == Family::dates && i % 2 == 0) {
        const char mark = "./-"[random() % 3];
        text = std::to_string(1 + random() % 31) + mark + std::to_string(1 + random() % 31) + mark +
               std::to_string(i % 4 == 0 ? random() % 100 : 1500 + random() % 1300);
      }
      char shape[jwnls::library::shape_room];
      const std::size_t size = jwnls::library::write_shape(family, text, shape);
      const std::string found = treatment(layouts, text);
      const auto [place, is_new] = known.emplace(std::string(shape, size), std::pair(text, found));
      ASSERT_EQ(place->second.second, found) << "'" << text << "', '" << place->second.first << "'";
    }
  }
}

}  // namespace
