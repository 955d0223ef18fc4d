// The kinds of dates and times that `read` reads, and what it writes for them.

#include <CLI/CLI.hpp>
#include <chrono>
#include <string>

#include "tool/iso8601.h"
#include "tool/read_command.h"

namespace jwnls::tool {
namespace {

using client::Locale;
using client::Result;
using std::chrono::local_seconds;
using std::chrono::seconds;
using std::chrono::year_month_day;

// The module's own number.
std::string raw_text(double value) { return std::to_string(static_cast<long long>(value)); }
std::string raw_text(year_month_day date) {
  return raw_text(client::date_value(date).value_or(client::DateValue{}).days);
}
std::string raw_text(seconds since_midnight) { return std::to_string(since_midnight.count()); }
std::string raw_text(local_seconds time) {
  return raw_text(client::datetime_value(time).value_or(client::DatetimeValue{}).seconds);
}

template <typename Value>
Result<ValueText> value_text(const Result<Value>& value, const ReadOptions& options) {
  if (!value) return tl::unexpected<client::Error>(value.error());
  return options.raw ? raw_text(*value) : iso_text(*value);
}

Result<ValueText> read_date(const Locale& locale, const ReadOptions& options,
                            std::string_view text) {
  return value_text(locale.read_date(text, options.date), options);
}

Result<ValueText> read_time(const Locale& locale, const ReadOptions& options,
                            std::string_view text) {
  return value_text(locale.read_time(text, options.time), options);
}

Result<ValueText> read_datetime(const Locale& locale, const ReadOptions& options,
                                std::string_view text) {
  return value_text(locale.read_datetime(text, options.date), options);
}

Result<ValueText> read_period(const Locale& locale, const ReadOptions& options,
                              std::string_view text) {
  return value_text(locale.read_period(text), options);
}

void add_strict(CLI::App& command, bool& strict) {
  command.add_flag("--strict", strict, "As the pattern says: its blanks and marks, all digits");
}

void add_pattern(CLI::App& command, int& pattern, const char* help) {
  command.add_option("--pattern", pattern, help)->type_name("NUMBER");
}

void add_date_options(CLI::App& command, ReadOptions& options) {
  add_strict(command, options.date.strict);
  add_pattern(command, options.date.pattern,
              "Only the locale's date pattern 1 (short), 2 (medium) or 3 (long)");
}

void add_time_options(CLI::App& command, ReadOptions& options) {
  add_strict(command, options.time.strict);
  add_pattern(command, options.time.pattern,
              "Only the pattern of datetimes (1, always strict) or of times alone (2)");
}

void add_period_options(CLI::App& command, ReadOptions& options) {
  command
      .add_option("--year-cutoff", options.year_cutoff,
                  "The first of the hundred years that two digits stand for; default: 1950")
      ->type_name("YEAR")
      ->check(CLI::Validator(CLI::Range(1582, 19901)).description(""));
}

Result<void> check_date(const ReadOptions& options) { return client::check(options.date); }
Result<void> check_time(const ReadOptions& options) { return client::check(options.time); }

constexpr const char* dates_note =
    "The locale's short, medium and long dates are tried, then common ones (15/03/2024, "
    "2024-03-15,\n"
    "15.3.2024, Mar 15 2024, ...), day or month first as in the locale. Case and blanks do not\n"
    "matter. Two digits of a year are 1960 to 2059.";

constexpr ReadKind kinds[] = {
    {.name = "date",
     .summary = "Read dates",
     .values_help = "Dates as the locale writes them",
     .values_note = dates_note,
     .examples = "  jwnls read date -l de_DE '15. März 2024' 15.3.24\n"
                 "  jwnls read date -l en_US --pattern 3 --strict 'March 15, 2024'\n"
                 "  jwnls read date -l fr_FR --as ja_JP -s long '15 mars 2024'\n"
                 "  cut -d';' -f3 orders.csv | jwnls read date -l de_DE",
     .convert_examples = "  jwnls convert date --from en_US --to de_DE 'Mar 15, 2024' 3/15/2024\n"
                         "  jwnls convert date --from fr_FR --to ja_JP -s long < dates.txt",
     .raw_help = "Write days since 1960-01-01",
     .written_as = "date",
     .add_options = add_date_options,
     .check = check_date,
     .read = read_date},
    {.name = "time",
     .summary = "Read times of day",
     .values_help = "Times of day as the locale writes them",
     .values_note = "Seconds, and the designator of a 12-hour clock, may be left out.",
     .examples = "  jwnls read time -l en_US '2:30 PM' 14:30:05\n"
                 "  jwnls read time -l ko_KR '오후 2:30'\n"
                 "  jwnls read time -l de_DE --raw 14:30",
     .convert_examples = "  jwnls convert time --from de_DE --to en_US 14:30 0:05",
     .raw_help = "Write seconds since midnight",
     .written_as = "time",
     .add_options = add_time_options,
     .check = check_time,
     .read = read_time},
    {.name = "datetime",
     .summary = "Read datetimes",
     .values_help = "Datetimes as the locale writes them, or dates (their midnight)",
     .values_note =
         "A date as \"jwnls read date\" reads it, then blanks, \",\", \":\" or \"T\", and a time "
         "of day.",
     .examples = "  jwnls read datetime -l de_DE '15.03.2024, 14:30:05' '15. März 2024 14:30'\n"
                 "  jwnls read datetime -l en_US --raw 'Mar 15, 2024, 2:30:05 PM'",
     .convert_examples = "  jwnls convert datetime --from en_US --to fr_FR '3/15/2024 2:30 PM'",
     .raw_help = "Write seconds since 1960-01-01 00:00:00",
     .written_as = "datetime",
     .add_options = add_date_options,
     .check = check_date,
     .read = read_datetime},
    {.name = "period",
     .summary = "Read months, weeks and quarters: their first day",
     .values_help = "Months, weeks and quarters as \"Mar-2024\", \"Week9 2024\" or \"Q1, 2024\"",
     .values_note = "Months:   Mar-2024 (the locale's names), 3/2024, \"Month3, 2024\"\n"
                    "Weeks:    \"Week9 2024\" (from Sunday on; the first Sunday begins week 1),\n"
                    "          \"W9, 2024\" (ISO 8601: from Monday on)\n"
                    "Quarters: \"Q1, 2024\", \"Qtr1 2024\", \"Quarter1 2024\"",
     .examples = "  jwnls read period -l de_DE März-2024 3/2024 'Q2, 2024' 'W9, 2024'\n"
                 "  jwnls read period -l en_US --year-cutoff 1980 Jan-79 Jan-80",
     .convert_examples = nullptr,
     .raw_help = "Write days since 1960-01-01",
     .written_as = "date",
     .add_options = add_period_options,
     .read = read_period},
};

}  // namespace

std::span<const ReadKind> date_read_kinds() { return kinds; }

}  // namespace jwnls::tool
