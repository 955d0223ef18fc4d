#include "tool/commands/command_line.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cctype>
#include <functional>
#include <list>
#include <sstream>
#include <string>
#include <vector>

#include "tool/commands/detect_command.h"
#include "tool/commands/list_commands.h"
#include "tool/commands/show_command.h"
#include "tool/commands/table_command.h"
#include "tool/commands/value_commands.h"
#include "tool/given_options.h"
#include "tool/kinds.h"
#include "tool/nearest_name.h"
#include "tool/options_table.h"
#include "tool/output.h"
#include "tool/shielded_values.h"
#include "tool/tables/column_spec.h"
#include "tool/terminal_text.h"

namespace jwnls::tool {
namespace {

constexpr const char* program_description =
    "Writes and reads dates, times, numbers and amounts the way a locale does.";

constexpr const char* program_footer =
    "Examples:\n"
    "  jwnls format date -l de_DE -s long 2024-03-15\n"
    "  jwnls format datetime -l en_US -z America/New_York now\n"
    "  jwnls format number -l fr_FR -d 2 1234567.891\n"
    "  jwnls read date -l fr_FR '15 mars 2024'\n"
    "  jwnls read amount -l de_DE '1.234,50 €'\n"
    "  jwnls convert time --from en_US --to de_DE '2:30 PM'\n"
    "  jwnls read -l de_DE -c Datum=date -c Betrag=amount bank.csv\n"
    "  jwnls detect -l de_DE,en_US,fr_FR bank.csv\n"
    "  jwnls show ja_JP\n"
    "  jwnls locales arab\n"
    "\n"
    "Locales are named as people write them: de_DE, de-DE, de_DE.UTF-8, german. Without one, the\n"
    "first of LC_ALL, LC_TIME and LANG that is set counts, else C, which is en_US_POSIX; for\n"
    "numbers LC_NUMERIC and for amounts LC_MONETARY in place of LC_TIME.\n"
    "\n"
    "Exit codes: 0 done, 1 bad values (the others are done), 2 wrong command line, 3 unknown\n"
    "locale or time zone or a module that cannot be loaded, 4 input or output failed, 5 values\n"
    "that could mean another and none that decides, with --proved, or no single reading, of "
    "detect.";

using Run = std::function<ExitCode()>;

constexpr const char* values_footer =
    "Without values, lines of standard input are read. A blank value is a missing one, and stays.";

constexpr const char* table_footer =
    "Tables, with -c: SELECTOR{,SELECTOR}[=KIND]{:WORD}\n"
    "  SELECTOR  a name, \"a name\", a number, 3-5, 3-, 'net*', /expression/\n"
    "  KIND      number integer amount percent date time datetime instant period; default: the\n"
    "            command's\n"
    "  WORD      a locale; an option of the kind, without its dashes: decimals=2, no-group;\n"
    "            as=NAME, a new column; currency-as=NAME, a column of currencies; from=, to=";

std::string version_text() {
  char zones[64];
  std::size_t length = 0;
  const bool known = jwnls_zones_version(zones, sizeof zones, &length) == JWNLS_OK && length > 0;
  return std::string("jwnls ") + jwnls_version() + " (interface " + jwnls_interface_version() +
         ", " + jwnls_data_version() + ", time zones " +
         (known ? std::string(zones, length) : "of an unknown release") + ")";
}

// The options of the chosen subcommand end up in those of its command, and `chosen` runs it.
class CommandLine {
 public:
  explicit CommandLine(std::vector<std::string> words)
      : words_(std::move(words)), app_(program_description, "jwnls") {
    app_.require_subcommand(0, 1);  // one is required, but a wrong word is to be named first
    app_.set_version_flag("--version", version_text,
                          "The versions of program, module interface, locale and zone data");
    app_.footer(program_footer);
    app_.failure_message(CLI::FailureMessage::simple);
    add_values_command(
        format_command, "Write values, or columns of a table, the way a locale does",
        "  jwnls format -l de_DE -c date=date:style=long -c amount=number table.csv");
    add_values_command(read_command,
                       "Read values, or columns of a table, the way a locale has them",
                       "  jwnls read -l de_DE -c 'Datum,Valuta=date' -c Betrag=amount bank.csv\n"
                       "  jwnls read number -l de_DE -c Netto,Brutto --rejects bad.csv bank.csv");
    add_values_command(convert_command, "Read values in one locale, write them in another",
                       "  jwnls convert --from en_US --to de_DE -c amount=number table.csv");
    add_detect();
    add_list(locales_command, "List the locales: name, English name, own name",
             "  jwnls locales\n  jwnls locales swiss\n  jwnls locales --names zh", run_locales);
    add_list(zones_command, "List the time zones: name, what it is called now, offset from UTC now",
             "  jwnls zones\n  jwnls zones america/arg\n  jwnls zones --names | fzf", run_zones);
    add_show();
  }

  // Throws CLI::ParseError, for help as well.
  ExitCode run() {
    check_command();
    auto words = with_shielded_values(words_);
    std::reverse(words.begin(), words.end());  // as the parser takes them
    app_.parse(std::move(words));
    if (!chosen_)
      throw Failure{ExitCode::usage, "jwnls needs one of " + commands() + " (see --help)"};
    return chosen_();
  }

  CLI::App& app() { return app_; }

 private:
  static std::string examples(const std::string& lines) { return "Examples:\n" + lines; }

  [[nodiscard]] std::vector<std::string> command_names() const {
    std::vector<std::string> names;
    for (const CLI::App* command : app_.get_subcommands({})) names.push_back(command->get_name());
    return names;
  }

  [[nodiscard]] std::string commands() const {
    std::string names;
    for (const std::string& name : command_names()) names += (names.empty() ? "" : ", ") + name;
    return names;
  }

  void check_command() const {
    if (words_.empty() || words_.front().starts_with('-')) return;
    const auto names = command_names();
    if (std::find(names.begin(), names.end(), words_.front()) != names.end()) return;
    throw Failure{ExitCode::usage, in_quotes(words_.front()) + ": no such command" +
                                       did_you_mean(words_.front(), names) + " (see --help)"};
  }

  // Whether a name is among the words: only what may be asked for gets its options, as the parser
  // takes some milliseconds to add those of all commands and kinds.
  [[nodiscard]] bool is_said(const char* name) const {
    return name != nullptr && std::find(words_.begin(), words_.end(), name) != words_.end();
  }

  static bool has_kind(Command command, const KindRow& kind) {
    return command == read_command || kind.format_examples != nullptr;
  }

  // "read date ...": then all options behind are those of the kind.
  [[nodiscard]] bool begins_with_kind(Command command) const {
    const auto all = kinds();
    return words_.size() > 1 && std::any_of(all.begin(), all.end(), [&](const KindRow& kind) {
             return has_kind(command, kind) &&
                    (words_[1] == kind.name || (kind.alias != nullptr && words_[1] == kind.alias));
           });
  }

  // A command with a subcommand for each kind, and itself for tables.
  void add_values_command(Command command, const char* summary, const char* table_examples) {
    const std::string name = command_name(command);
    GivenOptions& options = options_.emplace_back();
    CLI::App* parent = app_.add_subcommand(name, summary);
    parent->require_subcommand(0, 1);
    parent->footer(std::string("Values are arguments or, without any, lines of standard input.\n") +
                   "\"jwnls " + name + " KIND --help\" tells what a kind takes.\n\n" +
                   table_footer + "\n\n" + examples(table_examples));
    for (const KindRow& kind : kinds()) {
      if (has_kind(command, kind)) {
        add_kind(*parent, command, kind, options);
      }
    }
    if (!is_said(name.c_str()) || begins_with_kind(command)) return;
    options.add_to(*parent, command, nullptr);
    options.add_operands_to(*parent, "file", "FILE", "A table; default, and \"-\": standard input");
    parent->callback([this, parent, command, &options] {
      if (!parent->get_subcommands().empty()) return;  // the kind's own callback was there first
      chosen_ = [command, &options] { return run_without_kind(command, options); };
    });
  }

  void add_kind(CLI::App& parent, Command command, const KindRow& kind, GivenOptions& options) {
    const std::string name = command_name(command);
    std::string verb = name;
    verb.front() = static_cast<char>(std::toupper(verb.front()));
    CLI::App* app = parent.add_subcommand(kind.name, verb + " " + kind.plural);
    if (kind.alias != nullptr) app->alias(kind.alias);
    if (!is_said(name.c_str()) || !(is_said(kind.name) || is_said(kind.alias))) return;
    options.add_to(*app, command, &kind);
    options.add_operands_to(
        *app, "values", "VALUE",
        command == format_command ? kind.values_help : "Texts as the locale writes them");
    app->footer(std::string(values_footer) + "\n\n" + table_footer + "\n\n" +
                examples(command == format_command ? kind.format_examples
                         : command == read_command ? kind.read_examples
                                                   : kind.convert_examples));
    app->callback([this, command, &kind, &options] {
      chosen_ = [command, &kind, &options] { return run_with_kind(command, kind, options); };
    });
  }

  static ExitCode run_with_kind(Command command, const KindRow& kind, const GivenOptions& options) {
    if (options.has("columns")) return run_table(command, &kind, options);
    if (command == convert_command) {
      for (const char* end : {"from", "to"}) {
        if (!options.has(end)) {
          throw Failure{ExitCode::usage, std::string("--") + end + " is required (see --help)"};
        }
      }
    }
    check_no_table(options);
    return run_values(command, kind, options);
  }

  static ExitCode run_without_kind(Command command, const GivenOptions& options) {
    if (options.has("columns")) return run_table(command, nullptr, options);
    if (!options.operands().empty()) {
      const KindRow& kind = kind_of_name(options.operands().front(), "");
      throw Failure{ExitCode::usage, std::string("a ") + kind.name + " can only be read"};
    }
    std::string names;
    for (const KindRow& kind : kinds()) {
      if (!has_kind(command, kind)) continue;
      names += (names.empty() ? "" : ", ") + std::string(kind.name);
    }
    throw Failure{ExitCode::usage, std::string(command_name(command)) + " needs one of " + names +
                                       ", or columns (-c) (see --help)"};
  }

  // Options of tables are of no use to lines.
  static void check_no_table(const GivenOptions& options) {
    for (const OptionRow& row : option_rows()) {
      if (row.group == OptionGroup::table && options.has(row.name)) {
        throw Failure{ExitCode::usage,
                      std::string("--") + row.name + " is for tables: say which columns with -c"};
      }
    }
  }

  void add_list(Command command, const char* summary, const char* lines,
                ExitCode (*list)(const ListOptions&)) {
    CLI::App* app = app_.add_subcommand(command_name(command), summary);
    GivenOptions& options = options_.emplace_back();
    options.add_to(*app, command, nullptr);
    app->add_option("filter", operand_, "Part of a name, in any case")->transform(unshielded);
    app->footer(examples(lines));
    app->callback([this, list, &options] {
      chosen_ = [this, list, &options] {
        return list({operand_, options.has("names"), options.has("json")});
      };
    });
  }

  void add_show() {
    CLI::App* app =
        app_.add_subcommand("show", "Show what a locale writes and reads, its names and symbols");
    GivenOptions& options = options_.emplace_back();
    options.add_to(*app, show_command, nullptr);
    app->add_option("locale", operand_, "The locale; default: LC_ALL, LC_TIME or LANG")
        ->transform(unshielded);
    app->footer(examples("  jwnls show de_DE\n  jwnls show ar_EG -z Africa/Cairo | less"));
    app->callback([this, app, &options] {
      chosen_ = [this, app, &options] {
        const bool is_empty = operand_.empty() && app->count("locale") > 0;
        if (is_empty) throw Failure{ExitCode::usage, "the locale's name is empty (see --help)"};
        return run_show(
            {operand_, options.value("zone").value_or(""), options.value("html").value_or("")});
      };
    });
  }

  void add_detect() {
    CLI::App* app = app_.add_subcommand(
        "detect", "Tell which kind a column, or each of a table's, is, and which locales read it");
    GivenOptions& options = options_.emplace_back();
    options.add_to(*app, detect_command, nullptr);
    options.add_operands_to(*app, "file", "FILE",
                            "A table, or a value a line; default, and \"-\": standard input");
    app->footer(
        "A FILE is a table when its name ends with .csv, .tsv or .psv, or its first line holds a\n"
        "semicolon, a tab or a vertical bar; anything is with an option of tables.\n\n" +
        examples("  jwnls detect table.csv\n  jwnls detect -l de_DE,en_US column.txt\n"
                 "  jwnls detect -F ';' < table.csv"));
    app->callback([this, &options] { chosen_ = [&options] { return run_detect(options); }; });
  }

  std::vector<std::string> words_;
  CLI::App app_;
  std::list<GivenOptions> options_;  // of each command; the parser keeps references
  std::string operand_;
  Run chosen_;
};

// What an option that is not known may be meant to be.
std::string option_hint(const std::string& message) {
  const std::size_t begin = message.rfind(" --");
  if (begin == std::string::npos) return {};
  const std::string word =
      message.substr(begin + 1, message.find_first_of(" =", begin + 1) - begin - 1);
  std::vector<std::string> names = {"--help", "--version"};
  for (const OptionRow& row : option_rows()) names.push_back(std::string("--") + row.name);
  const bool is_known = std::find(names.begin(), names.end(), word) != names.end();
  return is_known ? "; not with this command or kind" : did_you_mean(word, names);
}

// Help and version go to standard output, which may fail like any other output.
ExitCode end_of_parsing(CLI::App& app, const CLI::ParseError& error) {
  std::ostringstream out;
  std::ostringstream problem;
  const bool usage = app.exit(error, out, problem) != 0;
  if (usage) {
    const std::string message = without_shields(error.what());
    const bool is_unknown = dynamic_cast<const CLI::ExtrasError*>(&error) != nullptr;
    report(message + (is_unknown ? option_hint(message) : std::string()) + " (see --help)");
    return ExitCode::usage;
  }
  Output output;
  output.write(out.str());
  output.flush();
  return ExitCode::ok;
}

}  // namespace

ExitCode run(int argument_count, const char* const* arguments) {
  try {
    CommandLine command_line({arguments + 1, arguments + argument_count});
    try {
      return command_line.run();
    } catch (const CLI::ParseError& error) {
      return end_of_parsing(command_line.app(), error);
    }
  } catch (const Failure& failure) {
    if (!failure.message.empty()) report(failure.message);
    return failure.code;
  } catch (const std::exception& error) {
    report(error.what());
    return ExitCode::unavailable;
  }
}

}  // namespace jwnls::tool
