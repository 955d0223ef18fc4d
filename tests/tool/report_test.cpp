// What reports are made of: exact sums, and texts that a page shows as they are.

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

#include "tool/reports/decimal_sum.h"
#include "tool/reports/html_page.h"
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

TEST(HtmlPage, ShowsTextsAsTheyAre) {
  EXPECT_EQ(html_text("<a href=\"x\">'&\x1B\xFF\u05D0"),
            "&lt;a href=&quot;x&quot;&gt;&#39;&amp;\uFFFD\uFFFD\u05D0");
  EXPECT_EQ(html_isolated("\u05D0", "he-IL"), "<bdi lang=\"he-IL\">\u05D0</bdi>");
}

}  // namespace
}  // namespace jwnls::tool
