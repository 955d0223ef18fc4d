// Every option of every command, as data: the command line, its help, and whatever else is made of
// it (a manual page, completions) come from here.

#ifndef JWNLS_TOOL_OPTIONS_TABLE_H_
#define JWNLS_TOOL_OPTIONS_TABLE_H_

#include <initializer_list>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "jwnls/jwnls.hpp"

namespace jwnls::tool {

/// Commands, as bits.
enum Command : unsigned {
  format_command = 1,
  read_command = 2,
  convert_command = 4,
  detect_command = 8,
  show_command = 16,
  locales_command = 32,
  zones_command = 64,
};
constexpr unsigned value_commands = format_command | read_command | convert_command;
constexpr unsigned table_commands = value_commands | detect_command;

/// Kinds of values, as bits.
constexpr unsigned kind_bits(std::initializer_list<Kind> kinds) {
  unsigned set = 0;
  for (const Kind kind : kinds) set |= 1U << static_cast<unsigned>(kind);
  return set;
}
constexpr unsigned all_kinds = ~0U;

enum class Takes {
  nothing,    // a flag
  one,        // a value; the last one counts
  several,    // a value each time that it is given; they add up
  maybe_one,  // a value behind "=", or none
};

/// What an option belongs to; the help shows it so.
enum class OptionGroup { general, reading, writing, lines, table };

struct OptionRow {
  const char* name;  // "locale": "--locale"
  char short_name;   // 'l': "-l"; 0: none
  Takes takes;
  const char* value;  // "NAME", as the help shows it; null: takes nothing
  unsigned commands;
  unsigned kinds;  // of value commands
  OptionGroup group;
  bool is_word;         // of layouts: "--order dmy" is the word "order=dmy"
  const char* choices;  // "keep|empty|drop|stop"; null: anything
  const char* help;
};

[[nodiscard]] std::span<const OptionRow> option_rows();

/// The option word of layouts of that name ("order"); null: there is none.
[[nodiscard]] const OptionRow* find_word(std::string_view name);

/// The parts of a list of choices.
[[nodiscard]] std::vector<std::string> choices_of(const OptionRow& row);

/// What stands behind ":" in a -c besides the words of layouts and a locale.
struct ColumnWordRow {
  const char* name;
  const char* value;
  unsigned commands;
  const char* help;
};
[[nodiscard]] std::span<const ColumnWordRow> column_word_rows();

/// "Tables": what the options of a group are about.
[[nodiscard]] const char* title_of(OptionGroup group);

}  // namespace jwnls::tool

#endif  // JWNLS_TOOL_OPTIONS_TABLE_H_
