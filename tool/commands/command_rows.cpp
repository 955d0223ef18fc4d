#include "tool/commands/command_rows.h"

#include <algorithm>
#include <iterator>

namespace jwnls::tool {
namespace {

constexpr CommandRow rows[] = {
    {.name = "format",
     .command = format_command,
     .operands = "KIND [-l LOCALE] [OPTION...] [VALUE...]",
     .summary = "Write values, or columns of a table, the way a locale does",
     .examples = "  jwnls format -l de_DE -c date=date:style=long -c amount=number table.csv"},
    {.name = "read",
     .command = read_command,
     .operands = "KIND [-l LOCALE] [OPTION...] [VALUE...]",
     .summary = "Read values, or columns of a table, the way a locale has them",
     .examples = "  jwnls read -l de_DE -c 'Datum,Valuta=date' -c Betrag=amount bank.csv\n"
                 "  jwnls read number -l de_DE -c Netto,Brutto --rejects bad.csv bank.csv"},
    {.name = "convert",
     .command = convert_command,
     .operands = "KIND --from LOCALE --to LOCALE [OPTION...] [VALUE...]",
     .summary = "Read values in one locale, write them in another",
     .examples = "  jwnls convert --from en_US --to de_DE -c amount=number table.csv"},
    {.name = "detect",
     .command = detect_command,
     .operands = "[-l LOCALES] [OPTION...] [FILE]",
     .summary = "Tell what kinds columns are, and which locales read them",
     .examples = "  jwnls detect table.csv\n"
                 "  jwnls detect -l de_DE,en_US column.txt\n"
                 "  jwnls detect -F ';' < table.csv"},
    {.name = "locales",
     .command = locales_command,
     .operands = "[OPTION...] [PART]",
     .summary = "List the locales: name, English name, own name",
     .examples = "  jwnls locales\n  jwnls locales swiss\n  jwnls locales --names zh"},
    {.name = "zones",
     .command = zones_command,
     .operands = "[OPTION...] [PART]",
     .summary = "List the time zones: name, short name and offset from UTC now",
     .examples = "  jwnls zones\n  jwnls zones america/arg\n  jwnls zones --names | fzf"},
    {.name = "show",
     .command = show_command,
     .operands = "[OPTION...] [LOCALE]",
     .summary = "Show what a locale writes and reads, its names and symbols",
     .examples = "  jwnls show de_DE\n  jwnls show ar_EG -z Africa/Cairo | less"},
    {.name = "help",
     .command = 0,
     .operands = "[COMMAND [KIND]]",
     .summary = "Tell all about the program, a command, or a kind of its values",
     .examples = "  jwnls help\n  jwnls help read\n  jwnls help read date"},
    {.name = "completions",
     .command = 0,
     .operands = "SHELL",
     .summary = "Write what bash, zsh or fish needs to complete command lines",
     .examples = "  eval \"$(jwnls completions bash)\"\n"
                 "  jwnls completions fish > ~/.config/fish/completions/jwnls.fish"},
};

}  // namespace

const char* const program_description =
    "Writes and reads dates, times, numbers and amounts the way a locale does.";

const char* const program_examples =
    "  jwnls format date -l de_DE -s long 2024-03-15\n"
    "  jwnls format datetime -l en_US -z America/New_York now\n"
    "  jwnls format number -l fr_FR -d 2 1234567.891\n"
    "  jwnls read date -l fr_FR '15 mars 2024'\n"
    "  jwnls read amount -l de_DE '1.234,50 €'\n"
    "  jwnls convert time --from en_US --to de_DE '2:30 PM'\n"
    "  jwnls read -l de_DE -c Datum=date -c Betrag=amount bank.csv\n"
    "  jwnls detect -l de_DE,en_US,fr_FR bank.csv\n"
    "  jwnls show ja_JP\n"
    "  jwnls locales arab";

const char* const program_locales =
    "Locales are named as people write them: de_DE, de-DE, de_DE.UTF-8, german. Without one, the\n"
    "first of LC_ALL, LC_TIME and LANG that is set counts, else C, which is en_US_POSIX; for\n"
    "numbers LC_NUMERIC and for amounts LC_MONETARY in place of LC_TIME.";

const char* const program_exit_codes =
    "Exit codes: 0 done, 1 bad values (the others are done), 2 wrong command line, 3 unknown\n"
    "locale or time zone, a module that cannot be loaded, or no memory, 4 input or output failed,\n"
    "5 values that could mean another and none that decides, with --proved, or no single reading,\n"
    "of detect.";

const char* const columns_text =
    "Tables, with -c: SELECTOR{,SELECTOR}[=KIND]{:WORD}\n"
    "  SELECTOR  a name, \"a name\", a number, 3-5, 3-, 'net*', /expression/\n"
    "  KIND      number integer amount percent date time datetime instant period; default: the\n"
    "            command's\n"
    "  WORD      a locale; an option of the kind, without its dashes: decimals=2, no-group;\n"
    "            as=NAME, a new column; currency-as=NAME, a column of currencies; from=, to=";

std::span<const CommandRow> command_rows() { return rows; }

const CommandRow* find_command(std::string_view name) {
  const auto* const row =
      std::find_if(std::begin(rows), std::end(rows),
                   [name](const CommandRow& each) { return each.name == name; });
  return row == std::end(rows) ? nullptr : row;
}

bool has_kind(unsigned command, const KindRow& kind) {
  if ((command & value_commands) == 0) return false;
  return command == read_command || kind.format_examples != nullptr;
}

const KindRow* find_kind(unsigned command, std::string_view name) {
  for (const KindRow& kind : kinds()) {
    const bool is_named = kind.name == name || (kind.alias != nullptr && kind.alias == name);
    if (is_named && has_kind(command, kind)) return &kind;
  }
  return nullptr;
}

const char* examples_of(unsigned command, const KindRow& kind) {
  if (command == format_command) return kind.format_examples;
  return command == read_command ? kind.read_examples : kind.convert_examples;
}

}  // namespace jwnls::tool
