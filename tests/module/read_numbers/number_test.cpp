// Numbers: what is one, what it amounts to, and where the others offend, in every encoding.

#include <cmath>
#include <limits>
#include <random>
#include <vector>

#include "tests/module/read_numbers/number_input_test.h"
#include "tests/support/seed.h"

namespace jwnls::test {
namespace {

constexpr Status ok = Status::ok;
constexpr std::uint32_t blank_groups = number_input_flags::blank_groups;

// Many zeros between two texts.
std::u16string zeros(std::u16string_view before, std::size_t count, std::u16string_view after) {
  std::u16string text(before);
  return text.append(count, u'0').append(after);
}

// 1 and 149 zeros, digit by digit: the steps round, so it is not the double nearest to 1e149.
const double long_number = [] {
  double sum = 1;
  for (int i = 0; i < 149; ++i) sum *= 10;
  return sum;
}();

const NumberAnswer too_large = {Status::out_of_range, missing_value(), 0};

// Rows of one locale's symbols, read by every number service that knows their units.
class NumberTest : public NumberInputTest {
 protected:
  struct Number {
    std::u16string text;
    double value;
  };

  // A bar stands where a number is read up to, if not to the end, or where a text offends.
  void reads(std::u16string_view symbols, const std::vector<Number>& rows,
             std::uint32_t flags = 0) {
    for (const auto& [text, value] : rows) check(symbols, text, {ok, value, bar(text)}, flags);
  }
  void refuses(std::u16string_view symbols, const std::vector<std::u16string>& texts,
               std::uint32_t flags = 0) {
    for (const auto& text : texts) check(symbols, text, invalid_at(bar(text)), flags);
  }
  void overflows(std::u16string_view symbols, const std::vector<std::u16string>& texts) {
    for (const auto& text : texts) check(symbols, text, too_large, 0);
  }

 private:
  static std::int64_t bar(const std::u16string& text) {
    return static_cast<std::int64_t>(std::min(text.find(u'|'), text.size()));
  }

  void check(std::u16string_view symbols, std::u16string text, const NumberAnswer& expected,
             std::uint32_t flags) {
    std::erase(text, u'|');
    SCOPED_TRACE(narrowed(text) + " with " + narrowed(symbols));
    set_symbols(symbols);
    const ServiceTable& slots = handle->services;
    EXPECT_EQ(number(slots.read_number_with_flags, std::u16string_view(text), flags), expected);
    if (flags == 0) {
      EXPECT_EQ(number(text), expected);
    }
    if (std::any_of(text.begin(), text.end(), [](char16_t unit) { return unit > 0xFF; })) return;
    const std::string bytes = narrowed(text);
    const std::string_view narrow = bytes;
    EXPECT_EQ(number(slots.read_number_8bit_with_flags, narrow, flags), expected);
    if (flags != 0) return;
    EXPECT_EQ(number(slots.read_number_8bit, narrow), expected);
    EXPECT_EQ(number(slots.read_number_converted, narrow, nullptr), expected);
    const std::string codes = ebcdic(text);
    EXPECT_EQ(number(slots.read_number_ebcdic, std::string_view(codes), nullptr), expected);
  }
};

TEST_F(NumberTest, MissingValues) {
  reads(u".,", {{u"", missing_value()}, {u" \t ", missing_value()}, {u" .| ", missing_value()}});
  reads(u".,", {{u".a", missing(0xBE)}, {u".Z|\t", missing(0xA5)}, {u"._", missing(0xD2)}});
  reads(u".,", {{u".\u0131", missing(0xB6)}});  // the dotless i is I in upper case
  reads(u",.", {{u".", missing_value()}});
  refuses(u".,", {u".|[", u".A|B", u". |A", u"-.|", u"-.|A"});
}

TEST_F(NumberTest, Starts) {
  reads(u".,", {{u" \t+12", 12}, {u"-0", -0.0}, {u"-.5", -0.5}});
  reads(u",.", {{u"-,5", -0.5}});
  refuses(u",.", {u"|.5", u" |.5", u",|", u",|x"});
  refuses(u".,", {u"-|", u"-| 1", u"+|-1", u"| x1", u"|,1", u"|\u0661"});
  refuses(u".,", {u"|\u2131"});  // its low byte is that of "1"
}

TEST_F(NumberTest, Symbols) {
  reads(u".,", {{u"12.", 12}, {u"0.", 0}, {u"000.0050", 0.005}, {u"1,2,,3", 123}, {u"1,.5", 1.5}});
  reads(u".,", {{u"0,001,0", 10}, {u"1,| ", 1}});
  refuses(u".,", {u"1,234,|", u"1.5|,0", u"1.5|.0", u"0.|.5"});
  // A symbol too many at the very end is one that the end follows.
  refuses(u".,", {u"1.5.|", u".5,|", u"1..|", u"-0.5,|", u"1.5|. ", u"1.5|,,", u"1.5|.e1"});
  refuses(u",.", {u"1,5,|", u"1,5.|"});
  reads(u",.", {{u"1.234.567,89", 1234567.89}});
  reads(u"\u066B\u066C", {{u"-1\u066C234\u066B5", -1234.5}});
  reads(u".\u00A0", {{u"1\u00A0234.5", 1234.5}});
}

TEST_F(NumberTest, SymbolsOfOtherMeaning) {
  // Symbols that are alike, or are digits, signs, blanks and letters: the first meaning holds.
  reads(u",,", {{u"1,5", 1.5}});
  refuses(u",,", {u"1,5|,0"});
  reads(u"5,", {{u"155", 155}});
  reads(u".5", {{u"155", 155}});
  refuses(u"-,", {u"--5-|"});
  reads(u"-,", {{u"1-5", 1.5}});
  reads(u" ,", {{u"1 5", 1.5}});
  reads(u". ", {{u"1 5", 15}});
  refuses(u". ", {u"1 |"});
  reads(u".e", {{u"1e5", 15}});
  reads(u"e,", {{u"1e5", 1.5}});
  reads(u"..", {{u"1.5", 1.5}});
}

TEST_F(NumberTest, BlankGroups) {
  reads(u",\u00A0", {{u"1 234 567,5", 1234567.5}, {u"0 001", 1}}, blank_groups);
  reads(u",\u00A0", {{u"1\u00A0234 567", 1234567}, {u"12| ", 12}}, blank_groups);
  refuses(u",\u00A0", {u"1  |2", u"1,5 |6", u"1e1 |2"}, blank_groups);
  refuses(u",\u00A0", {u"1 |234"});
  refuses(u".,", {u"1 |234"}, blank_groups);
}

TEST_F(NumberTest, Ends) {
  reads(u".,", {{u"12| \t ", 12}, {u"12|\t", 12}});
  refuses(u".,", {u"12 |x", u"12|x", {u"12|\0", 4}});
}

TEST_F(NumberTest, Exponents) {
  reads(u".,", {{u"1.5e3", 1500}, {u"15D-1|  ", 1.5}, {u"1E+1,2", 1e12}, {u"1d0002| \t", 100}});
  reads(u".,", {{u"1,e2", 100}});
  refuses(u".,", {u"1e2|\t", u"1e2|.", u"1e|", u"1e-|", u"1e| ", u"1e|,1", u"1e1,|", u"1e1,|,2"});
  refuses(u".,", {u"1e1,| ", u"1 |e5", u"1|f5"});
}

TEST_F(NumberTest, EndsOfTheDoubles) {
  reads(u".,", {{u"1e308", 1e308}, {u"17976931348623157e292", std::numeric_limits<double>::max()}});
  reads(u".,", {{u"0.001e311", 1e308}, {u"0e30800", 0}, {u"1e-30800", 0}, {u"-1e-30800", -0.0}});
  reads(u".,", {{u"12e-324", 1e-323}, {u"123456789012345e-330", 123456789012345 / 1e308 / 1e22}});
  overflows(u".,", {u"-1e309", u"1e30800", u"1e30801", u"1e-30801", u"1e99999999999999999999x"});
  overflows(u".,", {u"0e30801"});
  refuses(u".,", {u"1e309 |x"});
}

TEST_F(NumberTest, ManyDigits) {
  // Beyond 2^53 each step rounds: 9007199254740993 comes out even, 2^53 times ten is exact.
  reads(u".,", {{u"9007199254740993", 9007199254740992.0}});
  reads(u".,", {{u"9007199254740995", 9007199254740996.0}});
  reads(u".,", {{u"90071992547409925", 90071992547409920.0 + 5}});
  // 150 digits count; the others only as a fraction's length.
  reads(u".,", {{zeros(u"1", 149, u""), long_number}, {zeros(u"1", 199, u""), long_number}});
  reads(u".,", {{zeros(u"1,", 199, u""), long_number}, {zeros(u"", 200, u"7"), 7}});
  reads(u".,", {{zeros(u"0,", 150, u"7"), 7}, {zeros(u"1.", 199, u""), long_number / 1e199}});
  reads(u".,", {{zeros(u".", 400, u"1e400"), 1 / 10.0}, {zeros(u".", 40'000, u"1"), 0}});
}

TEST_F(NumberInputTest, NegativeLengthsAndNoHandle) {
  for (const std::int32_t length : {-1, std::numeric_limits<std::int32_t>::min()}) {
    NumberAnswer answer = {{}, 77, -77};
    answer.status = Status{
        handle->services.read_number(handle.get(), u"1", length, &answer.value, &answer.consumed)};
    EXPECT_EQ(answer, invalid_at(0));
  }
  set_symbols(u",.");
  handle.reset();
  EXPECT_EQ(number(services.read_number, std::u16string_view(u"1,234.5")),
            (NumberAnswer{ok, 1234.5, 7}));
  EXPECT_EQ(number(services.read_number_with_flags, std::u16string_view(u"1,2"), blank_groups),
            (NumberAnswer{ok, 12, 3}));
  EXPECT_EQ(number(services.read_number_converted, std::string_view("1,2"), nullptr),
            (NumberAnswer{ok, 12, 3}));
  EXPECT_EQ(number(services.read_number_ebcdic, std::string_view("\xF1\x6B\xF2\x4B"), nullptr),
            (NumberAnswer{ok, 12, 4}));
}

// Digits of any number with a point, grouping symbols and an exponent anywhere, against the steps
// that define their value, taken one by one.
TEST_F(NumberInputTest, ValuesAreThoseOfTheSteps) {
  std::mt19937_64 random(test_seed(7));
  const auto below = [&random](unsigned end) { return static_cast<int>(random() % end); };
  const auto power = [](int exponent) {
    return std::strtod(("1e" + std::to_string(exponent)).c_str(), nullptr);
  };
  for (int i = 0; i < 20'000; ++i) {
    const int count = 1 + below(i % 4 == 0 ? 170 : 20);
    const int point = below(2) == 0 ? count : below(static_cast<unsigned>(count));
    int exponent = below(3) == 0 ? below(700) - 350 : 0;
    std::u16string text;
    double expected = 0;
    int stored = 0;
    for (int at = 0; at < count; ++at) {
      if (at == point) text += text.empty() ? u"0." : u".";
      const int digit = below(10);
      text += static_cast<char16_t>(u'0' + digit);
      if (at + 1 < point && below(3) == 0) text += u',';
      if ((stored != 0 || digit != 0) && stored < 150) {
        expected = expected * 10 + digit;
        ++stored;
      }
    }
    const std::string written = std::to_string(exponent);
    if (exponent != 0) text.append(1, u'e').append(written.begin(), written.end());
    exponent -= count - point;
    const int first = std::min(std::abs(exponent), 308);
    const int second = std::abs(exponent) - first;
    if (exponent < 0) {
      expected = expected / power(first) / power(second);
    } else if (expected != 0) {
      expected = expected * power(first) * power(second);
    }
    const bool fits = expected <= std::numeric_limits<double>::max();
    EXPECT_EQ(number(text), (fits ? NumberAnswer{ok, expected, std::ssize(text)} : too_large))
        << narrowed(text);
  }
}

}  // namespace
}  // namespace jwnls::test
