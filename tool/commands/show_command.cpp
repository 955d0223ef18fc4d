#include "tool/commands/show_command.h"

#include <utf8proc.h>

#include <cstdio>
#include <iterator>
#include <optional>
#include <vector>

#include "jwnls/jwnls.hpp"
#include "tool/commands/show_page.h"
#include "tool/output.h"
#include "tool/session.h"
#include "tool/table.h"
#include "tool/tables/layout_values.h"
#include "tool/tables/target_file.h"
#include "tool/terminal_text.h"

namespace jwnls::tool {
namespace {

// A day and an hour that show every padding and the second half of the day.
constexpr const char* example_moment = "2024-03-05T14:07:09";
constexpr const char* example_text = "2024-03-05, a Tuesday, 14:07:09";

struct Example {
  const char* name;
  Kind kind;
  const char* words;
  const char* value;
  int pattern;  // the item of the conventions; 0: none
  std::size_t index;
};

constexpr Example moments[] = {
    {"date short", Kind::date, "style=short", example_moment, JWNLS_DATE_PATTERN, 0},
    {"date medium", Kind::date, "", example_moment, JWNLS_DATE_PATTERN, 1},
    {"date long", Kind::date, "style=long", example_moment, JWNLS_DATE_PATTERN, 2},
    {"date full", Kind::date, "style=full", example_moment, 0, 0},
    {"time", Kind::time, "", example_moment, JWNLS_TIME_PATTERN, 0},
    {"datetime short", Kind::datetime, "style=short", example_moment, 0, 0},
    {"datetime medium", Kind::datetime, "", example_moment, JWNLS_DATETIME_PATTERN, 0},
    {"datetime long", Kind::datetime, "style=long", example_moment, 0, 0},
};

constexpr Example numbers[] = {
    {"number", Kind::number, "", "1234567.891", 0, 0},
    {"number", Kind::number, "", "-0.5", 0, 0},
    {"number digits=own", Kind::number, "digits=own", "1234567.891", 0, 0},
    {"integer", Kind::integer, "", "1234567", 0, 0},
    {"amount", Kind::amount, "", "1234.5", 0, 0},
    {"amount", Kind::amount, "", "-1234.5", 0, 0},
    {"amount accounting", Kind::amount, "accounting", "-1234.5", 0, 0},
    {"amount symbol=code", Kind::amount, "symbol=code", "1234.5", 0, 0},
    {"percent", Kind::percent, "", "0.125", 0, 0},
};

// Texts that are one value here, another there, and nothing elsewhere.
struct Typed {
  const char* name;
  Kind kind;
  std::vector<const char*> texts;
};
const Typed typed[] = {
    {"date", Kind::date, {"2/3/2024", "13.3.2024", "3/13/2024", "5-3-24", "2024-03-05"}},
    {"time", Kind::time, {"14:07", "14.07", "2:07 PM"}},
    {"number", Kind::number, {"1,234", "1.234", "1,234.5", "1.234,5", "1 234,5", "1'234.5"}},
    {"amount", Kind::amount, {"1,234.50", "1.234,50", "€5", "5 €", "$5"}},
    {"percent", Kind::percent, {"12.5%", "12,5 %"}},
};

constexpr const char* weekdays[] = {"Sunday",   "Monday", "Tuesday", "Wednesday",
                                    "Thursday", "Friday", "Saturday"};
constexpr const char* months[] = {"January",   "February", "March",    "April",
                                  "May",       "June",     "July",     "August",
                                  "September", "October",  "November", "December"};

// Writes a locale, section by section.
class Report {
 public:
  Report(Output& output, const ShowOptions& options)
      : output_(output),
        name_(find_locale(options.locale, "LC_TIME")),
        conventions_(open_layout(name_, Kind::date, "")),
        amounts_(open_layout(name_, Kind::amount, "")) {}

  void write(const std::string& zone) {
    title(zone);
    examples(std::string("Writes ") + example_text + ", as", moments, false);
    examples("Writes numbers, amounts of its currency and percentages as", numbers, true);
    readings();
    names("Weekdays", weekdays, std::size(weekdays), JWNLS_WEEKDAY, JWNLS_SHORT_WEEKDAY);
    names("Months", months, std::size(months), JWNLS_MONTH, JWNLS_SHORT_MONTH);
    symbols();
  }

 private:
  void section(const std::string& heading, const Table& table) {
    output_.line("");
    output_.line(heading);
    table.write(output_, terminal_columns());
  }

  void title(const std::string& zone) {
    Table table;
    table.add({"Locale", name_});
    (void)each_locale([&](const jwnls_locale_info& locale) {
      if (name_ != locale.name) return;
      table.add({"Name", locale.english_name});
      table.add({"Own name", locale.own_name});
    });
    const jwnls_zone_state now = zone_now(zone);
    table.add({"Time zone", std::string(now.name) + " (now " + now.abbreviation + ", " +
                                offset_text(now.offset_seconds) + ")"});
    table.write(output_, 0);
  }

  // An item of the conventions; nothing where there is none.
  [[nodiscard]] std::optional<std::string> item(int item, std::size_t index = 0) const {
    char text[400];
    std::size_t length = 0;
    const int code = jwnls_convention(conventions_.get(), item, index, text, sizeof text, &length);
    if (code != JWNLS_OK) return std::nullopt;
    return std::string(text, length);
  }

  template <std::size_t count>
  void examples(const std::string& heading, const Example (&rows)[count], bool tell_values) {
    Table table(2);
    for (const Example& row : rows) {
      std::vector<std::string> cells = {row.name};
      if (tell_values) cells.emplace_back(row.value);
      cells.push_back(written(row));
      if (row.pattern != 0) cells.push_back(item(row.pattern, row.index).value_or(""));
      table.add(std::move(cells));
    }
    section(heading, table);
  }

  [[nodiscard]] std::string written(const Example& row) const {
    const auto layout = Layout::open(name_, row.kind, row.words);
    if (!layout) return std::string("(") + layout.message() + ")";
    char out[ColumnValues::room];
    const auto values = format_values(*layout, "", {});
    const FieldValue text = values->convert(row.value, out);
    if (text.outcome != FieldOutcome::refused) return {out, text.length};
    return std::string("(").append(values->message(row.value)).append(")");
  }

  void readings() {
    Table table(2);
    for (const Typed& row : typed) {
      const auto values = read_values(open_layout(name_, row.kind, ""), {});
      for (const char* text : row.texts) {
        char out[ColumnValues::room];
        const FieldValue value = values->convert(text, out);
        if (value.outcome == FieldOutcome::refused) {
          table.add({row.name, text, "not read"});
          continue;
        }
        const std::string currency(value.currency);
        table.add({row.name, text,
                   std::string(out, value.length) + (currency.empty() ? "" : " ") + currency,
                   (value.facts & JWNLS_TWO_WAYS) != 0 ? "could be meant otherwise" : ""});
      }
    }
    section("Reads", table);
  }

  void names(const char* heading, const char* const* english, std::size_t count, int full,
             int abbreviated) {
    Table table(2);
    for (std::size_t i = 0; i < count; ++i) {
      table.add({english[i], item(full, i).value_or(""), item(abbreviated, i).value_or("")});
    }
    section(heading, table);
  }

  // A symbol that may be a blank or look like another: with its code points.
  static std::vector<std::string> symbol(const char* name, const std::string& text) {
    if (text.empty()) return {name, "none"};
    std::string codes;
    std::string_view rest = text;
    while (!rest.empty()) {
      utf8proc_int32_t character = 0;
      const auto bytes = utf8proc_iterate(reinterpret_cast<const utf8proc_uint8_t*>(rest.data()),
                                          static_cast<utf8proc_ssize_t>(rest.size()), &character);
      if (bytes <= 0) break;
      char code[12];
      (void)std::snprintf(code, sizeof code, "U+%04X", static_cast<unsigned>(character));
      codes.append(codes.empty() ? "" : " ").append(code);
      rest.remove_prefix(static_cast<std::size_t>(bytes));
    }
    return {name, text, codes};
  }

  void symbols() {
    Table table(2);
    table.add({"before noon", item(JWNLS_DAY_HALF, 0).value_or("")});
    table.add({"after noon", item(JWNLS_DAY_HALF, 1).value_or("")});
    table.add(symbol("decimal", item(JWNLS_DECIMAL_SYMBOL).value_or("")));
    table.add(symbol("group", item(JWNLS_GROUP_SYMBOL).value_or("")));
    const std::string sizes = item(JWNLS_GROUP_SIZES).value_or("");
    table.add({"group sizes", sizes.empty() ? "none" : sizes});
    table.add(symbol("currency", item(JWNLS_CURRENCY_SYMBOL).value_or("")));
    if (!amounts_.currency().empty()) table.add({"ISO 4217", amounts_.currency()});
    if (const auto decimals = item(JWNLS_CURRENCY_DECIMALS)) table.add({"its decimals", *decimals});
    const auto first = item(JWNLS_FIRST_WEEKDAY);
    if (first && first->size() == 1 && first->front() >= '0' && first->front() <= '6') {
      table.add({"week begins", weekdays[first->front() - '0']});
    }
    section("Symbols", table);
  }

  Output& output_;
  const std::string name_;
  const Layout conventions_;
  const Layout amounts_;
};

}  // namespace

ExitCode run_show(const ShowOptions& options) {
  Output output;
  if (!options.page.empty()) {
    TargetFile file(options.page == "-" ? "" : options.page);
    file.write(show_page(find_locale(options.locale, "LC_TIME")));
    file.commit();
    return ExitCode::ok;
  }
  Report(output, options).write(options.zone);
  output.flush();
  return ExitCode::ok;
}

}  // namespace jwnls::tool
