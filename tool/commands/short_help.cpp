#include "tool/commands/short_help.h"

#include <algorithm>
#include <iterator>
#include <string_view>

#include "tool/terminal_text.h"

namespace jwnls::tool {
namespace {

// Options that most need, and what is said of them; null: their help up to its first semicolon.
// Those of single kinds are shown with their kind alone.
struct Needed {
  std::string_view name;
  const char* text;
};
constexpr Needed needed[] = {
    {"locale", "The locale; default: that of the environment"},
    {"locales", "Ask these alone, separated by commas"},
    {"from", nullptr},
    {"to", nullptr},
    {"zone", "That of instants, or of what has no offset"},
    {"style", "short, medium, long or full"},
    {"decimals", "So many decimals"},
    {"currency", "own, a code such as EUR; to read also any"},
    {"groups", "Groups of digits: locale, any, none"},
    {"order", "Of three numbers: locale, dmy, mdy or ymd"},
    {"invalid", "What is not read: keep, empty, drop (its row), stop"},
    {"null", "A text that stands for a missing value"},
    {"columns", "NAME[=KIND][:WORD]... or 3, 2-5, 'net*' for the NAME"},
    {"separator", "Between fields: a character, tab, semicolon, ..."},
    {"rejects", nullptr},
    {"report", "What was found in each column: .html, .json, text"},
    {"jsonl", nullptr},
    {"output", nullptr},
    {"in-place", "Replace the file"},
    {"explain", nullptr},
    {"all", nullptr},
    {"html", nullptr},
    {"json", nullptr},
};

std::string line_of(const OptionRow& row, const Needed& need) {
  constexpr std::size_t help_column = 28;
  std::string line = row.short_name != 0 ? std::string("  -") + row.short_name + ", " : "      ";
  line.append("--").append(row.name);
  if (row.takes == Takes::maybe_one) line.append("[=").append(row.value).append("]");
  if (row.takes == Takes::one || row.takes == Takes::several) line.append(" ").append(row.value);
  line = padded(line, help_column - 1, true) + " ";
  const std::string_view help(row.help);
  line.append(need.text == nullptr ? help.substr(0, help.find(';')) : need.text);
  return line.append("\n");
}

// At most so many of the lines.
std::string first_lines(std::string_view lines, int count) {
  std::size_t end = 0;
  for (; count > 0 && end != std::string_view::npos; --count) end = lines.find('\n', end + 1);
  return std::string(lines.substr(0, end)) + "\n";
}

std::string kind_names(unsigned command) {
  std::string names;
  for (const KindRow& kind : kinds()) {
    if (has_kind(command, kind)) names.append(names.empty() ? "" : " ").append(kind.name);
  }
  return names;
}

}  // namespace

std::string short_help() {
  std::string text = std::string(program_description) + "\n\nUsage: jwnls COMMAND ...\n\n";
  constexpr std::size_t summary_column = 15;
  for (const CommandRow& row : command_rows()) {
    text.append(padded(std::string("  ").append(row.name), summary_column, true));
    text.append(row.summary).append("\n");
  }
  return text.append("\n").append(first_lines(program_examples, 6)) +
         "\nAll there is: jwnls --help, or jwnls help COMMAND\n";
}

std::string short_help(const CommandRow& command, const KindRow* kind) {
  const std::string name = std::string(command.name) + (kind == nullptr ? "" : " ") +
                           (kind == nullptr ? "" : kind->name);
  std::string_view operands = command.operands;
  if (kind != nullptr) operands.remove_prefix(std::string_view("KIND ").size());
  std::string text = std::string("Usage: jwnls ").append(name).append(" ").append(operands) + "\n";
  const bool has_kinds = (command.command & value_commands) != 0;
  if (has_kinds && kind == nullptr) {
    text.append("       jwnls ").append(name).append(" -c COLUMNS=KIND... [OPTION...] [FILE]\n");
    text.append("KIND:  ").append(kind_names(command.command)).append("\n");
  }
  text += '\n';
  for (const Needed& need : needed) {
    const auto rows = option_rows();
    const auto row = std::find_if(rows.begin(), rows.end(), [&](const OptionRow& each) {
      return need.name == each.name && (each.commands & command.command) != 0 &&
             (kind == nullptr ? each.kinds == all_kinds
                              : (each.kinds & kind_bits({kind->kind})) != 0);
    });
    if (row != rows.end()) text += line_of(*row, need);
  }
  text.append("\n").append(
      first_lines(kind == nullptr ? command.examples : examples_of(command.command, *kind), 2));
  return text.append("\nAll options: jwnls ").append(name).append(" --help\n");
}

}  // namespace jwnls::tool
