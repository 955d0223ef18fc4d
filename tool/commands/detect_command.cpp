#include "tool/commands/detect_command.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <cstring>
#include <string_view>
#include <vector>

#include "tool/commands/detect_table.h"
#include "tool/commands/table_command.h"
#include "tool/detection.h"
#include "tool/line_source.h"
#include "tool/output.h"
#include "tool/terminal_text.h"
#include "tool/trimmed_text.h"

namespace jwnls::tool {
namespace {

// The file's descriptor, or that of standard input.
class Input {
 public:
  explicit Input(const std::string& path)
      : name_(path.empty() || path == "-" ? "standard input" : in_quotes(path)) {
    if (path.empty() || path == "-") return;
    descriptor_ = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (descriptor_ < 0) throw Failure{ExitCode::io, name_ + ": " + std::strerror(errno)};
  }
  Input(const Input&) = delete;
  Input& operator=(const Input&) = delete;
  ~Input() {
    if (descriptor_ != STDIN_FILENO) ::close(descriptor_);
  }

  [[nodiscard]] int descriptor() const { return descriptor_; }
  [[nodiscard]] const std::string& name() const { return name_; }

 private:
  std::string name_;
  int descriptor_ = STDIN_FILENO;
};

// The values of all lines; text i is that of line i + 1.
class Column {
 public:
  explicit Column(const Input& input) {
    LineSource source(
        input.descriptor(), [] {}, input.name());
    std::string_view line;
    while (source.next(line)) {
      if (source.too_long()) {
        report("line " + std::to_string(source.number()) + ": " + in_quotes(line) +
               ": the line is longer than " + std::to_string(LineSource::longest_line) + " bytes");
        outcome_ = ExitCode::bad_values;
      } else {
        bytes_.append(trimmed(line));
      }
      offsets_.push_back(static_cast<std::int64_t>(bytes_.size()));
    }
  }

  [[nodiscard]] jwnls_texts texts() const {
    jwnls_texts texts = {};
    texts.size = sizeof texts;
    texts.count = offsets_.size() - 1;
    texts.bytes = bytes_.data();
    texts.large_offsets = offsets_.data();
    return texts;
  }

  // "'27.03.2024' (line 3)"
  [[nodiscard]] std::string place(std::size_t index) const {
    const auto begin = static_cast<std::size_t>(offsets_[index]);
    const auto end = static_cast<std::size_t>(offsets_[index + 1]);
    const std::string_view text = std::string_view(bytes_).substr(begin, end - begin);
    return isolated(escaped(in_quotes(text))) + " (line " + std::to_string(index + 1) + ")";
  }

  // bad_values where lines were left out
  [[nodiscard]] ExitCode outcome() const { return outcome_; }

 private:
  std::string bytes_;
  std::vector<std::int64_t> offsets_ = {0};
  ExitCode outcome_ = ExitCode::ok;
};

std::string counted(std::size_t count) {
  return std::to_string(count) + (count == 1 ? " value" : " values");
}

// The lines about one kind.
class Answer {
 public:
  Answer(const Column& column, const Detection& detection, bool all)
      : column_(column),
        detection_(detection),
        limit_(all ? SIZE_MAX : names_listed),
        kind_(detection.kind()),
        found_(detection.found(kind_ != 0 ? kind_ : detection.most_read())) {}

  ExitCode write(Output& output) const {
    output.line(std::string(kind_ != 0 ? jwnls_kind_name(kind_) : "none") + "  " +
                std::to_string(found_.read) + " of " + std::to_string(found_.values) + "  " +
                verdict());
    if (kind_ == 0) return ExitCode::undecided;
    if (found_.dirty > 0) {
      output.line("  " + counted(found_.dirty) + " that no locale reads; the first is " +
                  column_.place(found_.first_dirty));
    }
    const std::size_t two_ways = reading(0).two_ways;
    if (two_ways > 0) output.line("  " + counted(two_ways) + " could be meant otherwise");
    const bool decided = found_.verdict == JWNLS_PROVED || found_.verdict == JWNLS_ANY_LOCALE;
    return decided ? ExitCode::ok : ExitCode::undecided;
  }

 private:
  [[nodiscard]] jwnls_detected_reading reading(std::size_t index) const {
    return detection_.reading(kind_, index);
  }

  // "de_DE, de_AT (names=english)"
  [[nodiscard]] std::string locales(std::size_t index) const {
    return listed(detection_.locales(kind_, index), limit_) + words();
  }

  // The option words that all readings need: " (names=english)", or none.
  [[nodiscard]] std::string words() const {
    const std::string options = reading(0).options;
    return options.empty() ? "" : " (" + options + ")";
  }

  // "1994-01-04 in de_DE, de_AT"
  [[nodiscard]] std::string value_in_locales(std::size_t index) const {
    return isolated(escaped(reading(index).value)) + " in " + locales(index);
  }

  [[nodiscard]] std::string verdict() const {
    if (kind_ == 0) return nothing();
    switch (found_.verdict) {
      case JWNLS_ANY_LOCALE:
        return "any of them" + words();
      case JWNLS_PROVED:
        return locales(0) + excluded();
      case JWNLS_AMBIGUOUS:
        return ambiguous();
      default:
        return contradiction();
    }
  }

  [[nodiscard]] std::string excluded() const {
    if (*found_.rival == '\0' || found_.deciding >= column_.texts().count) return {};
    return ": " + column_.place(found_.deciding) + " is not read in " + found_.rival;
  }

  [[nodiscard]] std::string ambiguous() const {
    std::vector<std::string> values;
    for (std::size_t i = 0; i < found_.readings; ++i) values.push_back(value_in_locales(i));
    return "ambiguous: " + column_.place(found_.witness) + " is " + listed(values, limit_);
  }

  [[nodiscard]] std::string contradiction() const {
    return "contradiction: " + locales(0) + "; " + counted(found_.others) +
           " read only by others; the first is " + column_.place(found_.first_other) + ", " +
           value_in_locales(1);
  }

  [[nodiscard]] std::string nothing() const {
    if (found_.values == 0) return "there are no values";
    std::string text = "no kind reads half of them";
    if (found_.read > 0)
      text.append("; ").append(jwnls_kind_name(detection_.most_read())) += " reads most";
    if (found_.dirty > 0)
      text += "; the first that is not read is " + column_.place(found_.first_dirty);
    return text;
  }

  const Column& column_;
  const Detection& detection_;
  const std::size_t limit_;
  const int kind_;  // 0: none
  jwnls_detected_kind found_;
};

ExitCode detect_lines(const std::string& file, const std::string& locales, bool all) {
  const std::string found = find_locales(locales);
  const Column column{Input(file)};
  const Detection detection(column.texts(), found);
  Output output;
  const ExitCode outcome = Answer(column, detection, all).write(output);
  output.flush();
  return outcome == ExitCode::ok ? column.outcome() : outcome;
}

// A table by its name, or by what stands in its first line; commas alone, which numbers and dates
// have too, make none.
bool is_table(const std::string& path) {
  if (path.empty() || path == "-") return false;
  for (const char* ending : {".csv", ".tsv", ".psv", ".CSV", ".TSV", ".PSV"}) {
    if (path.ends_with(ending)) return true;
  }
  const Input file(path);
  struct stat facts = {};
  if (::fstat(file.descriptor(), &facts) != 0 || !S_ISREG(facts.st_mode)) return false;
  LineSource source(
      file.descriptor(), [] {}, file.name());
  std::string_view line;
  return source.next(line) && trimmed(line).find_first_of(";\t|") != std::string_view::npos;
}

bool is_table_asked_for(const GivenOptions& options) {
  const auto rows = option_rows();
  return std::any_of(rows.begin(), rows.end(), [&options](const OptionRow& row) {
    return row.group == OptionGroup::table && options.has(row.name);
  });
}

}  // namespace

ExitCode run_detect(const GivenOptions& options) {
  const std::string file = options.operands().empty() ? "" : options.operands().front();
  if (is_table_asked_for(options) || is_table(file)) return detect_table(options);
  if (options.operands().size() > 1) (void)job_of(options);  // which says what is wrong
  return detect_lines(file, options.value("locales").value_or(""), options.has("all"));
}

}  // namespace jwnls::tool
