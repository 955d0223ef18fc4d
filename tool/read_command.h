// `jwnls read`: a locale's text in, values out; `jwnls convert`: into another locale's text.

#ifndef JWNLS_TOOL_READ_COMMAND_H_
#define JWNLS_TOOL_READ_COMMAND_H_

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "client/jwnls.h"
#include "tool/format_command.h"

namespace jwnls::tool {

struct ReadOptions {
  std::string locale;               // of the texts; empty: the environment's
  std::vector<std::string> values;  // the texts; empty: lines of standard input
  std::string target;               // the locale to write in; empty: none
  FormatOptions format;             // what to write there
  bool raw = false;                 // write the module's own numbers

  // How to read, a record for each family:
  client::DateReading date;
  client::TimeReading time;
  std::optional<int> year_cutoff;
  client::NumberReading number;
  client::IntegerReading integer;
  bool unsigned_integer = false;
};

/// A kind of value that `read` reads: a row here is a subcommand there and, but for the kinds that
/// are not written as they are read, of `convert`.
struct ReadKind {
  const char* name;
  const char* summary;
  const char* values_help;  // what a text may look like
  const char* values_note;  // the same at length
  const char* examples;
  const char* convert_examples;  // null: no subcommand of `convert`
  const char* raw_help;          // null: values have no other form
  const char* written_as;        // the kind of `format` that writes the values
  void (*add_options)(CLI::App&, ReadOptions&);
  client::Result<void> (*check)(const ReadOptions&) = nullptr;
  /// The value as a program writes it, and as `format` takes it.
  client::Result<ValueText> (*read)(const client::Locale&, const ReadOptions&,
                                    std::string_view text);
};

[[nodiscard]] std::span<const ReadKind> date_read_kinds();
[[nodiscard]] std::span<const ReadKind> number_read_kinds();

/// The kind of `format` that writes what is read.
[[nodiscard]] const FormatKind& written_kind(const ReadKind& kind);

/// Writes a line for each text and reports the texts that are not read.
ExitCode run_read(const ReadKind& kind, const ReadOptions& options);

}  // namespace jwnls::tool

#endif  // JWNLS_TOOL_READ_COMMAND_H_
