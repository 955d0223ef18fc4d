#include <algorithm>

#include "tool/reports/counted.h"
#include "tool/reports/table_report.h"
#include "tool/terminal_text.h"

namespace jwnls::tool {
namespace {

constexpr std::size_t widest_name = 40;

std::string cell(const std::string& text) { return isolated(escaped(text)); }

std::string line_of_counts(const std::string& name, std::size_t width, const std::string& read,
                           const std::string& missing, const std::string& not_read) {
  const std::size_t count = 9;
  std::string line = padded(name, width, true);
  for (const std::string* each : {&read, &missing, &not_read}) {
    line.append("  ").append(padded(*each, count, false));
  }
  return line;
}

// "EUR 1.00 .. 2.00  sum 3.00"
std::string line_of_values(const ReportedValues& values, bool tells_count) {
  std::string line = values.currency;
  if (tells_count) line.append(" ").append(grouped(values.count));
  if (!line.empty()) line += "  ";
  line.append(values.least);
  if (values.greatest != values.least) line.append(" .. ").append(values.greatest);
  if (values.sum) line.append("  sum ").append(*values.sum);
  return line;
}

// "d.m.yyyy 2; d.m.yy 1"
std::string forms_remark(const ReportedColumn& column) {
  std::string remark;
  for (const ReportedForm& form : column.forms) {
    if (!remark.empty()) remark += "; ";
    remark.append(form.form.empty() ? "other forms" : form.form).append(" ");
    remark += grouped(form.count);
  }
  return remark;
}

void append_column(std::string& out, const ReportedColumn& column, std::size_t width) {
  out += line_of_counts(cell(column.name), width, grouped(column.read), grouped(column.missing),
                        grouped(column.not_read));
  out.append("  ").append(column.layout).append("\n");
  const std::string forms = forms_remark(column);
  if (!forms.empty()) out.append("    ").append(cell(forms)).append("\n");
  for (const ReportedValues& values : column.values) {
    out.append("    ").append(line_of_values(values, column.values.size() > 1)).append("\n");
  }
  for (const ReportedText& text : column.texts) {
    out.append("    ").append(grouped(text.count)).append(" x ");
    std::string quoted = "'";
    quoted.append(escaped(text.text)).append(text.is_cut ? "...'" : "'");
    out.append(isolated(quoted));
    out.append("  line ").append(grouped(text.line)).append("  ");
    out.append(cell(text.reason)).append("\n");
  }
  for (const std::string& remark : {other_texts_remark(column), two_ways_remark(column)}) {
    if (!remark.empty()) out.append("    ").append(remark).append("\n");
  }
}

// ", UTF-8, 3 LF, 2 CRLF"
std::string written_as(const ReportedInput& input) {
  std::string all = input.malformed_line > 0
                        ? ", not UTF-8 in line " + grouped(input.malformed_line)
                    : input.byte_order_mark ? ", UTF-8 with a byte order mark"
                                            : ", UTF-8";
  const bool is_mixed = input.line_feeds > 0 && input.both_ends > 0;
  if (input.line_feeds > 0) all += ", " + (is_mixed ? grouped(input.line_feeds) + " " : "") + "LF";
  if (input.both_ends > 0) all += ", " + (is_mixed ? grouped(input.both_ends) + " " : "") + "CRLF";
  return all;
}

}  // namespace

std::string grouped(std::uint64_t count) {
  std::string digits = std::to_string(count);
  for (std::size_t at = digits.size(); at > 3;) digits.insert(at -= 3, 1, ',');
  return digits;
}

std::string counted(std::uint64_t count, const std::string& one, const std::string& several) {
  return grouped(count) + " " + (count == 1 ? one : several);
}

std::string facts_of(const TableReport& report) {
  std::string line = counted(report.rows, "row", "rows");
  if (report.ragged > 0) line += ", " + grouped(report.ragged) + " of another length";
  line += ", separator " + report.separator + (report.has_header ? ", header" : ", no header");
  return line + written_as(report.written);
}

std::string two_ways_remark(const ReportedColumn& column) {
  if (column.two_ways == 0) return {};
  return counted(column.two_ways, "value", "values") + " could be meant otherwise; " +
         (column.deciding > 0 ? counted(column.deciding, "other decides", "others decide")
                              : "none decides");
}

std::string other_texts_remark(const ReportedColumn& column) {
  std::string remark;
  if (column.different_texts > column.texts.size()) {
    remark = counted(column.different_texts - column.texts.size(), "other text", "other texts");
  }
  if (column.untold > 0) {
    if (!remark.empty()) remark += ", and ";
    remark += counted(column.untold, "value", "values") + " of yet other texts";
  }
  return remark;
}

std::string text_report(const TableReport& report) {
  std::size_t width = 0;
  for (const ReportedColumn& column : report.columns) {
    width = std::max(width, cell_width(cell(column.name)));
  }
  width = std::min(width, widest_name);
  std::string out = escaped(report.input) + ": " + facts_of(report) + "\n";
  if (!report.ended.empty()) out.append("ended early: ").append(escaped(report.ended)).append("\n");
  out += line_of_counts("", width, "read", "missing", "not read") + "\n";
  for (const ReportedColumn& column : report.columns) append_column(out, column, width);
  return out;
}

}  // namespace jwnls::tool
