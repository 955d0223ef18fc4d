#include "tool/read_back.h"

#include <array>
#include <chrono>
#include <cmath>
#include <cstdint>
#include <limits>

#include "tool/iso8601.h"

namespace jwnls::tool {
namespace {

using client::Locale;
using client::Result;
using std::chrono::local_days;
using std::chrono::local_seconds;
using std::chrono::seconds;
using std::chrono::year_month_day;

constexpr local_days first_day = local_days{std::chrono::year{2024} / 1 / 1};
constexpr int days_of_year = 366;

// Days, each with a time: the ends of the hours at which clocks turn, then times all over the day.
local_seconds sample(int n) {
  constexpr std::array turns = {0, 59, 3'599, 3'600, 43'199, 43'200, 46'799, 46'800, 86'399};
  const auto second =
      n < static_cast<int>(turns.size()) ? turns[static_cast<std::size_t>(n)] : n * 7919 % 86'400;
  return first_day + std::chrono::days{n} + seconds{second};
}

// Halves of both signs and every size whose digits, at most 15, the services read exactly.
double number_sample(int n) { return (n % 2 == 0 ? 0.5 : -0.5) * std::pow(3.0, n % 24) * (1 + n); }

std::int64_t integer_sample(int n) {
  const std::int64_t value = std::numeric_limits<std::int64_t>::max() >> (n % 63);
  return n % 2 == 0 ? value : -value;
}

std::string value_text(double value) { return std::to_string(value); }
std::string value_text(std::int64_t value) { return std::to_string(value); }
template <typename Value>
std::string value_text(Value value) {
  return iso_text(value);
}

// `write` and `read` are of one kind of values, and `sample` gives the n-th of these.
template <typename Sample, typename Write, typename Read>
std::string read_back(Sample sample, Write write, Read read) {
  for (int n = 0; n < days_of_year; ++n) {
    const auto value = sample(n);
    const Result<std::string> text = write(value);
    if (!text) return "no: " + text.error().message;
    const auto back = read(*text);
    if (!back && back.error().status == Status::not_possible) return "no: " + back.error().message;
    if (!back || *back != value) {
      return "no: " + client::in_quotes(*text) + " for " + value_text(value) + " is " +
             (back ? "read as " + value_text(*back) : "not read");
    }
  }
  return "yes";
}

}  // namespace

std::string dates_read_back(const Locale& locale, client::DateStyle style, bool strict) {
  const client::DateReading reading = {strict, strict ? static_cast<int>(style) : 0};
  return read_back(
      [](int n) { return year_month_day{std::chrono::floor<std::chrono::days>(sample(n))}; },
      [&](year_month_day date) { return locale.format_date(date, style); },
      [&](const std::string& text) { return locale.read_date(text, reading); });
}

std::string times_read_back(const Locale& locale, bool strict) {
  return read_back(
      [](int n) -> seconds { return sample(n) - std::chrono::floor<std::chrono::days>(sample(n)); },
      [&](seconds time) { return locale.format_time(time); },
      [&](const std::string& text) { return locale.read_time(text, {.strict = strict}); });
}

std::string datetimes_read_back(const Locale& locale, bool strict) {
  return read_back(
      sample, [&](local_seconds time) { return locale.format_datetime(time); },
      [&](const std::string& text) { return locale.read_datetime(text, {.strict = strict}); });
}

std::string numbers_read_back(const Locale& locale) {
  return read_back(
      number_sample, [&](double value) { return locale.format_number(value); },
      [&](const std::string& text) { return locale.read_number(text); });
}

std::string integers_read_back(const Locale& locale) {
  return read_back(
      integer_sample, [&](std::int64_t value) { return locale.format_integer(value); },
      [&](const std::string& text) { return locale.read_integer(text); });
}

}  // namespace jwnls::tool
