#include "tool/value_lines.h"

#include <unistd.h>

#include "tool/line_source.h"
#include "tool/output.h"

namespace jwnls::tool {
namespace {

std::string_view trimmed(std::string_view text) {
  constexpr std::string_view blanks = " \t";
  const std::size_t begin = text.find_first_not_of(blanks);
  if (begin == std::string_view::npos) return {};
  return text.substr(begin, text.find_last_not_of(blanks) - begin + 1);
}

class ValueWriter {
 public:
  ValueWriter(const WorkOnValue& work, Output& output) : work_(work), output_(output) {}

  void write(std::string_view value, const std::string& place) {
    const auto text = work_(trimmed(value));
    if (!text) return refuse(place + text.error().message);
    output_.line(text->text);
    if (!text->note.empty()) say(place + text->note);
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

  const WorkOnValue& work_;
  Output& output_;
  ExitCode outcome_ = ExitCode::ok;
};

}  // namespace

ExitCode write_values(const std::vector<std::string>& values, const WorkOnValue& work) {
  Output output;
  ValueWriter writer(work, output);
  for (const std::string& value : values) writer.write(value, "");
  if (values.empty()) {
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
