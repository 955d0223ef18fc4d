// What reports are made of: exact sums, and texts that a page shows as they are.

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

#include "tool/reports/date_form.h"
#include "tool/reports/decimal_sum.h"
#include "tool/reports/html_page.h"
#include "tool/reports/table_report.h"
#include "tool/reports/unread_texts.h"

namespace jwnls::tool {
namespace {

TEST(DecimalSum, IsExact) {
  const std::string nines(60, '9');
  const struct {
    std::vector<std::string> decimals;
    std::string sum;
  } rows[] = {
      {{}, "0"},
      {{"-0.00"}, "0.00"},
      {{"0.1", "0.2"}, "0.3"},
      {{"1.50", "-2"}, "-0.50"},
      {{"999999999999999999", "1"}, "1000000000000000000"},
      {{"0.999999999999999999", "0.000000000000000001"}, "1.000000000000000000"},
      {{"0.0000000000000000001", "-1"}, "-0.9999999999999999999"},
      {{nines + "." + nines, "0." + std::string(59, '0') + "1"},
       "1" + std::string(60, '0') + "." + std::string(60, '0')},
      {{nines, "-" + nines, "7"}, "7"},
  };
  for (const auto& row : rows) {
    DecimalSum sum;
    DecimalSum behind;
    for (const std::string& decimal : row.decimals) behind.add(decimal_parts(decimal));
    sum += behind;
    EXPECT_EQ(sum.text(), row.sum) << testing::PrintToString(row.decimals);
  }
}

TEST(DecimalSum, IsThatOfIntegers) {
  std::mt19937_64 random(20240315);
  for (int round = 0; round < 200; ++round) {
    DecimalSum sums[2];
    std::int64_t expected = 0;
    for (int value = 0; value < 100; ++value) {
      const auto number = static_cast<std::int64_t>(random()) >> (8 + random() % 50);
      expected += number;
      sums[value % 2].add(decimal_parts(std::to_string(number)));
    }
    sums[0] += sums[1];
    EXPECT_EQ(sums[0].text(), std::to_string(expected));
  }
}

TEST(DecimalSum, ComparesDecimals) {
  const char* ascending[] = {"-10",  "-9.5", "-0.01", "0",    "0.009",
                             "0.01", "00.5", "9",     "10.0", "11"};
  for (std::size_t i = 0; i < std::size(ascending); ++i) {
    for (std::size_t j = 0; j < std::size(ascending); ++j) {
      const int order = compare(decimal_parts(ascending[i]), decimal_parts(ascending[j]));
      EXPECT_EQ(order, static_cast<int>(i > j) - static_cast<int>(i < j))
          << ascending[i] << " " << ascending[j];
    }
  }
  EXPECT_EQ(compare(decimal_parts("-0"), decimal_parts("0.00")), 0);
  for (const char* other : {"", "-", ".", "1e3", "1.2.3", "x"}) {
    EXPECT_FALSE(decimal_parts(other).is_decimal) << other;
  }
}

TEST(DecimalSum, TakesExponents) {
  const struct {
    const char* text;
    const char* plain;
  } rows[] = {
      {"1.5e3", "1500"},      {"+1.5E+3", "1500"}, {"-1.25e1", "-12.5"}, {"-12.5e-3", "-0.0125"},
      {"0e0", "0"},           {"5e-1", "0.5"},     {"100e-2", "1.00"},   {"+7", "7"},
      {"1e99999", "1e99999"}, {"1e", "1e"},        {"e3", "e3"},         {"007e1", "70"}};
  for (const auto& row : rows) {
    char out[100];
    EXPECT_EQ(plain_decimal(row.text, out, sizeof out), row.plain) << row.text;
  }
}

TEST(UnreadTexts, AreCountedUpToALimit) {
  UnreadTexts texts;
  const std::string row(UnreadTexts::longest - 1, 'x');
  for (const std::string& text :
       {std::string("a"), row + "\u00E9", std::string("b"), row + "\u00E8"}) {
    if (UnreadText* found = texts.find_or_add(text, 2)) ++found->count;
  }
  const auto most = texts.most_frequent(10);
  ASSERT_EQ(most.size(), 2U);
  EXPECT_EQ(most[0]->text, row);  // no half of a character
  EXPECT_EQ(most[0]->count, 2U);
  EXPECT_TRUE(most[0]->is_cut);
  EXPECT_EQ(most[1]->text, "a");
}

TEST(DateForm, IsThatOfTheText) {
  const struct {
    const char* text;
    const char* date;
    bool month_first;
    const char* form;
  } rows[] = {
      {"5.3.24", "2024-03-05", false, "d.m.yy"},
      {"05/05/2024", "2024-05-05", true, "m/d/yyyy"},
      {"13/03/2024", "2024-03-13", true, "d/m/yyyy"},
      {"٠٥/٠٣/٢٠٢٤", "2024-03-05", false, "d/m/yyyy"},
      {"2024-03-05", "2024-03-05", false, "yyyy-m-d"},
      {"20240305", "2024-03-05", false, "yyyymmdd"},
      {"2024年3月5日", "2024-03-05", false, "yyyy年m月d日"},
      {"Dienstag, 5. März 2024", "2024-03-05", false, "weekday, d. month yyyy"},
      {"Tue 5/3/24", "2024-03-05", true, "weekday d/m/yy"},
      {"March 5, 2024", "2024-03-05", true, "month d, yyyy"},
      {"5 de marzo de 2024", "2024-03-05", false, "d de month de yyyy"},
      {"5 8 12 2024", "2024-03-05", false, ""},
      {"\xFF", "2024-03-05", false, ""},
  };
  DateForms forms(8);
  for (const auto& row : rows) {
    EXPECT_EQ(date_form(row.text, row.date, row.month_first), row.form) << row.text;
    forms.add(row.form, 1);
  }
  EXPECT_EQ(forms.reported().front().form, "d/m/yyyy");
  EXPECT_EQ(forms.reported().back().form, "");
}

TEST(HtmlPage, ShowsTextsAsTheyAre) {
  EXPECT_EQ(html_text("<a href=\"x\">'&\x1B\xFF\u05D0"),
            "&lt;a href=&quot;x&quot;&gt;&#39;&amp;\uFFFD\uFFFD\u05D0");
  EXPECT_EQ(html_isolated("\u05D0", "he-IL"), "<bdi lang=\"he-IL\">\u05D0</bdi>");
}

// The text of a page's main part, pieces of it one blank apart.
std::string main_text(const std::string& page) {
  std::string text;
  bool in_tag = false;
  for (const char each : page.substr(page.find("<main>"))) {
    in_tag = in_tag || each == '<';
    const bool is_blank = in_tag || each == ' ' || each == '\n';
    if (!is_blank) text += each;
    if (is_blank && !text.empty() && text.back() != ' ') text += ' ';
    in_tag = in_tag && each != '>';
  }
  return text;
}

TEST(HtmlReport, TellsAllOfEveryColumn) {
  TableReport report;
  report.input = "sales.csv";
  report.separator = "semicolon";
  report.rows = 1234;
  report.ragged = 2;
  report.ended = "No space left on device";
  ReportedColumn prices;
  prices.number = 2;
  prices.name = "<price>";
  prices.layout = "de_DE number";
  prices.read = 1230;
  prices.not_read = 3;
  prices.two_ways = 7;
  prices.values = {{"", 1230, "-1.5", "99", "1234.25"}};
  prices.texts = {{"1.23", false, 2, 17, "groups of another size"}, {"xx", true, 1, 18, "none"}};
  ReportedColumn amounts;
  amounts.number = 3;
  amounts.name = "due";
  amounts.layout = "de_DE amount";
  amounts.values = {{"", 1, "1", "1", "1"}, {"EUR", 1, "2.50", "2.50", {}}};
  report.columns = {prices, amounts};
  EXPECT_EQ(main_text(html_report(report)),
            "sales.csv 1,234 rows, 2 of another length, separator semicolon, header, UTF-8 "
            "Ended early: No space left on device &lt;price&gt; Column 2, de_DE number "
            "1,230 read 0 missing 3 not read 7 values could be meant otherwise; none decides "
            "Least -1.5 Greatest 99 Sum, exact 1234.25 "
            "Not read Text Times First in line Why "
            "1.23 2 17 groups of another size xx \u2026 1 18 none due Column 3, de_DE amount "
            "Values Currency Values Least Greatest Sum, exact none 1 1 1 1 EUR 1 2.50 2.50 ");
}

}  // namespace
}  // namespace jwnls::tool
