#include "tool/terminal_text.h"

#include <gtest/gtest.h>

namespace jwnls::tool {
namespace {

TEST(TerminalText, CountsCells) {
  const struct {
    const char* text;
    std::size_t cells;
  } cases[] = {
      {"", 0},          {"März", 4},          {"Ma\u0308rz", 4},  // a combining mark
      {"2024年3月", 9}, {"오후", 4},          {"ｱ", 1},           // wide, wide, half-width
      {"सोमवार", 6},    {"\u2068x\u2069", 1}, {"\U0001E905\U0001E92D\U0001E945", 2},
      {"\xFF\xC3", 2},  // malformed bytes, a cell each
  };
  for (const auto& [text, cells] : cases) EXPECT_EQ(cell_width(text), cells) << text;
}

TEST(TerminalText, IsolatesRightToLeftTextOnly) {
  EXPECT_EQ(isolated("März 3月"), "März 3月");
  EXPECT_EQ(isolated("مارس"), "\u2068مارس\u2069");
  EXPECT_EQ(isolated("%E ב%B %Y"), "\u2068%E ב%B %Y\u2069");
  EXPECT_EQ(isolated("\U0001E905"), "\u2068\U0001E905\u2069");  // Adlam
}

}  // namespace
}  // namespace jwnls::tool
