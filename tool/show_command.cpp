#include "tool/show_command.h"

#include <algorithm>
#include <chrono>
#include <cstdio>

#include "client/jwnls.h"
#include "tool/output.h"
#include "tool/read_back.h"
#include "tool/session.h"
#include "tool/table.h"
#include "tool/terminal_text.h"
#include "tool/zone_text.h"

namespace jwnls::tool {
namespace {

using client::Conventions;
using client::DateStyle;
using client::DatetimeStyle;
using client::Locale;
using client::Result;

// A day and an hour that show every padding and the second half of the day: Tuesday, 14:07:09.
constexpr auto example_date = std::chrono::year{2024} / 3 / 5;
constexpr std::chrono::seconds example_time =
    std::chrono::hours{14} + std::chrono::minutes{7} + std::chrono::seconds{9};
constexpr auto example_datetime = std::chrono::local_days{example_date} + example_time;
constexpr const char* example_text = "2024-03-05, a Tuesday, 14:07:09";

constexpr const char* weekdays[] = {"Sunday",   "Monday", "Tuesday", "Wednesday",
                                    "Thursday", "Friday", "Saturday"};
constexpr const char* months[] = {"January",   "February", "March",    "April",
                                  "May",       "June",     "July",     "August",
                                  "September", "October",  "November", "December"};
constexpr const char* quarters[] = {"first quarter", "second quarter", "third quarter",
                                    "fourth quarter"};

// Writes a locale, section by section.
class Report {
 public:
  Report(Output& output, const Locale& locale)
      : output_(output), locale_(locale), conventions_(locale.conventions()) {}

  void write(const std::string& english_name, const std::string& own_name) {
    title(english_name, own_name);
    patterns();
    reading();
    names("Weekdays", weekdays, conventions_.full_weekdays, conventions_.short_weekdays);
    names("Months", months, conventions_.full_months, conventions_.short_months);
    names("Quarters", quarters, conventions_.full_quarters, conventions_.short_quarters);
    symbols();
    numbers();
  }

 private:
  void section(const std::string& heading, const Table& table) {
    output_.line("");
    output_.line(heading);
    table.write(output_, terminal_columns());
  }

  void title(const std::string& english_name, const std::string& own_name) {
    Table table;
    table.add({"Locale", locale_.name()});
    table.add({"Name", english_name});
    table.add({"Own name", own_name});
    const auto zone = locale_.time_zone();
    if (zone) {
      table.add({"Time zone", zone->name + " (now " + zone->abbreviation + ", " +
                                  offset_text(zone->offset_from_utc) + ")"});
    }
    table.write(output_, 0);
  }

  static std::string example(const Result<std::string>& text) {
    return text ? *text : "(" + text.error().message + ")";
  }

  void patterns() {
    Table table(2);
    const auto date = [&](const char* name, DateStyle style) {
      table.add({name, conventions_.date_pattern(style),
                 example(locale_.format_date(example_date, style))});
    };
    date("short date", DateStyle::short_numeric);
    date("medium date", DateStyle::medium);
    date("long date", DateStyle::long_form);
    table.add({"time", conventions_.time_pattern, example(locale_.format_time(example_time))});
    table.add({"datetime", conventions_.datetime_pattern,
               example(locale_.format_datetime(example_datetime))});
    table.add({"time alone", conventions_.time_only_pattern,
               example(locale_.format_datetime(example_datetime, DatetimeStyle::time_only))});
    section(std::string("Patterns, and what they make of ") + example_text, table);
  }

  void reading() {
    Table table(2);
    table.add({"", "leniently", "strictly"});
    const auto add = [&table](const char* kind, const std::string& lenient,
                              const std::string& strict) {
      table.add({kind, lenient, strict == lenient && strict != "yes" ? "no, likewise" : strict});
    };
    const auto add_date = [&](const char* kind, DateStyle style) {
      add(kind, dates_read_back(locale_, style, false), dates_read_back(locale_, style, true));
    };
    add_date("short date", DateStyle::short_numeric);
    add_date("medium date", DateStyle::medium);
    add_date("long date", DateStyle::long_form);
    add("time", times_read_back(locale_, false), times_read_back(locale_, true));
    add("datetime", datetimes_read_back(locale_, false), datetimes_read_back(locale_, true));
    table.add({"number", numbers_read_back(locale_)});
    table.add({"integer", integers_read_back(locale_)});
    section("Reads what it writes, as tried with each day of 2024 and numbers of up to 15 digits",
            table);
  }

  template <std::size_t count>
  void names(const char* heading, const char* const (&english)[count],
             const std::array<std::string, count>& full,
             const std::array<std::string, count>& abbreviated) {
    Table table(2);
    for (std::size_t i = 0; i < count; ++i) table.add({english[i], full[i], abbreviated[i]});
    section(heading, table);
  }

  // A symbol that may be a blank or look like another: with its code points.
  static std::vector<std::string> symbol(const char* name, const std::string& text) {
    if (text.empty()) return {name, "none"};
    std::string codes;
    for (const char16_t unit : client::to_utf16(text).value_or(u"")) {
      char code[8];
      (void)std::snprintf(code, sizeof code, "U+%04X", static_cast<unsigned>(unit));
      codes.append(codes.empty() ? "" : " ").append(code);
    }
    return {name, text, codes};
  }

  void symbols() {
    Table table(2);
    table.add({"before noon", conventions_.before_noon});
    table.add({"after noon", conventions_.after_noon});
    table.add(symbol("decimal", conventions_.decimal_symbol));
    table.add(symbol("grouping", conventions_.grouping_symbol));
    table.add({"group sizes", conventions_.grouping.empty() ? "none" : conventions_.grouping});
    table.add(symbol("currency", conventions_.currency_symbol));
    table.add({"ISO 4217", conventions_.currency_code});
    section("Symbols", table);
  }

  void numbers() {
    Table table(2);
    const auto add = [&table](const char* kind, const char* value,
                              const Result<std::string>& text) {
      table.add({kind, value, example(text)});
    };
    add("number", "1234567.891", locale_.format_number(1234567.891));
    add("number", "-0.5", locale_.format_number(-0.5));
    add("exponent", "1234567.891",
        locale_.format_number(1234567.891, {.kind = client::NumberKind::exponent, .decimals = 2}));
    add("integer", "1234567", locale_.format_integer(1234567));
    add("currency", "1234.5", locale_.format_currency(1234.5));
    add("percent", "0.125", locale_.format_percent(0.125));
    section("Numbers", table);
  }

  Output& output_;
  const Locale& locale_;
  const Conventions conventions_;
};

}  // namespace

ExitCode run_show(const ShowOptions& options) {
  const client::Host host = open_host();
  const Locale locale = open_locale(host, options.locale, "LC_TIME", options.zone);
  const auto locales = host.locales();
  const auto info = std::find_if(locales.begin(), locales.end(),
                                 [&](const auto& row) { return row.name == locale.name(); });
  Output output;
  const bool listed = info != locales.end();
  Report(output, locale).write(listed ? info->english_name : "", listed ? info->own_name : "");
  output.flush();
  return ExitCode::ok;
}

}  // namespace jwnls::tool
