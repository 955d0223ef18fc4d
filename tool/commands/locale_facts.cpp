#include "tool/commands/locale_facts.h"

#include <cstdint>
#include <string_view>
#include <utility>

#include "tool/session.h"
#include "tool/tables/layout_values.h"

namespace jwnls::tool {
namespace {

// A day and an hour that show every padding and the second half of the day.
constexpr const char* example_moment = "2024-03-05T14:07:09";

struct Example {
  Kind kind;
  const char* words;
  const char* value;
  int pattern;  // the item of the conventions; 0: none
  std::uint32_t index;
};

constexpr Example moments[] = {
    {Kind::date, "style=short", example_moment, JWNLS_DATE_PATTERN, 0},
    {Kind::date, "", example_moment, JWNLS_DATE_PATTERN, 1},
    {Kind::date, "style=long", example_moment, JWNLS_DATE_PATTERN, 2},
    {Kind::date, "style=full", example_moment, 0, 0},
    {Kind::time, "", example_moment, JWNLS_TIME_PATTERN, 0},
    {Kind::datetime, "style=short", example_moment, 0, 0},
    {Kind::datetime, "", example_moment, JWNLS_DATETIME_PATTERN, 0},
    {Kind::datetime, "style=long", example_moment, 0, 0},
};

constexpr Example numbers[] = {
    {Kind::number, "", "1234567.891", 0, 0},
    {Kind::number, "", "-0.5", 0, 0},
    {Kind::number, "digits=own", "1234567.891", 0, 0},
    {Kind::integer, "", "1234567", 0, 0},
    {Kind::amount, "", "1234.5", 0, 0},
    {Kind::amount, "", "-1234.5", 0, 0},
    {Kind::amount, "accounting", "-1234.5", 0, 0},
    {Kind::amount, "symbol=code", "1234.5", 0, 0},
    {Kind::percent, "", "0.125", 0, 0},
    {Kind::percent, "", "-0.07", 0, 0},
};

// Texts that are one value here, another there, and nothing elsewhere.
struct Typed {
  Kind kind;
  const char* words;
  std::vector<const char*> texts;
};
const Typed typed[] = {
    {Kind::date, "", {"2/3/2024", "13.3.2024", "3/13/2024", "5-3-24", "2024-03-05", "30.2.2024"}},
    {Kind::time, "", {"14:07", "14.07", "2:07 PM"}},
    {Kind::number,
     "",
     {"1,234", "1.234", "1,234.5", "1.234,5", "1 234,5", "1'234.5", "1,23,456.7"}},
    {Kind::amount, "currency=any", {"1,234.50", "1.234,50", "€5", "5 €", "$5", "¥500"}},
    {Kind::percent, "", {"12.5%", "12,5 %", "%12"}},
};

constexpr const char* weekdays[] = {"Sunday",   "Monday", "Tuesday", "Wednesday",
                                    "Thursday", "Friday", "Saturday"};
constexpr const char* months[] = {"January",   "February", "March",    "April",
                                  "May",       "June",     "July",     "August",
                                  "September", "October",  "November", "December"};

class Facts {
 public:
  Facts(const std::string& locale, const std::string& zone)
      : conventions_(open_layout(locale, Kind::date, "")) {
    facts_.name = locale;
    facts_.zone = zone_now(zone);
  }

  LocaleFacts find() {
    (void)each_locale([this](const jwnls_locale_info& locale) {
      if (facts_.name != locale.name) return;
      facts_.english_name = locale.english_name;
      facts_.own_name = locale.own_name;
    });
    for (const Example& row : moments) facts_.moments.push_back(written(row));
    for (const Example& row : numbers) facts_.numbers.push_back(written(row));
    for (const Typed& row : typed) add_readings(row);
    add_names(facts_.weekdays, weekdays, JWNLS_WEEKDAY, JWNLS_SHORT_WEEKDAY);
    add_names(facts_.months, months, JWNLS_MONTH, JWNLS_SHORT_MONTH);
    add_symbols();
    return std::move(facts_);
  }

 private:
  // An item of the conventions; nothing where there is none.
  [[nodiscard]] std::optional<std::string> item(int item, std::size_t index = 0) const {
    char text[400];
    std::size_t length = 0;
    const int code = jwnls_convention(conventions_.get(), item, index, text, sizeof text, &length);
    if (code != JWNLS_OK) return std::nullopt;
    return std::string(text, length);
  }
  [[nodiscard]] std::string text(int which, std::size_t index = 0) const {
    return item(which, index).value_or("");
  }

  [[nodiscard]] WrittenExample written(const Example& row) const {
    return {row.kind, row.words, row.value, text_of(row),
            row.pattern == 0 ? "" : text(row.pattern, row.index)};
  }

  [[nodiscard]] std::string text_of(const Example& row) const {
    const auto layout = Layout::open(facts_.name, row.kind, row.words);
    if (!layout) return std::string("(") + layout.message() + ")";
    char out[ColumnValues::room];
    const auto values = format_values(*layout, "", {});
    const FieldValue text = values->convert(row.value, out);
    if (text.outcome != FieldOutcome::refused) return {out, text.length};
    return std::string("(").append(values->message(row.value)).append(")");
  }

  void add_readings(const Typed& row) {
    const auto values = read_values(open_layout(facts_.name, row.kind, row.words), {});
    for (const char* text : row.texts) {
      char out[ColumnValues::room];
      const FieldValue value = values->convert(text, out);
      ReadExample& example = facts_.readings.emplace_back(ReadExample{row.kind, text});
      if (value.outcome == FieldOutcome::refused) {
        const std::string reason = values->reason(text);
        if (reason != "not read") example.reason = reason;
        continue;
      }
      example.value.emplace(out, value.length);
      example.currency = value.currency;
      example.two_ways = (value.facts & JWNLS_TWO_WAYS) != 0;
    }
  }

  template <std::size_t count>
  void add_names(std::vector<LocaleName>& names, const char* const (&english)[count], int full,
                 int abbreviated) const {
    for (std::size_t i = 0; i < count; ++i) {
      names.push_back({english[i], text(full, i), text(abbreviated, i)});
    }
  }

  void add_symbols() {
    facts_.before_noon = text(JWNLS_DAY_HALF, 0);
    facts_.after_noon = text(JWNLS_DAY_HALF, 1);
    facts_.decimal = text(JWNLS_DECIMAL_SYMBOL);
    facts_.group = text(JWNLS_GROUP_SYMBOL);
    facts_.group_sizes = text(JWNLS_GROUP_SIZES);
    facts_.currency = text(JWNLS_CURRENCY_SYMBOL);
    facts_.currency_code = open_layout(facts_.name, Kind::amount, "").currency();
    facts_.currency_decimals = item(JWNLS_CURRENCY_DECIMALS);
    const std::string first = text(JWNLS_FIRST_WEEKDAY);
    if (first.size() == 1 && first.front() >= '0' && first.front() <= '6') {
      facts_.first_weekday = weekdays[first.front() - '0'];
    }
  }

  const Layout conventions_;
  LocaleFacts facts_;
};

}  // namespace

const char* const example_text = "2024-03-05, a Tuesday, 14:07:09";

std::string layout_name(const WrittenExample& example) {
  constexpr std::string_view style = "style=";
  std::string_view words = example.words;
  if (words.starts_with(style)) words.remove_prefix(style.size());
  // A medium style goes without saying, but not where others stand beside it.
  const bool is_medium =
      words.empty() && (example.kind == Kind::date || example.kind == Kind::datetime);
  if (is_medium) words = "medium";
  std::string name = jwnls_kind_name(static_cast<int>(example.kind));
  return name.append(words.empty() ? "" : " ").append(words);
}

LocaleFacts locale_facts(const std::string& locale, const std::string& zone) {
  return Facts(locale, zone).find();
}

}  // namespace jwnls::tool
