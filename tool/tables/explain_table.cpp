#include "tool/tables/explain_table.h"

#include "tool/exit_code.h"
#include "tool/output.h"
#include "tool/terminal_text.h"

namespace jwnls::tool {
namespace {

constexpr std::size_t values_shown = 3;

std::string why_separator(const TableJob& job, const TableHeader& header) {
  const bool is_said = header.said_separator == header.separator;
  const std::string line =
      header.said_separator ? "a first line \"sep=" + std::string(1, *header.said_separator) + '"'
                            : "";
  const std::string but = line.empty() || is_said ? "" : "; " + line + " names another";
  if (job.separator) return "asked for" + but;
  if (job.input.ends_with(".tsv")) return "of a .tsv file" + but;
  if (is_said) return line + " says so";
  if (header.fields < 2) return "no other splits the first row, nor does this";
  if (!job.plain_names.empty() && job.has_header) {
    return "with it the names asked for stand in the header";
  }
  return "the only one that splits the first row";
}

// "'1.234,56' -> 1234.56"
std::string example_of(const OpenedColumn& column, const std::string& text) {
  char out[ColumnValues::room];
  const FieldValue value = column.values->convert(text, out);
  const std::string quoted = in_quotes(text);
  if (value.outcome == FieldOutcome::missing) return quoted + " is missing";
  if (value.outcome == FieldOutcome::refused) {
    return quoted + " is not read: " + column.values->reason(text);
  }
  std::string written(out, value.length);
  const bool tells_currency = column.selected.spec->currency_as && value.currency[0] != '\0';
  if (tells_currency) written.append(", ").append(value.currency);
  return quoted + " -> " + written;
}

}  // namespace

std::string separator_name(char separator) {
  switch (separator) {
    case '\t':
      return "tab";
    case ',':
      return "comma";
    case ';':
      return "semicolon";
    case '|':
      return "pipe";
    default:
      return {separator};
  }
}

void explain_table(const TableJob& job, const TableHeader& header,
                   const std::vector<OpenedColumn>& columns, const TableSample& sample) {
  Output output;
  output.line("separator  " + separator_name(header.separator) + ": " +
              escaped(why_separator(job, header)));
  output.line("header     " + std::string(job.has_header ? "yes" : "no") + ", " +
              std::to_string(header.fields) + (header.fields == 1 ? " column" : " columns"));
  for (const OpenedColumn& column : columns) {
    const SelectedColumn& selected = column.selected;
    std::string line = "column     " + std::to_string(selected.field + 1);
    if (!header.names.empty()) line += "  " + selected.name;
    line += "  " + column.values->description();
    if (selected.spec->as) line += "  as " + *selected.spec->as;
    if (selected.spec->currency_as) line += "  currency as " + *selected.spec->currency_as;
    output.line(escaped(line));
    const auto texts = sample.texts(selected.field);
    for (std::size_t i = 0; i < std::min(texts.size(), values_shown); ++i) {
      output.line("  line " + std::to_string(sample.lines()[i]) + "  " +
                  isolated(escaped(example_of(column, texts[i]))));
    }
  }
  output.flush();
  throw Failure{ExitCode::ok, {}};
}

}  // namespace jwnls::tool
