#include "tool/commands/show_page.h"

#include <algorithm>
#include <initializer_list>
#include <vector>

#include "jwnls/jwnls.hpp"
#include "tool/reports/html_page.h"

namespace jwnls::tool {
namespace {

std::string heading_row(std::initializer_list<const char*> names) {
  std::string row = "<thead><tr>";
  for (const char* name : names) {
    row.append("<th scope=\"col\">").append(name).append("</th>");
  }
  return row + "</tr></thead><tbody>\n";
}

std::string section(const char* heading, const std::string& content) {
  return "<section>\n<h2>" + std::string(heading) + "</h2>\n" + content + "</section>\n";
}

// Above the texts of a kind.
const char* readings_heading(Kind kind) {
  switch (kind) {
    case Kind::date:
      return "As a date";
    case Kind::time:
      return "As a time";
    case Kind::amount:
      return "As an amount, of any currency";
    case Kind::percent:
      return "As a percentage";
    default:
      return "As a number";
  }
}

std::string reading(const ReadExample& example) {
  if (!example.value) {
    const std::string why =
        example.reason.empty() ? std::string() : ": " + html_isolated(example.reason);
    return "<span class=\"refused\">not read</span>" + why;
  }
  std::string shown = "<span class=\"value read\">" + html_text(*example.value);
  if (!example.currency.empty()) shown.append(" ").append(example.currency);
  shown += "</span>";
  if (example.two_ways) shown += " <span class=\"quiet\">could be meant otherwise</span>";
  return shown;
}

std::string readings(const std::vector<ReadExample>& examples) {
  std::string table = "<table>" + heading_row({"Text", "What it is read as"});
  const ReadExample* before = nullptr;
  for (const ReadExample& each : examples) {
    if (before == nullptr || before->kind != each.kind) {
      table.append("<tr><th colspan=\"2\" scope=\"rowgroup\">");
      table.append(readings_heading(each.kind)).append("</th></tr>\n");
    }
    table += "<tr><th scope=\"row\"><span class=\"text short\">" + html_isolated(each.text) +
             "</span></th><td>" + reading(each) + "</td></tr>\n";
    before = &each;
  }
  return table + "</tbody></table>\n";
}

class Page {
 public:
  explicit Page(const LocaleFacts& facts) : facts_(facts), language_(facts.name) {
    std::replace(language_.begin(), language_.end(), '_', '-');
  }

  [[nodiscard]] std::string html() const {
    std::string body = "<main>\n" + title();
    body += section("Dates and times", "<p class=\"quiet\">" + html_text(example_text) + "</p>\n" +
                                           examples(facts_.moments, false));
    body += section("Numbers, amounts, percentages", examples(facts_.numbers, true));
    body += section("What is read, and what is not", readings(facts_.readings));
    body += section("Weekdays", names(facts_.weekdays));
    body += section("Months", names(facts_.months));
    body += "</main>\n<footer>" + std::string("jwnls ") + html_text(jwnls_version()) + ", " +
            html_text(jwnls_data_version()) + "</footer>\n";
    return html_page(facts_.name + ": " + facts_.english_name, body);
  }

 private:
  [[nodiscard]] std::string own(const std::string& text) const {
    return html_isolated(text, language_);
  }

  [[nodiscard]] std::string fact(const char* name, const std::string& text) const {
    if (text.empty()) return {};
    return "<span><span class=\"quiet\">" + std::string(name) + "</span> " + own(text) + "</span> ";
  }

  [[nodiscard]] std::string title() const {
    std::string all = "<h1>" + html_text(facts_.english_name) + "</h1>\n<p class=\"facts\">";
    all += "<span>" + own(facts_.own_name) + "</span> <span class=\"quiet\">" +
           html_text(facts_.name) + "</span></p>\n<p class=\"facts\">";
    all += fact("Currency", facts_.currency_code);
    all += fact("its symbol", facts_.currency);
    all += fact("Week begins on", facts_.first_weekday);
    const bool has_halves = !facts_.before_noon.empty() && !facts_.after_noon.empty();
    if (has_halves) {
      all += fact("Halves of the day", facts_.before_noon + ", " + facts_.after_noon);
    }
    return all + "</p>\n";
  }

  [[nodiscard]] std::string examples(const std::vector<WrittenExample>& rows,
                                     bool tells_values) const {
    std::string table = "<table>" + heading_row({"What", "As it is written"});
    for (const WrittenExample& row : rows) {
      table.append("<tr><th scope=\"row\">").append(html_text(layout_name(row)));
      if (tells_values) {
        table.append(" <span class=\"quiet value\">").append(row.value).append("</span>");
      }
      table += "</th><td class=\"written\">" + own(row.text) + "</td></tr>\n";
    }
    return table + "</tbody></table>\n";
  }

  [[nodiscard]] std::string names(const std::vector<LocaleName>& rows) const {
    std::string table = "<table>" + heading_row({"English", "Name", "Short"});
    for (const LocaleName& row : rows) {
      table.append("<tr><th scope=\"row\">").append(row.english).append("</th><td>");
      table += own(row.full) + "</td><td>" + own(row.abbreviated) + "</td></tr>\n";
    }
    return table + "</tbody></table>\n";
  }

  const LocaleFacts& facts_;
  std::string language_;  // "ar-EG"
};

}  // namespace

std::string show_page(const LocaleFacts& facts) { return Page(facts).html(); }

}  // namespace jwnls::tool
