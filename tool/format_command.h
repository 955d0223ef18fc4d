// `jwnls format`: values in, a locale's text out.

#ifndef JWNLS_TOOL_FORMAT_COMMAND_H_
#define JWNLS_TOOL_FORMAT_COMMAND_H_

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "client/jwnls.h"
#include "tool/exit_code.h"
#include "tool/value_lines.h"

namespace CLI {
class App;
}

namespace jwnls::tool {

struct FormatOptions {
  std::string locale;               // empty: the environment's
  std::vector<std::string> values;  // empty: lines of standard input

  // Of dates and times:
  std::string zone;   // empty: the system's
  std::string style;  // empty: the kind's default
  bool raw = false;   // values are the module's own numbers

  // Of numbers, a record for each kind:
  client::NumberFormat number;
  client::IntegerFormat integer;
  client::CurrencyFormat currency;
  client::PercentFormat percent;
};

/// A kind of value that `format` writes: a row here is a subcommand there.
struct FormatKind {
  const char* name;
  const char* summary;
  const char* locale_category;  // "LC_TIME": the environment variable that names its locale
  const char* values_help;      // what a value may look like
  const char* values_note;      // the same at length
  const char* examples;
  void (*add_value_options)(CLI::App&, FormatOptions&);           // what values mean
  void (*add_options)(CLI::App&, FormatOptions&) = nullptr;       // what the text is to look like
  client::Result<void> (*check)(const FormatOptions&) = nullptr;  // of options, before any value
  client::Result<ValueText> (*format)(const client::Locale&, const FormatOptions&,
                                      std::string_view value);
};

[[nodiscard]] std::span<const FormatKind> date_kinds();
[[nodiscard]] std::span<const FormatKind> number_kinds();

/// Adds -z, of the commands that show instants.
void add_zone_option(CLI::App& command, std::string& zone);

/// Throws Failure{usage} for options that no value could be formatted with.
void check_options(const FormatKind& kind, const FormatOptions& options);

/// A value's text; errors and notes name the value.
[[nodiscard]] client::Result<ValueText> format_value(const FormatKind& kind,
                                                     const client::Locale& locale,
                                                     const FormatOptions& options,
                                                     std::string_view value);

/// Writes a line for each value and reports the values that have none.
ExitCode run_format(const FormatKind& kind, const FormatOptions& options);

}  // namespace jwnls::tool

#endif  // JWNLS_TOOL_FORMAT_COMMAND_H_
