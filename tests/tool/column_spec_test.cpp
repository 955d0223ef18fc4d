// What -c says, and which columns of a header it means.

#include "tool/tables/column_spec.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tool/exit_code.h"
#include "tool/nearest_name.h"
#include "tool/tables/column_selection.h"

namespace jwnls::tool {
namespace {

const TableHeader header = {{"Nr", "Netto", "Brutto", "net:to", "a,b", "Nr", "say \"hi\""}, 7, ';'};

std::string in_full(const ColumnSpec& spec) {
  std::string text = spec.kind == nullptr ? "-" : spec.kind->name;
  for (const SelectedColumn& column : select_columns({spec}, header)) {
    text += ' ' + std::to_string(column.field + 1) + ':' + column.name;
  }
  for (const std::string& word : spec.words) text += " (" + word + ")";
  const auto add = [&text](const char* name, const std::optional<std::string>& value) {
    if (value) text += std::string(" ") + name + "[" + *value + "]";
  };
  if (!spec.locale.empty()) add("locale", spec.locale);
  add("from", spec.from);
  add("to", spec.to);
  add("as", spec.as);
  add("currency-as", spec.currency_as);
  return text;
}

std::string problem_of(const std::string& text) {
  try {
    return in_full(read_column_spec(text));
  } catch (const Failure& failure) {
    return std::to_string(static_cast<int>(failure.code)) + " " + failure.message;
  }
}

struct Row {
  const char* spec;
  const char* means;
};

TEST(ColumnSpec, MeansColumnsKindAndWords) {
  constexpr Row rows[] = {
      {"Netto,Brutto=amount", "amount 2:Netto 3:Brutto"},
      {"Netto=currency:currency=any:as=net:currency-as=cur",
       "amount 2:Netto (currency=any) as[net] currency-as[cur]"},
      {"2-3", "- 2:Netto 3:Brutto"},
      {"-2=date:de_DE", "date 1:Nr 2:Netto locale[de_DE]"},
      {"6-=number:no-group:decimals=2", "number 6:Nr 7:say \"hi\" (no-group) (decimals=2)"},
      {"*tto:from=en_US:to=\"de_DE\"", "- 2:Netto 3:Brutto from[en_US] to[de_DE]"},
      {"/^n.*t/=number", "number 4:net:to"},
      {"/a\\/b|,b$/", "- 5:a,b"},
      {"\"net:to\",\"a,b\"=date:zone=\"UTC+05:30\"", "date 4:net:to 5:a,b (zone=UTC+05:30)"},
      {"\"say \"\"hi\"\"\"", "- 7:say \"hi\""},
      {"Netto:as=\"x:y\"", "- 2:Netto as[x:y]"},
  };
  for (const Row& row : rows) EXPECT_EQ(problem_of(row.spec), row.means) << row.spec;
}

TEST(ColumnSpec, SaysWhatIsWrongWithIt) {
  constexpr Row rows[] = {
      {"", "2 -c '': a column's name or number is missing"},
      {"a,=date", "2 -c 'a,=date': a column's name or number is missing"},
      {"Netto=dat", "2 -c 'Netto=dat': 'dat': no such kind; did you mean 'date'?"},
      {"Netto=number:decimal=2",
       "2 -c 'Netto=number:decimal=2': 'decimal=2': no such word; did you mean 'decimals'?"},
      {"Netto=number:decimals",
       "2 -c 'Netto=number:decimals': 'decimals' needs a value:"
       " decimals=..."},
      {"Netto=date:de_ED",
       "3 -c 'Netto=date:de_ED': 'de_ED': neither a word nor a locale;"
       " did you mean 'de_DE'?"},
      {"Netto=date:de:fr", "2 -c 'Netto=date:de:fr': two locales, de and fr"},
      {"\"Netto", "2 -c '\"Netto': a quote is opened and not closed"},
      {"\"Netto\"x", "2 -c '\"Netto\"x': 'x' does not belong there"},
      {"/net", "2 -c '/net': an expression is not closed by \"/\""},
      {"0", "2 -c '0': columns are counted from 1"},
      {"3-2", "2 -c '3-2': '3-2' runs backwards"},
      {"8", "2 no column 8; there are 7"},
      {"7-9", "2 no column 7-9; there are 7"},
      {"NETTO", "2 no column 'NETTO'; there is 'Netto'"},
      {"Nr", "2 there are 2 columns 'Nr': say the number, 1 or 6"},
      {"zz*", "2 no column is named like 'zz*'"},
      {"Netto,2", "2 column 'Netto' is asked for twice; as=NAME makes a new column of it"},
      {"Netto:as=Brutto", "2 a new column cannot be named 'Brutto': there is one"},
      {"2,3:as=x",
       "2 -c '2,3:as=x': 2 columns cannot be one new column; give each a -c of its own"},
  };
  for (const Row& row : rows) EXPECT_EQ(problem_of(row.spec), row.means) << row.spec;
  EXPECT_EQ(problem_of("/(/").substr(0, 7), "2 /(/: ");
}

TEST(NearestName, IsAFewLettersAwayOrBeginsSo) {
  const std::vector<std::string> names = {"date", "datetime", "number", "Fällig", "x"};
  EXPECT_EQ(nearest_name("DATE", names), "date");
  EXPECT_EQ(nearest_name("nubmer", names), "number");
  EXPECT_EQ(nearest_name("Fallig", names), "Fällig");
  EXPECT_EQ(nearest_name("datet", names), "date");
  EXPECT_EQ(nearest_name("num", names), "number");
  EXPECT_EQ(nearest_name("y", names), std::nullopt);
  EXPECT_EQ(nearest_name("", names), std::nullopt);
  EXPECT_EQ(edit_distance("ab", "ba", 3), 1U);
  EXPECT_EQ(edit_distance("kitten", "sitting", 2), 3U);
}

}  // namespace
}  // namespace jwnls::tool
