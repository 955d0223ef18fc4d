#include "tool/json_text.h"
#include "tool/reports/table_report.h"

namespace jwnls::tool {
namespace {

// Numbers stand as texts: programs that read them as doubles would lose digits.
void write_values(JsonText& json, const ReportedColumn& column) {
  json.key("values").open('[');
  for (const ReportedValues& values : column.values) {
    json.open('{');
    if (!values.currency.empty()) json.member("currency", values.currency);
    json.key("count").raw(std::to_string(values.count));
    json.member("least", values.least);
    json.member("greatest", values.greatest);
    if (values.sum) json.member("sum", *values.sum);
    json.close();
  }
  json.close();
}

void write_forms(JsonText& json, const ReportedColumn& column) {
  if (column.forms.empty()) return;
  json.key("forms").open('[');
  for (const ReportedForm& form : column.forms) {
    json.open('{');
    json.member("form", form.form);
    json.key("count").raw(std::to_string(form.count));
    json.close();
  }
  json.close();
}

void write_texts(JsonText& json, const ReportedColumn& column) {
  json.key("texts").open('[');
  for (const ReportedText& text : column.texts) {
    json.open('{');
    json.member("text", text.text);
    if (text.is_cut) json.key("cut").raw("true");
    json.key("count").raw(std::to_string(text.count));
    json.key("line").raw(std::to_string(text.line));
    json.member("reason", text.reason);
    json.close();
  }
  json.close();
}

void write_column(JsonText& json, const ReportedColumn& column) {
  json.open('{');
  json.key("column").raw(std::to_string(column.number));
  json.member("name", column.name);
  json.member("kind", column.kind);
  json.member("layout", column.layout);
  json.key("read").raw(std::to_string(column.read));
  json.key("missing").raw(std::to_string(column.missing));
  json.key("not_read").raw(std::to_string(column.not_read));
  json.key("two_ways").raw(std::to_string(column.two_ways));
  json.key("deciding").raw(std::to_string(column.deciding));
  write_forms(json, column);
  write_values(json, column);
  write_texts(json, column);
  json.key("different_texts").raw(std::to_string(column.different_texts));
  json.key("untold").raw(std::to_string(column.untold));
  json.close();
}

}  // namespace

std::string json_report(const TableReport& report) {
  JsonText json;
  json.open('{');
  json.member("input", report.input);
  json.member("separator", report.separator);
  json.key("utf8").raw(report.written.malformed_line == 0 ? "true" : "false");
  if (report.written.malformed_line > 0) {
    json.key("line_not_utf8").raw(std::to_string(report.written.malformed_line));
  }
  json.key("byte_order_mark").raw(report.written.byte_order_mark ? "true" : "false");
  json.key("line_ends").open('{');
  json.key("lf").raw(std::to_string(report.written.line_feeds));
  json.key("crlf").raw(std::to_string(report.written.both_ends));
  json.close();
  json.key("header").raw(report.has_header ? "true" : "false");
  json.key("rows").raw(std::to_string(report.rows));
  json.key("other_length").raw(std::to_string(report.ragged));
  if (report.ended.empty()) {
    json.key("ended").raw("null");
  } else {
    json.member("ended", report.ended);
  }
  json.key("columns").open('[');
  for (const ReportedColumn& column : report.columns) write_column(json, column);
  json.close();
  json.close();
  return json.text() + "\n";
}

}  // namespace jwnls::tool
