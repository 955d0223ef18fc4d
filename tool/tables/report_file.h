// Where a report goes: a file, or standard error.

#ifndef JWNLS_TOOL_TABLES_REPORT_FILE_H_
#define JWNLS_TOOL_TABLES_REPORT_FILE_H_

#include <memory>
#include <string>

#include "tool/reports/table_report.h"
#include "tool/tables/target_file.h"

namespace jwnls::tool {

class ReportFile {
 public:
  /// "-": standard error. A name that ends with .html, .htm or .json tells the form; all others are
  /// text. Throws Failure{io}.
  explicit ReportFile(const std::string& path);

  /// The file; null for standard error.
  [[nodiscard]] TargetFile* file() const { return file_.get(); }

  /// Writes the report; the file then has its name. Throws Failure{io}.
  void write(const TableReport& report);

 private:
  std::string path_;
  std::unique_ptr<TargetFile> file_;
};

}  // namespace jwnls::tool

#endif  // JWNLS_TOOL_TABLES_REPORT_FILE_H_
