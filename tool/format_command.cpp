#include "tool/format_command.h"

#include <unistd.h>

#include "tool/line_source.h"
#include "tool/output.h"
#include "tool/session.h"

namespace jwnls::tool {
namespace {

std::string_view trimmed(std::string_view text) {
  constexpr std::string_view blanks = " \t";
  const std::size_t begin = text.find_first_not_of(blanks);
  if (begin == std::string_view::npos) return {};
  return text.substr(begin, text.find_last_not_of(blanks) - begin + 1);
}

// Formats values one by one; what cannot be formatted is reported with its place.
class ValueWriter {
 public:
  ValueWriter(const FormatKind& kind, const FormatOptions& options, const client::Locale& locale,
              Output& output)
      : kind_(kind), options_(options), locale_(locale), output_(output) {}

  void write(std::string_view value, const std::string& place) {
    value = trimmed(value);
    const auto text = kind_.format(locale_, options_, value);
    if (!text) return refuse(place + client::in_quotes(value) + ": " + text.error().message);
    output_.line(text->text);
    if (text->note != nullptr) say(place + client::in_quotes(value) + ": note: " + text->note);
  }

  void refuse(const std::string& message) {
    say(message);
    outcome_ = ExitCode::bad_values;
  }

  [[nodiscard]] ExitCode outcome() const { return outcome_; }

 private:
  void say(const std::string& message) {
    if (output_.is_terminal()) output_.flush();  // keeps both streams in step before one reader
    report(message);
  }

  const FormatKind& kind_;
  const FormatOptions& options_;
  const client::Locale& locale_;
  Output& output_;
  ExitCode outcome_ = ExitCode::ok;
};

}  // namespace

ExitCode run_format(const FormatKind& kind, const FormatOptions& options) {
  if (kind.check != nullptr) {
    const auto usable = kind.check(options);
    if (!usable) throw Failure{ExitCode::usage, usable.error().message + " (see --help)"};
  }
  const client::Host host = open_host();
  const client::Locale locale =
      open_locale(host, options.locale, kind.locale_category, options.zone);
  Output output;
  ValueWriter writer(kind, options, locale, output);
  for (const std::string& value : options.values) writer.write(value, "");
  if (options.values.empty()) {
    LineSource lines(STDIN_FILENO, [&output] { output.flush(); });
    std::string_view line;
    while (lines.next(line)) {
      const std::string place = "line " + std::to_string(lines.number()) + ": ";
      if (lines.too_long()) {
        writer.refuse(place + client::in_quotes(line) + ": the line is longer than " +
                      std::to_string(LineSource::longest_line) + " bytes");
      } else {
        writer.write(line, place);
      }
    }
  }
  output.flush();
  return writer.outcome();
}

}  // namespace jwnls::tool
