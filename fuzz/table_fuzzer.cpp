// Fuzzes tables of the program: any bytes as CSV, in any chunks.
//
// Fields end where a reading byte by byte has their ends. A table of which nothing is converted
// comes out as it went in, all of it, unless a quote stays open. One whose column is converted is
// the same for every size of chunks and every number of threads, and its output is a table again,
// of which every value is read.

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "fuzz/input.h"
#include "tool/exit_code.h"
#include "tool/tables/field_scanner.h"
#include "tool/tables/table_job.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace jwnls::test {
namespace {

using namespace tool;
namespace fs = std::filesystem;

struct Marks {
  std::vector<std::uint32_t> fields;
  std::vector<std::uint32_t> rows;
  std::uint64_t line_feeds;
  bool inside;
  bool operator==(const Marks&) const = default;
};

template <typename Scan>
Marks marks_of(std::string_view text, std::size_t piece, bool quotes, Scan scan) {
  FieldScanner scanner(';', quotes);
  FieldMarks marks;
  marks.reserve(1);
  for (std::size_t begin = 0; begin < text.size(); begin += piece) {
    (scanner.*scan)(text.data(), begin, std::min(text.size(), begin + piece), marks);
  }
  return {{marks.fields(), marks.fields() + marks.field_count},
          {marks.rows(), marks.rows() + marks.row_count},
          marks.line_feeds,
          scanner.is_inside()};
}

// What begins with a digit becomes a text of that many characters that need quotes; what is read
// stays as it is when it is converted again.
class Doubled : public ColumnValues {
 public:
  FieldValue convert(std::string_view text, char* out) const noexcept override {
    FieldValue value;
    if (text.empty()) {
      value.outcome = FieldOutcome::missing;
      return value;
    }
    if (text[0] < '0' || text[0] > '9') return value;
    value.outcome = FieldOutcome::read;
    const std::string made = text[0] + std::string(static_cast<std::size_t>(text[0] - '0'), '"');
    value.length = static_cast<std::uint32_t>(made.copy(out, room));
    return value;
  }
  std::string reason(std::string_view) const override { return "no digit"; }
  std::string_view kind_name() const override { return "digit"; }
  bool is_json_number() const override { return false; }
};

// A folder of this process's own, which it stands in.
void enter_folder() {
  static const bool entered = [] {
    const bool in_memory = fs::is_directory("/dev/shm");
    std::string path =
        (in_memory ? fs::path("/dev/shm") : fs::temp_directory_path()) / "jwnls-table.XXXXXX";
    require(mkdtemp(path.data()) != nullptr, "no folder");
    static const std::string kept = path;
    fs::current_path(kept);
    std::atexit([] { fs::remove_all(kept); });
    return true;
  }();
  require(entered, "no folder");
}

std::string content(const char* file) {
  std::ifstream stream(file, std::ios::binary);
  return {std::istreambuf_iterator<char>(stream), {}};
}

struct Outcome {
  int code;
  std::string output;
  std::string rejects;
  bool operator==(const Outcome&) const = default;
};

Outcome run(TableJob job, std::string_view text) {
  std::ofstream("in.csv", std::ios::binary) << text;
  fs::remove("out.csv");
  fs::remove("rejects.csv");
  job.input = "in.csv";
  job.output = "out.csv";
  job.rejects = "rejects.csv";
  job.summary = Summary::never;
  job.separator = ';';
  Outcome outcome;
  try {
    outcome.code = static_cast<int>(convert_table(job));
  } catch (const Failure& failure) {
    outcome.code = static_cast<int>(failure.code);
  }
  outcome.output = content("out.csv");
  outcome.rejects = content("rejects.csv");
  return outcome;
}

TableJob job_of(Input& input, bool converts, bool added) {
  TableJob job;
  const std::uint8_t choices = input.byte();
  job.has_header = (choices & 1) != 0;
  job.quotes = (choices & 2) == 0;
  job.threads = 1;
  if (converts) {
    const std::uint8_t more = input.byte();
    job.invalid = static_cast<Invalid>(more % 4);
    job.ragged = static_cast<Ragged>(more >> 2 & 1);
    if ((more & 8) != 0) job.max_rejects = more >> 4;
    if ((more & 16) != 0) job.null_out = "NULL";
    job.json_lines = (more & 32) != 0;
  }
  job.columns = [converts, added](const TableHeader& header, const auto&) {
    std::vector<ConvertedColumn> columns;
    if (!converts || header.fields == 0) return columns;
    ConvertedColumn column;
    column.field = header.fields / 2;
    column.name = "it";
    column.values = std::make_shared<Doubled>();
    if (added) column.as = "new";
    columns.push_back(std::move(column));
    return columns;
  };
  return job;
}

std::string text_of(Input& input) {
  constexpr std::string_view pieces[] = {";", ";", "\n", "\n", "\"", "\"\"",         "\r\n",  "\r",
                                         "3", "0", "a",  ",",  " ",  "\xEF\xBB\xBF", "\"3\";"};
  std::string text;
  while (!input.used_up() && text.size() < 600) {
    const std::uint8_t choice = input.byte();
    if (choice < 0xF0) {
      text += pieces[choice % std::size(pieces)];
    } else if (choice < 0xF8) {
      text.append(input.byte() % 70, 'x');
    } else {
      text += static_cast<char>(input.byte());
    }
  }
  return text;
}

}  // namespace
}  // namespace jwnls::test

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace jwnls::test;
  enter_folder();
  Input input(data, size);
  const std::uint8_t choices = input.byte();
  const bool converts = (choices & 1) != 0;
  const bool added = (choices & 2) != 0;
  TableJob job = job_of(input, converts, added);
  const std::size_t piece = 1 + input.byte();
  const std::string text = text_of(input);
  for (const bool quotes : {false, true}) {
    require(marks_of(text, text.size() + 1, quotes, &FieldScanner::scan_bytes) ==
                marks_of(text, piece, quotes, &FieldScanner::scan),
            "fields that end somewhere else");
  }
  const Outcome whole = run(job, text);
  require(whole.code >= 0 && whole.code <= 5, "an undocumented exit code");
  if (!converts && whole.code == 0) require(whole.output == text, "a table that changes");
  job.chunk_bytes = piece;
  job.threads = size % 2 == 0 ? 1 : 2;
  require(run(job, text) == whole, "a table that depends on its chunks");
  const bool again = converts && !added && whole.code == 0 && job.quotes && !job.json_lines &&
                     !job.null_out && job.ragged == Ragged::reject;
  if (again) require(run(job, whole.output).code == 0, "an output that is no table");
  return 0;
}
