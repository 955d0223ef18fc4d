#include "tool/value_lines.h"

#include <unistd.h>

#include <cstdint>

#include "tool/line_source.h"
#include "tool/output.h"
#include "tool/terminal_text.h"

namespace jwnls::tool {

std::string_view trimmed(std::string_view text) {
  constexpr std::string_view blanks = " \t";
  const std::size_t begin = text.find_first_not_of(blanks);
  if (begin == std::string_view::npos) return {};
  return text.substr(begin, text.find_last_not_of(blanks) - begin + 1);
}

namespace {

class ValueWriter {
 public:
  ValueWriter(const ValueLines& lines, const WorkOnValue& work, Output& output)
      : lines_(lines), work_(work), output_(output) {}

  void write(std::string_view value, const std::string& place) {
    value = trimmed(value);
    const auto text = work_(value);
    if (!text) return refuse(place + text.message());
    output_.line(lines_.width == 0 ? text->text : padded(text->text, lines_.width, lines_.left));
    deciding_ += text->decides ? 1 : 0;
    if (text->two_ways && two_ways_++ == 0) first_two_ways_ = place + in_quotes(value);
  }

  void refuse(const std::string& message) {
    say(message);
    outcome_ = ExitCode::bad_values;
  }

  ExitCode finish(Undecided asked) {
    const bool undecided = asked != Undecided::ignored && two_ways_ > 0 && deciding_ == 0;
    const bool refused = undecided && asked == Undecided::refused;
    if (undecided) {
      say((refused ? "not proved: " : "note: ") + std::to_string(two_ways_) +
          (two_ways_ == 1 ? " value" : " values") +
          " could be meant otherwise and none decides; the first is " + first_two_ways_);
    }
    output_.flush();
    return refused ? ExitCode::undecided : outcome_;
  }

 private:
  void say(const std::string& message) {
    if (output_.is_terminal()) output_.flush();  // keeps both streams in step before one reader
    report(message);
  }

  const ValueLines& lines_;
  const WorkOnValue& work_;
  Output& output_;
  ExitCode outcome_ = ExitCode::ok;
  std::uint64_t two_ways_ = 0;
  std::uint64_t deciding_ = 0;
  std::string first_two_ways_;
};

}  // namespace

ExitCode write_values(const ValueLines& lines, Undecided undecided, const WorkOnValue& work) {
  Output output;
  ValueWriter writer(lines, work, output);
  for (const std::string& value : lines.values) writer.write(value, "");
  if (lines.values.empty()) {
    LineSource source(STDIN_FILENO, [&output] { output.flush(); });
    std::string_view line;
    while (source.next(line)) {
      const std::string place = "line " + std::to_string(source.number()) + ": ";
      if (source.too_long()) {
        writer.refuse(place + in_quotes(line) + ": the line is longer than " +
                      std::to_string(LineSource::longest_line) + " bytes");
      } else {
        writer.write(line, place);
      }
    }
  }
  return writer.finish(undecided);
}

}  // namespace jwnls::tool
