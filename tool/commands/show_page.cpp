#include "tool/commands/show_page.h"

#include <algorithm>
#include <initializer_list>
#include <iterator>
#include <optional>
#include <vector>

#include "jwnls/jwnls.hpp"
#include "tool/reports/html_page.h"
#include "tool/session.h"
#include "tool/tables/layout_values.h"

namespace jwnls::tool {
namespace {

struct Example {
  const char* name;
  Kind kind;
  const char* words;
  const char* value;
};

constexpr const char* example_moment = "2024-03-05T14:07:09";

constexpr Example dates[] = {
    {"full date", Kind::date, "style=full", example_moment},
    {"long date", Kind::date, "style=long", example_moment},
    {"date", Kind::date, "", example_moment},
    {"short date", Kind::date, "style=short", example_moment},
    {"time", Kind::time, "", example_moment},
    {"date and time", Kind::datetime, "", example_moment},
    {"date and time, long", Kind::datetime, "style=long", example_moment},
};

constexpr Example numbers[] = {
    {"number", Kind::number, "", "1234567.891"},
    {"own digits", Kind::number, "digits=own", "1234567.891"},
    {"below zero", Kind::number, "", "-0.5"},
    {"amount", Kind::amount, "", "1234"},
    {"owed", Kind::amount, "", "-1234"},
    {"owed, in accounts", Kind::amount, "accounting", "-1234"},
    {"with the code", Kind::amount, "symbol=code", "1234"},
    {"percentage", Kind::percent, "", "0.125"},
    {"percentage", Kind::percent, "", "-0.07"},
};

// Texts that are one value here, another there, and nothing elsewhere.
constexpr const char* typed_dates[] = {"2/3/2024", "13.3.2024",  "3/13/2024",
                                       "5-3-24",   "2024-03-05", "30.2.2024"};
constexpr const char* typed_times[] = {"14:07", "14.07", "2:07 PM"};
constexpr const char* typed_numbers[] = {"1,234",   "1.234",   "1,234.5",    "1.234,5",
                                         "1 234,5", "1'234.5", "12,34,567.8"};
constexpr const char* typed_amounts[] = {"1,234.50", "1.234,50", "€5", "5 €", "$5", "¥500"};
constexpr const char* typed_percentages[] = {"12.5%", "12,5 %", "%12"};

constexpr const char* weekdays[] = {"Sunday",   "Monday", "Tuesday", "Wednesday",
                                    "Thursday", "Friday", "Saturday"};
constexpr const char* months[] = {"January",   "February", "March",    "April",
                                  "May",       "June",     "July",     "August",
                                  "September", "October",  "November", "December"};

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

class Page {
 public:
  explicit Page(const std::string& locale)
      : locale_(locale),
        language_(locale),
        conventions_(open_layout(locale, Kind::date, "")),
        amounts_(open_layout(locale, Kind::amount, "")) {
    std::replace(language_.begin(), language_.end(), '_', '-');
  }

  std::string html() {
    std::string body = "<main>\n" + title();
    body += section("Dates and times",
                    "<p class=\"quiet\">Tuesday, 5 March 2024, nine seconds past 14:07</p>\n" +
                        examples(dates, false));
    body += section("Numbers, amounts, percentages", examples(numbers, true));
    body += section("What is read, and what is not", readings());
    body += section("Weekdays", names(weekdays, JWNLS_WEEKDAY, JWNLS_SHORT_WEEKDAY));
    body += section("Months", names(months, JWNLS_MONTH, JWNLS_SHORT_MONTH));
    body += "</main>\n<footer>" + std::string("jwnls ") + html_text(jwnls_version()) + ", " +
            html_text(jwnls_data_version()) + "</footer>\n";
    return html_page(locale_ + ": " + english_name_, body);
  }

 private:
  [[nodiscard]] std::optional<std::string> item(int item, std::size_t index = 0) const {
    char text[400];
    std::size_t length = 0;
    const int code = jwnls_convention(conventions_.get(), item, index, text, sizeof text, &length);
    if (code != JWNLS_OK) return std::nullopt;
    return std::string(text, length);
  }

  [[nodiscard]] std::string own(const std::string& text) const {
    return html_isolated(text, language_);
  }

  [[nodiscard]] std::string fact(const char* name, const std::string& text) const {
    if (text.empty()) return {};
    return "<span><span class=\"quiet\">" + std::string(name) + "</span> " + own(text) + "</span> ";
  }

  std::string title() {
    std::string own_name;
    (void)each_locale([&](const jwnls_locale_info& locale) {
      if (locale_ != locale.name) return;
      english_name_ = locale.english_name;
      own_name = locale.own_name;
    });
    std::string all = "<h1>" + html_text(english_name_) + "</h1>\n<p class=\"facts\">";
    all += "<span>" + own(own_name) + "</span> <span class=\"quiet\">" + html_text(locale_) +
           "</span></p>\n<p class=\"facts\">";
    all += fact("Currency", amounts_.currency());
    all += fact("its symbol", item(JWNLS_CURRENCY_SYMBOL).value_or(""));
    const auto first = item(JWNLS_FIRST_WEEKDAY).value_or("");
    if (first.size() == 1 && first.front() >= '0' && first.front() <= '6') {
      all += fact("Week begins on", weekdays[first.front() - '0']);
    }
    all += fact("Halves of the day", halves());
    return all + "</p>\n";
  }

  [[nodiscard]] std::string halves() const {
    const std::string before = item(JWNLS_DAY_HALF, 0).value_or("");
    const std::string after = item(JWNLS_DAY_HALF, 1).value_or("");
    return before.empty() || after.empty() ? std::string() : before + ", " + after;
  }

  [[nodiscard]] std::string written(const Example& row) const {
    const Layout layout = open_layout(locale_, row.kind, row.words);
    char out[ColumnValues::room];
    const FieldValue text = format_values(layout, "", {})->convert(row.value, out);
    return {out, text.length};
  }

  template <std::size_t count>
  [[nodiscard]] std::string examples(const Example (&rows)[count], bool tells_values) const {
    std::string table = "<table>" + heading_row({"What", "As it is written"});
    for (const Example& row : rows) {
      table.append("<tr><th scope=\"row\">").append(row.name);
      if (tells_values) {
        table.append(" <span class=\"quiet value\">").append(row.value).append("</span>");
      }
      table += "</th><td class=\"written\">" + own(written(row)) + "</td></tr>\n";
    }
    return table + "</tbody></table>\n";
  }

  [[nodiscard]] static std::string reading(const LayoutValues& values, const char* text) {
    char out[ColumnValues::room];
    const FieldValue value = values.convert(text, out);
    if (value.outcome == FieldOutcome::refused) {
      const std::string reason = values.reason(text);
      const std::string why = reason == "not read" ? std::string() : ": " + html_isolated(reason);
      return "<span class=\"refused\">not read</span>" + why;
    }
    std::string shown = "<span class=\"value read\">";
    shown += html_text(std::string_view(out, value.length));
    if (value.currency[0] != '\0') shown.append(" ").append(value.currency);
    shown += "</span>";
    if ((value.facts & JWNLS_TWO_WAYS) != 0) {
      shown += " <span class=\"quiet\">could be meant otherwise</span>";
    }
    return shown;
  }

  template <std::size_t count>
  void add_readings(std::string& table, const char* name, Kind kind, const char* words,
                    const char* const (&texts)[count]) const {
    const auto values = read_values(open_layout(locale_, kind, words), {});
    table.append("<tr><th colspan=\"2\" scope=\"rowgroup\">").append(name).append("</th></tr>\n");
    for (const char* text : texts) {
      table += "<tr><th scope=\"row\"><span class=\"text short\">" + html_isolated(text) +
               "</span></th><td>" + reading(*values, text) + "</td></tr>\n";
    }
  }

  [[nodiscard]] std::string readings() const {
    std::string table = "<table>" + heading_row({"Text", "What it is read as"});
    add_readings(table, "As a date", Kind::date, "", typed_dates);
    add_readings(table, "As a time", Kind::time, "", typed_times);
    add_readings(table, "As a number", Kind::number, "", typed_numbers);
    add_readings(table, "As an amount, of any currency", Kind::amount, "currency=any",
                 typed_amounts);
    add_readings(table, "As a percentage", Kind::percent, "", typed_percentages);
    return table + "</tbody></table>\n";
  }

  template <std::size_t count>
  [[nodiscard]] std::string names(const char* const (&english)[count], int full,
                                  int abbreviated) const {
    std::string table = "<table>" + heading_row({"English", "Name", "Short"});
    for (std::size_t i = 0; i < count; ++i) {
      table.append("<tr><th scope=\"row\">").append(english[i]).append("</th><td>");
      table += own(item(full, i).value_or("")) + "</td><td>" +
               own(item(abbreviated, i).value_or("")) + "</td></tr>\n";
    }
    return table + "</tbody></table>\n";
  }

  const std::string locale_;
  std::string language_;  // "ar-EG"
  std::string english_name_;
  const Layout conventions_;
  const Layout amounts_;
};

}  // namespace

std::string show_page(const std::string& locale) { return Page(locale).html(); }

}  // namespace jwnls::tool
