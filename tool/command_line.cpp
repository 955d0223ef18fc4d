#include "tool/command_line.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cctype>
#include <functional>
#include <list>
#include <sstream>
#include <string>
#include <vector>

#include "tool/detect_command.h"
#include "tool/kinds.h"
#include "tool/list_commands.h"
#include "tool/output.h"
#include "tool/shielded_values.h"
#include "tool/show_command.h"
#include "tool/value_commands.h"

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
    "  jwnls detect -l de_DE,en_US,fr_FR column.txt\n"
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

using Command = std::function<ExitCode()>;

constexpr const char* texts_help = "Texts as the locale writes them";
constexpr const char* values_footer =
    "Without values, lines of standard input are read. A blank value is a missing one, and stays.";

std::string version_text() {
  char zones[64];
  std::size_t length = 0;
  const bool known = jwnls_zones_version(zones, sizeof zones, &length) == JWNLS_OK && length > 0;
  return std::string("jwnls ") + jwnls_version() + " (interface " + jwnls_interface_version() +
         ", " + jwnls_data_version() + ", time zones " +
         (known ? std::string(zones, length) : "of an unknown release") + ")";
}

// The options of the chosen subcommand end up in its request, and `chosen` runs it.
class CommandLine {
 public:
  CommandLine() : app_(program_description, "jwnls") {
    app_.require_subcommand(0, 1);  // one is required, but a wrong word is to be named first
    app_.set_version_flag("--version", version_text,
                          "The versions of program, module interface, locale and zone data");
    app_.footer(program_footer);
    app_.failure_message(CLI::FailureMessage::simple);
    add_values_command("format", "Write values the way a locale does", &CommandLine::add_format);
    add_values_command("read", "Read values the way a locale writes them", &CommandLine::add_read);
    add_values_command("convert", "Read values in one locale, write them in another",
                       &CommandLine::add_convert);
    add_detect();
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

  using AddKind = void (CommandLine::*)(CLI::App& command, const KindRow& kind,
                                        ValueOptions& options);

  // A command with a subcommand for each kind; `add_kind` adds what is its own.
  void add_values_command(const char* name, const char* summary, AddKind add_kind) {
    CLI::App* parent = app_.add_subcommand(name, summary);
    parent->require_subcommand(0, 1);
    parent->footer(std::string("Values are arguments or, without any, lines of standard input.\n") +
                   "\"jwnls " + name + " KIND --help\" tells what a kind takes.");
    for (const KindRow& kind : kinds()) {
      const bool is_read = parent->get_name() == "read";
      if (!is_read && kind.format_examples == nullptr) continue;
      CLI::App* command = parent->add_subcommand(
          kind.name, std::string(1, static_cast<char>(std::toupper(name[0]))) + (name + 1) + " " +
                         kind.plural);
      if (kind.alias != nullptr) command->alias(kind.alias);
      (this->*add_kind)(*command, kind, value_options_.emplace_back());
    }
  }

  void add_format(CLI::App& command, const KindRow& kind, ValueOptions& options) {
    add_locale(command, kind, options);
    if (std::string_view(kind.locale_category) == "LC_TIME") add_zone_option(command, options.zone);
    options.words.add_options(command, kind.kind, Side::writing);
    add_lines(command, options, kind.values_help, kind.format_examples);
    run_with(command, kind, options, run_format);
  }

  void add_read(CLI::App& command, const KindRow& kind, ValueOptions& options) {
    add_locale(command, kind, options);
    options.words.add_options(command, kind.kind, Side::reading);
    add_lines(command, options, texts_help, kind.read_examples);
    run_with(command, kind, options, run_read);
  }

  void add_convert(CLI::App& command, const KindRow& kind, ValueOptions& options) {
    const auto add_end = [&command](const char* name, std::string& locale, const char* help) {
      command.add_option(name, locale, help)->type_name("NAME")->required();
    };
    add_end("-f,--from", options.locale, "The locale of the values");
    add_end("-t,--to", options.target, "The locale to write in");
    options.words.add_options(command, kind.kind, Side::both);
    add_lines(command, options, texts_help, kind.convert_examples);
    run_with(command, kind, options, run_convert);
  }

  static void add_locale(CLI::App& command, const KindRow& kind, ValueOptions& options) {
    command.add_option("-l,--locale", options.locale, locale_help(kind.locale_category))
        ->type_name("NAME");
  }

  static void add_lines(CLI::App& command, ValueOptions& options, const char* help,
                        const char* lines) {
    ValueLines& value_lines = options.lines;
    command
        .add_option("-w,--width", value_lines.width,
                    "The least width, in cells of a terminal; blanks stand in front")
        ->type_name("CELLS")
        ->check(CLI::Validator(CLI::Range(0, 1000)).description(""));
    command.add_flag("--left", value_lines.left, "Blanks stand behind");
    command.add_option("values", value_lines.values, help)
        ->type_name("VALUE")
        ->transform(unshielded);
    command.footer(std::string(values_footer) + "\n\n" + examples(lines));
  }

  void run_with(CLI::App& command, const KindRow& kind, const ValueOptions& options,
                ExitCode (*run)(const KindRow&, const ValueOptions&)) {
    command.callback([this, &kind, &options, run] {
      chosen_ = [&kind, &options, run] { return run(kind, options); };
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

  static void add_zone_option(CLI::App& command, std::string& zone) {
    command.add_option("-z,--zone", zone, "The time zone of instants; default: the system's")
        ->type_name("ZONE");
  }

  void add_show() {
    CLI::App* command =
        app_.add_subcommand("show", "Show what a locale writes and reads, its names and symbols");
    command->add_option("locale", show_options_.locale, locale_help("LC_TIME"))
        ->transform(unshielded);
    add_zone_option(*command, show_options_.zone);
    command->footer(examples("  jwnls show de_DE\n  jwnls show ar_EG -z Africa/Cairo | less"));
    command->callback([this] { chosen_ = [this] { return run_show(show_options_); }; });
  }

  void add_detect() {
    CLI::App* command =
        app_.add_subcommand("detect", "Tell which kind a column is, and which locales read it");
    command
        ->add_option("-l,--locales", detect_options_.locales,
                     "Ask these alone, separated by commas, in this order; \"*\": all others")
        ->type_name("NAMES");
    command->add_flag("-a,--all", detect_options_.all, "Name all locales, not the first ones");
    command
        ->add_option("file", detect_options_.file,
                     "A value a line; default, and \"-\": standard input")
        ->type_name("FILE")
        ->transform(unshielded);
    command->footer(
        examples("  jwnls detect column.txt\n  cut -f 3 table.tsv | jwnls detect\n"
                 "  jwnls detect -l de_DE,en_US column.txt"));
    command->callback([this] { chosen_ = [this] { return run_detect(detect_options_); }; });
  }

  CLI::App app_;
  std::list<ValueOptions> value_options_;  // one for each kind; CLI::App keeps references
  std::list<ListOptions> list_options_;
  ShowOptions show_options_;
  DetectOptions detect_options_;
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
