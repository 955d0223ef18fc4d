#include "tests/tool/tables/table_runs.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "tool/output.h"

namespace jwnls::tool {
namespace {

namespace fs = std::filesystem;

FieldValue written(std::string_view text, char* out, std::string_view currency = "") {
  FieldValue value;
  value.outcome = FieldOutcome::read;
  value.length = text.copy(out, ColumnValues::room);
  currency.copy(value.currency, sizeof value.currency - 1);  // zeros behind it
  return value;
}

FieldValue missing() {
  FieldValue value;
  value.outcome = FieldOutcome::missing;
  return value;
}

class Numbers : public ColumnValues {
 public:
  FieldValue convert(std::string_view text, char* out) const noexcept override {
    if (text.find_first_not_of(' ') == std::string_view::npos || text == "-") return missing();
    if (text == "#") return written("a,b;c\"\"d\n", out);
    const bool dollars = text.ends_with('$');
    if (dollars) text.remove_suffix(1);
    std::string number;
    for (const char each : text) {
      if (each == '.') continue;
      if (each != ',' && each != '-' && (each < '0' || each > '9')) return {};
      number += each == ',' ? '.' : each;
    }
    return written(number, out, dollars ? "USD" : "EUR");
  }
  std::string reason(std::string_view) const override { return "no number"; }
  std::string_view kind_name() const override { return "number"; }
  bool is_json_number() const override { return true; }
};

class Dates : public ColumnValues {
 public:
  FieldValue convert(std::string_view text, char* out) const noexcept override {
    if (text.empty()) return missing();
    if (text.size() != 10 || text[2] != '.' || text[5] != '.') return {};
    std::string date(text.substr(6));
    date.append("-").append(text.substr(3, 2)).append("-").append(text.substr(0, 2));
    FieldValue value = written(date, out);
    value.facts = text.substr(0, 2) > "12" ? JWNLS_DECIDES : JWNLS_TWO_WAYS;
    return value;
  }
  std::string reason(std::string_view) const override { return "no date"; }
  std::string_view kind_name() const override { return "date"; }
  bool is_json_number() const override { return false; }
};

}  // namespace

OwnFolder::OwnFolder() : before_(fs::current_path()) {
  std::string path = fs::temp_directory_path() / "tables.XXXXXX";
  EXPECT_NE(::mkdtemp(path.data()), nullptr);
  path_ = path;
  fs::current_path(path_);
}

OwnFolder::~OwnFolder() {
  fs::current_path(before_);
  fs::remove_all(path_);
}

std::string read_file(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

void write_file(const std::string& path, const std::string& text) {
  std::ofstream(path, std::ios::binary) << text;
}

void ask(TableJob& job, const std::vector<Asked>& columns) {
  for (const Asked& each : columns) {
    if (job.has_header) job.plain_names.push_back(each.name);
  }
  job.columns = [columns, has_header = job.has_header](const TableHeader& header, const auto&) {
    std::vector<ConvertedColumn> all;
    for (const Asked& each : columns) {
      ConvertedColumn column;
      const auto found = std::find(header.names.begin(), header.names.end(), each.name);
      if (!has_header) {
        column.field = std::stoul(each.name) - 1;
      } else if (found == header.names.end()) {
        throw Failure{ExitCode::usage, "no column '" + each.name + "'"};
      } else {
        column.field = static_cast<std::size_t>(found - header.names.begin());
      }
      column.name = each.name;
      if (each.kind == Asked::number) {
        column.values = std::make_shared<Numbers>();
      } else {
        column.values = std::make_shared<Dates>();
      }
      column.as = each.as;
      column.currency_as = each.currency_as;
      all.push_back(std::move(column));
    }
    return all;
  };
}

TableOutcome run_job(const TableJob& job) {
  TableOutcome outcome;
  testing::internal::CaptureStdout();
  testing::internal::CaptureStderr();
  try {
    outcome.exit_code = static_cast<int>(convert_table(job));
  } catch (const Failure& failure) {
    outcome.exit_code = static_cast<int>(failure.code);
    if (!failure.message.empty()) report(failure.message);
  }
  outcome.errors = testing::internal::GetCapturedStderr();
  outcome.output = testing::internal::GetCapturedStdout();
  if (fs::is_regular_file(job.rejects)) outcome.rejects = read_file(job.rejects);
  if (fs::is_regular_file(job.report)) outcome.report = read_file(job.report);
  return outcome;
}

TableOutcome run_table(const std::string& text, const std::vector<Asked>& columns, TableJob job) {
  if (job.input.empty()) job.input = "r.csv";
  write_file(job.input, text);
  ask(job, columns);
  return run_job(job);
}

void PrintTo(const TableOutcome& outcome, std::ostream* out) {
  *out << "exit " << outcome.exit_code << "\n"
       << outcome.output << "! " << outcome.errors << "rejects " << outcome.rejects << "report "
       << outcome.report;
}

}  // namespace jwnls::tool
