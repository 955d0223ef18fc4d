// Numbers and integers in: the table of cases, the readers against each other, every short text.

#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <charconv>
#include <chrono>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <random>
#include <string>
#include <string_view>
#include <tuple>
#include <vector>

#include "library/layouts/layout.h"
#include "library/numbers/decimal_value.h"
#include "library/numbers/quick_scan.h"
#include "library/numbers/scan_number.h"
#include "library/texts/utf8.h"
#include "tests/library/number_cases.h"
#include "tests/library/opened_layout.h"
#include "tests/support/guarded_buffer.h"
#include "tests/support/seed.h"

namespace {

using namespace jwnls::library;
using jwnls::test::number_cases;
using jwnls::test::NumberCase;
using jwnls::test::open_layout;
using jwnls::test::OpenedLayout;
using jwnls::test::widened;

std::uint8_t facts_named(const std::string& name) {
  return name == "two-ways" ? JWNLS_TWO_WAYS : name == "decides" ? JWNLS_DECIDES : 0;
}

// Both encodings, as double or integer, and as decimal.
template <typename Value, typename Read, typename ReadUtf16>
void check_read(const NumberCase& row, const jwnls_layout* layout, Read read,
                ReadUtf16 read_utf16) {
  Value value = 7;
  std::uint8_t facts = 77;
  const int code = read(layout, row.given.data(), row.given.size(), &value, &facts);
  ASSERT_EQ(code, row.code());
  const std::u16string units = widened(row.given);
  Value wide_value = 7;
  std::uint8_t wide_facts = 77;
  ASSERT_EQ(read_utf16(layout, units.data(), units.size(), &wide_value, &wide_facts), code);
  EXPECT_EQ(std::bit_cast<std::uint64_t>(wide_value), std::bit_cast<std::uint64_t>(value));
  EXPECT_EQ(wide_facts, facts);
  jwnls_error error;
  const int explained = jwnls_explain(layout, row.given.data(), row.given.size(), &error);
  EXPECT_EQ(explained, code) << error.text;
  if (code != JWNLS_OK) {
    EXPECT_EQ(facts, 0);
    if constexpr (std::is_integral_v<Value>) {
      EXPECT_EQ(value, 0);
    } else {
      EXPECT_NE(jwnls_is_missing(value), 0);
    }
    return;
  }
  Value expected = 0;
  std::from_chars(row.expected.data(), row.expected.data() + row.expected.size(), expected);
  EXPECT_EQ(value, expected);
  if (row.facts != "*") {
    EXPECT_EQ(facts, facts_named(row.facts));
  }
  char decimal[2100];
  std::size_t length = 0;
  ASSERT_EQ(jwnls_read_decimal(layout, row.given.data(), row.given.size(), decimal, sizeof decimal,
                               &length, nullptr, &wide_facts),
            JWNLS_OK);
  EXPECT_EQ(wide_facts, facts);
  std::from_chars(decimal, decimal + length, value);
  EXPECT_EQ(value, expected) << std::string_view(decimal, length);
}

TEST(ReadNumbers, AnswerTheTable) {
  for (const NumberCase& row : number_cases()) {
    if (row.action != "read") continue;
    SCOPED_TRACE(row.line);
    const OpenedLayout layout = open_layout(row.locale, row.kind_number(), row.options);
    if (row.kind != "integer") {
      check_read<double>(row, layout.get(), jwnls_read_number, jwnls_read_number_utf16);
    } else {
      check_read<std::int64_t>(row, layout.get(), jwnls_read_integer, jwnls_read_integer_utf16);
    }
  }
}

TEST(ReadNumbers, UnsignedTakesNoNegativeValue) {
  const OpenedLayout layout = open_layout("de_DE", JWNLS_INTEGER);
  const auto read = [&layout](std::string_view text) {
    std::uint64_t value = 7;
    std::uint64_t wide_value = 8;
    const std::u16string wide(text.begin(), text.end());
    const int code = jwnls_read_unsigned(layout.get(), text.data(), text.size(), &value, nullptr);
    EXPECT_EQ(
        jwnls_read_unsigned_utf16(layout.get(), wide.data(), wide.size(), &wide_value, nullptr),
        code);
    EXPECT_EQ(wide_value, value);
    return std::pair(code, value);
  };
  EXPECT_EQ(read("18.446.744.073.709.551.615"), std::pair(int{JWNLS_OK}, ~std::uint64_t{0}));
  EXPECT_EQ(read("18446744073709551616").first, JWNLS_RANGE);
  EXPECT_EQ(read("-1").first, JWNLS_RANGE);
  EXPECT_EQ(read("-0").first, JWNLS_OK);
}

TEST(ReadNumbers, NothingBesideTheTextIsReadAndAllOfItIs) {
  const OpenedLayout german = open_layout("de_DE", JWNLS_NUMBER);
  // A character that the text ends in the middle of, and digits far past what a service keeps.
  double number = 0;
  EXPECT_EQ(jwnls_read_number(german.get(), "5\u00A0", 2, &number, nullptr), JWNLS_UNREAD);
  EXPECT_EQ(jwnls_read_number(german.get(), "\u0661\u0662", 3, &number, nullptr), JWNLS_UNREAD);
  const std::string long_number = "1" + std::string(200, '0') + ",5";
  EXPECT_EQ(
      jwnls_read_number(german.get(), long_number.data(), long_number.size(), &number, nullptr),
      JWNLS_OK);
  EXPECT_EQ(number, 1e200);
  // Nothing in front of a text, either.
  jwnls::test::GuardedBuffer<char> front;
  const OpenedLayout amount = open_layout("de_DE", JWNLS_AMOUNT);
  const std::string_view euros = "1.234,50 \u20AC";
  EXPECT_EQ(
      jwnls_read_number(amount.get(), front.hold_at_front(euros), euros.size(), &number, nullptr),
      JWNLS_OK);
  // An integer has no decimal symbol, and a zero byte is none.
  const OpenedLayout french = open_layout("fr_FR", JWNLS_INTEGER);
  for (const std::string_view text :
       {std::string_view("200\0", 4), std::string_view("1\0005", 3)}) {
    std::int64_t value = 7;
    EXPECT_EQ(jwnls_read_integer(french.get(), text.data(), text.size(), &value, nullptr),
              JWNLS_UNREAD);
  }
}

TEST(ReadNumbers, DecimalsAreExact) {
  const OpenedLayout layout = open_layout("de_DE", JWNLS_NUMBER);
  const std::string digits(500, '7');
  const std::pair<std::string, std::string> rows[] = {
      {"-1.234.567,8900", "-1234567.8900"},
      {"007", "7"},
      {"5,", "5"},
      {",50", "0.50"},
      {"-0", "-0"},
      {"1,5E3", "1500"},
      {"15E-4", "0.0015"},
      {"0E99", "0"},
      {"0E-3", "0.000"},
      {digits + "," + digits, digits + "." + digits}};
  for (const auto& [text, expected] : rows) {
    char out[2100];
    std::size_t length = 0;
    char currency[4] = "xyz";
    ASSERT_EQ(jwnls_read_decimal(layout.get(), text.data(), text.size(), out, sizeof out, &length,
                                 currency, nullptr),
              JWNLS_OK);
    EXPECT_EQ(std::string_view(out, length), expected);
    EXPECT_STREQ(currency, "");
    const std::u16string wide(text.begin(), text.end());
    EXPECT_EQ(jwnls_read_decimal_utf16(layout.get(), wide.data(), wide.size(), out, sizeof out,
                                       &length, nullptr, nullptr),
              JWNLS_OK);
    EXPECT_EQ(std::string_view(out, length), expected);
    EXPECT_EQ(jwnls_read_decimal(layout.get(), text.data(), text.size(), nullptr, 0, &length,
                                 nullptr, nullptr),
              JWNLS_ROOM);
    EXPECT_EQ(length, expected.size());
  }
}

TEST(ReadNumbers, LongTextsAreRefusedUnread) {
  const OpenedLayout layout = open_layout("de_DE", JWNLS_NUMBER);
  const std::string longest(1024, '0');
  double value = 7;
  EXPECT_EQ(jwnls_read_number(layout.get(), longest.data(), 1024, &value, nullptr), JWNLS_OK);
  // Nothing of it is looked at.
  EXPECT_EQ(jwnls_read_number(layout.get(), nullptr, 1025, &value, nullptr), JWNLS_UNREAD);
  EXPECT_EQ(jwnls_read_number_utf16(layout.get(), nullptr, SIZE_MAX, &value, nullptr),
            JWNLS_UNREAD);
  const std::u16string blanks(400, u'\u3000');  // 1,200 bytes
  EXPECT_EQ(jwnls_read_number_utf16(layout.get(), blanks.data(), 400, &value, nullptr),
            JWNLS_UNREAD);
  jwnls_error error;
  EXPECT_EQ(jwnls_explain(layout.get(), nullptr, 1025, &error), JWNLS_UNREAD);
}

// locale, kind, text, how many bytes fit, the message between the locale and what it writes
struct ExplainCase {
  const char* locale;
  int kind;
  const char* text;
  std::size_t at;
  const char* message;
};
constexpr ExplainCase explanations[] = {
    {"de_DE", JWNLS_NUMBER, "12.5", 2, "'12' fits, '.5' does not: groups of another size"},
    {"de_DE", JWNLS_NUMBER, "12.5 km", 2, "'12' fits, '.5 km' does not: groups of another size"},
    {"de_DE", JWNLS_NUMBER, "1,2,3", 3, "'1,2' fits, ',3' does not: a second decimal symbol"},
    {"de_DE", JWNLS_NUMBER, "x", 0, "nothing of it fits: no number begins so"},
    {"de_DE", JWNLS_NUMBER, "1\xFF", 1, "'1' fits, '\\xFF' does not: not valid UTF-8"},
    {"de_DE", JWNLS_NUMBER, "--1", 1, "'-' fits, '-1' does not: two signs"},
    {"fr_FR", JWNLS_NUMBER, "1.234", 1,
     "'1' fits, '.234' does not: a group of another locale or decimals? groups=any reads 1234"},
    {"de_DE", JWNLS_NUMBER, "1'234.5", 5, "'1'234' fits, '.5' does not: two group symbols"},
    {"de_DE", JWNLS_NUMBER, " 12 $", 3,
     "' 12' fits, ' $' does not: a number has no unit; the kinds amount and percent do"},
    {"de_DE", JWNLS_AMOUNT, "5 x", 1, "'5' fits, ' x' does not"},
    {"de_DE", JWNLS_AMOUNT, "5 aab", 1,
     "'5' fits, ' aab' does not: another currency than EUR? currency=CODE is another, "
     "currency=any reads all"},
    {"de_DE", JWNLS_PERCENT, "1,5", 3,
     "ends too early: its unit is missing; percent-sign=optional reads it"},
    {"de_DE", JWNLS_INTEGER, "1,5", 1,
     "'1' fits, ',5' does not: an integer has no decimals; the kind number does"},
    {"de_DE", JWNLS_INTEGER, "99999999999999999999", 0, "beyond the integers of 64 bits"},
    // What is cut is not cut inside a character.
    {"de_DE", JWNLS_NUMBER, "1 12345678901234567890123456\u00E4\u00E4\u00E4", 1,
     "'1' fits, ' 12345678901234567890123456\u00E4...' does not: the decimal symbol of another "
     "locale"},
};

TEST(ReadNumbers, ExplanationsSayWhyAndWhere) {
  for (const ExplainCase& row : explanations) {
    SCOPED_TRACE(row.text);
    const OpenedLayout layout = open_layout(row.locale, row.kind);
    jwnls_error error;
    EXPECT_NE(jwnls_explain(layout.get(), row.text, std::strlen(row.text), &error), JWNLS_OK);
    const std::string in = std::string("' in ") + row.locale + ": ";
    std::string message = error.text;
    message.erase(0, message.find(in) + in.size());
    EXPECT_EQ(message.substr(0, message.find("; " + std::string(row.locale) + " writes '")),
              row.message);
    EXPECT_EQ(error.at, row.at);
  }
}

TEST(ReadNumbers, ExplanationsLookAtNothingBehindTheText) {
  const OpenedLayout layout = open_layout("de_DE", JWNLS_NUMBER);
  std::string text(60, 'x');
  text += '\x80';
  jwnls_error error;
  EXPECT_EQ(jwnls_explain(layout.get(), text.data(), 60, &error), JWNLS_UNREAD);
  EXPECT_EQ(std::string_view(error.text).find("x' in"), 60U);
}

// At most 50 microseconds, whatever the text: the quickest of some runs, as machines are shared.
TEST(ReadNumbers, AnyTextIsExplainedInBoundedTime) {
#if defined(JWNLS_SANITIZED)
  constexpr int slower = 20;
#else
  constexpr int slower = 1;
#endif
  const std::tuple<const char*, int, const char*> layouts[] = {
      {"de_DE", JWNLS_NUMBER, "groups=any signs=any"},
      {"fr_FR", JWNLS_INTEGER, "missing=module"},
      {"en_US", JWNLS_AMOUNT, "currency=any"},
      {"ar_EG", JWNLS_PERCENT, "digits=own"}};
  constexpr std::string_view pieces[] = {"29 ",      "7",    "1.", "1.234.", "\u00A0", "\u200F",
                                         "\u0661",   "\xFF", "(",  "$",      "USD ",   "US",
                                         "\u20AC 1", "1e",   "-",  "CR ",    "\u202E", "0,"};
  for (const auto& [locale, kind, options] : layouts) {
    const OpenedLayout layout = open_layout(locale, kind, options);
    for (const std::string_view piece : pieces) {
      for (const char* front : {"", "5", "1.234,5 "}) {
        std::string text = front;
        while (text.size() + piece.size() <= 1024) text += piece;
        auto least = std::chrono::nanoseconds::max();
        for (int i = 0; i < 20; ++i) {
          jwnls_error error;
          const auto begin = std::chrono::steady_clock::now();
          (void)jwnls_explain(layout.get(), text.data(), text.size(), &error);
          least =
              std::min<std::chrono::nanoseconds>(least, std::chrono::steady_clock::now() - begin);
        }
        EXPECT_LT(least, slower * std::chrono::microseconds(50))
            << locale << ' ' << text.substr(0, 20);
      }
    }
  }
}

TEST(ReadNumbers, OtherKindsAreRefused) {
  const OpenedLayout layout = open_layout("de_DE", JWNLS_DATE);
  double value = 7;
  std::int64_t integer = 7;
  EXPECT_EQ(jwnls_read_number(layout.get(), "1", 1, &value, nullptr), JWNLS_KIND);
  EXPECT_NE(jwnls_is_missing(value), 0);
  EXPECT_EQ(jwnls_read_integer(layout.get(), "1", 1, &integer, nullptr), JWNLS_KIND);
  EXPECT_EQ(integer, 0);
}

// Of every way that 805 locales write numbers, one, and some that have symbols alike.
constexpr const char* conventions[] = {"en_US", "en_IN", "de_DE",  "fr_FR", "de_CH", "en_US_POSIX",
                                       "pl_PL", "en_ZA", "fr_CH",  "de_AT", "hi_IN", "es_CR",
                                       "pt_BR", "sv_SE", "gsw_CH", "mr_IN"};

struct Reading {
  bool read = false;
  double value = 0;
  std::uint8_t facts = 0;
};

// What the full reader says; the quick ones say the same of what they take.
Reading read_all_ways(const NumberSyntax& syntax, std::string_view text, int& taken) {
  ScannedNumber full;
  scan_number(syntax, text, full);
  Reading reading;
  reading.read = full.refusal == Refusal::none;
  ScannedNumber unexplained;
  read_number(syntax, text, unexplained);
  EXPECT_EQ(unexplained.refusal == Refusal::none, reading.read) << text;
  EXPECT_EQ(unexplained.refusal == Refusal::blank, full.refusal == Refusal::blank) << text;
  if (reading.read) {
    reading.value = double_of({{full.text, full.digits},
                               full.exponent - static_cast<int>(full.decimals),
                               full.negative})
                        .value_or(INFINITY);
    reading.facts = full.facts;
  }
  for (auto* scan : {scan_by_masks, scan_by_character, scan_own_digits}) {
    QuickNumber quick;
    if (!scan(syntax.quick, text.data(), text.size(), quick)) continue;
    ++taken;
    double value = double_of(quick.mantissa, -static_cast<int>(quick.decimals)).value_or(INFINITY);
    value = quick.negative ? -value : value;
    EXPECT_TRUE(reading.read) << text;
    EXPECT_EQ(std::bit_cast<std::uint64_t>(value), std::bit_cast<std::uint64_t>(reading.value))
        << text;
    EXPECT_EQ(quick.decimals, full.decimals) << text;
    EXPECT_EQ(quick.facts, full.facts) << text;
  }
  return reading;
}

TEST(ReadNumbers, KnowsTheFirstBytesOfItsCharacters) {
  for (char32_t c = 0x80; c < 0x110000; ++c) {
    const bool is_known = digit_of(c).zero != 0 || is_blank(c) || is_mark(c) || is_dash(c) ||
                          sign_of(c, true) != '\0' || percent_power(c) != 0 ||
                          separator_of(c) != Separator::none;
    if (!is_known) continue;
    char bytes[4];
    encode_utf8(c, bytes);
    EXPECT_NE(leads_of_numbers.find(bytes[0]), std::string_view::npos) << std::uint32_t{c};
  }
}

TEST(ReadNumbers, PlainTextsAreReadTheQuickestWay) {
  const NumberSyntax german = open_layout("de_DE", JWNLS_NUMBER)->number.syntax;
  const NumberSyntax egyptian = open_layout("ar_EG", JWNLS_NUMBER)->number.syntax;
  QuickNumber number;
  for (const std::string_view text : {"7", "1234,5", "1.234,5", "-12.345.678,25"}) {
    EXPECT_TRUE(scan_by_character(german.quick, text.data(), text.size(), number)) << text;
#if defined(__SSE2__)
    EXPECT_TRUE(scan_by_masks(german.quick, text.data(), text.size(), number)) << text;
#endif
  }
  const NumberSyntax persian = open_layout("fa_IR", JWNLS_NUMBER)->number.syntax;
  const std::string_view own = "\u0661\u0662\u066B\u0665";
  const std::string_view negative = "\u200E\u2212\u06F1\u066C\u06F2\u06F3\u06F4\u066B\u06F5";
  EXPECT_TRUE(scan_own_digits(egyptian.quick, own.data(), own.size(), number));
  EXPECT_TRUE(scan_own_digits(persian.quick, negative.data(), negative.size(), number));
  EXPECT_TRUE(number.negative && number.mantissa == 12'345 && number.decimals == 1);
#if defined(__SSE2__)
  EXPECT_TRUE(egyptian.quick.own.masks && persian.quick.own.masks);
#endif
}

// Every text of up to seven units, or as many as $JWNLS_TEST_UNITS says (ten take minutes): no two
// conventions read one differently without saying so.
TEST(ReadNumbers, EveryShortTextIsReadAlikeOrMarked) {
  constexpr std::string_view alphabet[] = {"1", "0", ".", ",", "\u2019", " "};
  constexpr std::size_t base = std::size(alphabet);
  const char* const given = std::getenv("JWNLS_TEST_UNITS");
  const int longest = given != nullptr ? std::atoi(given) : 7;
  std::vector<NumberSyntax> syntaxes;
  for (const char* locale : conventions) {
    syntaxes.push_back(open_layout(locale, JWNLS_NUMBER)->number.syntax);
  }
  int taken = 0;
  int read = 0;
  int two_values = 0;
  std::size_t walked = 0;
  std::size_t texts = 1;
  for (int units = 1; units <= longest; ++units) {
    texts *= base;
    for (std::size_t index = 0; index < texts; ++index) {
      std::string text;
      std::size_t rest = index;
      for (int i = 0; i < units; ++i, rest /= base) text += alphabet[rest % base];
      bool seen = false;
      bool differs = false;
      bool all_marked = true;
      double first = 0;
      for (const NumberSyntax& syntax : syntaxes) {
        const Reading reading = read_all_ways(syntax, text, taken);
        if (!reading.read) continue;
        differs = differs || (seen && reading.value != first);
        if (!seen) first = reading.value;
        seen = true;
        all_marked = all_marked && (reading.facts & JWNLS_TWO_WAYS) != 0;
      }
      read += seen ? 1 : 0;
      two_values += differs ? 1 : 0;
      ASSERT_TRUE(!differs || all_marked) << text;
    }
    if (HasFailure()) return;
    walked += texts;
  }
  std::printf("%zu texts: %d read, %d as different numbers, all of these marked in every reader\n",
              walked, read, two_values);
  EXPECT_GT(two_values, 50);
  EXPECT_GT(read, 1'000);
  EXPECT_GT(taken, read);
}

// Random texts of longer numbers, mostly well formed, with one place changed in half of them.
TEST(ReadNumbers, ReadersAgreeOnRandomTexts) {
  std::mt19937_64 random(jwnls::test::test_seed(11));
  const auto pick = [&random](std::size_t count) {
    return static_cast<std::size_t>(random() % count);
  };
  constexpr std::string_view pieces[] = {"0",      "5",      "9",      ".", ",",      "'", "\u2019",
                                         " ",      "\u00A0", "\u202F", "-", "\u2212", "e", "\u0661",
                                         "\u066B", "\u066C", "\xC2",   "",  {"\0", 1}};
  std::vector<OpenedLayout> layouts;
  for (const char* locale : conventions) {
    layouts.push_back(open_layout(locale, JWNLS_NUMBER));
    layouts.push_back(open_layout(locale, JWNLS_INTEGER));
  }
  for (const char* locale : {"ar_EG", "fa_IR", "mr_IN", "my_MM", "ff_Adlm_SN"}) {
    layouts.push_back(open_layout(locale, JWNLS_NUMBER, "digits=own"));
  }
  int taken = 0;
  for (int i = 0; i < 400'000; ++i) {
    const jwnls_layout& layout = *layouts[pick(layouts.size())];
    char written[100];
    std::size_t length = 0;
    const double magnitude = std::pow(10.0, static_cast<double>(random() % 1800) / 100.0 - 2);
    if (layout.is(JWNLS_NUMBER)) {
      const double scale = std::pow(10.0, static_cast<double>(pick(5)));
      (void)jwnls_write_number(&layout, std::round(magnitude * scale) / scale, written,
                               sizeof written, &length);
    } else {
      (void)jwnls_write_integer(&layout, static_cast<std::int64_t>(magnitude), written,
                                sizeof written, &length);
    }
    std::string text(written, length);
    if (pick(2) == 0) text.replace(pick(text.size()), pick(3), pieces[pick(std::size(pieces))]);
    read_all_ways(layout.number.syntax, text, taken);
    if (HasFailure()) return;
  }
  EXPECT_GT(taken, 150'000);
}

// Rounded correctly, as the standard library does it.
TEST(ReadNumbers, DoublesAreTheNearest) {
  const OpenedLayout layout = open_layout("en_US", JWNLS_NUMBER);
  std::mt19937_64 random(jwnls::test::test_seed(12));
  for (int i = 0; i < 200'000; ++i) {
    const auto value = std::bit_cast<double>(random());
    if (!std::isfinite(value)) continue;
    char text[64];
    const bool shortest = i % 2 == 0;
    char* const end =
        shortest
            ? std::to_chars(text, text + sizeof text, value).ptr
            : std::to_chars(text, text + sizeof text, value, std::chars_format::scientific, 20).ptr;
    double read = 0;
    ASSERT_EQ(
        jwnls_read_number(layout.get(), text, static_cast<std::size_t>(end - text), &read, nullptr),
        JWNLS_OK)
        << std::string_view(text, static_cast<std::size_t>(end - text));
    ASSERT_EQ(read, value);
  }
}

}  // namespace
