#include "tool/commands/value_commands.h"

#include "tool/commands/table_command.h"
#include "tool/commands/value_lines.h"
#include "tool/layout_words.h"
#include "tool/session.h"
#include "tool/tables/layout_values.h"
#include "tool/tables/open_columns.h"
#include "tool/terminal_text.h"

namespace jwnls::tool {
namespace {

Undecided undecided(Command command, const std::vector<std::string>& words) {
  if (command == format_command) return Undecided::ignored;
  if (gives(words, "proved")) return Undecided::refused;
  return give_order(words) ? Undecided::ignored : Undecided::told;
}

// The one locale that lines have; several are for columns, whose values decide.
std::string one_locale(const GivenOptions& options, const char* option, const KindRow& kind) {
  const std::string name = options.value(option).value_or("");
  if (name.find(',') != std::string::npos) {
    throw Failure{ExitCode::usage, "--" + std::string(option) + ": " + in_quotes(name) +
                                       ": lines have one locale; columns (-c) may have several"};
  }
  return find_locale(name, kind.locale_category);
}

LayoutValuesPointer values_of(Command command, const KindRow& kind, const GivenOptions& options,
                              const std::vector<std::string>& words) {
  const MissingWords missing(options.values("null"));
  if (command == convert_command) {
    const Layout source =
        open_layout(one_locale(options, "from", kind), kind.kind, words_of(words, Side::reading));
    const Layout target =
        open_layout(one_locale(options, "to", kind), kind.kind, words_of(words, Side::writing));
    return convert_values(source, target, missing);
  }
  const std::string locale = one_locale(options, "locale", kind);
  if (command == read_command) {
    return read_values(open_layout(locale, kind.kind, words_of(words, Side::both)), missing);
  }
  return open_format_values(locale, kind, words, options.value("zone").value_or(""), missing);
}

}  // namespace

ExitCode run_values(Command command, const KindRow& kind, const GivenOptions& options) {
  const auto words = options.words(command, kind.kind);
  ValueLines lines;
  lines.values = options.operands();
  constexpr std::uint64_t widest = 1000;
  lines.width = static_cast<std::size_t>(options.number("width", 0, widest).value_or(0));
  lines.left = options.has("left");
  if (const auto invalid = options.value("invalid")) lines.invalid = invalid_of_name(*invalid);
  lines.quiet = options.has("quiet");
  lines.null_out = options.value("null-out");
  // Of several currencies the sums alone would mix them.
  lines.tells_currency = command == read_command && gives(words, "currency", "any");
  const auto values = values_of(command, kind, options, words);
  return write_values(lines, undecided(command, words), *values);
}

}  // namespace jwnls::tool
