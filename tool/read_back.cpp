#include "tool/read_back.h"

#include <array>
#include <chrono>

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

// `write` and `read` are of one kind of values, and `part` takes one of a sample.
template <typename Part, typename Write, typename Read>
std::string read_back(Part part, Write write, Read read) {
  for (int n = 0; n < days_of_year; ++n) {
    const auto value = part(sample(n));
    const Result<std::string> text = write(value);
    if (!text) return "no: " + text.error().message;
    const auto back = read(*text);
    if (!back && back.error().status == Status::not_possible) return "no: " + back.error().message;
    if (!back || *back != value) {
      return "no: " + client::in_quotes(*text) + " for " + iso_text(value) + " is " +
             (back ? "read as " + iso_text(*back) : "not read");
    }
  }
  return "yes";
}

}  // namespace

std::string dates_read_back(const Locale& locale, client::DateStyle style, bool strict) {
  const client::DateReading reading = {strict, strict ? static_cast<int>(style) : 0};
  return read_back(
      [](local_seconds time) {
        return year_month_day{std::chrono::floor<std::chrono::days>(time)};
      },
      [&](year_month_day date) { return locale.format_date(date, style); },
      [&](const std::string& text) { return locale.read_date(text, reading); });
}

std::string times_read_back(const Locale& locale, bool strict) {
  return read_back(
      [](local_seconds time) -> seconds {
        return time - std::chrono::floor<std::chrono::days>(time);
      },
      [&](seconds time) { return locale.format_time(time); },
      [&](const std::string& text) { return locale.read_time(text, {.strict = strict}); });
}

std::string datetimes_read_back(const Locale& locale, bool strict) {
  return read_back(
      [](local_seconds time) { return time; },
      [&](local_seconds time) { return locale.format_datetime(time); },
      [&](const std::string& text) { return locale.read_datetime(text, {.strict = strict}); });
}

}  // namespace jwnls::tool
