#include <cstdio>

#include "tool/reports/counted.h"
#include "tool/reports/html_page.h"
#include "tool/reports/table_report.h"
#include "tool/terminal_text.h"

namespace jwnls::tool {
namespace {

// What cannot be seen is told: "\u200F" in place of a mark.
std::string seen(const std::string& text) { return html_isolated(escaped(text)); }

std::string number_cell(std::uint64_t count, const char* name) {
  return "<td class=\"number\" data-is=\"" + std::string(name) + "\">" + grouped(count) + "</td>";
}

std::string share(const ReportedColumn& column, std::uint64_t count) {
  const std::uint64_t all = column.read + column.missing + column.not_read;
  char text[32];
  (void)std::snprintf(text, sizeof text, "%.4f%%",
                      100.0 * static_cast<double>(count) / static_cast<double>(all));
  return text;
}

struct Part {
  const char* name;
  const char* style;
  std::uint64_t count;
};

// The bar and what its colours are. The numbers tell the same, so that nobody needs the colours.
std::string bar(const ReportedColumn& column) {
  const Part parts[] = {{"read", "is-read", column.read},
                        {"missing", "is-missing", column.missing},
                        {"not read", "is-refused", column.not_read}};
  std::string spans;
  std::string keys;
  for (const Part& part : parts) {
    if (part.count > 0) {
      spans.append("<span class=\"").append(part.style).append("\" style=\"width:");
      spans.append(share(column, part.count)).append("\"></span>");
    }
    keys.append("<span class=\"key ").append(part.style).append("\">");
    keys.append(grouped(part.count)).append(" ").append(part.name).append("</span> ");
  }
  return "<div class=\"bar\" aria-hidden=\"true\">" + spans + "</div>\n<p>" + keys + "</p>\n";
}

std::string value(const std::string& text) {
  return "<span class=\"value\">" + html_text(text) + "</span>";
}

// "least 1.00  greatest 2.00  sum, exact 3.00"
std::string facts_of_values(const ReportedValues& values) {
  const auto fact = [](const char* name, const std::string& text) {
    return "<span><span class=\"quiet\">" + std::string(name) + "</span> " + value(text) +
           "</span> ";
  };
  std::string facts = "<p class=\"facts\">" + fact("Least", values.least);
  facts += fact("Greatest", values.greatest);
  if (values.sum) facts += fact("Sum, exact", *values.sum);
  return facts + "</p>\n";
}

std::string values_table(const ReportedColumn& column) {
  if (column.values.empty()) return {};
  if (column.values.size() == 1 && column.values.front().currency.empty()) {
    return facts_of_values(column.values.front());
  }
  std::string table =
      "<table class=\"stacks\"><caption>Values</caption><thead><tr><th scope=\"col\">Currency</th>";
  for (const char* name : {"Values", "Least", "Greatest", "Sum, exact"}) {
    table.append("<th scope=\"col\" class=\"number\">").append(name).append("</th>");
  }
  table += "</tr></thead><tbody>\n";
  const auto cell = [](const char* name, const std::string& text) {
    return "<td class=\"number\" data-is=\"" + std::string(name) + "\">" + value(text) + "</td>";
  };
  for (const ReportedValues& values : column.values) {
    const std::string currency = values.currency.empty() ? "none" : values.currency;
    table += "<tr><th scope=\"row\">" + html_text(currency) + "</th>";
    table += cell("Values", grouped(values.count)) + cell("Least", values.least);
    table += cell("Greatest", values.greatest) + cell("Sum, exact", values.sum.value_or(""));
    table += "</tr>\n";
  }
  return table + "</tbody></table>\n";
}

std::string texts_table(const ReportedColumn& column) {
  if (column.texts.empty()) return {};
  std::string table =
      "<table class=\"stacks texts\"><caption>Not read</caption><thead><tr><th "
      "scope=\"col\">Text</th>"
      "<th scope=\"col\" class=\"number\">Times</th><th scope=\"col\" class=\"number\">First in "
      "line</th><th scope=\"col\" class=\"why\">Why</th></tr></thead><tbody>\n";
  for (const ReportedText& text : column.texts) {
    table += "<tr><th scope=\"row\"><span class=\"text\">" + seen(text.text) +
             (text.is_cut ? "…" : "") + "</span></th>";
    table += number_cell(text.count, "Times") + number_cell(text.line, "First in line");
    table += "<td>" + seen(text.reason) + "</td></tr>\n";
  }
  return table + "</tbody></table>\n";
}

std::string paragraph(const std::string& text, const char* style = "quiet") {
  if (text.empty()) return {};
  std::string all = "<p class=\"";
  return all.append(style).append("\">").append(html_text(text)).append("</p>\n");
}

// "Written d.m.yyyy 376 yyyy-m-d 82", each form in a frame of its own.
std::string forms_line(const ReportedColumn& column) {
  if (column.forms.empty()) return {};
  std::string line = "<p class=\"facts\"><span class=\"quiet\">Written</span> ";
  for (const ReportedForm& form : column.forms) {
    line += "<span>";
    if (form.form.empty()) {
      line += "other forms";
    } else {
      line.append("<span class=\"text\">").append(seen(form.form)).append("</span>");
    }
    line.append(" ").append(grouped(form.count)).append("</span> ");
  }
  return line + "</p>\n";
}

std::string section_of(const ReportedColumn& column) {
  const std::string number = std::to_string(column.number);
  std::string section = "<section>\n<h2>" + seen(column.name) + "</h2>\n";
  section += paragraph("Column " + number + ", " + column.layout);
  if (column.read + column.missing + column.not_read > 0) section += bar(column);
  section += forms_line(column);
  section += paragraph(two_ways_remark(column), column.deciding == 0 ? "undecided" : "quiet");
  section += values_table(column) + texts_table(column);
  return section + paragraph(other_texts_remark(column)) + "</section>\n";
}

}  // namespace

std::string html_report(const TableReport& report) {
  std::string body = "<main>\n<h1>" + seen(report.input) + "</h1>\n";
  body += paragraph(facts_of(report));
  if (!report.ended.empty()) {
    body += "<p class=\"ended\">Ended early: " + seen(report.ended) + "</p>\n";
  }
  for (const ReportedColumn& column : report.columns) body += section_of(column);
  return html_page(report.input + ": report", body + "</main>\n");
}

}  // namespace jwnls::tool
