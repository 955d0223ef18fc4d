#include "tool/plain_number.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace jwnls::tool {
namespace {

// Each text is refused for the reason.
template <typename Read>
void refuse(Read read, const char* reason, std::initializer_list<const char*> texts) {
  for (const char* text : texts) {
    const auto number = read(text);
    ASSERT_FALSE(number) << text;
    EXPECT_EQ(number.error(), reason) << text;
  }
}

TEST(ReadNumber, ReadsWholeTexts) {
  const auto check = [&](const char* text, double value) {
    EXPECT_EQ(read_number(text), value) << text;
  };
  check("1234.5", 1234.5);
  check("+5", 5);
  check(".5", 0.5);
  check("1.", 1);
  check("1e-3", 0.001);
  check("007", 7);
  check("5e-324", 5e-324);
  check("inf", HUGE_VAL);
  check("-Infinity", -HUGE_VAL);
  check("9007199254740993", 9007199254740992);  // between two doubles: the even one
  EXPECT_TRUE(std::signbit(*read_number("-0")));
  EXPECT_TRUE(std::isnan(*read_number("nan")));
}

TEST(ReadNumber, SaysWhyATextIsNone) {
  refuse(read_number, "no value", {""});
  refuse(read_number, "not a number (as 1234.5)",
         {"abc", "1,5", "1 000", "1.5x", "--5", "+-5", "-", "0x10", "1e", "1.2.3", " 1", "1e999x"});
  refuse(read_number, "too large or too small for a double", {"1e999", "1e-999"});
}

TEST(ReadInteger, ReadsWholeTexts) {
  using Limits = std::numeric_limits<std::int64_t>;
  const auto check = [&](const char* text, Integer value) {
    EXPECT_EQ(read_integer(text), value) << text;
  };
  check("-0", std::int64_t{0});
  check("+7", std::int64_t{7});
  check("0xFF", std::int64_t{255});
  check("-0X10", std::int64_t{-16});
  check("9223372036854775807", Limits::max());
  check("9223372036854775808", std::uint64_t{1} << 63);
  check("0xffffffffffffffff", std::numeric_limits<std::uint64_t>::max());
  check("-9223372036854775808", Limits::min());
}

TEST(ReadInteger, SaysWhyATextIsNone) {
  refuse(read_integer, "no value", {""});
  refuse(read_integer, "not an integer (as 1234 or 0xFF)",
         {"12.5", "1e3", "0x", "0x-5", "--5", "1.000"});
  refuse(read_integer, "outside -9223372036854775808 to 18446744073709551615",
         {"18446744073709551616", "0x10000000000000000", "-9223372036854775809"});
}

TEST(ReadMissing, KnowsTheirCharacters) {
  EXPECT_EQ(read_missing("."), client::MissingValue());
  EXPECT_EQ(read_missing("._"), client::MissingValue::named('_'));
  EXPECT_EQ(read_missing(".a"), client::MissingValue::named('A'));
  for (const char* text : {"", "A", "..", ".5", ".AB", ". ", "-."}) {
    EXPECT_FALSE(read_missing(text)) << text;
  }
}

}  // namespace
}  // namespace jwnls::tool
