#include "tool/commands/command_line.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cctype>
#include <functional>
#include <list>
#include <sstream>
#include <string>
#include <vector>

#include "tool/commands/command_rows.h"
#include "tool/commands/completion_command.h"
#include "tool/commands/detect_command.h"
#include "tool/commands/list_commands.h"
#include "tool/commands/short_help.h"
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

using Run = std::function<ExitCode()>;

constexpr const char* values_footer =
    "Without values, lines of standard input are read. A blank value is a missing one, and stays.";

// Thrown as soon as -h is there.
struct ShortHelp {
  std::string text;
};

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
    app_.footer(std::string("Examples:\n") + program_examples + "\n\n" + program_locales + "\n\n" +
                program_exit_codes);
    app_.set_help_flag("--help", "All there is");
    add_short_help(app_, [] { return short_help(); });
    app_.failure_message(CLI::FailureMessage::simple);
    for (const CommandRow& row : command_rows()) add_command(row);
  }

  // Throws CLI::ParseError, for help as well.
  ExitCode run() {
    if (!words_.empty() && words_.front() == "help") words_ = asked_for_help();
    check_command();
    auto words = with_shielded_values(words_);
    std::reverse(words.begin(), words.end());  // as the parser takes them
    app_.parse(std::move(words));
    if (!chosen_)
      throw Failure{ExitCode::usage, "jwnls needs one of " + commands() + " (see --help)"};
    for (const GivenOptions& options : options_) {
      if (const auto when = options.value("color")) colour_messages(*when);
    }
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

  // "help read date" is "read date --help".
  [[nodiscard]] std::vector<std::string> asked_for_help() const {
    std::vector<std::string> words(words_.begin() + 1, words_.end());
    std::erase_if(words, [](const std::string& word) { return word == "--help" || word == "-h"; });
    const CommandRow* const row = words.empty() ? nullptr : find_command(words.front());
    const std::size_t most = row != nullptr && (row->command & value_commands) != 0 ? 2 : 1;
    if (words.size() > most) {
      throw Failure{ExitCode::usage,
                    "help: " + in_quotes(words[most]) + " is too much (see --help)"};
    }
    if (row != nullptr && words.size() == 2 && find_kind(row->command, words[1]) == nullptr) {
      throw Failure{ExitCode::usage, std::string("a ") + kind_of_name(words[1], "").name +
                                         " can only be read (see --help)"};
    }
    words.emplace_back("--help");
    return words;
  }

  static void add_short_help(CLI::App& app, std::function<std::string()> text) {
    const auto show = [text = std::move(text)] { throw ShortHelp{text()}; };
    app.add_flag_callback("-h", show, "What most need, on a screen")->trigger_on_parse();
  }

  void add_command(const CommandRow& row) {
    CLI::App* app = app_.add_subcommand(row.name, row.summary);
    add_short_help(*app, [&row] { return short_help(row, nullptr); });
    app->footer(examples(row.examples));
    switch (row.command) {
      case format_command:
      case read_command:
      case convert_command:
        return add_values(*app, row);
      case detect_command:
        return add_detect(*app);
      case show_command:
        return add_show(*app);
      case locales_command:
        return add_list(*app, locales_command, run_locales);
      case zones_command:
        return add_list(*app, zones_command, run_zones);
      default:
        return add_other(*app);
    }
  }

  // A command with a subcommand for each kind, and itself for tables.
  void add_values(CLI::App& parent, const CommandRow& row) {
    const auto command = static_cast<Command>(row.command);
    GivenOptions& options = options_.emplace_back();
    parent.require_subcommand(0, 1);
    parent.footer(std::string("Values are arguments or, without any, lines of standard input.\n") +
                  "\"jwnls " + row.name + " KIND --help\" tells what a kind takes.\n\n" +
                  columns_text + "\n\n" + examples(row.examples));
    for (const KindRow& kind : kinds()) {
      if (has_kind(command, kind)) add_kind(parent, row, kind, options);
    }
    const bool begins_with_kind = words_.size() > 1 && find_kind(command, words_[1]) != nullptr;
    if (!is_said(row.name) || begins_with_kind) return;
    options.add_to(parent, command, nullptr);
    options.add_operands_to(parent, "file", "FILE", "A table; default, and \"-\": standard input");
    parent.callback([this, &parent, command, &options] {
      if (!parent.get_subcommands().empty()) return;  // the kind's own callback was there first
      chosen_ = [command, &options] { return run_without_kind(command, options); };
    });
  }

  void add_kind(CLI::App& parent, const CommandRow& row, const KindRow& kind,
                GivenOptions& options) {
    const auto command = static_cast<Command>(row.command);
    std::string verb = row.name;
    verb.front() = static_cast<char>(std::toupper(verb.front()));
    CLI::App* app = parent.add_subcommand(kind.name, verb + " " + kind.plural);
    if (kind.alias != nullptr) app->alias(kind.alias);
    if (!is_said(row.name) || !(is_said(kind.name) || is_said(kind.alias))) return;
    add_short_help(*app, [&row, &kind] { return short_help(row, &kind); });
    options.add_to(*app, command, &kind);
    options.add_operands_to(
        *app, "values", "VALUE",
        command == format_command ? kind.values_help : "Texts as the locale writes them");
    app->footer(std::string(values_footer) + "\n\n" + columns_text + "\n\n" +
                examples(examples_of(command, kind)));
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
    const auto row = std::ranges::find(command_rows(), command, &CommandRow::command);
    throw Failure{ExitCode::usage, std::string(row->name) + " needs one of " + names +
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

  void add_list(CLI::App& app, Command command, ExitCode (*list)(const ListOptions&)) {
    GivenOptions& options = options_.emplace_back();
    options.add_to(app, command, nullptr);
    app.add_option("filter", operand_, "Part of a name, in any case")->transform(unshielded);
    app.callback([this, list, &options] {
      chosen_ = [this, list, &options] {
        return list({operand_, options.has("names"), options.has("json")});
      };
    });
  }

  void add_show(CLI::App& app) {
    GivenOptions& options = options_.emplace_back();
    options.add_to(app, show_command, nullptr);
    app.add_option("locale", operand_, "The locale; default: LC_ALL, LC_TIME or LANG")
        ->transform(unshielded);
    app.callback([this, &app, &options] {
      chosen_ = [this, &app, &options] {
        const bool is_empty = operand_.empty() && app.count("locale") > 0;
        if (is_empty) throw Failure{ExitCode::usage, "the locale's name is empty (see --help)"};
        return run_show({operand_, options.value("zone").value_or(""),
                         options.value("html").value_or(""), options.has("json")});
      };
    });
  }

  void add_detect(CLI::App& app) {
    GivenOptions& options = options_.emplace_back();
    options.add_to(app, detect_command, nullptr);
    options.add_operands_to(app, "file", "FILE",
                            "A table, or a value a line; default, and \"-\": standard input");
    app.footer(
        "A FILE is a table when its name ends with .csv, .tsv or .psv, or its first line holds a\n"
        "semicolon, a tab or a vertical bar; anything is with an option of tables.\n\n" +
        app.get_footer());
    app.callback([this, &options] { chosen_ = [&options] { return run_detect(options); }; });
  }

  // What takes a word or two and no options.
  void add_other(CLI::App& app) {
    if (app.get_name() == "help") {
      app.add_option("command", operand_, "The command, and its kind")->type_name("COMMAND [KIND]");
      return;
    }
    app.add_option("shell", operand_, "bash, zsh or fish")->type_name("SHELL")->required();
    app.callback([this] { chosen_ = [this] { return write_completions(operand_); }; });
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

// Standard output may fail.
ExitCode write_text(const std::string& text) {
  Output output;
  output.write(text);
  output.flush();
  return ExitCode::ok;
}

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
  return write_text(out.str());
}

}  // namespace

ExitCode run(int argument_count, const char* const* arguments) {
  try {
    const std::vector<std::string> words(arguments + 1, arguments + argument_count);
    if (const auto code = run_hidden(words)) return *code;
    CommandLine command_line(words);
    try {
      return command_line.run();
    } catch (const CLI::ParseError& error) {
      return end_of_parsing(command_line.app(), error);
    } catch (const ShortHelp& help) {
      return write_text(help.text);
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
