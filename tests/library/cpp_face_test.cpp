// The tables of cases through jwnls.hpp: values and codes are those of the C interface.

#include <gtest/gtest.h>

#include <charconv>
#include <string>

#include "jwnls/jwnls.hpp"
#include "tests/library/date_cases.h"
#include "tests/library/number_cases.h"

namespace jwnls::test {
namespace {

int code_of(const std::string& answer) {
  return answer == "refuse"    ? JWNLS_UNREAD
         : answer == "missing" ? JWNLS_MISSING
         : answer == "range"   ? JWNLS_RANGE
                               : JWNLS_OK;
}

template <typename T>
std::string outcome(const Result<Reading<T>>& read, std::string (*text_of)(const T&)) {
  if (!read) return std::to_string(static_cast<int>(read.code()));
  return text_of(read->value);
}

std::string days_text(const Days& days) { return std::to_string(days.count()); }
std::string time_text(const Microseconds& time) { return std::to_string(time.count()); }

TEST(CppFace, ReadsTheTableOfDates) {
  for (const DateCase& row : date_cases()) {
    if (row.direction != "read") continue;
    SCOPED_TRACE(row.locale + " " + row.kind + " " + row.options + ": " + row.input);
    const jwnls::Layout layout(row.locale, static_cast<Kind>(jwnls_kind_of_name(row.kind.c_str())),
                               row.options);
    const bool has_value = code_of(row.answer) == JWNLS_OK;
    std::string expected = std::to_string(code_of(row.answer));
    const std::size_t time = row.answer.find('T');
    if (row.kind == "date" || row.kind == "period") {
      if (has_value) expected = std::to_string(days_of_iso(row.answer));
      EXPECT_EQ(outcome(layout.read_date(row.input), days_text), expected);
    } else if (row.kind == "time") {
      if (has_value) expected = std::to_string(microseconds_of_iso(row.answer));
      EXPECT_EQ(outcome(layout.read_time(row.input), time_text), expected);
    } else {
      if (has_value) {
        expected = std::to_string(days_of_iso(row.answer) * day_microseconds +
                                  microseconds_of_iso(row.answer.substr(time + 1)));
      }
      EXPECT_EQ(outcome(layout.read_datetime(row.input), time_text), expected);
    }
  }
}

TEST(CppFace, ReadsAndWritesTheTableOfNumbers) {
  for (const NumberCase& row : number_cases()) {
    SCOPED_TRACE(row.line);
    const jwnls::Layout layout(row.locale, static_cast<Kind>(row.kind_number()), row.options);
    if (row.action == "write-decimal") {
      const auto written = layout.write_decimal(row.given);
      EXPECT_EQ(static_cast<int>(written.code()), row.code());
      EXPECT_EQ(written.value_or(row.expected), row.expected);
      if (const auto scaled = jwnls::test::scaled_of(row.given)) {
        EXPECT_EQ(layout.write_scaled(scaled->value, scaled->scale).value_or(row.expected),
                  row.expected);
      }
    } else if (row.action == "read" && row.kind != "integer") {
      const auto read = layout.read_number(row.given);
      EXPECT_EQ(static_cast<int>(read.code()), row.code());
      double expected = 0;
      std::from_chars(row.expected.data(), row.expected.data() + row.expected.size(), expected);
      if (row.code() == JWNLS_OK && row.expected != "nan") {
        EXPECT_EQ(read.value().value, expected);
      }
    } else if (row.action == "read") {
      const auto read = layout.read_integer(row.given);
      EXPECT_EQ(static_cast<int>(read.code()), row.code());
      if (row.code() == JWNLS_OK) {
        EXPECT_EQ(std::to_string(read.value().value), row.expected);
      }
    }
  }
}

}  // namespace
}  // namespace jwnls::test
