// The kinds of numbers that `format` writes, and how each takes its values.

#include <CLI/CLI.hpp>
#include <map>
#include <optional>
#include <string>

#include "tool/format_command.h"
#include "tool/plain_number.h"

namespace jwnls::tool {
namespace {

using client::Locale;
using client::NumberKind;
using client::Radix;
using client::Result;

constexpr const char* missing_note =
    "Missing values, \".\", \".A\" to \".Z\" and \"._\", are shown as their one character.";

tl::unexpected<client::Error> refused(std::string reason) {
  return client::failure(Status::invalid_number, std::move(reason));
}

Result<double> read_value(std::string_view text) {
  if (const auto missing = read_missing(text)) return missing->value();
  const auto number = read_number(text);
  if (!number) return refused(number.error());
  return *number;
}

const char* note_of(Status status) {
  switch (status) {
    case Status::decimals_dropped:
      return "shown without all its decimals, for which the width has no room";
    case Status::grouping_failed:
      return "shown without grouping, for which the width has no room";
    default:
      return "";
  }
}

Result<ValueText> format_number(const Locale& locale, const FormatOptions& options,
                                std::string_view text) {
  const auto value = read_value(text);
  if (!value) return tl::unexpected<client::Error>(value.error());
  Status status = Status::ok;
  auto shown = locale.format_number(*value, options.number, &status);
  if (!shown) return tl::unexpected<client::Error>(shown.error());
  return ValueText(*std::move(shown), note_of(status));
}

Result<ValueText> format_integer(const Locale& locale, const FormatOptions& options,
                                 std::string_view text) {
  const client::IntegerFormat& format = options.integer;
  if (const auto missing = read_missing(text)) {
    return locale.format_number(missing->value(), {.width = format.width, .left = format.left});
  }
  const auto value = read_integer(text);
  if (!value) return refused(value.error());
  return std::visit([&](auto integer) { return locale.format_integer(integer, format); }, *value);
}

Result<ValueText> format_currency(const Locale& locale, const FormatOptions& options,
                                  std::string_view text) {
  return read_value(text).and_then(
      [&](double value) { return locale.format_currency(value, options.currency); });
}

Result<ValueText> format_percent(const Locale& locale, const FormatOptions& options,
                                 std::string_view text) {
  return read_value(text).and_then(
      [&](double value) { return locale.format_percent(value, options.percent); });
}

// ---- Options. Their ranges are checked by the client, with all options known.

// What all kinds take.
template <typename Format>
void add_field_options(CLI::App& command, Format& format) {
  command.add_option("-w,--width", format.width, "The least width; blanks stand in front")
      ->type_name("UNITS");
  command.add_flag("--left", format.left, "Blanks stand behind");
}

template <typename Format>
void add_sign_options(CLI::App& command, Format& format, const char* group_default) {
  CLI::Option* group = command.add_flag_callback(
      "--group", [&format] { format.group = true; },
      std::string("Group digits the way the locale does; default: ") + group_default);
  CLI::Option* no_group = command.add_flag_callback(
      "--no-group", [&format] { format.group = false; }, "Do not group digits");
  group->excludes(no_group)->option_text(" ");  // the help is not to list what excludes what
  no_group->option_text(" ");
  command.add_flag_callback(
      "--sign", [&format] { format.sign = client::SignDisplay::always; },
      "Show \"+\" in front of numbers that are not negative");
  command.add_flag("--zero-fill", format.zero_fill, "Fill the width with zeros");
}

// An option whose value is one of a few names.
template <typename Value>
void add_choice(CLI::App& command, const char* name, Value& value,
                std::map<std::string, Value> choices, const char* help, const char* type_name) {
  const auto choose = [choices = std::move(choices), &value, name, help](const std::string& word) {
    const auto choice = choices.find(word);
    if (choice == choices.end()) {
      throw CLI::ValidationError(name, client::in_quotes(word) + " is none of: " + help);
    }
    value = choice->second;
  };
  command.add_option_function<std::string>(name, choose, help)->type_name(type_name);
}

void add_decimals(CLI::App& command, std::optional<int>& decimals, const char* help) {
  command.add_option("-d,--decimals", decimals, help)->type_name("COUNT");
}

// No number is shown with a time.
void set_any_zone(CLI::App& /*command*/, FormatOptions& options) { options.zone = "UTC"; }

void add_number_options(CLI::App& command, FormatOptions& options) {
  add_choice<NumberKind>(command, "-k,--kind", options.number.kind,
                         {{"fixed", NumberKind::fixed},
                          {"general", NumberKind::general},
                          {"exponent", NumberKind::exponent},
                          {"best", NumberKind::best_fit},
                          {"aligned", NumberKind::decimal_aligned}},
                         "fixed (the default), general, exponent, best or aligned", "KIND");
  add_decimals(command, options.number.decimals,
               "Digits behind the decimal symbol; default: as many as the number has");
  add_field_options(command, options.number);
  add_sign_options(command, options.number, "the fixed kind only");
  command.add_flag("--capital", options.number.capital, "Write \"E\" for \"e\"");
}

void add_integer_options(CLI::App& command, FormatOptions& options) {
  add_choice<Radix>(command, "--radix", options.integer.radix,
                    {{"10", Radix::decimal}, {"16", Radix::hexadecimal}, {"8", Radix::octal}},
                    "10 (the default), 16 or 8", "RADIX");
  command
      .add_option("--digits", options.integer.minimum_digits, "The least digits, zeros in front")
      ->type_name("COUNT");
  add_field_options(command, options.integer);
  add_sign_options(command, options.integer, "on");
  command.add_flag("--prefix", options.integer.prefix, "Write \"0x\" in front of radix 16");
  command.add_flag("--capital", options.integer.capital, "Write A to F, and \"0X\"");
}

void add_currency_options(CLI::App& command, FormatOptions& options) {
  add_decimals(command, options.currency.decimals,
               "Digits behind the decimal symbol; default: the currency's (2 for euros)");
  add_field_options(command, options.currency);
}

void add_percent_options(CLI::App& command, FormatOptions& options) {
  add_decimals(command, options.percent.decimals,
               "Digits behind the decimal symbol; default: as many as the number has");
  add_field_options(command, options.percent);
  command.add_flag("--parentheses", options.percent.parentheses,
                   "Write negative numbers in parentheses");
}

template <auto format>
Result<void> check_format(const FormatOptions& options) {
  return client::check(options.*format);
}

constexpr const char* numbers_help = "Numbers as 1234.5, -5 or 1e-3";

constexpr FormatKind kinds[] = {
    {.name = "number",
     .summary = "Write numbers",
     .locale_category = "LC_NUMERIC",
     .values_help = numbers_help,
     .values_note =
         "Missing values, \".\", \".A\" to \".Z\" and \"._\", are shown as their one character.\n\n"
         "Kinds: fixed is 1234.50, exponent 1.23e+03, general the one or the other by size, with "
         "-d\n"
         "significant digits; best tells the most in a width of 1 to 32; aligned keeps -d "
         "decimals\n"
         "(default: 2) as long as they fit a width of 1 to 32.",
     .examples = "  jwnls format number -l de_DE 1234567.891 -- -5\n"
                 "  jwnls format number -l hi_IN -d 2 -w 16 1234567.891 0.5 .\n"
                 "  jwnls format number -l fr_FR -k exponent -d 3 6.02214076e23\n"
                 "  jwnls format number -l en_US -k best -w 8 3.14159265 1e100\n"
                 "  seq 0 0.25 2 | jwnls format number -l da_DK -d 2 --zero-fill -w 6",
     .add_value_options = set_any_zone,
     .add_options = add_number_options,
     .check = check_format<&FormatOptions::number>,
     .format = format_number},
    {.name = "integer",
     .summary = "Write integers",
     .locale_category = "LC_NUMERIC",
     .values_help = "Integers as 1234, -5 or 0xFF, of 64 bits",
     .values_note = missing_note,
     .examples = "  jwnls format integer -l en_IN 1234567\n"
                 "  jwnls format integer -l de_DE --sign -w 12 1234567 -5\n"
                 "  jwnls format integer --radix 16 --prefix 255 18446744073709551615",
     .add_value_options = set_any_zone,
     .add_options = add_integer_options,
     .check = check_format<&FormatOptions::integer>,
     .format = format_integer},
    {.name = "currency",
     .summary = "Write amounts of the locale's currency",
     .locale_category = "LC_MONETARY",
     .values_help = numbers_help,
     .values_note = missing_note,
     .examples = "  jwnls format currency -l en_US 1234.5\n"
                 "  jwnls format currency -l ja_JP -w 12 1234567\n"
                 "  cut -d, -f4 orders.csv | jwnls format currency -l de_CH -w 14",
     .add_value_options = set_any_zone,
     .add_options = add_currency_options,
     .check = check_format<&FormatOptions::currency>,
     .format = format_currency},
    {.name = "percent",
     .summary = "Write percentages: 0.125 is 12.5%",
     .locale_category = "LC_NUMERIC",
     .values_help = numbers_help,
     .values_note = missing_note,
     .examples = "  jwnls format percent -l de_DE 0.125\n"
                 "  jwnls format percent -l en_US -d 1 -w 8 --parentheses 0.5 -0.07",
     .add_value_options = set_any_zone,
     .add_options = add_percent_options,
     .check = check_format<&FormatOptions::percent>,
     .format = format_percent},
};

}  // namespace

std::span<const FormatKind> number_kinds() { return kinds; }

}  // namespace jwnls::tool
