#include "tool/command_line.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <functional>
#include <list>
#include <sstream>
#include <string>
#include <vector>

#include "tool/format_command.h"
#include "tool/list_commands.h"
#include "tool/output.h"
#include "tool/read_command.h"
#include "tool/shielded_values.h"
#include "tool/show_command.h"

namespace jwnls::tool {
namespace {

constexpr const char* program_description =
    "Writes and reads dates, times and numbers the way a locale does.";

constexpr const char* program_footer =
    "Examples:\n"
    "  jwnls format date -l de_DE -s long 2024-03-15\n"
    "  jwnls format datetime -l en_US -z America/New_York now\n"
    "  jwnls format number -l fr_FR -d 2 1234567.891\n"
    "  jwnls read date -l fr_FR '15 mars 2024'\n"
    "  jwnls convert time --from en_US --to de_DE '2:30 PM'\n"
    "  jwnls show ja_JP\n"
    "  jwnls locales arab\n"
    "\n"
    "Locales are named as people write them: de_DE, de-DE, de_DE.UTF-8, german. Without one, the\n"
    "first of LC_ALL, LC_TIME and LANG that is set counts, else C, which is en_US_POSIX; for\n"
    "numbers LC_NUMERIC and for currency LC_MONETARY in place of LC_TIME.\n"
    "\n"
    "Exit codes: 0 done, 1 bad values (the others are done), 2 wrong command line, 3 unknown "
    "locale\n"
    "or time zone or a module that cannot be loaded, 4 input or output failed.";

using Command = std::function<ExitCode()>;

constexpr const char* values_footer = "Without values, lines of standard input are read.\n";

// The options of the chosen subcommand end up in its request, and `chosen` runs it.
class CommandLine {
 public:
  CommandLine() : app_(program_description, "jwnls") {
    app_.require_subcommand(0, 1);  // one is required, but a wrong word is to be named first
    app_.set_version_flag("--version", "jwnls " JWNLS_VERSION);
    app_.footer(program_footer);
    app_.failure_message(CLI::FailureMessage::simple);
    add_format();
    add_read();
    add_convert();
    add_list("locales", "List the locales: name, English name, own name",
             "  jwnls locales\n  jwnls locales swiss\n  jwnls locales --names zh", run_locales);
    add_list("zones", "List the time zones: name, what it is called now, offset from UTC now",
             "  jwnls zones\n  jwnls zones america/arg\n  jwnls zones --names | fzf", run_zones);
    add_show();
  }

  // Throws CLI::ParseError, for help as well.
  ExitCode run(int argument_count, const char* const* arguments) {
    auto words = with_shielded_values({arguments + 1, arguments + argument_count});
    std::reverse(words.begin(), words.end());  // as the parser takes them
    app_.parse(std::move(words));
    if (!chosen_) throw Failure{ExitCode::usage, missing_command()};
    return chosen_();
  }

  CLI::App& app() { return app_; }

 private:
  static std::string examples(const std::string& lines) { return "Examples:\n" + lines; }

  [[nodiscard]] std::string missing_command() const {
    const bool has_parent = !app_.get_subcommands().empty();
    const CLI::App* parent = has_parent ? app_.get_subcommands().front() : &app_;
    std::string names;
    for (const CLI::App* command : parent->get_subcommands({})) {
      names.append(names.empty() ? "" : ", ").append(command->get_name());
    }
    return parent->get_name() + " needs one of " + names + " (see --help)";
  }

  static std::string locale_help(const char* category) {
    return std::string("The locale; default: LC_ALL, ") + category + " or LANG";
  }

  CLI::App* add_parent(const char* name, const char* summary) {
    CLI::App* parent = app_.add_subcommand(name, summary);
    parent->require_subcommand(0, 1);
    parent->footer(std::string("Values are arguments or, without any, lines of standard input.\n") +
                   "\"jwnls " + name + " KIND --help\" tells what a kind takes.");
    return parent;
  }

  static void add_values(CLI::App& command, std::vector<std::string>& values, const char* help,
                         const char* note, const char* lines) {
    command.add_option("values", values, help)->type_name("VALUE")->transform(unshielded);
    command.footer(std::string(values_footer) + note + "\n\n" + examples(lines));
  }

  void add_format() {
    CLI::App* format = add_parent("format", "Write values the way a locale does");
    for (const auto kinds : {date_kinds(), number_kinds()}) {
      for (const FormatKind& kind : kinds) add_format_kind(*format, kind);
    }
  }

  void add_format_kind(CLI::App& format, const FormatKind& kind) {
    CLI::App* command = format.add_subcommand(kind.name, kind.summary);
    FormatOptions& options = format_options_.emplace_back();
    command->add_option("-l,--locale", options.locale, locale_help(kind.locale_category))
        ->type_name("NAME");
    kind.add_value_options(*command, options);
    if (kind.add_options != nullptr) kind.add_options(*command, options);
    add_values(*command, options.values, kind.values_help, kind.values_note, kind.examples);
    command->callback([this, &kind, &options] {
      chosen_ = [&kind, &options] { return run_format(kind, options); };
    });
  }

  void add_read() {
    CLI::App* read = add_parent("read", "Read values the way a locale writes them");
    for (const auto kinds : {date_read_kinds(), number_read_kinds()}) {
      for (const ReadKind& kind : kinds) add_read_kind(*read, kind);
    }
  }

  void add_read_kind(CLI::App& read, const ReadKind& kind) {
    CLI::App* command = read.add_subcommand(kind.name, kind.summary);
    ReadOptions& options = read_options_.emplace_back();
    const char* category = written_kind(kind).locale_category;
    command->add_option("-l,--locale", options.locale, locale_help(category))->type_name("NAME");
    kind.add_options(*command, options);
    CLI::Option* raw = nullptr;
    if (kind.raw_help != nullptr) raw = command->add_flag("-r,--raw", options.raw, kind.raw_help);
    CLI::Option* target =
        command->add_option("--as", options.target, "Write the value the way another locale does");
    if (raw != nullptr) {  // said once in the help
      target->excludes(raw);
      raw->option_text(" ");
    }
    target->type_name("NAME");
    add_written_options(*command, kind, options, target);
    add_read_values(*command, kind, options, kind.examples);
  }

  void add_convert() {
    CLI::App* convert = add_parent("convert", "Read values in one locale, write them in another");
    for (const auto kinds : {date_read_kinds(), number_read_kinds()}) {
      for (const ReadKind& kind : kinds) {
        if (kind.convert_examples != nullptr) add_convert_kind(*convert, kind);
      }
    }
  }

  void add_convert_kind(CLI::App& convert, const ReadKind& kind) {
    CLI::App* command = convert.add_subcommand(
        kind.name, std::string("Convert ") + kind.name + "s from one locale's text to another's");
    ReadOptions& options = read_options_.emplace_back();
    const auto add_locale = [command](const char* name, std::string& locale, const char* help) {
      command->add_option(name, locale, help)->type_name("NAME")->required();
    };
    add_locale("-f,--from", options.locale, "The locale of the values");
    add_locale("-t,--to", options.target, "The locale to write in");
    kind.add_options(*command, options);
    add_written_options(*command, kind, options, nullptr);
    add_read_values(*command, kind, options, kind.convert_examples);
  }

  // The options of `format`, which need `target` where it is not required anyway.
  static void add_written_options(CLI::App& command, const ReadKind& kind, ReadOptions& options,
                                  CLI::Option* target) {
    const FormatKind& written = written_kind(kind);
    if (written.add_options == nullptr) return;
    const auto before = command.get_options().size();
    written.add_options(command, options.format);
    if (target == nullptr) return;
    const auto all = command.get_options([](const CLI::Option*) { return true; });
    for (auto at = before; at < all.size(); ++at) {
      CLI::Option* option = all[at];
      option->needs(target)->group("With --as");
      option->option_text(option->get_type_name().empty() ? " " : option->get_type_name());
    }
  }

  void add_read_values(CLI::App& command, const ReadKind& kind, ReadOptions& options,
                       const char* lines) {
    add_values(command, options.values, kind.values_help, kind.values_note, lines);
    command.callback([this, &kind, &options] {
      chosen_ = [&kind, &options] { return run_read(kind, options); };
    });
  }

  void add_list(const char* name, const char* summary, const char* lines,
                ExitCode (*list)(const ListOptions&)) {
    CLI::App* command = app_.add_subcommand(name, summary);
    ListOptions& options = list_options_.emplace_back();
    command->add_option("filter", options.filter, "Part of a name, in any case")
        ->transform(unshielded);
    command->add_flag("-n,--names", options.names_only, "Names only, for scripts");
    command->footer(examples(lines));
    command->callback(
        [this, list, &options] { chosen_ = [list, &options] { return list(options); }; });
  }

  void add_show() {
    CLI::App* command = app_.add_subcommand("show", "Show a locale's names, patterns and symbols");
    command->add_option("locale", show_options_.locale, locale_help("LC_TIME"))
        ->transform(unshielded);
    add_zone_option(*command, show_options_.zone);
    command->footer(examples("  jwnls show de_DE\n  jwnls show ar_EG -z Africa/Cairo | less"));
    command->callback([this] { chosen_ = [this] { return run_show(show_options_); }; });
  }

  CLI::App app_;
  std::list<FormatOptions> format_options_;  // one for each kind; CLI::App keeps references
  std::list<ReadOptions> read_options_;
  std::list<ListOptions> list_options_;
  ShowOptions show_options_;
  Command chosen_;
};

// Help and version go to standard output, which may fail like any other output.
ExitCode end_of_parsing(CLI::App& app, const CLI::ParseError& error) {
  std::ostringstream out;
  std::ostringstream problem;
  const bool usage = app.exit(error, out, problem) != 0;
  if (usage) {
    report(without_shields(error.what()) + " (see --help)");
    return ExitCode::usage;
  }
  Output output;
  output.write(out.str());
  output.flush();
  return ExitCode::ok;
}

}  // namespace

void add_zone_option(CLI::App& command, std::string& zone) {
  command.add_option("-z,--time-zone", zone, "The time zone; default: the system's")
      ->type_name("ZONE");
}

ExitCode run(int argument_count, const char* const* arguments) {
  try {
    CommandLine command_line;
    try {
      return command_line.run(argument_count, arguments);
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
