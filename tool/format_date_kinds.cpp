// The kinds of dates and times that `format` writes, and how each takes its values.

#include <CLI/CLI.hpp>
#include <algorithm>
#include <chrono>
#include <optional>

#include "tool/format_command.h"
#include "tool/iso8601.h"
#include "tool/plain_number.h"

namespace jwnls::tool {
namespace {

using client::DatetimeValue;
using client::DateValue;
using client::Locale;
using client::Result;

// A date and a time of day as a locale's wall clock shows them; either may be absent.
struct WallClock {
  std::optional<std::chrono::year_month_day> date;
  std::optional<std::chrono::seconds> time;
};

tl::unexpected<client::Error> refused(std::string reason) {
  return client::failure(Status::no_match, std::move(reason));
}

Result<WallClock> at_instant(const Locale& locale, std::chrono::sys_seconds instant) {
  const auto local = locale.local_time(instant);
  if (!local) return tl::unexpected<client::Error>(local.error());
  const auto day = std::chrono::floor<std::chrono::days>(*local);
  return WallClock{std::chrono::year_month_day{day}, *local - day};
}

// "now" or ISO 8601 text. With an offset it is an instant, shown in the locale's time zone.
Result<WallClock> read_wall_clock(const Locale& locale, std::string_view text) {
  if (text == "now") {
    const auto now = std::chrono::system_clock::now();
    return at_instant(locale, std::chrono::floor<std::chrono::seconds>(now));
  }
  const auto iso = read_iso8601(text);
  if (!iso) return refused(iso.error());
  if (!iso->offset) return WallClock{iso->date, iso->time};
  if (!iso->date) return refused("a time with an offset needs its date");
  return at_instant(locale, std::chrono::sys_days{*iso->date} + *iso->time - *iso->offset);
}

Result<double> read_raw(std::string_view text) {
  const auto number = read_number(text);
  if (!number) return refused(number.error());
  return *number;
}

client::DateStyle date_style(const std::string& name) {
  if (name == "short" || name == "1") return client::DateStyle::short_numeric;
  if (name == "long" || name == "3") return client::DateStyle::long_form;
  return client::DateStyle::medium;
}

client::DatetimeStyle datetime_style(const std::string& name) {
  return name == "time" || name == "0" ? client::DatetimeStyle::time_only
                                       : client::DatetimeStyle::date_and_time;
}

Result<ValueText> format_date(const Locale& locale, const FormatOptions& options,
                              std::string_view text) {
  const client::DateStyle style = date_style(options.style);
  if (options.raw) {
    return read_raw(text).and_then(
        [&](double days) { return locale.format_date(DateValue{days}, style); });
  }
  const auto value = read_wall_clock(locale, text);
  if (!value) return tl::unexpected<client::Error>(value.error());
  if (!value->date) return refused("a time without a date");
  return locale.format_date(*value->date, style);
}

Result<ValueText> format_time(const Locale& locale, const FormatOptions& options,
                              std::string_view text) {
  if (options.raw) {
    return read_raw(text).and_then(
        [&](double seconds) { return locale.format_time(DatetimeValue{seconds}); });
  }
  const auto value = read_wall_clock(locale, text);
  if (!value) return tl::unexpected<client::Error>(value.error());
  if (!value->time) return refused("a date without a time of day");
  return locale.format_time(*value->time);
}

Result<ValueText> format_datetime(const Locale& locale, const FormatOptions& options,
                                  std::string_view text) {
  const client::DatetimeStyle style = datetime_style(options.style);
  if (options.raw) {
    return read_raw(text).and_then(
        [&](double seconds) { return locale.format_datetime(DatetimeValue{seconds}, style); });
  }
  const auto value = read_wall_clock(locale, text);
  if (!value) return tl::unexpected<client::Error>(value.error());
  if (!value->date) return refused("a time without a date");
  // A date alone is its midnight.
  const auto time = value->time.value_or(std::chrono::seconds{0});
  return locale.format_datetime(std::chrono::local_days{*value->date} + time, style);
}

constexpr const char* values_note =
    "A datetime with \"Z\" or an offset such as +01:00 is an instant, written as the clock of the\n"
    "time zone shows it; one without is written as it stands.";

void add_zone_and_raw(CLI::App& command, FormatOptions& options, const char* raw_help) {
  add_zone_option(command, options.zone);
  command.add_flag("-r,--raw", options.raw, raw_help);
}

// `help` tells the names in `styles`, and which is the default.
void add_style(CLI::App& command, FormatOptions& options, std::span<const char* const> styles,
               const char* help) {
  const auto known_style = [styles, help, &command](std::string& style) {
    const bool known = std::find(styles.begin(), styles.end(), style) != styles.end();
    return known
               ? std::string()
               : client::in_quotes(style) + " is no style of a " + command.get_name() + ": " + help;
  };
  command.add_option("-s,--style", options.style, help)
      ->type_name("STYLE")
      ->check(CLI::Validator(known_style, ""));
}

void add_date_values(CLI::App& command, FormatOptions& options) {
  add_zone_and_raw(command, options, "Values are days since 1960-01-01");
}

void add_time_values(CLI::App& command, FormatOptions& options) {
  add_zone_and_raw(command, options,
                   "Values are seconds since midnight or since 1960-01-01 00:00:00");
}

void add_datetime_values(CLI::App& command, FormatOptions& options) {
  add_zone_and_raw(command, options, "Values are seconds since 1960-01-01 00:00:00");
}

void add_date_style(CLI::App& command, FormatOptions& options) {
  static constexpr const char* styles[] = {"short", "medium", "long", "1", "2", "3"};
  add_style(command, options, styles, "short (1), medium (2, the default) or long (3)");
}

void add_datetime_style(CLI::App& command, FormatOptions& options) {
  static constexpr const char* styles[] = {"medium", "time", "1", "0"};
  add_style(command, options, styles,
            "medium (1, the default: date and time) or time (0: the time alone)");
}

constexpr FormatKind kinds[] = {
    {.name = "date",
     .summary = "Write dates",
     .locale_category = "LC_TIME",
     .values_help = "Dates as YYYY-MM-DD or YYYYMMDD, datetimes, or \"now\"",
     .values_note = values_note,
     .examples = "  jwnls format date -l de_DE -s long 2024-03-15\n"
                 "  jwnls format date -l ja_JP 2024-03-15 1999-12-31\n"
                 "  jwnls format date -l fr_FR --raw 0 -138061 23450.5\n"
                 "  cut -d, -f3 orders.csv | jwnls format date -l es_MX -s short",
     .add_value_options = add_date_values,
     .add_options = add_date_style,
     .format = format_date},
    {.name = "time",
     .summary = "Write times of day",
     .locale_category = "LC_TIME",
     .values_help = "Times as HH:MM or HH:MM:SS, datetimes, or \"now\"",
     .values_note = values_note,
     .examples = "  jwnls format time -l en_US 14:30 00:05:09\n"
                 "  jwnls format time -l ko_KR -z Asia/Seoul 2024-03-15T14:30:00Z\n"
                 "  jwnls format time -l da_DK --raw 52200",
     .add_value_options = add_time_values,
     .format = format_time},
    {.name = "datetime",
     .summary = "Write datetimes",
     .locale_category = "LC_TIME",
     .values_help = "Datetimes as YYYY-MM-DDTHH:MM:SS, dates (their midnight), or \"now\"",
     .values_note = values_note,
     .examples = "  jwnls format datetime -l de_DE 2024-03-15T14:30:05\n"
                 "  jwnls format datetime -l hi_IN -z Asia/Kolkata now\n"
                 "  jwnls format datetime -l en_GB -z Europe/London 2024-07-01T12:00:00Z\n"
                 "  date -Iseconds | jwnls format datetime -l pt_BR -z America/Sao_Paulo",
     .add_value_options = add_datetime_values,
     .add_options = add_datetime_style,
     .format = format_datetime},
};

}  // namespace

std::span<const FormatKind> date_kinds() { return kinds; }

}  // namespace jwnls::tool
