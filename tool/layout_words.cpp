#include "tool/layout_words.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <initializer_list>
#include <iterator>
#include <sstream>
#include <string_view>

#include "tool/exit_code.h"
#include "tool/terminal_text.h"

namespace jwnls::tool {
namespace {

constexpr unsigned bits(std::initializer_list<Kind> kinds) {
  unsigned set = 0;
  for (const Kind kind : kinds) set |= 1U << static_cast<unsigned>(kind);
  return set;
}
constexpr unsigned amounts = bits({Kind::amount});
constexpr unsigned percentages = bits({Kind::percent});
constexpr unsigned measures = bits({Kind::number, Kind::amount, Kind::percent});
constexpr unsigned numbers = measures | bits({Kind::integer});
constexpr unsigned moments = bits({Kind::datetime, Kind::instant});
constexpr unsigned dates = moments | bits({Kind::date});
constexpr unsigned all_kinds = ~0U;

struct WordRow {
  const char* name;
  const char* short_option;  // null: none
  const char* values;        // as the help shows them; null: a flag
  unsigned kinds;
  Side side;
  const char* help;
};

constexpr WordRow rows[] = {
    {"style", "-s", "STYLE", dates, Side::writing, "short, medium (the default), long or full"},
    {"decimals", "-d", "COUNT", measures, Side::writing,
     "So many decimals; default: those of the value, of amounts those of the currency"},
    {"no-group", nullptr, nullptr, numbers, Side::writing, "Do not group digits"},
    {"plus", nullptr, nullptr, numbers, Side::writing, "A sign always"},
    {"digits", nullptr, "WHICH", numbers, Side::writing,
     "latn (the default) or own: the locale's own digits"},
    {"exact", nullptr, nullptr, numbers, Side::writing, "Narrow blanks as CLDR has them"},
    {"rounding", nullptr, "HOW", measures, Side::writing, "half-away (the default) or half-even"},
    {"symbol", nullptr, "WHICH", amounts, Side::writing,
     "own (the default), narrow, code or none: how the currency is written"},
    {"accounting", nullptr, nullptr, amounts, Side::writing,
     "Negative amounts as accountants write them"},
    {"currency", nullptr, "CODE", amounts, Side::both,
     "The currency: own (the locale's, the default) or a code such as EUR; to read also any"},
    {"groups", nullptr, "WHICH", numbers, Side::reading,
     "Groups of digits: locale (the default), any (of any size), none"},
    {"signs", nullptr, "WHERE", numbers, Side::reading,
     "front (the default) or any: behind too, and parentheses"},
    {"unit", nullptr, "WHETHER", amounts, Side::reading,
     "A currency is optional (the default) or required"},
    {"fraction", nullptr, "WHICH", amounts, Side::reading,
     "Decimals: those of the currency (the default) or any count"},
    {"credit", nullptr, "HOW", amounts, Side::reading,
     "CR behind an amount: refuse (the default), plus or minus"},
    {"percent-sign", nullptr, "WHETHER", percentages, Side::reading,
     "The sign is required (the default) or optional"},
    {"order", nullptr, "ORDER", dates, Side::reading,
     "Of three numbers: locale (the default), dmy, mdy or ymd"},
    {"years", nullptr, "DIGITS", dates, Side::reading, "locale (the default), 4 or 2"},
    {"century", nullptr, "YEAR", dates, Side::reading,
     "The first of the hundred years that two digits stand for; default: 1960"},
    {"names", nullptr, "WHOSE", dates, Side::reading,
     "Names of months and days: language (the default) or english too"},
    {"pattern", nullptr, "NUMBER", dates, Side::reading,
     "By the locale's short (1), medium (2) or long (3) pattern alone"},
    {"loose", nullptr, nullptr, dates | bits({Kind::time}), Side::reading,
     "Whatever could be meant, without any proof"},
    {"overlap", nullptr, "WHICH", moments, Side::reading,
     "A time that the zone has twice: refuse (the default), first or second"},
    {"year-cutoff", nullptr, "YEAR", bits({Kind::period}), Side::reading,
     "The first of the hundred years that two digits stand for; default: 1950"},
    {"zone", "-z", "ZONE", moments, Side::both,
     "The time zone of what has no offset, or is to lose it"},
    {"missing", nullptr, "WHAT", all_kinds, Side::reading,
     "blank (the default) or module: \".\" and \".A\" are missing values too"},
    {"proved", nullptr, nullptr, all_kinds, Side::reading,
     "Fail where values could mean another and none decides"},
};

bool serves(Side row, Side side) { return row == side || row == Side::both || side == Side::both; }

// Words that the table does not have are given to every layout, which says what is wrong with them.
bool is_of(std::string_view word, Side side) {
  const std::string_view name = word.substr(0, word.find('='));
  const auto* const row = std::find_if(std::begin(rows), std::end(rows),
                                       [name](const WordRow& each) { return each.name == name; });
  return row == std::end(rows) || serves(row->side, side);
}

}  // namespace

void LayoutWords::add_options(CLI::App& command, Kind kind, Side side) {
  for (const WordRow& row : rows) {
    if ((row.kinds & bits({kind})) == 0 || !serves(row.side, side)) continue;
    if (command.get_option_no_throw(std::string("--") + row.name) != nullptr) continue;
    Given& given = options_.emplace_back(Given{row.name, {}});
    std::string names = std::string("--") + row.name;
    if (row.short_option != nullptr) names.insert(0, std::string(row.short_option) + ",");
    if (row.values == nullptr) {
      command.add_flag(names, given.is_set, row.help);
    } else {
      command.add_option(names, given.value, row.help)->type_name(row.values);
    }
  }
  command.add_option("-O,--option", free_words_, "An option word of a layout, such as groups=any")
      ->type_name("WORD")
      ->allow_extra_args(false);
}

std::vector<std::string> LayoutWords::all() const {
  std::vector<std::string> words;
  for (const Given& each : options_) {
    if (each.value.find_first_of(" \t\n\r") != std::string::npos) {
      throw Failure{ExitCode::usage, "--" + each.name + ": " + in_quotes(each.value) +
                                         ": a value has no blanks (see --help)"};
    }
    if (each.is_set) words.push_back(each.name);
    if (!each.value.empty()) words.push_back(each.name + "=" + each.value);
  }
  for (const std::string& free : free_words_) {
    std::istringstream parts(free);
    std::copy(std::istream_iterator<std::string>(parts), {}, std::back_inserter(words));
  }
  return words;
}

std::string LayoutWords::of(Side side) const {
  std::string text;
  for (const std::string& word : all()) {
    if (is_of(word, side)) text.append(text.empty() ? "" : " ").append(word);
  }
  return text;
}

bool LayoutWords::gives(std::string_view name, std::string_view value) const {
  std::string word(name);
  if (!value.empty()) word.append("=").append(value);
  const auto words = all();
  return std::find(words.begin(), words.end(), word) != words.end();
}

}  // namespace jwnls::tool
