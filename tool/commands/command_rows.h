// The commands as data: what help, the manual page and completions say of them. Their options are
// those of options_table.h.

#ifndef JWNLS_TOOL_COMMANDS_COMMAND_ROWS_H_
#define JWNLS_TOOL_COMMANDS_COMMAND_ROWS_H_

#include <span>
#include <string_view>

#include "tool/kinds.h"
#include "tool/options_table.h"

namespace jwnls::tool {

struct CommandRow {
  const char* name;
  unsigned command;      // its bit; 0: it has no options
  const char* operands;  // "KIND [-l LOCALE] [OPTION...] [VALUE...]"
  const char* summary;
  const char* examples;  // lines with two blanks before each
};

[[nodiscard]] std::span<const CommandRow> command_rows();

/// Null: there is none of that name.
[[nodiscard]] const CommandRow* find_command(std::string_view name);

/// Whether values of the kind can be worked on by the command; only some can be written.
[[nodiscard]] bool has_kind(unsigned command, const KindRow& kind);

/// The kind of that name or alias that the command has; null: none.
[[nodiscard]] const KindRow* find_kind(unsigned command, std::string_view name);

/// The examples of a command's kind.
[[nodiscard]] const char* examples_of(unsigned command, const KindRow& kind);

/// What the whole program is for, its examples, how locales are named, its exit codes.
extern const char* const program_description;
extern const char* const program_examples;
extern const char* const program_locales;
extern const char* const program_exit_codes;

/// What a -c is made of.
extern const char* const columns_text;

}  // namespace jwnls::tool

#endif  // JWNLS_TOOL_COMMANDS_COMMAND_ROWS_H_
