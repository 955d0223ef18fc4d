#include "tool/tables/report_file.h"

#include "tool/exit_code.h"
#include "tool/output.h"

namespace jwnls::tool {
namespace {

struct Form {
  const char* ending;
  std::string (*write)(const TableReport&);
};
constexpr Form forms[] = {{".html", html_report}, {".htm", html_report}, {".json", json_report}};

std::string written(const TableReport& report, const std::string& path) {
  for (const Form& form : forms) {
    if (path.ends_with(form.ending)) return form.write(report);
  }
  return text_report(report);
}

}  // namespace

ReportFile::ReportFile(const std::string& path) : path_(path) {
  if (path != "-") file_ = std::make_unique<TargetFile>(path);
}

void ReportFile::write(const TableReport& report) {
  const std::string text = written(report, path_);
  if (file_ == nullptr) {
    if (!write_error(text))
      throw Failure{ExitCode::io, "standard error: the report cannot be written"};
    return;
  }
  file_->write(text);
  file_->commit();
}

}  // namespace jwnls::tool
