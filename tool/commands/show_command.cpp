#include "tool/commands/show_command.h"

#include <utf8proc.h>

#include <cstdio>
#include <string_view>
#include <vector>

#include "tool/commands/locale_facts.h"
#include "tool/commands/show_page.h"
#include "tool/json_text.h"
#include "tool/output.h"
#include "tool/session.h"
#include "tool/table.h"
#include "tool/tables/target_file.h"
#include "tool/terminal_text.h"

namespace jwnls::tool {
namespace {

std::string kind_text(Kind kind) { return jwnls_kind_name(static_cast<int>(kind)); }

// A symbol that may be a blank or look like another: with its code points.
std::vector<std::string> symbol(const char* name, const std::string& text) {
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

// Writes a locale, section by section.
class Report {
 public:
  Report(Output& output, const LocaleFacts& facts) : output_(output), facts_(facts) {}

  void write() {
    title();
    examples(std::string("Writes ") + example_text + ", as", facts_.moments, false);
    examples("Writes numbers, amounts of its currency and percentages as", facts_.numbers, true);
    readings();
    names("Weekdays", facts_.weekdays);
    names("Months", facts_.months);
    symbols();
  }

 private:
  void section(const std::string& heading, const Table& table) {
    output_.line("");
    output_.line(heading);
    table.write(output_, terminal_columns());
  }

  void title() {
    Table table;
    table.add({"Locale", facts_.name});
    table.add({"Name", facts_.english_name});
    table.add({"Own name", facts_.own_name});
    table.add({"Time zone", std::string(facts_.zone.name) + " (now " + facts_.zone.abbreviation +
                                ", " + offset_text(facts_.zone.offset_seconds) + ")"});
    table.write(output_, 0);
  }

  void examples(const std::string& heading, const std::vector<WrittenExample>& examples,
                bool tell_values) {
    Table table(2);
    for (const WrittenExample& each : examples) {
      std::vector<std::string> cells = {layout_name(each)};
      if (tell_values) cells.push_back(each.value);
      cells.push_back(each.text);
      if (!each.pattern.empty()) cells.push_back(each.pattern);
      table.add(std::move(cells));
    }
    section(heading, table);
  }

  void readings() {
    Table table(2);
    for (const ReadExample& each : facts_.readings) {
      if (!each.value) {
        table.add({kind_text(each.kind), each.text, "not read"});
        continue;
      }
      std::string value = *each.value;
      if (!each.currency.empty()) value.append(" ").append(each.currency);
      table.add({kind_text(each.kind), each.text, std::move(value),
                 each.two_ways ? "could be meant otherwise" : ""});
    }
    section("Reads", table);
  }

  void names(const char* heading, const std::vector<LocaleName>& names) {
    Table table(2);
    for (const LocaleName& each : names) table.add({each.english, each.full, each.abbreviated});
    section(heading, table);
  }

  void symbols() {
    Table table(2);
    table.add({"before noon", facts_.before_noon});
    table.add({"after noon", facts_.after_noon});
    table.add(symbol("decimal", facts_.decimal));
    table.add(symbol("group", facts_.group));
    table.add({"group sizes", facts_.group_sizes.empty() ? "none" : facts_.group_sizes});
    table.add(symbol("currency", facts_.currency));
    if (!facts_.currency_code.empty()) table.add({"ISO 4217", facts_.currency_code});
    if (facts_.currency_decimals) table.add({"its decimals", *facts_.currency_decimals});
    if (!facts_.first_weekday.empty()) table.add({"week begins", facts_.first_weekday});
    section("Symbols", table);
  }

  Output& output_;
  const LocaleFacts& facts_;
};

void add_written(JsonText& json, const std::vector<WrittenExample>& examples) {
  for (const WrittenExample& each : examples) {
    json.end_line().open('{').member("kind", kind_text(each.kind)).member("words", each.words);
    json.member("value", each.value).member("text", each.text);
    if (!each.pattern.empty()) json.member("pattern", each.pattern);
    json.close();
  }
}

void add_names(JsonText& json, const char* key, const std::vector<LocaleName>& names) {
  json.end_line().key(key).open('[');
  for (const LocaleName& each : names) {
    json.end_line().open('{').member("english", each.english);
    json.member("full", each.full).member("abbreviated", each.abbreviated).close();
  }
  json.end_line().close();
}

void add_readings(JsonText& json, const std::vector<ReadExample>& readings) {
  json.end_line().key("reads").open('[');
  for (const ReadExample& each : readings) {
    json.end_line().open('{').member("kind", kind_text(each.kind)).member("text", each.text);
    if (each.value) {
      json.member("value", *each.value);
    } else {
      json.key("value").raw("null");
    }
    if (!each.currency.empty()) json.member("currency", each.currency);
    json.key("two_ways").raw(each.two_ways ? "true" : "false").close();
  }
  json.end_line().close();
}

std::string json_of(const LocaleFacts& facts) {
  JsonText json;
  json.open('{').member("locale", facts.name).member("name", facts.english_name);
  json.member("own_name", facts.own_name).end_line().key("zone").open('{');
  json.member("name", facts.zone.name).member("abbreviation", facts.zone.abbreviation);
  json.key("offset_seconds").raw(std::to_string(facts.zone.offset_seconds)).close();
  json.end_line().key("writes").open('[');
  add_written(json, facts.moments);
  add_written(json, facts.numbers);
  json.end_line().close();
  add_readings(json, facts.readings);
  add_names(json, "weekdays", facts.weekdays);
  add_names(json, "months", facts.months);
  json.end_line().key("symbols").open('{').member("before_noon", facts.before_noon);
  json.member("after_noon", facts.after_noon).member("decimal", facts.decimal);
  json.member("group", facts.group).member("group_sizes", facts.group_sizes);
  json.member("currency", facts.currency).member("currency_code", facts.currency_code);
  if (facts.currency_decimals) json.key("currency_decimals").raw(*facts.currency_decimals);
  json.member("first_weekday", facts.first_weekday).close();
  return json.end_line().close().text();
}

}  // namespace

ExitCode run_show(const ShowOptions& options) {
  Output output;
  const std::string locale = find_locale(options.locale, "LC_TIME");
  const LocaleFacts facts = locale_facts(locale, options.zone);
  if (!options.page.empty()) {
    TargetFile file(options.page == "-" ? "" : options.page);
    file.write(show_page(facts));
    file.commit();
    return ExitCode::ok;
  }
  if (options.json) {
    output.line(json_of(facts));
  } else {
    Report(output, facts).write();
  }
  output.flush();
  return ExitCode::ok;
}

}  // namespace jwnls::tool
