// The rows of tests/cases/dates.tsv, and values as they stand there.

#ifndef JWNLS_TESTS_LIBRARY_DATE_CASES_H_
#define JWNLS_TESTS_LIBRARY_DATE_CASES_H_

#include <gtest/gtest.h>

#include <array>
#include <chrono>
#include <cstdio>
#include <memory>
#include <string>
#include <vector>

#include "include/jwnls/jwnls.h"
#include "tests/library/case_rows.h"

namespace jwnls::test {

struct DateCase {
  std::string locale, kind, options, direction, input, answer, facts;
};

inline std::vector<DateCase> date_cases() {
  std::vector<DateCase> cases;
  for (const auto& [line, fields] : case_rows("dates.tsv")) {
    const auto& [locale, kind, options, direction, input, answer, facts, unused] = fields;
    cases.push_back({locale, kind, options, direction, input, answer, facts});
  }
  return cases;
}

struct Close {
  void operator()(jwnls_layout* layout) const { jwnls_close(layout); }
};
using Layout = std::unique_ptr<jwnls_layout, Close>;

inline Layout open_layout(const std::string& locale, int kind, const std::string& options) {
  jwnls_layout* layout = nullptr;
  jwnls_error error;
  jwnls_open(locale.c_str(), kind, options.c_str(), &layout, &error);
  EXPECT_NE(layout, nullptr) << error.text;
  return Layout(layout);
}

inline std::vector<std::string> locale_names() {
  std::vector<std::string> names;
  const auto add = [](void* list, const jwnls_locale_info* locale) {
    static_cast<std::vector<std::string>*>(list)->emplace_back(locale->name);
    return 0;
  };
  EXPECT_EQ(jwnls_locales(add, &names), JWNLS_OK);
  return names;
}

inline constexpr std::int64_t day_microseconds = 86'400'000'000;

inline std::string iso_day(std::int64_t days) {
  const std::chrono::year_month_day date{
      std::chrono::sys_days{std::chrono::days{static_cast<std::int32_t>(days)}}};
  std::array<char, 40> text;
  (void)std::snprintf(text.data(), text.size(), "%04d-%02u-%02u", int{date.year()},
                      unsigned{date.month()}, unsigned{date.day()});
  return text.data();
}

inline std::string iso_time(std::int64_t microseconds) {
  std::array<char, 60> text;
  const long long seconds = microseconds / 1'000'000;
  const long long fraction = microseconds % 1'000'000;
  const int size = std::snprintf(text.data(), text.size(), "%02lld:%02lld:%02lld", seconds / 3600,
                                 seconds / 60 % 60, seconds % 60);
  if (fraction != 0) {
    (void)std::snprintf(text.data() + size, text.size() - static_cast<std::size_t>(size), ".%06lld",
                        fraction);
  }
  return text.data();
}

inline std::string iso_moment(std::int64_t microseconds) {
  const std::int64_t of_day =
      (microseconds % day_microseconds + day_microseconds) % day_microseconds;
  return iso_day((microseconds - of_day) / day_microseconds) + "T" + iso_time(of_day);
}

inline std::int64_t days_of_iso(const std::string& text) {
  const std::size_t year = text.find('-');
  const std::chrono::year_month_day date{
      std::chrono::year{std::stoi(text.substr(0, year))},
      std::chrono::month{static_cast<unsigned>(std::stoi(text.substr(year + 1, 2)))},
      std::chrono::day{static_cast<unsigned>(std::stoi(text.substr(year + 4, 2)))}};
  return std::chrono::sys_days{date}.time_since_epoch().count();
}

inline std::int64_t microseconds_of_iso(const std::string& text) {
  const auto number = [&](std::size_t at, std::size_t size) {
    return std::int64_t{std::stoi(text.substr(at, size))};
  };
  const std::int64_t seconds = (number(0, 2) * 60 + number(3, 2)) * 60 + number(6, 2);
  return seconds * 1'000'000 + (text.size() > 9 && text[8] == '.' ? number(9, 6) : 0);
}

}  // namespace jwnls::test

#endif  // JWNLS_TESTS_LIBRARY_DATE_CASES_H_
