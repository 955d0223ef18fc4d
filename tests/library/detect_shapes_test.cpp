// Detection reads one text of each shape: so every locale has to treat all of them alike.

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <iterator>
#include <map>
#include <random>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "include/jwnls/jwnls.h"
#include "library/detect/locale_classes.h"
#include "library/detect/shapes.h"
#include "tests/library/opened_layout.h"
#include "tests/support/seed.h"

namespace {

using jwnls::test::open_layout;
using jwnls::test::OpenedLayout;
using Random = std::mt19937_64;

// What locales make of a text, as far as a shape has to tell: who reads it, with which facts, and
// which of them agree, of a kind.
std::string treatment(const std::vector<OpenedLayout>& layouts, const std::string& text) {
  std::string all;
  std::vector<std::pair<int, double>> values;
  for (const OpenedLayout& layout : layouts) {
    const int kind = jwnls_layout_kind(layout.get());
    double value = 0;
    std::int64_t microseconds = 0;
    std::int32_t days = 0;
    std::uint8_t facts = 0;
    int code = JWNLS_UNREAD;
    switch (kind) {
      case JWNLS_DATE:
        code = jwnls_read_date(layout.get(), text.data(), text.size(), &days, &facts);
        value = days;
        break;
      case JWNLS_DATETIME:
        code = jwnls_read_datetime(layout.get(), text.data(), text.size(), &microseconds, &facts);
        value = static_cast<double>(microseconds);
        break;
      case JWNLS_TIME:
        code = jwnls_read_time(layout.get(), text.data(), text.size(), &microseconds, &facts);
        value = static_cast<double>(microseconds);
        break;
      default:
        code = jwnls_read_number(layout.get(), text.data(), text.size(), &value, &facts);
    }
    if (code != JWNLS_OK) value = jwnls_missing();
    const auto same = std::find(values.begin(), values.end(), std::pair(kind, value));
    all += code == JWNLS_OK ? static_cast<char>('a' + (same - values.begin())) : '-';
    all += static_cast<char>('0' + facts);
    values.emplace_back(kind, value);
  }
  return all;
}

// "Sat, 29 mar 2024, 1:30"
std::string words_and_numbers(Random& random) {
  constexpr const char* weekdays[] = {
      "",
      "Sat, ",
      "mar. ",
      "Freitag, ",
      "samedi ",
      "l\u00F6rdag ",
      "\u0627\u0644\u0633\u0628\u062A\u060C "};  // of Arabic, with its comma
  constexpr const char* months[] = {
      "mar", "Mars", "Sept", "M\u00E4rz", "mai", "December", "\u0645\u0627\u0631\u0633"};
  const auto year = random() % 4 == 0 ? random() % 100 : 1990 + random() % 40;
  char text[100];
  (void)std::snprintf(text, sizeof text, "%s%d %s %d", weekdays[random() % std::size(weekdays)],
                      static_cast<int>(1 + random() % 31), months[random() % std::size(months)],
                      static_cast<int>(year));
  if (random() % 4 != 0) return text;
  return std::string(text) + " " + weekdays[random() % std::size(weekdays)];
}

// Three numbers with words behind them, and maybe a weekday.
std::string marked_numbers(Random& random) {
  constexpr const char* patterns[] = {"%d\u5E74%d\u6708%d\u65E5", "%d\uB144 %d\uC6D4 %d\uC77C",
                                      "%d/%d/%d\u65E5", "%d-%d-%d \uC77C",
                                      "%d\u6708%d\u65E5%d\u5E74"};
  constexpr const char* weekdays[] = {"", "", "\u571F\u66DC\u65E5", " \uD1A0\uC694\uC77C",
                                      "(\u571F)"};
  char text[100];
  (void)std::snprintf(text, sizeof text, patterns[random() % std::size(patterns)],
                      static_cast<int>(2010 + random() % 12), static_cast<int>(1 + random() % 13),
                      static_cast<int>(1 + random() % 31));
  return std::string(text) + weekdays[random() % std::size(weekdays)];
}

// The same number in the digits of Hindi.
std::string in_other_digits(const std::string& text) {
  std::string other;
  for (const char each : text) {
    if (each < '0' || each > '9') {
      other += each;
    } else {
      other.append("\xE0\xA5") += static_cast<char>(0xA6 + (each - '0'));
    }
  }
  return other;
}

// ", 14:30", ", 2:61:05 PM"
std::string clock_text(Random& random) {
  char text[40];
  const int size = std::snprintf(text, sizeof text, ", %d:%02d", static_cast<int>(random() % 26),
                                 static_cast<int>(random() % 62));
  std::string all(text, static_cast<std::size_t>(size));
  if (random() % 2 == 0) all.append(":").append(std::to_string(10 + random() % 52));
  if (random() % 4 == 0) all.append(" PM");
  return all;
}

TEST(Detection, TextsOfOneShapeAreTreatedAlike) {
  using jwnls::library::Family;
  constexpr const char* locales[] = {"de_DE", "en_US", "fr_FR", "hi_IN", "ko_KR",
                                     "sv_SE", "th_TH", "ar_EG", "ja_JP", "zh_CN"};
  constexpr const char* alphabets[] = {"0123456789..,, '-e", "0011223456789....//-: "};
  Random random(jwnls::test::test_seed(5));
  for (const Family family : {Family::numbers, Family::dates}) {
    std::vector<OpenedLayout> layouts;
    for (const char* locale : locales) {
      layouts.push_back(open_layout(locale, family == Family::numbers ? JWNLS_NUMBER : JWNLS_DATE));
      if (family == Family::numbers) continue;
      layouts.push_back(open_layout(locale, JWNLS_TIME));
      layouts.push_back(open_layout(locale, JWNLS_DATETIME));
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
      if (family == Family::dates && i % 8 < 3) text = words_and_numbers(random);
      if (family == Family::dates && i % 8 == 3) text = marked_numbers(random);
      if (family == Family::numbers && i % 4 == 0) text = in_other_digits(text);
      if (family == Family::dates && i % 4 < 2) text.append(clock_text(random));
      char shape[jwnls::library::shape_room];
      const std::size_t size = jwnls::library::write_shape(
          family, text, shape, jwnls::library::weekday_words_of_every_locale);
      const std::string found = treatment(layouts, text);
      const auto [place, is_new] = known.emplace(std::string(shape, size), std::pair(text, found));
      ASSERT_EQ(place->second.second, found) << "'" << text << "', '" << place->second.first << "'";
    }
  }
}

// One may be beyond a double where another is not.
TEST(Detection, LongExponentsAreShapesOfTheirOwn) {
  for (const std::string text : {"1e300", "1E-300", "1e+300", "1e007"}) {
    char shape[jwnls::library::shape_room];
    const std::size_t size =
        jwnls::library::write_shape(jwnls::library::Family::numbers, text, shape,
                                    jwnls::library::weekday_words_of_every_locale);
    EXPECT_EQ(std::string_view(shape, size), "=" + text);
  }
}

}  // namespace
