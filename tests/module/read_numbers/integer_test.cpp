// Integers: eight routines in two slots each, decimal and hexadecimal, in UTF-16 and UTF-8.

#include <limits>
#include <vector>

#include "tests/module/read_numbers/number_input_test.h"

namespace jwnls::test {
namespace {

constexpr Status ok = Status::ok;
constexpr Status invalid = Status::invalid_number;

using namespace integer_input_flags;
constexpr std::uint32_t hex = hexadecimal;

using Wide = __int128;  // every integer that a row may expect

// Rows of one locale's symbols, read as every type in both encodings.
class IntegerInputTest : public NumberInputTest {
 protected:
  // The value is what the digits say. A type that does not hold it overflows, and a type without
  // signs stops at the minus. A bar stands where an integer is read up to, if not to the end.
  struct Row {
    std::u16string text;
    Wide value;
  };

  void reads(std::u16string_view symbols, const std::vector<Row>& rows, std::uint32_t flags = 0) {
    for (const Row& row : rows) check(symbols, row, ok, flags);
  }
  void refuses(std::u16string_view symbols, const std::vector<Row>& rows, std::uint32_t flags = 0) {
    for (const Row& row : rows) check(symbols, row, invalid, flags);
  }
  void drops(std::u16string_view symbols, const std::vector<Row>& rows, std::uint32_t flags) {
    for (const Row& row : rows) check(symbols, row, Status::does_not_fit, flags);
  }

 private:
  void check(std::u16string_view symbols, const Row& row, Status status, std::uint32_t flags) {
    std::u16string text = row.text;
    const std::size_t bar = std::min(text.find(u'|'), text.size());
    std::erase(text, u'|');
    SCOPED_TRACE(encoded(text) + " with " + encoded(symbols));
    set_symbols(symbols);
    const ServiceTable& slots = handle->services;
    const auto each = [&]<typename Integer>(ReadInteger<Integer, char16_t>* wide,
                                            ReadInteger<Integer, char>* narrow) {
      using Limits = std::numeric_limits<Integer>;
      if ((flags & hex) != 0 && std::is_signed_v<Integer>) return;
      Answer<Integer> expected = {status, static_cast<Integer>(row.value), 0};
      std::size_t end = bar;
      if (row.value < 0 && !std::is_signed_v<Integer>) {
        expected = {invalid, 0, 0};
        end = text.find(u'-');
      } else if (row.value > Limits::max() || row.value < Limits::min()) {
        expected = {Status::integer_overflow, 0, 0};
      }
      const std::string bytes = encoded(text);
      expected.consumed = static_cast<std::int64_t>(end);
      EXPECT_EQ(integer(wide, std::u16string_view(text), flags), expected);
      expected.consumed = std::ssize(encoded(std::u16string_view(text).substr(0, end)));
      EXPECT_EQ(integer(narrow, std::string_view(bytes), flags), expected);
    };
    each(slots.read_int64, slots.read_int64_8bit);
    each(slots.read_uint64, slots.read_uint64_8bit);
    each(slots.read_int32, slots.read_int32_8bit);
    each(slots.read_uint32, slots.read_uint32_8bit);
  }
};

TEST_F(IntegerInputTest, Starts) {
  reads(u".,", {{u"", 0}, {u"  ", 0}, {u"0", 0}, {u"  12", 12}, {u"+12", 12}, {u"+  12", 12}});
  refuses(u".,", {{u"|\t12", 0}, {u"+", 0}, {u" + ", 0}, {u"+|+1", 0}, {u"|x", 0}});
  refuses(u".,", {{u"|\u2131", 0}, {{u"|\0", 2}, 0}});
}

TEST_F(IntegerInputTest, Grouping) {
  reads(u".,", {{u"1,234", 1234}, {u"1,,2,", 12}});
  refuses(u".,", {{u"|,1", 0}, {u"+ |,1", 0}});
  reads(u".\u00A0", {{u"1\u00A0234", 1234}, {u"1| 234", 1}});
  reads(u".\u202F", {{u"1\u202F234\u202F", 1234}});
  refuses(u".\u202F", {{u"1|\u202E234", 1}});
  reads(u".\u00A0", {{u"1 234 ", 1234}}, blank_groups);
  reads(u".,", {{u"1| 234", 1}}, blank_groups);
  reads(u".-", {{u"1-2", 12}});
  reads(u". ", {{u" 1 2", 12}});
  reads(u".5", {{u"15525", 12}});
  refuses(u".5", {{u"|52", 0}});
}

TEST_F(IntegerInputTest, Ends) {
  reads(u".,", {{u"12| x", 12}, {{u"12|\0x", 5}, 12}});
  refuses(u".,", {{u"12| x", 12}, {u"12|x", 12}}, trailing_blanks);
  reads(u".,", {{u"12|  ", 12}, {{u"12| \0x", 6}, 12}}, trailing_blanks);
  refuses(u".,", {{u"12|\t", 12}, {u"12|.0", 12}});
}

TEST_F(IntegerInputTest, Fractions) {
  reads(u".,", {{u"12.00", 12}, {u"12.", 12}, {u".0", 0}, {{u"1.0|\0x", 6}, 1}}, fraction);
  drops(u".,", {{u"12.050", 12}, {u".5", 0}, {u"1.5| x", 1}}, fraction);
  refuses(u".,", {{u".", 0}, {u"+.| ", 0}, {u"1.0|,0", 1}, {u"1.0|.", 1}}, fraction);
  refuses(u".,", {{u"1.5| x", 1}}, fraction | trailing_blanks);
  drops(u".,", {{u"1.5| ", 1}}, fraction | trailing_blanks);
  reads(u"\u066B\u066C", {{u"1\u066C2\u066B0", 12}}, fraction);
  reads(u",,", {{u"1,5", 15}}, fraction);
  drops(u" ,", {{u"1 5", 1}}, fraction);
}

TEST_F(IntegerInputTest, EndsOfTheTypes) {
  reads(u".,", {{u"2147483647", 2147483647}, {u"2147483648| ", 2147483648}});
  reads(u".,", {{u"4,294,967,295", 4294967295}, {u"4294967296", 4294967296}});
  reads(u".,", {{u"9223372036854775807", 9223372036854775807}});
  reads(u".,", {{u"9223372036854775808", Wide{9223372036854775807} + 1}});
  reads(u".,", {{u"18446744073709551615", (Wide{1} << 64) - 1}});
  reads(u".,", {{u"18446744073709551616", Wide{1} << 64}});
  reads(u".,", {{u"99999999999999999999|x", Wide{1} << 65}});
  reads(u".,", {{u"00000000000000000000000000000000000012", 12}});
  reads(u".,", {{u"99999999999999999999,9,|x", Wide{1} << 65}});
  reads(u".,", {{u"99999999999999999999|.5", Wide{1} << 65}}, fraction);
}

TEST_F(IntegerInputTest, NegativeOnes) {
  reads(u".,", {{u" - 12", -12}, {u"-2147483648", -Wide{2147483648}}});
  reads(u".,", {{u"-2147483649", -Wide{2147483649}}});
  reads(u".,", {{u"-9223372036854775808", -Wide{9223372036854775807} - 1}});
  reads(u".,", {{u"-9223372036854775809", -Wide{9223372036854775807} - 2}});
  reads(u".,", {{u"-12.0", -12}}, fraction);
  refuses(u".,", {{u"-1,|x", -1}});
}

TEST_F(IntegerInputTest, Hexadecimal) {
  reads(u".,", {{u"0xFF", 255}, {u" 0Xaf", 0xAF}, {u"ff| ", 255}, {u"0", 0}}, hex);
  reads(u".,", {{u"0x0FFFFFFFF", 0xFFFFFFFF}, {u"FFFFFFFFFFFFFFFF", (Wide{1} << 64) - 1}}, hex);
  reads(u".,", {{u"10000000000000000| x", Wide{1} << 64}}, hex);
  reads(u".A", {{u"A", 10}}, hex);
  refuses(u".,", {{u"0x", 0}, {u"0x0|x1", 0}, {u"|+ff", 0}, {u"1|,2", 1}, {u"1|g", 1}}, hex);
  refuses(u".,", {{u"1|.0", 1}}, hex | fraction);
}

TEST_F(IntegerInputTest, OtherSlotsAndFlagsHoldTheSame) {
  const ServiceTable& slots = handle->services;
  using Text = std::u16string_view;
  EXPECT_EQ(integer(slots.read_int32, Text(u"11"), hex), (Answer<std::int32_t>{ok, 11, 2}));
  EXPECT_EQ(integer(slots.read_uint32, Text(u"-1"), hex), (Answer<std::uint32_t>{invalid, 0, 0}));
  EXPECT_EQ(integer(slots.read_uint32, Text(u"1,1.0"), 0xFFFF8FFE),
            (Answer<std::uint32_t>{invalid, 11, 3}));
  std::int64_t value = 77;
  std::int64_t consumed = 77;
  EXPECT_EQ(Status{slots.read_int64(handle.get(), u"1", -1, 0, &value, &consumed)},
            Status::negative_length);
  EXPECT_TRUE(value == 77 && consumed == 77);
}

// A symbol that the end of a text cuts is none, and nothing behind the end is read.
TEST_F(IntegerInputTest, SymbolsCutByTheEnd) {
  set_symbols(u"\u066B\u202F");
  const std::string_view text = "1\xE2\x80\xAF";
  for (std::size_t cut = 1; cut <= text.size(); ++cut) {
    const bool whole = cut == 1 || cut == 4;
    EXPECT_EQ(integer(handle->services.read_int64_8bit, text.substr(0, cut), 0),
              (Answer<std::int64_t>{whole ? ok : invalid, 1, cut == 4 ? 4 : 1}));
  }
}

}  // namespace
}  // namespace jwnls::test
