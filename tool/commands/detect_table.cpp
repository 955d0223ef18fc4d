#include "tool/commands/detect_table.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "tool/commands/table_command.h"
#include "tool/detection.h"
#include "tool/json_text.h"
#include "tool/output.h"
#include "tool/table.h"
#include "tool/tables/missing_words.h"
#include "tool/tables/table_job.h"
#include "tool/terminal_text.h"

namespace jwnls::tool {
namespace {

// The texts of a column as the library takes them; missing words are no values.
class ColumnTexts {
 public:
  ColumnTexts(std::vector<std::string> texts, const MissingWords& missing)
      : texts_(std::move(texts)) {
    for (const std::string& text : texts_) {
      const bool is_missing = missing.contains(text);
      views_.push_back({is_missing ? nullptr : text.data(), is_missing ? 0 : text.size()});
    }
  }

  [[nodiscard]] jwnls_texts texts() const {
    jwnls_texts texts = {};
    texts.size = sizeof texts;
    texts.count = views_.size();
    texts.texts = views_.data();
    return texts;
  }
  [[nodiscard]] const std::string& operator[](std::size_t index) const { return texts_[index]; }
  [[nodiscard]] std::size_t size() const { return texts_.size(); }

 private:
  std::vector<std::string> texts_;
  std::vector<jwnls_text> views_;
};

struct Asked {
  std::string locales;             // canonical, separated by commas; empty: all
  std::vector<std::string> names;  // of them, where they are few and named; else empty
  bool all = false;                // locales are named without end
};

// A value of the text that shows what a person has to choose between, and who reads it so.
struct Meaning {
  std::string value;
  std::vector<std::string> locales;
};

// What one column is.
class ColumnAnswer {
 public:
  ColumnAnswer(const ColumnTexts& texts, const std::vector<std::uint64_t>& lines,
               const Asked& asked)
      : texts_(texts),
        lines_(lines),
        asked_(asked),
        detection_(texts.texts(), asked.locales),
        kind_(detection_.kind()),
        found_(detection_.found(kind_ != 0 ? kind_ : detection_.most_read())) {}

  [[nodiscard]] bool is_text() const { return kind_ == 0; }
  [[nodiscard]] bool is_undecided() const {
    return !is_text() &&
           (found_.verdict == JWNLS_AMBIGUOUS || found_.verdict == JWNLS_CONTRADICTION);
  }

  // KIND, "N of M", VERDICT
  [[nodiscard]] std::vector<std::string> cells() const {
    if (is_text()) return {"text"};
    return {jwnls_kind_name(kind_),
            std::to_string(found_.read) + " of " + std::to_string(found_.values), verdict()};
  }

  void append_json(std::string& out) const {
    out += R"(,"kind":)";
    if (is_text()) {
      out += "null,\"read\":0,\"values\":" + std::to_string(found_.values) +
             R"(,"locales":[],"witness":null,"line":null,"ambiguous":null)";
      return;
    }
    (void)append_json_string(out, jwnls_kind_name(kind_));
    out += ",\"read\":" + std::to_string(found_.read) +
           ",\"values\":" + std::to_string(found_.values) + ",\"locales\":";
    append_names(out, is_undecided() ? std::vector<std::string>() : detection_.locales(kind_, 0));
    const auto witness = witness_text();
    out += ",\"witness\":";
    if (witness) {
      (void)append_json_string(out, texts_[*witness]);
    } else {
      out += "null";
    }
    out += ",\"line\":" + (witness ? std::to_string(lines_[*witness]) : "null");
    append_ambiguous(out);
  }

 private:
  // The text that decides, or that shows that nothing does.
  [[nodiscard]] std::optional<std::size_t> witness_text() const {
    const std::size_t text = found_.verdict == JWNLS_AMBIGUOUS       ? found_.witness
                             : found_.verdict == JWNLS_CONTRADICTION ? found_.first_other
                             : found_.verdict == JWNLS_PROVED        ? found_.deciding
                                                                     : texts_.size();
    return text < texts_.size() ? std::optional(text) : std::nullopt;
  }

  static void append_names(std::string& out, const std::vector<std::string>& names) {
    out += '[';
    for (std::size_t i = 0; i < names.size(); ++i) {
      if (i > 0) out += ',';
      (void)append_json_string(out, names[i]);
    }
    out += ']';
  }

  // One that does not read the text has no value.
  static void append_value(std::string& out, const char* value) {
    if (*value == '\0') {
      out += "null";
    } else {
      (void)append_json_string(out, value);
    }
  }

  void append_ambiguous(std::string& out) const {
    if (!is_undecided()) {
      out += ",\"ambiguous\":null";
      return;
    }
    out += ",\"ambiguous\":[";
    std::string separator;
    for (std::size_t index = 0; index < found_.readings; ++index) {
      out += separator + "{\"value\":";
      append_value(out, detection_.reading(kind_, index).value);
      out += ",\"locales\":";
      append_names(out, detection_.locales(kind_, index));
      out += '}';
      separator = ",";
    }
    out += ']';
  }

  // "27.03.2024 (line 3)"
  [[nodiscard]] std::string place(std::size_t text) const {
    return isolated(escaped(texts_[text])) + " (line " + std::to_string(lines_[text]) + ")";
  }

  [[nodiscard]] std::string names(std::size_t reading) const {
    const std::string options = detection_.reading(kind_, reading).options;
    return listed(detection_.locales(kind_, reading), limit()) +
           (options.empty() ? "" : " (" + options + ")");
  }

  [[nodiscard]] std::size_t limit() const {
    return asked_.all ? std::numeric_limits<std::size_t>::max() : names_listed;
  }

  [[nodiscard]] std::string verdict() const {
    switch (found_.verdict) {
      case JWNLS_ANY_LOCALE:
        return "any of them";
      case JWNLS_PROVED:
        return names(0) + excluded();
      case JWNLS_AMBIGUOUS:
        return "ambiguous: " + place(found_.witness) + " is " + meanings();
      default:
        return "contradiction: " + names(0) + "; " + std::to_string(found_.others) +
               " read only by others; the first is " + place(found_.first_other) + ", " +
               detection_.reading(kind_, 1).value + " in " + names(1);
    }
  }

  [[nodiscard]] std::string excluded() const {
    if (*found_.rival == '\0' || found_.deciding >= texts_.size()) return {};
    return ": " + place(found_.deciding) + " is not read in " + found_.rival;
  }

  // Of locales that were asked for by name each in its place: "2024-10-04 in en_GB, ..."
  [[nodiscard]] std::string meanings() const {
    std::vector<std::string> parts;
    if (asked_.names.empty()) {
      for (std::size_t index = 0; index < found_.readings; ++index) {
        parts.push_back(detection_.reading(kind_, index).value + (" in " + names(index)));
      }
      return listed(parts, limit());
    }
    std::vector<Meaning> all;
    for (std::size_t index = 0; index < found_.readings; ++index) {
      all.push_back({detection_.reading(kind_, index).value, detection_.locales(kind_, index)});
    }
    for (const std::string& name : asked_.names) {
      for (const Meaning& each : all) {
        const auto& readers = each.locales;
        if (std::find(readers.begin(), readers.end(), name) == readers.end()) continue;
        parts.push_back(each.value + " in " + name);
      }
    }
    return listed(parts, std::numeric_limits<std::size_t>::max());
  }

  const ColumnTexts& texts_;
  const std::vector<std::uint64_t>& lines_;
  const Asked& asked_;
  Detection detection_;
  int kind_;  // 0: none
  jwnls_detected_kind found_;
};

class TableDetection {
 public:
  TableDetection(const GivenOptions& options, const TableHeader& header, const TableSample& sample)
      : header_(header), sample_(sample), missing_(options.values("null")) {
    asked_.locales = find_locales(options.value("locales").value_or(""));
    asked_.all = options.has("all");
    const bool are_named = !asked_.locales.empty() && asked_.locales.find('*') == std::string::npos;
    for (std::size_t begin = 0; are_named && begin < asked_.locales.size();) {
      const std::size_t end = std::min(asked_.locales.find(',', begin), asked_.locales.size());
      asked_.names.push_back(asked_.locales.substr(begin, end - begin));
      begin = end + 1;
    }
  }

  ExitCode write(bool as_json) {
    Output output;
    // The verdicts of tables with the same kinds stand below each other.
    Table table;
    std::size_t name_cells = 0;
    std::size_t kind_cells = std::string_view("integer").size();
    std::vector<std::vector<std::string>> rows;
    for (std::size_t field = 0; field < header_.fields; ++field) {
      const ColumnTexts texts(sample_.texts(field), missing_);
      const ColumnAnswer answer(texts, sample_.lines(), asked_);
      if (answer.is_undecided()) outcome_ = ExitCode::undecided;
      if (as_json) {
        output.line(json(field, answer));
        continue;
      }
      rows.push_back(answer.cells());
      rows.back().insert(rows.back().begin(), escaped(name(field)));
      name_cells = std::max(name_cells, cell_width(rows.back()[0]));
      kind_cells = std::max(kind_cells, cell_width(rows.back()[1]));
    }
    for (auto& row : rows) {
      row[0] = padded(row[0], name_cells, true);
      if (row.size() > 2) row[1] = padded(row[1], kind_cells, true);
      table.add(std::move(row));
    }
    table.write(output, 0);
    output.flush();
    return outcome_;
  }

 private:
  [[nodiscard]] std::string name(std::size_t field) const {
    const bool named = field < header_.names.size() && !header_.names[field].empty();
    return named ? header_.names[field] : std::to_string(field + 1);
  }

  [[nodiscard]] std::string json(std::size_t field, const ColumnAnswer& answer) const {
    std::string line = "{\"column\":" + std::to_string(field + 1) + ",\"name\":";
    (void)append_json_string(line, name(field));
    answer.append_json(line);
    return line + "}";
  }

  const TableHeader& header_;
  const TableSample& sample_;
  MissingWords missing_;
  Asked asked_;
  ExitCode outcome_ = ExitCode::ok;
};

}  // namespace

ExitCode detect_table(const GivenOptions& options) {
  TableJob job = job_of(options);
  if (options.has("all")) job.sample_bytes = std::numeric_limits<std::uint32_t>::max();
  const bool as_json = job.json_lines;
  job.columns =
      [&](const TableHeader& header,
          const std::function<const TableSample&()>& sample) -> std::vector<ConvertedColumn> {
    // That is all: nothing is converted.
    throw Failure{TableDetection(options, header, sample()).write(as_json), {}};
  };
  return convert_table(job);
}

}  // namespace jwnls::tool
