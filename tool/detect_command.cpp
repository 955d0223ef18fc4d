#include "tool/detect_command.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <cstring>
#include <memory>
#include <string_view>
#include <vector>

#include "jwnls/jwnls.h"
#include "tool/line_source.h"
#include "tool/output.h"
#include "tool/session.h"
#include "tool/terminal_text.h"
#include "tool/value_lines.h"

namespace jwnls::tool {
namespace {

constexpr std::size_t first_names = 5;  // of more locales or readings only these are named

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

// The canonical names of the locales that are asked for; empty: all.
std::string find_locales(const std::string& list) {
  std::string names;
  std::string_view rest = list;
  while (!rest.empty()) {
    const std::size_t end = std::min(rest.find_first_of(", \t"), rest.size());
    const std::string name(rest.substr(0, end));
    rest.remove_prefix(std::min(end + 1, rest.size()));
    if (name.empty()) continue;
    names.append(names.empty() ? "" : ",").append(name == "*" ? name : find_locale(name, ""));
  }
  return names;
}

using Detection = std::unique_ptr<jwnls_detection, decltype(&jwnls_detection_close)>;

Detection detect(const Column& column, const std::string& locales) {
  const jwnls_texts texts = column.texts();
  jwnls_detection* detection = nullptr;
  jwnls_error error = {};
  if (jwnls_detect(&texts, nullptr, locales.c_str(), &detection, &error) != JWNLS_OK) {
    throw Failure{ExitCode::unavailable, error.text};
  }
  return {detection, &jwnls_detection_close};
}

std::string counted(std::size_t count) {
  return std::to_string(count) + (count == 1 ? " value" : " values");
}

// "a, b and 3 more"
std::string listed(const std::vector<std::string>& items, std::size_t limit) {
  std::string text;
  const std::size_t shown = std::min(items.size(), limit);
  for (std::size_t i = 0; i < shown; ++i) text.append(i == 0 ? "" : ", ").append(items[i]);
  if (shown < items.size()) text += " and " + std::to_string(items.size() - shown) + " more";
  return text;
}

// The lines about one kind.
class Answer {
 public:
  Answer(const Column& column, const jwnls_detection& detection, bool all)
      : column_(column),
        detection_(detection),
        limit_(all ? SIZE_MAX : first_names),
        kind_(jwnls_detection_kind(&detection)) {
    found_ = found(kind_ != 0 ? kind_ : most_read());
  }

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
  [[nodiscard]] jwnls_detected_kind found(int kind) const {
    jwnls_detected_kind found = {};
    found.size = sizeof found;
    (void)jwnls_detected_kind_of(&detection_, kind, &found);
    return found;
  }

  // Where no kind reads half of the values.
  [[nodiscard]] int most_read() const {
    int most = JWNLS_INTEGER;  // of equals the first, as the library ranks them
    for (int kind = JWNLS_NUMBER; jwnls_kind_name(kind) != nullptr; ++kind) {
      if (found(kind).read > found(most).read) most = kind;
    }
    return most;
  }

  [[nodiscard]] jwnls_detected_reading reading(std::size_t index) const {
    jwnls_detected_reading reading = {};
    reading.size = sizeof reading;
    (void)jwnls_detected_reading_of(&detection_, kind_, index, &reading);
    return reading;
  }

  // "de_DE, de_AT (names=english)"
  [[nodiscard]] std::string locales(std::size_t index) const {
    std::vector<std::string> names;
    for (std::size_t i = 0; const char* name = jwnls_detected_locale(&detection_, kind_, index, i);
         ++i) {
      names.emplace_back(name);
    }
    return listed(names, limit_) + words();
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
    if (found_.read > 0) text.append("; ").append(jwnls_kind_name(most_read())) += " reads most";
    if (found_.dirty > 0)
      text += "; the first that is not read is " + column_.place(found_.first_dirty);
    return text;
  }

  const Column& column_;
  const jwnls_detection& detection_;
  const std::size_t limit_;
  const int kind_;  // 0: none
  jwnls_detected_kind found_;
};

}  // namespace

ExitCode run_detect(const DetectOptions& options) {
  const std::string locales = find_locales(options.locales);
  const Column column{Input(options.file)};
  const Detection detection = detect(column, locales);
  Output output;
  const ExitCode outcome = Answer(column, *detection, options.all).write(output);
  output.flush();
  return outcome == ExitCode::ok ? column.outcome() : outcome;
}

}  // namespace jwnls::tool
