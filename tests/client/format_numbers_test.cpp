#include <gtest/gtest.h>

#include <cstdint>
#include <limits>

#include "real_host.h"

namespace jwnls::client {
namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr std::uint64_t largest = std::numeric_limits<std::uint64_t>::max();

double missing(char name) { return MissingValue::named(name).value().value(); }

TEST(FormatNumber, WritesEachLocalesSymbolsAndGroups) {
  const auto check = [&](const char* name, const char* number, const char* integer,
                         const char* amount) {
    const Locale at = locale(name);
    EXPECT_EQ(text_or_error(at.format_number(1234567.891)), number) << name;
    EXPECT_EQ(text_or_error(at.format_integer(1234567)), integer) << name;
    EXPECT_EQ(text_or_error(at.format_currency(1234567.5)), amount) << name;
    EXPECT_EQ(to_utf8(at.format_number<std::u16string>(1234567.891).value()), number) << name;
    EXPECT_EQ(to_utf8(at.format_integer<std::u16string>(1234567).value()), integer) << name;
    EXPECT_EQ(to_utf8(at.format_currency<std::u16string>(1234567.5).value()), amount) << name;
  };
  check("de_DE", "1.234.567,891", "1.234.567", "€1.234.567,50");
  check("de_CH", "1’234’567.891", "1’234’567", "CHF\u00A01’234’567.50");
  check("ja_JP", "1,234,567.891", "1,234,567", "￥1,234,568");  // yen have no minor unit
  check("en_US_POSIX", "1234567.891", "1234567", "$1,234,567.50");
}

TEST(FormatNumber, KnowsHowManyDigitsTellANumberApart) {
  const Locale german = locale("de_DE");
  const auto check = [&](double value, const char* fixed, const char* general, const char* exponent,
                         const char* percent) {
    EXPECT_EQ(text_or_error(german.format_number(value)), fixed);
    EXPECT_EQ(text_or_error(german.format_number(value, {.kind = NumberKind::general})), general);
    EXPECT_EQ(text_or_error(german.format_number(value, {.kind = NumberKind::exponent})), exponent);
    EXPECT_EQ(text_or_error(german.format_percent(value)), percent);
  };
  check(0, "0", "0", "0e+00", "0%");
  check(-0.5, "-0,5", "-0,5", "-5e-01", "-50%");
  check(0.07, "0,07", "0,07", "7e-02", "7%");  // its hundredfold is 7.000000000000001
  check(0.1 + 0.2, "0,30000000000000004", "0,30000000000000004", "3,0000000000000004e-01",
        "30,000000000000004%");
  check(1e15, "1.000.000.000.000.000", "1e+15", "1e+15", "100000000000000000%");
  check(1e-7, "0,0000001", "1e-07", "1e-07", "0,00001%");
  // 324 decimals; and 99, which cannot be asked for, become 100.
  EXPECT_EQ(german.format_number(5e-324).value().size(), 2U + 324U);
  EXPECT_EQ(german.format_number(1e-99).value().size(), 2U + 100U);
}

TEST(FormatNumber, FollowsItsOptions) {
  const Locale english = locale("en_US");
  const auto check = [&](double value, const NumberFormat& format, const char* text) {
    EXPECT_EQ(text_or_error(english.format_number(value, format)), text) << value;
  };
  check(2.5, {.decimals = 0}, "3");
  check(1234.5, {.decimals = 2, .width = 10}, "  1,234.50");
  check(1234.5, {.decimals = 2, .group = false}, "1234.50");
  check(-5.5, {.width = 8, .zero_fill = true}, "-00005.5");
  check(5, {.sign = SignDisplay::blank}, " 5");
  check(1234.5, {.kind = NumberKind::general, .group = true}, "1,234.5");
  check(1234567, {.kind = NumberKind::general, .decimals = 3, .capital = true}, "1.23E+06");
  check(0.5, {.kind = NumberKind::general, .decimals = 3, .trailing_zeros = true}, "0.500");
  check(1.0 / 3, {.kind = NumberKind::best_fit, .width = 8}, "0.333333");
  check(0.1, {.kind = NumberKind::best_fit}, "0.1");
  check(0.1, {.kind = NumberKind::best_fit, .width = 5, .left = true}, "0.1  ");
  check(1.5, {.kind = NumberKind::decimal_aligned, .decimals = 3, .width = 8}, "   1.500");
  // What is no number stands alone, in its field.
  check(missing('.'), {.missing_symbol = u'-'}, "-");
  check(missing('A'), {.width = 3, .left = true}, "A  ");
  check(missing('_'), {.kind = NumberKind::best_fit, .width = 3}, "  _");
  check(missing('B'), {.kind = NumberKind::decimal_aligned, .decimals = 2, .width = 8}, "     B  ");
  check(infinity, {.kind = NumberKind::best_fit, .width = 5}, "  Inf");
}

TEST(FormatNumber, NotesWhatTheTextHadToDoWithout) {
  const Locale english = locale("en_US");
  const NumberFormat aligned = {.kind = NumberKind::decimal_aligned, .width = 6};
  const NumberFormat grouped = {.kind = NumberKind::best_fit, .width = 4, .group = true};
  Status note = Status::ok;
  const auto check = [&](double value, const NumberFormat& format, Status expected,
                         const char* text) {
    EXPECT_EQ(text_or_error(english.format_number(value, format, &note)), text);
    EXPECT_EQ(note, expected) << value;
  };
  check(1.5, aligned, Status::ok, "  1.50");
  check(12345.678, aligned, Status::decimals_dropped, " 12346");
  check(1234, grouped, Status::grouping_failed, "1234");
}

TEST(FormatInteger, FollowsItsOptions) {
  const Locale english = locale("en_US");
  const auto check = [&](std::int64_t value, const IntegerFormat& format, const char* text) {
    EXPECT_EQ(text_or_error(english.format_integer(value, format)), text) << value;
  };
  check(std::numeric_limits<std::int64_t>::min(), {}, "-9,223,372,036,854,775,808");
  check(-1234, {.group = false}, "-1234");
  check(7, {.minimum_digits = 3, .width = 5}, "  007");
  check(7, {.width = 4, .left = true}, "7   ");
  check(7, {.width = 4, .sign = SignDisplay::always, .zero_fill = true}, "+007");
  check(0, {.width = 4, .zero_fill = true, .left = true}, "0   ");
  check(255, {.radix = Radix::hexadecimal}, "ff");
  check(255, {.radix = Radix::hexadecimal, .capital = true, .prefix = true}, "0XFF");
  check(255, {.radix = Radix::hexadecimal, .width = 8, .zero_fill = true, .prefix = true},
        "0x0000ff");
  check(-1, {.radix = Radix::octal}, "1777777777777777777777");
  EXPECT_EQ(english.format_integer(largest), "18,446,744,073,709,551,615");
  EXPECT_EQ(english.format_integer(std::uint8_t{200}, {.sign = SignDisplay::always}), "+200");
  EXPECT_EQ(english.format_integer(5, {.width = 1000}).value(), std::string(999, ' ') + "5");
}

TEST(FormatCurrency, PutsTheSymbolInFrontOfTheDigits) {
  const auto check = [&](const char* name, double value, const CurrencyFormat& format,
                         const char* text) {
    EXPECT_EQ(text_or_error(locale(name).format_currency(value, format)), text) << name << value;
  };
  check("en_US", 1234.5, {.width = 12, .left = true}, "$1,234.50   ");
  check("en_US", -5, {}, "$-5.00");
  check("de_CH", 5, {.decimals = 0, .width = 6}, " CHF\u00A05");
  check("ar_KW", 1.5, {}, "د.ك.1.500");
  check("en_US", missing('.'), {.width = 3}, "  .");
  check("en_US", infinity, {.width = 5, .left = true}, "Inf  ");
}

TEST(FormatPercent, FollowsItsOptions) {
  const auto check = [&](double value, const PercentFormat& format, const char* text) {
    EXPECT_EQ(text_or_error(locale("en_US").format_percent(value, format)), text) << value;
    EXPECT_EQ(to_utf8(locale("en_US").format_percent<std::u16string>(value, format).value()), text);
  };
  check(0.125, {.decimals = 1, .width = 6}, " 12.5%");
  check(0.5, {.width = 5, .left = true}, "50%  ");
  check(-0.5, {.width = 6, .left = true, .parentheses = true}, "(50%) ");
  check(0.5, {.width = 6, .parentheses = true}, "   50%");
  check(missing('Z'), {.width = 3}, "  Z");
  check(-infinity, {}, "-Inf");
}

TEST(FormatNumber, SaysWhatIsWrong) {
  const Locale english = locale("en_US");
  const auto refuses = [](const Result<std::string>& result, const char* message,
                          Status status = Status::not_possible) {
    ASSERT_FALSE(result) << *result;
    EXPECT_EQ(result.error().message, message);
    EXPECT_EQ(result.error().status, status) << message;
  };
  using enum NumberKind;
  refuses(english.format_number(1, {.decimals = 351}), "decimals 351: not 0 to 350");
  refuses(english.format_number(1, {.decimals = 99}),
          "decimals 99: the one count that cannot be asked for; ask for 98 or 100");
  refuses(english.format_number(1, {.kind = general, .decimals = 0}),
          "significant digits 0: not 1 to 350");
  refuses(english.format_number(1, {.width = -1}), "width -1: not 0 to 1000");
  refuses(english.format_number(1, {.kind = best_fit, .width = 33}),
          "width of best fit 33: not 1 to 32");
  refuses(english.format_number(1, {.kind = best_fit, .decimals = 1}),
          "best fit: chooses the decimals itself");
  refuses(english.format_number(1, {.kind = decimal_aligned}),
          "width of decimal-aligned 0: not 1 to 32");
  refuses(english.format_number(1, {.kind = decimal_aligned, .width = 5, .left = true}),
          "decimal-aligned: cannot be left-justified");
  refuses(english.format_number(1e300, {.decimals = 100}),
          "number 1e+300: takes more than 350 digits");
  refuses(english.format_number(-1e100, {.kind = best_fit, .width = 2}),
          "number -1e+100: does not fit a width of 2", Status::does_not_fit);
  refuses(english.format_number(missing('.'), {.missing_symbol = 0}),
          "number: no symbol to show a missing value", Status::no_missing_symbol);
  refuses(english.format_currency(1e308, {.decimals = 98}),
          "amount 1e+308: takes more than 350 digits");
  refuses(english.format_currency(1, {.width = 1001}), "width 1001: not 0 to 1000");
  refuses(english.format_percent(1e308),
          "percentage of 1e+308: its hundredfold is too large for a double", Status::out_of_range);
  refuses(english.format_percent(1, {.decimals = -1}), "decimals -1: not 0 to 350");
  refuses(english.format_integer(1, {.minimum_digits = 0}), "minimum digits 0: not 1 to 1000");
  refuses(english.format_integer(1, {.prefix = true}), "prefix: only for hexadecimal integers");
  refuses(english.format_integer(largest, {.sign = SignDisplay::always}),
          "integer 18446744073709551615: above 9223372036854775807 no sign is shown");
}

// The longest text there is: 308 digits in groups, the symbol, and decimals up to the limit.
TEST(FormatNumber, HasRoomForTheLongestText) {
  constexpr double most = std::numeric_limits<double>::max();
  EXPECT_EQ(locale("hi_IN").format_number(most, {.decimals = 41}).value().size(), 309U + 153 + 42);
  EXPECT_EQ(locale("de_CH").format_currency(1, {.width = 1000}).value().size(), 1001U);
}

}  // namespace
}  // namespace jwnls::client
