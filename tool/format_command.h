// `jwnls format`: values in, a locale's text out.

#ifndef JWNLS_TOOL_FORMAT_COMMAND_H_
#define JWNLS_TOOL_FORMAT_COMMAND_H_

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "client/jwnls.h"
#include "tool/exit_code.h"

namespace jwnls::tool {

struct FormatOptions {
  std::string locale;               // empty: the environment's
  std::string zone;                 // empty: the system's
  std::string style;                // empty: the kind's default
  bool raw = false;                 // values are the module's own numbers
  std::vector<std::string> values;  // empty: lines of standard input
};

/// A kind of value that `format` writes: a row here is a subcommand there.
struct FormatKind {
  const char* name;
  const char* summary;
  const char* values_help;              // what a value may look like
  std::span<const char* const> styles;  // what --style takes; empty: there is no such option
  const char* style_help;
  const char* raw_help;
  const char* examples;
  client::Result<std::string> (*format)(const client::Locale&, const FormatOptions&,
                                        std::string_view value);
};

[[nodiscard]] std::span<const FormatKind> format_kinds();

/// Writes a line for each value and reports the values that have none.
ExitCode run_format(const FormatKind& kind, const FormatOptions& options);

}  // namespace jwnls::tool

#endif  // JWNLS_TOOL_FORMAT_COMMAND_H_
