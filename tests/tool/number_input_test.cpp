#include "tool/number_input.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace jwnls::tool {
namespace {

constexpr const char* no_number = "not a number (as 1234.5)";
constexpr const char* no_integer = "not an integer (as 1234 or 0xFF)";
constexpr const char* beyond_integers = "outside -9223372036854775808 to 18446744073709551615";

TEST(ReadNumber, ReadsWholeTexts) {
  const struct {
    const char* text;
    double value;
  } cases[] = {
      {"0", 0},
      {"1234.5", 1234.5},
      {"-5", -5},
      {"+5", 5},
      {".5", 0.5},
      {"-.5", -0.5},
      {"1.", 1},
      {"1e-3", 0.001},
      {"1E3", 1000},
      {"0.1", 0.1},
      {"007", 7},
      {"5e-324", 5e-324},
      {"inf", HUGE_VAL},
      {"-Infinity", -HUGE_VAL},
      {"9007199254740993", 9007199254740992},  // between two doubles: the even one
  };
  for (const auto& [text, value] : cases) EXPECT_EQ(read_number(text), value) << text;
  EXPECT_TRUE(std::signbit(*read_number("-0")));
  EXPECT_TRUE(std::isnan(*read_number("nan")));
}

TEST(ReadNumber, SaysWhyATextIsNone) {
  const struct {
    const char* text;
    const char* reason;
  } cases[] = {
      {"", "no value"},
      {"abc", no_number},
      {"1,5", no_number},
      {"1 000", no_number},
      {"1.5x", no_number},
      {"--5", no_number},
      {"+-5", no_number},
      {"-", no_number},
      {"0x10", no_number},
      {"1e", no_number},
      {"1.2.3", no_number},
      {" 1", no_number},
      {"1e999", "too large or too small for a double"},
      {"1e-999", "too large or too small for a double"},
      {"1e999x", no_number},
  };
  for (const auto& [text, reason] : cases) {
    const auto number = read_number(text);
    ASSERT_FALSE(number) << text;
    EXPECT_EQ(number.error(), reason) << text;
  }
}

TEST(ReadInteger, ReadsWholeTexts) {
  using Limits = std::numeric_limits<std::int64_t>;
  const struct {
    const char* text;
    Integer value;
  } cases[] = {
      {"0", std::int64_t{0}},
      {"-0", std::int64_t{0}},
      {"+7", std::int64_t{7}},
      {"-5", std::int64_t{-5}},
      {"0xFF", std::int64_t{255}},
      {"-0X10", std::int64_t{-16}},
      {"9223372036854775807", Limits::max()},
      {"9223372036854775808", std::uint64_t{1} << 63},
      {"18446744073709551615", std::numeric_limits<std::uint64_t>::max()},
      {"0xffffffffffffffff", std::numeric_limits<std::uint64_t>::max()},
      {"-9223372036854775808", Limits::min()},
  };
  for (const auto& [text, value] : cases) EXPECT_EQ(read_integer(text), value) << text;
}

TEST(ReadInteger, SaysWhyATextIsNone) {
  const struct {
    const char* text;
    const char* reason;
  } cases[] = {
      {"", "no value"},
      {"12.5", no_integer},
      {"1e3", no_integer},
      {"0x", no_integer},
      {"0x-5", no_integer},
      {"--5", no_integer},
      {"1.000", no_integer},
      {"18446744073709551616", beyond_integers},
      {"0x10000000000000000", beyond_integers},
      {"-9223372036854775809", beyond_integers},
  };
  for (const auto& [text, reason] : cases) {
    const auto integer = read_integer(text);
    ASSERT_FALSE(integer) << text;
    EXPECT_EQ(integer.error(), reason) << text;
  }
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
