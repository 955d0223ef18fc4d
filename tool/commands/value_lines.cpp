#include "tool/commands/value_lines.h"

#include <unistd.h>

#include <cstdint>

#include "tool/line_source.h"
#include "tool/output.h"
#include "tool/tables/two_ways.h"
#include "tool/terminal_text.h"
#include "tool/trimmed_text.h"

namespace jwnls::tool {

namespace {

class ValueWriter {
 public:
  ValueWriter(const ValueLines& lines, const LayoutValues& values, Output& output)
      : lines_(lines),
        values_(values),
        invalid_(lines.invalid.value_or(lines.values.empty() ? Invalid::keep : Invalid::drop)),
        output_(output) {}

  // False when this was the last one.
  bool write(std::string_view line, const std::string& place) {
    const std::string_view text = trimmed(line);
    char out[ColumnValues::room];
    const FieldValue value = values_.convert(text, out);
    if (value.outcome == FieldOutcome::refused) {
      const bool goes_on = refuse(lines_.quiet ? "" : place + values_.message(text));
      return invalid_ == Invalid::keep ? put(line) : goes_on;
    }
    if (value.outcome == FieldOutcome::missing) return put(lines_.null_out.value_or(""));
    deciding_ += (value.facts & JWNLS_DECIDES) != 0 ? 1 : 0;
    if ((value.facts & JWNLS_TWO_WAYS) != 0 && two_ways_++ == 0) {
      first_two_ways_ = text;
      first_place_ = place;
    }
    if (!lines_.tells_currency || value.currency[0] == '\0') return put({out, value.length});
    return put(std::string(out, value.length) + " " + value.currency);
  }

  // A line of which only the begin is here. Its own text may be longer than memory.
  bool write_long(std::string_view begin, const std::string& place, LineSource& source) {
    const bool goes_on = refuse(place + in_quotes(begin) + ": longer than " +
                                std::to_string(LineSource::longest_line) + " bytes");
    if (invalid_ != Invalid::keep) return goes_on;
    output_.write(begin);
    for (std::string_view piece; source.more(piece);) output_.write(piece);
    output_.write("\n");
    return goes_on;
  }

  ExitCode finish(Undecided asked) {
    const bool undecided = asked != Undecided::ignored && two_ways_ > 0 && deciding_ == 0;
    const bool refused = undecided && asked == Undecided::refused;
    if (undecided && !lines_.quiet) {
      say((refused ? "not proved: " : "note: ") +
          undecided_values(two_ways_, first_place_ + in_quotes(first_two_ways_),
                           values_.meanings(first_two_ways_)));
    }
    output_.flush();
    return refused ? ExitCode::undecided : outcome_;
  }

 private:
  // False when nothing is to follow.
  bool refuse(const std::string& message) {
    outcome_ = ExitCode::bad_values;
    say(message);
    if (invalid_ == Invalid::empty) put(lines_.null_out.value_or(""));
    return invalid_ != Invalid::stop;
  }

  bool put(std::string_view text) {
    if (lines_.width == 0) {
      output_.line(text);
    } else {
      output_.line(padded(text, lines_.width, lines_.left));
    }
    return true;
  }

  void say(const std::string& message) {
    if (lines_.quiet) return;
    if (output_.is_beside_errors()) output_.flush();  // both streams in step before one reader
    report(message);
  }

  const ValueLines& lines_;
  const LayoutValues& values_;
  Invalid invalid_;
  Output& output_;
  ExitCode outcome_ = ExitCode::ok;
  std::uint64_t two_ways_ = 0;
  std::uint64_t deciding_ = 0;
  std::string first_two_ways_;
  std::string first_place_;
};

}  // namespace

ExitCode write_values(const ValueLines& lines, Undecided undecided, const LayoutValues& values) {
  Output output;
  ValueWriter writer(lines, values, output);
  for (const std::string& value : lines.values) {
    if (!writer.write(value, "")) return writer.finish(undecided);
  }
  if (!lines.values.empty()) return writer.finish(undecided);
  LineSource source(STDIN_FILENO, [&output] { output.flush(); });
  std::string_view line;
  bool goes_on = true;
  while (goes_on && source.next(line)) {
    const std::string place = "line " + std::to_string(source.number()) + ": ";
    if (source.too_long()) {
      goes_on = writer.write_long(line, place, source);
    } else {
      goes_on = writer.write(line, place);
    }
  }
  return writer.finish(undecided);
}

}  // namespace jwnls::tool
