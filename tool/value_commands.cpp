#include "tool/value_commands.h"

#include "tool/session.h"
#include "tool/tables/layout_values.h"

namespace jwnls::tool {
namespace {

std::string joined(const std::string& words, const std::string& word) {
  return words.empty() ? word : words + " " + word;
}

// Who says the order of a date has decided.
Undecided undecided(const LayoutWords& words) {
  if (words.gives("proved")) return Undecided::refused;
  for (const char* order : {"dmy", "mdy", "ymd"}) {
    if (words.gives("order", order)) return Undecided::ignored;
  }
  return Undecided::told;
}

}  // namespace

ExitCode run_format(const KindRow& kind, const ValueOptions& options) {
  std::string words = options.words.of(Side::both);
  const std::string locale = find_locale(options.locale, kind.locale_category);
  if (!options.zone.empty()) (void)zone_now(options.zone);  // before any value
  if (kind.kind == Kind::instant) {
    words = joined(words, "zone=" + std::string(zone_now(options.zone).name));
  }
  const auto values = format_values(open_layout(locale, kind.kind, words), options.zone, {});
  return write_values(options.lines, Undecided::ignored, *values);
}

ExitCode run_read(const KindRow& kind, const ValueOptions& options) {
  const std::string words = options.words.of(Side::both);
  const auto values = read_values(
      open_layout(find_locale(options.locale, kind.locale_category), kind.kind, words), {});
  ValueLines lines = options.lines;
  // Of several currencies the sums alone would mix them.
  lines.tells_currency = options.words.gives("currency", "any");
  return write_values(lines, undecided(options.words), *values);
}

ExitCode run_convert(const KindRow& kind, const ValueOptions& options) {
  const Layout source = open_layout(find_locale(options.locale, kind.locale_category), kind.kind,
                                    options.words.of(Side::reading));
  const Layout target = open_layout(find_locale(options.target, kind.locale_category), kind.kind,
                                    options.words.of(Side::writing));
  return write_values(options.lines, undecided(options.words), *convert_values(source, target, {}));
}

}  // namespace jwnls::tool
