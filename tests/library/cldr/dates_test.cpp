// Layouts of dates against ICU, over all its locales: they read what ICU writes and write full
// dates as ICU does.

#include <gtest/gtest.h>
#include <unicode/udat.h>
#include <unicode/uloc.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdlib>
#include <memory>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "include/jwnls/jwnls.h"
#include "library/texts/utf8.h"
#include "tests/library/date_cases.h"
#include "tests/support/seed.h"

namespace jwnls::test {
namespace {

constexpr std::array styles = {UDAT_SHORT, UDAT_MEDIUM, UDAT_LONG, UDAT_FULL};
constexpr std::int32_t first_of_2024 = 19723;

// ICU's own texts of a locale in one style.
class IcuTexts {
 public:
  IcuTexts(const std::string& locale, const char* keywords, UDateFormatStyle date,
           UDateFormatStyle time) {
    UErrorCode error = U_ZERO_ERROR;
    format_.adoptInstead(
        udat_open(time, date, (locale + keywords).c_str(), u"UTC", 3, nullptr, 0, &error));
    EXPECT_TRUE(U_SUCCESS(error)) << locale;
  }
  [[nodiscard]] std::u16string text(std::int64_t microseconds) const {
    std::u16string text(400, u'\0');
    UErrorCode error = U_ZERO_ERROR;
    const int32_t size = udat_format(format_.getAlias(), static_cast<double>(microseconds) / 1000.0,
                                     text.data(), 400, nullptr, &error);
    text.resize(static_cast<std::size_t>(size));
    return text;
  }
  // With the replacements that every text of this system has.
  [[nodiscard]] std::u16string typed(std::int64_t microseconds) const {
    std::u16string typed;
    for (const char16_t unit : text(microseconds)) {
      if (unit == u'\u00A0' || unit == u'\u202F' || unit == u'\u2009') {
        typed += u' ';
      } else if (unit != u'\u200E' && unit != u'\u200F' && unit != u'\u061C') {
        typed += unit;
      }
    }
    return typed;
  }

  [[nodiscard]] std::u16string pattern() const {
    std::u16string text(400, u'\0');
    UErrorCode error = U_ZERO_ERROR;
    const int32_t size = udat_toPattern(format_.getAlias(), 0, text.data(), 400, &error);
    text.resize(static_cast<std::size_t>(size));
    return text;
  }

 private:
  icu::LocalUDateFormatPointer format_;
};

std::string narrow(const std::u16string& units) {
  std::string text(3 * units.size(), '\0');
  text.resize(library::to_utf8(units, text.data(), text.size()));
  return text;
}

std::vector<std::string> icu_locales() {
  std::vector<std::string> names(static_cast<std::size_t>(uloc_countAvailable()));
  int32_t next = 0;
  for (std::string& name : names) name = uloc_getAvailable(next++);
  return names;
}

struct Reading {
  int code;
  std::int64_t value;
  std::uint8_t facts;
};

Reading read(const jwnls_layout* layout, const std::string& text) {
  Reading reading = {0, 0, 0};
  if (jwnls_layout_kind(layout) == JWNLS_DATE) {
    std::int32_t days = 0;
    reading.code = jwnls_read_date(layout, text.data(), text.size(), &days, &reading.facts);
    reading.value = days;
  } else {
    reading.code =
        jwnls_read_datetime(layout, text.data(), text.size(), &reading.value, &reading.facts);
  }
  return reading;
}

// From one tested day to the next; JWNLS_DATE_STEP=1 is every day of the year.
std::int32_t step_of_days(std::int32_t usual) {
  const char* const wish = std::getenv("JWNLS_DATE_STEP");  // NOLINT(concurrency-mt-unsafe)
  return wish != nullptr ? std::max(1, std::atoi(wish)) : usual;
}

// How many locales read all their own texts of a style; none of them reads another value.
struct Marks {
  std::array<int, 4> complete = {};
  std::string incomplete;
};

void read_own_texts(int kind, const char* keywords, std::int32_t step,
                    const std::array<UDateFormatStyle, 4>& times, Marks& marks) {
  for (const std::string& locale : icu_locales()) {
    const Layout layout = open_layout(locale, kind, "");
    for (std::size_t style = 0; style < styles.size(); ++style) {
      const IcuTexts icu(locale, keywords, styles[style], times[style]);
      std::string refused;
      for (std::int32_t i = 0; i < 366; i += step) {
        const std::int32_t day = first_of_2024 + i;
        // Seconds that the text does not show are none.
        const std::int64_t seconds =
            kind == JWNLS_DATE ? 0
                               : i * 1007 % 1440 * 60 + (times[style] == UDAT_MEDIUM ? i % 60 : 0);
        const std::int64_t moment = day * day_microseconds + seconds * 1'000'000;
        const std::string text = narrow(icu.text(moment));
        const Reading reading = read(layout.get(), text);
        if (reading.code != JWNLS_OK) {
          if (refused.empty()) refused = text;
          continue;
        }
        ASSERT_EQ(reading.value, kind == JWNLS_DATE ? day : moment) << locale << " " << text;
      }
      if (refused.empty()) {
        ++marks.complete.at(style);
      } else {
        marks.incomplete.append(locale).append(" ").append(std::to_string(style));
        marks.incomplete.append(" ").append(refused).append("\n");
      }
    }
  }
}

TEST(CldrDates, AreReadInEveryLocale) {
  constexpr std::array no_times = {UDAT_NONE, UDAT_NONE, UDAT_NONE, UDAT_NONE};
  for (const char* keywords : {"@calendar=gregorian;numbers=latn", "@calendar=gregorian"}) {
    Marks marks;
    read_own_texts(JWNLS_DATE, keywords, step_of_days(3), no_times, marks);
    // Thai years of two digits, Hawaiian months in Roman numbers, "Su" for June and July in Dyola.
    EXPECT_EQ(marks.complete, (std::array{801, 803, 805, 805})) << marks.incomplete;
  }
}

TEST(CldrDates, AreReadWithTheirTimes) {
  constexpr std::array times = {UDAT_SHORT, UDAT_MEDIUM, UDAT_MEDIUM, UDAT_SHORT};
  Marks marks;
  read_own_texts(JWNLS_DATETIME, "@calendar=gregorian;numbers=latn", step_of_days(7), times, marks);
  // Also not: parts of the day in Bodo, words behind the time in Upper Sorbian, those of the clock
  // in Dzongkha.
  EXPECT_EQ(marks.complete, (std::array{795, 803, 805, 799})) << marks.incomplete;
}

constexpr std::array writers = {"af",    "ar_EG", "bg",    "bn", "ca", "cs", "da", "de",
                                "el",    "en_GB", "en_US", "es", "et", "eu", "fa", "fi",
                                "fr",    "fr_CA", "he",    "hi", "hr", "hu", "id", "is",
                                "it",    "ja",    "ko",    "lt", "lv", "nb", "nl", "pl",
                                "pt_BR", "ro",    "ru",    "sl", "sr", "sv", "tr", "zh"};

// How people of a locale type a date: in its order, with marks and digits as they like.
std::string typed_date(const std::string& order, std::int32_t day, std::mt19937_64& random) {
  const std::chrono::year_month_day date{std::chrono::sys_days{std::chrono::days{day}}};
  const char mark = "./- "[random() % 4];
  const bool zeros = random() % 2 == 0;
  const bool short_year = random() % 3 == 0;
  std::string text;
  for (const char part : order) {
    const int value = part == 'y'   ? int{date.year()} % (short_year ? 100 : 10000)
                      : part == 'M' ? static_cast<int>(unsigned{date.month()})
                                    : static_cast<int>(unsigned{date.day()});
    if (!text.empty()) text += mark;
    const std::string digits = std::to_string(value);
    if (digits.size() == 1 && (zeros || part == 'y')) text += '0';
    text += digits;
  }
  return text;
}

struct Writer {
  std::string locale, order;  // "dMy"
  std::vector<IcuTexts> texts;
  Layout layout;
};

std::vector<Writer> make_writers() {
  std::vector<Writer> all;
  for (const char* locale : writers) {
    Writer writer = {locale, "", {}, open_layout(locale, JWNLS_DATE, "")};
    for (const UDateFormatStyle style : styles) {
      writer.texts.emplace_back(locale, "@calendar=gregorian", style, UDAT_NONE);
    }
    for (const char16_t unit : writer.texts[0].pattern()) {
      const bool is_field = unit == u'y' || unit == u'M' || unit == u'd';
      const char field = static_cast<char>(unit);
      if (is_field && writer.order.find(field) == std::string::npos) writer.order += field;
    }
    all.push_back(std::move(writer));
  }
  return all;
}

// What another locale wrote is read right, or refused, or said to have two ways.
TEST(CldrDates, OfOtherLocalesAreNoSilentGuesses) {
  std::mt19937_64 random(test_seed(20240315));
  const std::vector<Writer> all = make_writers();
  constexpr int texts = 50'000;
  int right = 0;
  int announced = 0;
  for (int i = 0; i < texts; ++i) {
    const Writer& writer = all[random() % all.size()];
    const Writer& reader = all[random() % all.size()];
    const std::int32_t day = 3653 + static_cast<std::int32_t>(random() % 25'000);
    const std::size_t form = random() % 8;
    const std::string text = form < styles.size()
                                 ? narrow(writer.texts[form].text(day * day_microseconds))
                                 : typed_date(writer.order, day, random);
    const Reading reading = read(reader.layout.get(), text);
    if (reading.code != JWNLS_OK) continue;
    if (reading.value == day) {
      ++right;
      continue;
    }
    ++announced;
    EXPECT_NE(reading.facts & JWNLS_TWO_WAYS, 0)
        << writer.locale << " wrote " << text << ", " << reader.locale << " reads "
        << iso_day(reading.value) << " of " << iso_day(day);
  }
  EXPECT_GT(right, texts / 3);
  EXPECT_GT(announced, texts / 100);
  RecordProperty("right", right);
}

TEST(CldrDates, AreWrittenInFull) {
  for (const std::string& locale : icu_locales()) {
    const IcuTexts icu(locale, "@calendar=gregorian;numbers=latn", UDAT_FULL, UDAT_NONE);

    const Layout layout = open_layout(locale, JWNLS_DATE, "style=full");

    for (std::int32_t i = 0; i < 366; i += 29) {
      const std::int32_t day = first_of_2024 + i;
      std::array<char, 600> text;
      std::size_t length = 0;
      ASSERT_EQ(jwnls_write_date(layout.get(), day, text.data(), text.size(), &length), JWNLS_OK);
      EXPECT_EQ(std::string(text.data(), length), narrow(icu.typed(day * day_microseconds)))
          << locale;
      std::array<char16_t, 600> units;
      ASSERT_EQ(jwnls_write_date_utf16(layout.get(), day, units.data(), units.size(), &length),
                JWNLS_OK);
      EXPECT_EQ(std::u16string(units.data(), length), icu.typed(day * day_microseconds)) << locale;
    }
  }
}

}  // namespace
}  // namespace jwnls::test
