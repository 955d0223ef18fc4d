#include "tool/json_text.h"
#include "tool/reports/table_report.h"

namespace jwnls::tool {
namespace {

// One object or array, member by member; commas stand where they are needed.
class JsonWriter {
 public:
  void open(char bracket, const char* key = nullptr) {
    begin(key);
    out_ += bracket;
    is_first_ = true;
  }
  void close(char bracket) {
    out_ += bracket;
    is_first_ = false;
  }
  void add(const char* key, const std::string& text) {
    begin(key);
    (void)append_json_string(out_, text);
  }
  void add_count(const char* key, std::uint64_t count) { add_plain(key, std::to_string(count)); }
  void add_plain(const char* key, const std::string& json) {
    begin(key);
    out_ += json;
  }
  std::string text() && { return std::move(out_) + "\n"; }

 private:
  void begin(const char* key) {
    if (!is_first_) out_ += ',';
    is_first_ = false;
    if (key == nullptr) return;
    (void)append_json_string(out_, key);
    out_ += ':';
  }

  std::string out_;
  bool is_first_ = true;
};

// Numbers stand as texts: programs that read them as doubles would lose digits.
void write_values(JsonWriter& json, const ReportedColumn& column) {
  json.open('[', "values");
  for (const ReportedValues& values : column.values) {
    json.open('{');
    if (!values.currency.empty()) json.add("currency", values.currency);
    json.add_count("count", values.count);
    json.add("least", values.least);
    json.add("greatest", values.greatest);
    if (values.sum) json.add("sum", *values.sum);
    json.close('}');
  }
  json.close(']');
}

void write_texts(JsonWriter& json, const ReportedColumn& column) {
  json.open('[', "texts");
  for (const ReportedText& text : column.texts) {
    json.open('{');
    json.add("text", text.text);
    if (text.is_cut) json.add_plain("cut", "true");
    json.add_count("count", text.count);
    json.add_count("line", text.line);
    json.add("reason", text.reason);
    json.close('}');
  }
  json.close(']');
}

void write_column(JsonWriter& json, const ReportedColumn& column) {
  json.open('{');
  json.add_count("column", column.number);
  json.add("name", column.name);
  json.add("kind", column.kind);
  json.add("layout", column.layout);
  json.add_count("read", column.read);
  json.add_count("missing", column.missing);
  json.add_count("not_read", column.not_read);
  json.add_count("two_ways", column.two_ways);
  json.add_count("deciding", column.deciding);
  write_values(json, column);
  write_texts(json, column);
  json.add_count("different_texts", column.different_texts);
  json.add_count("untold", column.untold);
  json.close('}');
}

}  // namespace

std::string json_report(const TableReport& report) {
  JsonWriter json;
  json.open('{');
  json.add("input", report.input);
  json.add("separator", report.separator);
  json.add_plain("header", report.has_header ? "true" : "false");
  json.add_count("rows", report.rows);
  json.add_count("other_length", report.ragged);
  if (report.ended.empty()) {
    json.add_plain("ended", "null");
  } else {
    json.add("ended", report.ended);
  }
  json.open('[', "columns");
  for (const ReportedColumn& column : report.columns) write_column(json, column);
  json.close(']');
  json.close('}');
  return std::move(json).text();
}

}  // namespace jwnls::tool
