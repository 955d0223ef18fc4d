// Numbers: what is one, what it amounts to, and where the others offend, in every encoding.

#include <regex.h>

#include <cmath>
#include <limits>
#include <random>
#include <vector>

#include "tests/number_input/number_input_test.h"

namespace jwnls::test {
namespace {

constexpr Status ok = Status::ok;
constexpr std::uint32_t blank_groups = number_input_flags::blank_groups;

struct NumberCase {
  const char16_t* symbols;
  std::u16string text;
  NumberAnswer expected;
  std::uint32_t flags = 0;
};

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

const NumberCase number_cases[] = {
    // Nothing, blanks, and the missing values.
    {u".,", u"", {ok, missing_value(), 0}},
    {u".,", u" \t ", {ok, missing_value(), 3}},
    {u".,", u" . ", {ok, missing_value(), 2}},
    {u",.", u".", {ok, missing_value(), 1}},
    {u".,", u".a", {ok, missing(0xBE), 2}},
    {u".,", u".Z\t", {ok, missing(0xA5), 2}},
    {u".,", u"._", {ok, missing(0xD2), 2}},
    {u".,", u".\u0131", {ok, missing(0xB6), 2}},  // a dotless i is I in upper case
    {u".,", u".[", invalid_at(1)},
    {u".,", u".AB", invalid_at(2)},
    {u".,", u". A", invalid_at(2)},
    {u".,", u"-.", invalid_at(2)},
    {u".,", u"-.A", invalid_at(2)},
    // Where a number may begin.
    {u".,", u" \t+12", {ok, 12, 5}},
    {u".,", u"-0", {ok, -0.0, 2}},
    {u".,", u"-.5", {ok, -0.5, 3}},
    {u",.", u"-,5", {ok, -0.5, 3}},
    {u",.", u".5", invalid_at(0)},
    {u",.", u" .5", invalid_at(1)},
    {u",.", u",", invalid_at(1)},
    {u",.", u",x", invalid_at(1)},
    {u".,", u"-", invalid_at(1)},
    {u".,", u"- 1", invalid_at(1)},
    {u".,", u"+-1", invalid_at(1)},
    {u".,", u" x1", invalid_at(0)},
    {u".,", u",1", invalid_at(0)},
    {u".,", u"\u0661", invalid_at(0)},
    {u".,", u"\u2131", invalid_at(0)},  // its low byte is that of "1"
    // Decimal and grouping symbols.
    {u".,", u"12.", {ok, 12, 3}},
    {u".,", u"0.", {ok, 0, 2}},
    {u".,", u"000.0050", {ok, 0.005, 8}},
    {u".,", u"1,2,,3", {ok, 123, 6}},
    {u".,", u"1,.5", {ok, 1.5, 4}},
    {u".,", u"0,001,0", {ok, 10, 7}},
    {u".,", u"1,234,", invalid_at(6)},
    {u".,", u"1, ", {ok, 1, 2}},
    {u".,", u"1.5,0", invalid_at(3)},
    {u".,", u"1.5.0", invalid_at(3)},
    {u".,", u"0..5", invalid_at(2)},
    {u",.", u"1.234.567,89", {ok, 1234567.89, 12}},
    {u"\u066B\u066C", u"-1\u066C234\u066B5", {ok, -1234.5, 8}},
    {u".\u00A0", u"1\u00A0234.5", {ok, 1234.5, 7}},
    // Symbols that are alike, or are digits, signs, blanks and letters: the first meaning holds.
    {u",,", u"1,5", {ok, 1.5, 3}},
    {u",,", u"1,5,0", invalid_at(3)},
    {u"5,", u"155", {ok, 155, 3}},
    {u".5", u"155", {ok, 155, 3}},
    {u"-,", u"--5-", invalid_at(3)},
    {u"-,", u"1-5", {ok, 1.5, 3}},
    {u" ,", u"1 5", {ok, 1.5, 3}},
    {u". ", u"1 5", {ok, 15, 3}},
    {u". ", u"1 ", invalid_at(2)},
    {u".e", u"1e5", {ok, 15, 3}},
    {u"e,", u"1e5", {ok, 1.5, 3}},
    {u"..", u"1.5", {ok, 1.5, 3}},
    // Blanks as grouping symbols.
    {u",\u00A0", u"1 234 567,5", {ok, 1234567.5, 11}, blank_groups},
    {u",\u00A0", u"0 001", {ok, 1, 5}, blank_groups},
    {u",\u00A0", u"1\u00A0234 567", {ok, 1234567, 9}, blank_groups},
    {u",\u00A0", u"12 ", {ok, 12, 2}, blank_groups},
    {u",\u00A0", u"1  2", invalid_at(3), blank_groups},
    {u",\u00A0", u"1,5 6", invalid_at(4), blank_groups},
    {u",\u00A0", u"1e1 2", invalid_at(4), blank_groups},
    {u",\u00A0", u"1 234", invalid_at(2)},
    {u".,", u"1 234", invalid_at(2), blank_groups},
    // What may stand behind a number.
    {u".,", u"12 \t ", {ok, 12, 2}},
    {u".,", u"12\t", {ok, 12, 2}},
    {u".,", u"12 x", invalid_at(3)},
    {u".,", u"12x", invalid_at(2)},
    {u".,", std::u16string(u"12\0", 3), invalid_at(2)},
    // Exponents.
    {u".,", u"1.5e3", {ok, 1500, 5}},
    {u".,", u"15D-1  ", {ok, 1.5, 5}},
    {u".,", u"1E+1,2", {ok, 1e12, 6}},
    {u".,", u"1d0002 \t", {ok, 100, 6}},
    {u".,", u"1,e2", {ok, 100, 4}},
    {u".,", u"1e2\t", invalid_at(3)},
    {u".,", u"1e2.", invalid_at(3)},
    {u".,", u"1e", invalid_at(2)},
    {u".,", u"1e-", invalid_at(3)},
    {u".,", u"1e ", invalid_at(2)},
    {u".,", u"1e,1", invalid_at(2)},
    {u".,", u"1e1,", invalid_at(4)},
    {u".,", u"1e1,,2", invalid_at(4)},
    {u".,", u"1e1, ", invalid_at(4)},
    {u".,", u"1 e5", invalid_at(2)},
    {u".,", u"1f5", invalid_at(1)},
    // The ends of the doubles.
    {u".,", u"1e308", {ok, 1e308, 5}},
    {u".,", u"-1e309", too_large},
    {u".,", u"17976931348623157e292", {ok, std::numeric_limits<double>::max(), 21}},
    {u".,", u"0.001e311", {ok, 1e308, 9}},
    {u".,", u"1e309 x", invalid_at(6)},
    {u".,", u"1e30800", too_large},
    {u".,", u"1e30801", too_large},
    {u".,", u"1e-30801", too_large},
    {u".,", u"1e99999999999999999999x", too_large},
    {u".,", u"0e30800", {ok, 0, 7}},
    {u".,", u"0e30801", too_large},
    {u".,", u"1e-30800", {ok, 0, 8}},
    {u".,", u"-1e-30800", {ok, -0.0, 9}},
    {u".,", u"12e-324", {ok, 1e-323, 7}},
    {u".,", u"123456789012345e-330", {ok, 123456789012345 / 1e308 / 1e22, 20}},
    // Beyond 2^53 each step rounds: 9007199254740993 comes out even, 2^53 times ten is exact.
    {u".,", u"9007199254740993", {ok, 9007199254740992, 16}},
    {u".,", u"9007199254740995", {ok, 9007199254740996, 16}},
    {u".,", u"90071992547409925", {ok, 90071992547409920.0 + 5, 17}},
    // 150 digits count; the others only as a fraction's length.
    {u".,", zeros(u"1", 149, u""), {ok, long_number, 150}},
    {u".,", zeros(u"1", 199, u""), {ok, long_number, 200}},
    {u".,", zeros(u"1,", 199, u""), {ok, long_number, 201}},
    {u".,", zeros(u"", 200, u"7"), {ok, 7, 201}},
    {u".,", zeros(u"0,", 150, u"7"), {ok, 7, 153}},
    {u".,", zeros(u"1.", 199, u""), {ok, long_number / 1e199, 201}},
    {u".,", zeros(u".", 400, u"1e400"), {ok, 1 / 10.0, 406}},
    {u".,", zeros(u".", 40'000, u"1"), {ok, 0, 40'002}},
};

TEST_F(NumberInputTest, NumbersInEveryEncoding) {
  for (const NumberCase& row : number_cases) {
    SCOPED_TRACE(narrowed(row.text) + " with " + narrowed(row.symbols));
    set_symbols(row.symbols);
    const ServiceTable& slots = handle->services;
    const std::u16string_view text = row.text;
    EXPECT_EQ(number(slots.read_number_with_flags, text, row.flags), row.expected);
    if (row.flags == 0) {
      EXPECT_EQ(number(slots.read_number, text), row.expected);
    }
    const auto above = [](std::u16string_view units, char16_t limit) {
      return std::any_of(units.begin(), units.end(), [=](char16_t unit) { return unit > limit; });
    };
    if (above(text, 0xFF)) continue;
    const std::string bytes = narrowed(text);
    EXPECT_EQ(number(slots.read_number_8bit_with_flags, std::string_view(bytes), row.flags),
              row.expected);
    if (row.flags != 0) continue;
    EXPECT_EQ(number(slots.read_number_8bit, std::string_view(bytes)), row.expected);
    EXPECT_EQ(number(slots.read_number_converted, std::string_view(bytes), nullptr), row.expected);
    const std::string codes = ebcdic(text);
    EXPECT_EQ(number(slots.read_number_ebcdic, std::string_view(codes), nullptr), row.expected);
  }
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

// A POSIX extended regular expression for a whole text.
class Expression {
 public:
  explicit Expression(const std::string& pattern) {
    if (regcomp(&compiled_, ("^(" + pattern + ")$").c_str(), REG_EXTENDED) != 0) std::abort();
  }
  ~Expression() { regfree(&compiled_); }
  Expression(const Expression&) = delete;
  Expression& operator=(const Expression&) = delete;

  /// The text's parts by their parentheses, from 1; nothing when it does not match.
  std::vector<std::string> match(const std::string& text) const {
    regmatch_t places[12];
    std::vector<std::string> parts;
    if (regexec(&compiled_, text.c_str(), std::size(places), places, 0) != 0) return parts;
    for (const regmatch_t& place : places) {
      const auto length = static_cast<std::size_t>(place.rm_eo - place.rm_so);
      parts.push_back(place.rm_so < 0 ? ""
                                      : text.substr(static_cast<std::size_t>(place.rm_so), length));
    }
    return {parts.begin() + 1, parts.end()};
  }

 private:
  regex_t compiled_ = {};
};

// Random texts of everything that matters, against a grammar of another making.
TEST_F(NumberInputTest, RandomTextsAgreeWithAGrammar) {
  const Expression grammar(
      "[ \t]*([+-]?)(([0-9][0-9,]*)([.]([0-9]*))?|[.]([0-9]+))"
      "([ \t]*|[EeDd]([+-]?[0-9]+(,[0-9]+)*)( [ \t]*)?)");
  const Expression missing_text("[ \t]*([.][A-Za-z_]?[ \t]*)?");
  const Expression ends_in_grouping("[^.]*,");
  const Expression long_exponent(".*[EeDd][+-]?[0-9,]{5,}.*");
  std::mt19937 random(6);
  constexpr std::string_view likely = "00112233445566778899,,,...++--eEdD  \t\tAx_";
  for (int i = 0; i < 30'000; ++i) {
    std::string text;
    for (auto units = random() % 16; units > 0; --units) {
      text += likely[random() % (random() % 4 == 0 ? likely.size() : 23)];
    }
    SCOPED_TRACE(text);
    const std::u16string wide(text.begin(), text.end());
    const NumberAnswer answer = number(wide);
    const std::vector<std::string> parts = grammar.match(text);
    if (!parts.empty() && ends_in_grouping.match(text).empty()) {
      std::string plain = parts[1] + parts[3] + "." + parts[5] + parts[6];
      if (!parts[8].empty()) plain.append(1, 'e').append(parts[8]);
      std::erase(plain, ',');
      const double expected = std::strtod(plain.c_str(), nullptr);
      if (std::isinf(expected) || answer.status == Status::out_of_range) {
        EXPECT_EQ(answer, too_large);
      } else {
        EXPECT_EQ(answer.status, ok);
        EXPECT_EQ(std::signbit(answer.value), std::signbit(expected));
        EXPECT_NEAR(answer.value, expected, std::abs(expected) * 1e-15);
      }
    } else {
      // An exponent that is too large is found before what stands behind it.
      const bool large =
          answer.status == Status::out_of_range && !long_exponent.match(text).empty();
      const bool is_missing = !missing_text.match(text).empty();
      EXPECT_TRUE(large || answer.status == (is_missing ? ok : Status::invalid_number));
    }
    EXPECT_EQ(number(handle->services.read_number_8bit, std::string_view(text)), answer);
    const std::string codes = ebcdic(wide);
    EXPECT_EQ(number(handle->services.read_number_ebcdic, std::string_view(codes), nullptr),
              answer);
  }
}

}  // namespace
}  // namespace jwnls::test
