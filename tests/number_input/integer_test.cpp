// Integers: eight routines in two slots each, decimal and hexadecimal, in UTF-16 and UTF-8.

#include <limits>
#include <random>

#include "module/text/utf8_unit.h"
#include "tests/number_input/number_input_test.h"

namespace jwnls::test {
namespace {

constexpr Status ok = Status::ok;
constexpr Status invalid = Status::invalid_number;
constexpr Status overflow = Status::integer_overflow;
constexpr Status dropped = Status::does_not_fit;

using namespace integer_input_flags;
constexpr std::uint32_t hex = hexadecimal;

std::string utf8(std::u16string_view text) {
  std::string bytes;
  for (const char16_t unit : text) {
    char encoded[longest_utf8_unit];
    bytes.append(encoded, encode_utf8_unit(unit, encoded));
  }
  return bytes;
}

using Wide = __int128;  // every integer that a row may expect

struct IntegerCase {
  const char16_t* symbols;
  std::u16string_view text;
  std::uint32_t flags;
  Status status;
  Wide value;
  std::size_t consumed;
};

// In types that hold the value, and with the sign that they have.
const IntegerCase integer_cases[] = {
    {u".,", u"", 0, ok, 0, 0},
    {u".,", u"  ", 0, ok, 0, 2},
    {u".,", u"0", 0, ok, 0, 1},
    {u".,", u"  12", 0, ok, 12, 4},
    {u".,", u"\t12", 0, invalid, 0, 0},
    {u".,", u"+12", 0, ok, 12, 3},
    {u".,", u"+  12", 0, ok, 12, 5},
    {u".,", u"+", 0, invalid, 0, 1},
    {u".,", u" + ", 0, invalid, 0, 3},
    {u".,", u"++1", 0, invalid, 0, 1},
    {u".,", u"x", 0, invalid, 0, 0},
    {u".,", u"\u2131", 0, invalid, 0, 0},
    {u".,", {u"\0", 1}, 0, invalid, 0, 0},
    // Grouping symbols.
    {u".,", u"1,234", 0, ok, 1234, 5},
    {u".,", u"1,,2,", 0, ok, 12, 5},
    {u".,", u",1", 0, invalid, 0, 0},
    {u".,", u"+ ,1", 0, invalid, 0, 2},
    {u".\u00A0", u"1\u00A0234", 0, ok, 1234, 5},
    {u".\u202F", u"1\u202F234\u202F", 0, ok, 1234, 6},
    {u".\u202F", u"1\u202E234", 0, invalid, 1, 1},
    {u".\u00A0", u"1 234 ", blank_groups, ok, 1234, 6},
    {u".\u00A0", u"1 234", 0, ok, 1, 1},
    {u".,", u"1 234", blank_groups, ok, 1, 1},
    {u".-", u"1-2", 0, ok, 12, 3},
    {u". ", u" 1 2", 0, ok, 12, 4},
    {u".5", u"15525", 0, ok, 12, 5},
    {u".5", u"52", 0, invalid, 0, 0},
    // The end.
    {u".,", u"12 x", 0, ok, 12, 2},
    {u".,", u"12 x", trailing_blanks, invalid, 12, 2},
    {u".,", u"12  ", trailing_blanks, ok, 12, 2},
    {u".,", {u"12\0x", 4}, 0, ok, 12, 2},
    {u".,", {u"12 \0x", 5}, trailing_blanks, ok, 12, 2},
    {u".,", u"12\t", 0, invalid, 12, 2},
    {u".,", u"12x", trailing_blanks, invalid, 12, 2},
    {u".,", u"12.0", 0, invalid, 12, 2},
    // Fractions.
    {u".,", u"12.00", fraction, ok, 12, 5},
    {u".,", u"12.", fraction, ok, 12, 3},
    {u".,", u"12.050", fraction, dropped, 12, 6},
    {u".,", u".5", fraction, dropped, 0, 2},
    {u".,", u".0", fraction, ok, 0, 2},
    {u".,", u".", fraction, invalid, 0, 1},
    {u".,", u"+. ", fraction, invalid, 0, 2},
    {u".,", u"1.5 x", fraction, dropped, 1, 3},
    {u".,", u"1.5 x", fraction | trailing_blanks, invalid, 1, 3},
    {u".,", u"1.5 ", fraction | trailing_blanks, dropped, 1, 3},
    {u".,", {u"1.0\0x", 5}, fraction, ok, 1, 3},
    {u".,", u"1.0,0", fraction, invalid, 1, 3},
    {u".,", u"1.0.", fraction, invalid, 1, 3},
    {u"\u066B\u066C", u"1\u066C2\u066B0", fraction, ok, 12, 5},
    {u",,", u"1,5", fraction, ok, 15, 3},
    {u" ,", u"1 5", fraction, dropped, 1, 3},
    // The ends of the types, found by the overflow in those that do not hold the value.
    {u".,", u"2147483647", 0, ok, 2147483647, 10},
    {u".,", u"2147483648 ", 0, ok, 2147483648, 10},
    {u".,", u"4,294,967,295", 0, ok, 4294967295, 13},
    {u".,", u"4294967296", 0, ok, 4294967296, 10},
    {u".,", u"9223372036854775807", 0, ok, 9223372036854775807, 19},
    {u".,", u"9223372036854775808", 0, ok, Wide{9223372036854775807} + 1, 19},
    {u".,", u"18446744073709551615", 0, ok, (Wide{1} << 64) - 1, 20},
    {u".,", u"18446744073709551616", 0, ok, Wide{1} << 64, 20},
    {u".,", u"99999999999999999999x", 0, ok, Wide{1} << 65, 20},
    {u".,", u"00000000000000000000000000000000000012", 0, ok, 12, 38},
    {u".,", u"99999999999999999999,9,x", 0, ok, Wide{1} << 65, 23},
    {u".,", u"99999999999999999999.5", fraction, ok, Wide{1} << 65, 20},
    // Negative ones: in signed types.
    {u".,", u" - 12", 0, ok, -12, 5},
    {u".,", u"-12.0", fraction, ok, -12, 5},
    {u".,", u"-1,x", 0, invalid, -1, 3},
    {u".,", u"-2147483648", 0, ok, -Wide{2147483648}, 11},
    {u".,", u"-2147483649", 0, ok, -Wide{2147483649}, 11},
    {u".,", u"-9223372036854775808", 0, ok, -Wide{9223372036854775807} - 1, 20},
    {u".,", u"-9223372036854775809", 0, ok, -Wide{9223372036854775807} - 2, 20},
    // Hexadecimal: in unsigned types.
    {u".,", u"0xFF", hex, ok, 255, 4},
    {u".,", u" 0Xaf", hex, ok, 0xAF, 5},
    {u".,", u"ff ", hex, ok, 255, 2},
    {u".A", u"A", hex, ok, 10, 1},
    {u".,", u"0", hex, ok, 0, 1},
    {u".,", u"0x", hex, invalid, 0, 2},
    {u".,", u"0x0x1", hex, invalid, 0, 3},
    {u".,", u"+ff", hex, invalid, 0, 0},
    {u".,", u"1,2", hex, invalid, 1, 1},
    {u".,", u"1g", hex, invalid, 1, 1},
    {u".,", u"1.0", hex | fraction, invalid, 1, 1},
    {u".,", u"0x0FFFFFFFF", hex, ok, 0xFFFFFFFF, 11},
    {u".,", u"FFFFFFFFFFFFFFFF", hex, ok, (Wide{1} << 64) - 1, 16},
    {u".,", u"10000000000000000 x", hex, ok, Wide{1} << 64, 17}};

class IntegerInputTest : public NumberInputTest {
 protected:
  // What the row expects of a type.
  template <typename Integer>
  Answer<Integer> expected(const IntegerCase& row, std::size_t consumed) {
    const auto count = static_cast<std::int64_t>(consumed);
    using Limits = std::numeric_limits<Integer>;
    if (row.value < Limits::min() && !std::is_signed_v<Integer>) {  // the minus is no part of it
      return {invalid, 0, static_cast<std::int64_t>(row.text.find(u'-'))};
    }
    if (row.value > Limits::max() || row.value < Limits::min()) return {overflow, 0, count};
    return {row.status, static_cast<Integer>(row.value), count};
  }

  template <typename Integer>
  void check(const IntegerCase& row, ReadInteger<Integer, char16_t>* wide,
             ReadInteger<Integer, char>* narrow) {
    if ((row.flags & hex) != 0 && std::is_signed_v<Integer>) return;
    const std::string bytes = utf8(row.text);
    EXPECT_EQ(integer(wide, row.text, row.flags), expected<Integer>(row, row.consumed));
    EXPECT_EQ(integer(narrow, std::string_view(bytes), row.flags),
              expected<Integer>(row, utf8(row.text.substr(0, row.consumed)).size()));
  }
};

TEST_F(IntegerInputTest, EveryTypeInBothEncodings) {
  const ServiceTable& slots = handle->services;
  for (const IntegerCase& row : integer_cases) {
    SCOPED_TRACE(utf8(row.text) + " with " + utf8(row.symbols));
    set_symbols(row.symbols);
    check(row, slots.read_int64, slots.read_int64_8bit);
    check(row, slots.read_uint64, slots.read_uint64_8bit);
    check(row, slots.read_int32, slots.read_int32_8bit);
    check(row, slots.read_uint32, slots.read_uint32_8bit);
  }
}

TEST_F(IntegerInputTest, OtherSlotsAndFlagsHoldTheSame) {
  const ServiceTable& slots = handle->services;
  EXPECT_EQ(slots.read_int64_too, slots.read_int64);
  EXPECT_EQ(slots.read_uint64_too, slots.read_uint64);
  EXPECT_EQ(slots.read_int32_too, slots.read_int32);
  EXPECT_EQ(slots.read_uint32_too, slots.read_uint32);
  EXPECT_EQ(slots.read_int64_8bit_too, slots.read_int64_8bit);
  EXPECT_EQ(slots.read_uint64_8bit_too, slots.read_uint64_8bit);
  EXPECT_EQ(slots.read_int32_8bit_too, slots.read_int32_8bit);
  EXPECT_EQ(slots.read_uint32_8bit_too, slots.read_uint32_8bit);
  using Text = std::u16string_view;
  EXPECT_EQ(integer(slots.read_int32, Text(u"11"), hex), (Answer<std::int32_t>{ok, 11, 2}));
  EXPECT_EQ(integer(slots.read_uint32, Text(u"-1"), hex), (Answer<std::uint32_t>{invalid, 0, 0}));
  EXPECT_EQ(integer(slots.read_uint32, Text(u"1,1.0"), 0xFFFF8FFE & ~0x4000u),
            (Answer<std::uint32_t>{invalid, 11, 3}));
  std::int64_t value = 77;
  std::int64_t consumed = 77;
  EXPECT_EQ(Status{slots.read_int64(handle.get(), u"1", -1, 0, &value, &consumed)},
            Status::negative_length);
  EXPECT_TRUE(value == 77 && consumed == 77);
}

// Every start of a text: a symbol that the end cuts is none, and nothing behind the end is read.
TEST_F(IntegerInputTest, TextsCutAtEveryUnit) {
  set_symbols(u"\u066B\u202F");
  const std::u16string text = u" +1\u202F234\u202F567\u066B00 ";
  const std::string bytes = utf8(text);
  for (std::size_t cut = 0; cut <= bytes.size(); ++cut) {
    const std::string_view start = std::string_view(bytes).substr(0, cut);
    std::int64_t expected = 0;
    bool digits = false;
    std::size_t whole = start.size();
    while (whole > 0 && (bytes[whole - 1] & 0x80) != 0 && utf8(text).size() != whole &&
           (bytes[whole] & 0xC0) == 0x80) {
      --whole;  // into a symbol that is cut
    }
    for (std::size_t i = 0; i < whole; ++i) {
      if (bytes[i] == '0') break;
      if (bytes[i] >= '1' && bytes[i] <= '9') {
        expected = expected * 10 + (bytes[i] - '0');
        digits = true;
      }
    }
    const auto answer = integer(handle->services.read_int64_8bit, start, fraction);
    EXPECT_EQ(answer.value, expected) << cut;
    const bool sign_alone = !digits && start.find('+') != std::string_view::npos;
    EXPECT_EQ(answer.status, sign_alone || whole != start.size() ? invalid : ok) << cut;
  }
}

}  // namespace
}  // namespace jwnls::test
