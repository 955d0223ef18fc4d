// Runs tables through convert_table(), with small values of their own.

#ifndef JWNLS_TESTS_TOOL_TABLES_TABLE_RUNS_H_
#define JWNLS_TESTS_TOOL_TABLES_TABLE_RUNS_H_

#include <optional>
#include <string>
#include <vector>

#include "tool/tables/table_job.h"

namespace jwnls::tool {

/// A column to convert: "Netto" in place, or as another one. Numbers are written with a decimal
/// comma and groups of points; '-' is missing; what ends with '$' is an amount in dollars, all else
/// in euros; "#" becomes a text with all that needs quotes. Dates are dd.mm.yyyy, and could be
/// mm.dd.yyyy below 13.
struct Asked {
  enum Kind { number, date };
  std::string name;
  Kind kind = number;
  std::optional<std::string> as = {};
  std::optional<std::string> currency_as = {};
};

struct TableOutcome {
  int exit_code = 0;
  std::string output;
  std::string errors;
  std::string rejects;
  std::string report;
  bool operator==(const TableOutcome&) const = default;
};
void PrintTo(const TableOutcome& outcome, std::ostream* out);

/// A folder that the test stands in, and that goes with it.
class OwnFolder {
 public:
  OwnFolder();
  ~OwnFolder();
  OwnFolder(const OwnFolder&) = delete;
  OwnFolder& operator=(const OwnFolder&) = delete;

 private:
  std::string before_;
  std::string path_;
};

std::string read_file(const std::string& path);
void write_file(const std::string& path, const std::string& text);

/// Looks columns up by their names, or numbers where there are none.
void ask(TableJob& job, const std::vector<Asked>& columns);

/// Runs the job on its files; what it writes to standard output is caught.
TableOutcome run_job(const TableJob& job);

/// Runs the job on a file "r.csv" with this text.
TableOutcome run_table(const std::string& text, const std::vector<Asked>& columns,
                       TableJob job = {});

}  // namespace jwnls::tool

#endif  // JWNLS_TESTS_TOOL_TABLES_TABLE_RUNS_H_
