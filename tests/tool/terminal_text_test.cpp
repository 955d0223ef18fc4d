#include "tool/terminal_text.h"

#include <gtest/gtest.h>

#include <string>

namespace jwnls::tool {
namespace {

TEST(TerminalText, CountsCells) {
  const auto check = [&](const char* text, std::size_t cells) {
    EXPECT_EQ(cell_width(text), cells) << text;
  };
  check("", 0);
  check("März", 4);
  check("Ma\u0308rz", 4);  // a combining mark
  check("2024年3月", 9);
  check("오후", 4);
  check("ｱ", 1);  // wide, wide, half-width
  check("सोमवार", 6);
  check("\u2068x\u2069", 1);
  check("\U0001E905\U0001E92D\U0001E945", 2);
  check("\xFF\xC3", 2);  // malformed bytes, a cell each
}

TEST(TerminalText, IsolatesRightToLeftTextOnly) {
  EXPECT_EQ(isolated("März 3月"), "März 3月");
  EXPECT_EQ(isolated("مارس"), "\u2068مارس\u2069");
  EXPECT_EQ(isolated("%E ב%B %Y"), "\u2068%E ב%B %Y\u2069");
  EXPECT_EQ(isolated("\U0001E905"), "\u2068\U0001E905\u2069");  // Adlam
}

TEST(TerminalText, IsPaddedByCells) {
  EXPECT_EQ(padded("3月", 5, false), "  3月");
  EXPECT_EQ(padded("3月", 5, true), "3月  ");
  EXPECT_EQ(padded("März", 4, false), "März");
}

TEST(TerminalText, NothingOfAMessageIsObeyed) {
  EXPECT_EQ(escaped("Mä\x1B[2J\n"), "Mä\\x1B[2J\\x0A");
  EXPECT_EQ(escaped("\u0085 \u202E \u2028 \xFF\uFFFD"), "\\u0085 \\u202E \\u2028 \\xFF\uFFFD");
  EXPECT_EQ(in_quotes(std::string(80, 'x')), "'" + std::string(80, 'x') + "'");
  EXPECT_EQ(in_quotes(std::string(79, 'x') + "ä"), "'" + std::string(79, 'x') + "...'");
}

}  // namespace
}  // namespace jwnls::tool
