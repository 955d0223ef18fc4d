// Columns of 10,000 texts: what detection says of them, and what reading every text says.

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <functional>
#include <random>
#include <string>
#include <vector>

#include "include/jwnls/jwnls.h"
#include "tests/library/detection.h"
#include "tests/library/opened_layout.h"
#include "tests/support/seed.h"

namespace {

using namespace jwnls::test;

constexpr std::size_t rows = 10'000;

using Random = std::mt19937_64;

Column make(const std::function<std::string(Random&)>& text) {
  Random random(test_seed(20240315));
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
      {"1.234/2.500",
       make([](Random& random) {
         return printed("%d.%03d", static_cast<int>(1 + random() % 9),
                        static_cast<int>(random() % 1000), 0);
       }),
       JWNLS_NUMBER,
       JWNLS_AMBIGUOUS,
       {"de_DE", "en_US"},
       "fr_FR"},
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

}  // namespace
