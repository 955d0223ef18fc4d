// Fixed, fraction, general and exponent kinds: digits, rounding, fill, signs, grouping.

#include <limits>
#include <vector>

#include "tests/module/format_numbers/numbers_test.h"
#include "tests/support/seed.h"

namespace jwnls::test {
namespace {

using namespace number_flags;
using PlainKindsTest = NumbersTest;

constexpr double infinity = std::numeric_limits<double>::infinity();

TEST_F(PlainKindsTest, ShowWhatAPersonWouldWrite) {
  const auto check = [this](double value, int width, int decimals, std::uint32_t flags,
                            std::u16string_view text, Status status = Status::ok) {
    expect({value, width, decimals, flags}, text, status);
  };
  // Halves round up, on what the double really holds: 1.005 is stored just below the half.
  check(2.5, 0, 0, fixed, u"3");
  check(0.125, 0, 2, fixed, u"0.13");
  check(1.005, 0, 2, fixed, u"1.00");
  // Carries.
  check(999999.9999, 0, 2, fixed | group, u"1,000,000.00");
  check(999999.5, 0, 6, general, u"1000000");
  // Signs: a value that rounds to zero keeps its minus, -0.0 has none.
  check(-0.004, 0, 2, fixed, u"-0.00");
  check(-0.0, 0, 2, fixed, u"0.00");
  check(1, 0, 0, fixed | blank, u" 1");
  check(1, 0, 0, fixed | blank | zero_fill, u"1");
  // Fields.
  check(-1.5, 8, 1, fixed | zero_fill, u"-00001.5");
  check(1234.5, 10, 1, fixed | zero_fill | group, u"0001,234.5");
  check(1.5, -8, 1, fixed | zero_fill, u"1.5     ");
  check(5, 0, 0, fixed | point, u"5.");
  // Exponents: two digits, a third when it is needed.
  check(1.5e-123, 0, 2, exponent_capital, u"1.50E-123");
  // General.
  check(0.00001, 0, 6, 0, u"1e-05");
  check(1234567, 0, -3, general_capital | exponent_small, u"1.23457E+06");
  check(0, 0, 3, general | trailing_zeros, u"0.00");
  // The fraction alone.
  check(12.96, 0, 1, fraction_only, u"1.0");
  // Infinities need room in the width and take no part in it otherwise.
  check(infinity, 10, 2, best_fit, u"Inf");
  check(-infinity, 3, 2, fixed, u"***", Status::does_not_fit);
  check(infinity, 0, 2, fixed, u"", Status::does_not_fit);
  // Any other NaN is the standard missing value.
  check(std::numeric_limits<double>::quiet_NaN(), 3, 2, fixed, u"  .");
  check(-std::numeric_limits<double>::quiet_NaN(), 3, 2, best_fit, u"  .");
}

TEST_F(PlainKindsTest, TakeAtMost350Digits) {
  const std::u16string zeros(350, u'0');
  expect({0, 0, 350, fixed}, u"0." + zeros);
  expect({0, 0, INT32_MAX, fixed}, u"0." + zeros);
  expect({1, 0, 349, fixed}, u"1." + zeros.substr(1));
  expect({1, 352, 348, fixed | zero_fill}, u"001." + zeros.substr(2));
  for (const std::uint32_t kind : {fixed, exponent_small, general}) {
    const NumberCall call = {1e308, 300, 42, kind, 8};
    EXPECT_EQ(format(call), (Outcome<char16_t>{Status::not_possible, untouched_length, u""}))
        << call;
  }
}

// Every kind, decimals and exponent, ties and neighbours of powers of ten.
TEST_F(PlainKindsTest, GiveExactDigits) {
  Random random(test_seed(1));
  constexpr std::uint32_t kinds[] = {fixed,   fraction_only,  exponent_small,
                                     general, exponent_small, general | trailing_zeros};
  for (int i = 0; i < 20000; ++i) {
    const int decimals = random.one_in(8) ? random.between(0, 350) : random.between(0, 20);
    const std::uint32_t flags = random.of(kinds) | (random.one_in(2) ? group : 0);
    ASSERT_NO_FATAL_FAILURE(check({random.number(), 0, decimals, flags, 800}));
  }
  // All binary exponents.
  for (std::uint64_t exponent = 0; exponent < 0x7FF; ++exponent) {
    const double value = std::bit_cast<double>(exponent << 52 | random.bits() >> 12);
    for (const int decimals : {0, 2, 16, 17, 18, 19, random.between(20, 350)}) {
      ASSERT_NO_FATAL_FAILURE(check({value, 0, decimals, random.of(kinds), 800}));
    }
  }
}

// In the least room that whole blocks take and below it.
TEST_F(PlainKindsTest, ShowAmountsOfEveryLength) {
  Random random(test_seed(7));
  for (int power = -6; power < 19; ++power) {
    for (const double factor : {1.0, 1.005, -2.5, 9.9949999, -9.999}) {
      const double value = factor * std::pow(10, power);
      for (int decimals = 0; decimals <= 4; ++decimals) {
        for (const std::uint32_t flags : {fixed, fixed | group, general | group}) {
          const NumberCall call = {value, 0, decimals, flags, random.between(62, 65)};
          ASSERT_NO_FATAL_FAILURE(check(call));
          ASSERT_EQ(format_8bit(call).text, encoded(format(call).text)) << call;
        }
      }
    }
  }
}

constexpr std::u16string_view groupings[] = {
    u"3",  u"3;2", u"3;2;4", u"",   u"0",    u"12",   u"1",           u"3;0", u"2;0;3", u"x",
    u"-3", u"3-",  u"x;2",   u"3x", u"3;;2", u"3;2;", u"99999999999", u"0;3", u"03"};

TEST_F(PlainKindsTest, LayOutEveryCombinationOfFlagsAndRoom) {
  Random random(test_seed(2));
  constexpr char16_t symbols[] = {u'.', u',', u'\0', u'\u00A0', u'\u202F', char16_t{0xD800},
                                  u' ', u'7'};
  constexpr FloatOptions options[] = {{0, {}, u'!'}, {1, {}, u','}, {3, {}, u'\u00B7'}, {1, {}, 0}};
  constexpr std::uint32_t layout = sign | group | left | zero_fill | point | blank | trailing_zeros;
  constexpr std::uint32_t kinds = 0xFFFF;
  constexpr std::int32_t extremes[] = {INT32_MIN, INT32_MAX, INT32_MIN + 1, -1, 99, 350, 351, 1000};
  for (int i = 0; i < 40000; ++i) {
    const std::u16string_view pattern = random.of(groupings);
    set_grouping(pattern, random.one_in(20) ? random.of({INT64_MIN, std::int64_t{-1}})
                                            : std::ssize(pattern));
    record.decimal_symbol = random.of(symbols);
    record.grouping_symbol = random.of(symbols);
    if (random.one_in(10)) corrupt_record(random);
    const auto bits = static_cast<std::uint32_t>(random.bits());
    const std::uint32_t kind = random.one_in(3) ? bits & kinds & bits >> 16 : 1u << bits % 15;
    NumberCall call = {random.number(), random.between(-25, 25), random.between(-3, 12),
                       kind | (static_cast<std::uint32_t>(random.bits()) & layout),
                       random.between(-1, 40)};
    if (random.one_in(30)) call.value = std::bit_cast<double>(random.bits());
    if (random.one_in(30))
      call.value = random.of({infinity, -infinity, missing('.'), missing('-')});
    if (random.one_in(10)) call.flags = bits;
    if (random.one_in(3)) call.width = 0;
    if (random.one_in(3)) call.capacity = random.between(60, 70);
    if (random.one_in(30)) call.width = random.of(extremes);
    if (random.one_in(30)) call.decimals = random.of(extremes);
    if (random.one_in(4)) call.options = &options[random.between(0, 3)];
    ASSERT_NO_FATAL_FAILURE(check(call)) << "points " << int{record.decimal_symbol};
  }
}

TEST_F(PlainKindsTest, GroupAsThePatternSays) {
  constexpr std::pair<std::u16string_view, std::u16string_view> cases[] = {
      {u"3", u"1,234,567,890"},       {u"3;2", u"1,23,45,67,890"},    {u"", u"1,234,567,890"},
      {u"12", u"1234567890"},         {u"4;2;1", u"1,2,3,4,56,7890"}, {u"3;0;2", u"1,234,567,890"},
      {u"1;2;0", u"1,23,45,67,89,0"}, {u"-", u"1,234,567,890"},       {u"5;3;2", u"12,345,67890"}};
  for (const auto& [pattern, text] : cases) {
    set_grouping(pattern);
    expect({1234567890, 0, 0, fixed | group}, text);
  }
  set_grouping(u"0");
  expect({1234, 6, 0, fixed | group}, u"  1234", Status::grouping_failed);
  set_grouping(u"3");
  expect({1234, 0, 0, fixed | group, 4}, u"1234", Status::grouping_failed);
  // Whatever the length claims, the pattern has 60 units.
  set_grouping(std::u16string(59, u'x') + u"2", INT64_MAX);
  expect({1234, 0, 0, fixed | group}, u"1,234");
}

// The length that would have been needed; stars as far as there is a field.
TEST_F(PlainKindsTest, FillWithStarsWhatDoesNotFit) {
  EXPECT_EQ(format({12, -9, 0, fixed, 3}), (Outcome<char16_t>{Status::does_not_fit, 9, u"***"}));
  EXPECT_EQ(format({12345, 2, 0, fixed, 3}), (Outcome<char16_t>{Status::does_not_fit, 5, u"**"}));
}

TEST_F(PlainKindsTest, DoWithoutALength) {
  char16_t out[4];
  EXPECT_EQ(services.format_number(handle, 1.5, 4, 1, fixed, out, 4, nullptr), 0u);
  EXPECT_EQ(std::u16string_view(out, 4), u" 1.5");
  char bytes[4];
  EXPECT_EQ(services.format_number_8bit(handle, 1.5, 4, 1, fixed, bytes, 4, nullptr, nullptr), 0u);
  EXPECT_EQ(std::string_view(bytes, 4), " 1.5");
}

TEST_F(PlainKindsTest, ShowMissingValues) {
  for (int character = 1; character < 256; ++character) {
    const char16_t shown = character == '-' ? u'_' : static_cast<char16_t>(character);
    expect({missing(static_cast<char>(character)), 3, 1, fixed | zero_fill | sign},
           std::u16string(u"  ") + shown);
  }
  constexpr FloatOptions comma = {1, {}, u','}, unset = {0xFE, {}, u','}, none = {1, {}, 0};
  constexpr double standard = missing('.');
  expect({standard, -3, 0, fixed, 9, &comma}, u",  ");
  expect({standard, 0, 0, fixed, 9, &unset}, u".");
  expect({missing('A'), 0, 0, fixed, 9, &none}, u"A");
  EXPECT_EQ(format({standard, 3, 0, fixed, 9, &none}),
            (Outcome<char16_t>{Status::no_missing_symbol, untouched_length, u""}));
  // Decimal-aligned: below the units digit of a number, in a field of blanks as wide as the room.
  const auto check = [&](int width, int decimals, std::u16string_view text, std::int64_t length) {
    const NumberCall call = {missing('Z'), width, decimals, decimal_aligned, 10};
    const Status status = length > 10 ? Status::does_not_fit : Status::ok;
    EXPECT_EQ(format(call), (Outcome<char16_t>{status, length, std::u16string(text)})) << call;
  };
  check(8, 2, u"     Z    ", 8);
  check(8, 0, u"       Z  ", 8);
  check(8, 7, u"Z         ", 8);
  check(8, 8, u"       Z  ", 8);
  check(0, 0, u"Z         ", 1);
  check(-8, 2, u"     Z    ", 8);
  check(3, 99, u"  Z       ", 3);
  check(40, 2, u"**********", 40);
}

}  // namespace
}  // namespace jwnls::test
