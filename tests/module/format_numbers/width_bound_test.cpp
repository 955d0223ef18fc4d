// Best-fit, decimal-aligned, exponent-only and exponent kinds: what they show in 1 to 32 places.

#include "tests/module/format_numbers/numbers_test.h"
#include "tests/support/seed.h"

namespace jwnls::test {
namespace {

using namespace number_flags;

using WidthBoundTest = NumbersTest;

constexpr Status dropped = Status::decimals_dropped;
constexpr Status too_large = Status::does_not_fit;

TEST_F(WidthBoundTest, BestFitShowsAsMuchAsFits) {
  const auto check = [this](double value, int width, std::u16string_view text,
                            Status status = Status::ok) {
    expect({value, width, 2, best_fit}, text, status);
    expect({value, width, 99, fixed}, text, status);
  };
  check(-0.1, 2, u"-0");
  check(-0.1, 3, u"-.1");
  check(1.0 / 3, 20, u"   0.333333333333333");
  check(9.99, 1, u"*", too_large);
  check(-1234.5678, 7, u"-1234.6");
  check(1e15, 15, u"          1E+15");
  check(1e15, 16, u"1000000000000000");
  check(-1e-5, 8, u"   -1E-5");
  check(-1e-5, 9, u" -0.00001");
  // At most fifteen digits, zeros after them.
  check(123456789012345678.0, 17, u"1.23456789012E+17");
  check(123456789012345678.0, 18, u"123456789012345000");
  // Below one half nothing is left in one place, however near.
  check(-0.49999999999999994, 1, u"0");
  check(-0.5, 1, u"*", too_large);
}

TEST_F(WidthBoundTest, DecimalAlignedKeepsDecimalsAndSaysWhereItCannot) {
  const auto check = [this](double value, int width, std::u16string_view text,
                            Status status = Status::ok) {
    expect({value, width, 2, decimal_aligned}, text, status);
    expect({value, width, -2, bound_exponent}, text, status);
  };
  check(1.0 / 3, 2, u".3", dropped);
  check(1.0 / 3, 4, u"0.33");
  check(-9.99, 4, u" -10", dropped);
  check(1234.5678, 6, u"1234.6", dropped);
  check(-1e-5, 3, u"-.0", dropped);
  check(-1e-5, 5, u"-0.00");
  check(1e15, 7, u"1.0E+15", dropped);
  check(1e15, 18, u"1000000000000000.0", dropped);
  check(1e100, 32, u"           1.00000000000000E+100", dropped);
  check(-1e100, 6, u"******", too_large);
  expect({0.4, 1, 0, decimal_aligned}, u"0");
  expect({1234.5678, 8, -5, decimal_aligned}, u"    1235");
}

TEST_F(WidthBoundTest, ExponentOnlyFillsItsField) {
  const auto check = [&](double value, int width, std::u16string_view text,
                         Status status = Status::ok) {
    expect({value, width, 0, exponent_only}, text, status);
  };
  check(0, 7, u" 0.0E+0");
  check(-1.0 / 3, 7, u"-3.3E-1");
  check(-1e15, 7, u" -1E+15", dropped);
  check(9.96e99, 7, u" 1E+100", dropped);
  check(-9.5e-100, 7, u" -1E-99", dropped);
  check(5e-324, 9, u"4.94E-324");
  // Decimals past the fourteenth are zeros; without any there is no point.
  expect({1.0 / 3, 32, 20, bound_exponent}, u"       3.33333333333333000000E-1");
  expect({1.0 / 3, 10, 30, bound_exponent}, u"3.33333E-1", dropped);
  // Rounded to fifteen digits first: 1.25 - 2^-53.
  expect({1.2499999999999999, 8, 1, bound_exponent}, u"  1.3E+0");
  // Zero decimals are no exponent kind at all.
  expect({1234.5, 8, 0, bound_exponent | left}, u"1235    ");
}

TEST_F(WidthBoundTest, RefusesWidthsThatItCannotFill) {
  constexpr std::uint32_t kinds[] = {best_fit, decimal_aligned, exponent_only, bound_exponent};
  for (const std::uint32_t kind : kinds) {
    EXPECT_EQ(format({1, 0, 2, kind}),
              (Outcome<char16_t>{Status::invalid_width, untouched_length, u""}));
    expect({1, 33, 2, kind}, std::u16string(33, u'*'), Status::invalid_width);
    expect({1, -33, 2, kind, 5}, u"*****", Status::invalid_width);
    expect({1, INT32_MIN, 2, kind, 5}, u"*****", Status::invalid_width);
    expect({1, 10, 2, kind, 0}, u"", Status::does_not_fit);
    if (kind >= exponent_only) expect({1, 6, 2, kind}, u"******", Status::invalid_width);
  }
}

TEST_F(WidthBoundTest, GroupsWithinTheField) {
  expect({1234567, 9, 0, best_fit | group}, u"1,234,567");
  expect({-1234567, 9, 0, best_fit | group}, u" -1234567", Status::grouping_failed);
  expect({1234.5, 8, 1, decimal_aligned | group}, u" 1,234.5");
  expect({1234.5, 6, 2, decimal_aligned | group}, u"1234.5", Status::grouping_failed);
  set_grouping(u"0");
  expect({1, 4, 0, best_fit | group}, u"   1", Status::grouping_failed);
}

TEST_F(WidthBoundTest, FollowsTheRulesForAnyNumber) {
  Random random(test_seed(3));
  constexpr std::uint32_t kinds[] = {best_fit, best_fit, decimal_aligned, exponent_only,
                                     bound_exponent};
  constexpr std::u16string_view groupings[] = {u"3", u"3;2", u"1", u"0", u"2;0", u""};
  for (int i = 0; i < 60000; ++i) {
    set_grouping(random.of(groupings));
    const std::uint32_t kind = random.of(kinds) | (random.one_in(3) ? group : 0);
    const int decimals = random.one_in(9) ? random.between(-40, 120) : random.between(-6, 20);
    const std::int64_t capacity = random.one_in(4) ? random.between(0, 33) : 40;
    double value = random.number();
    // Most values near the widths where the forms change.
    if (std::abs(value) > 1e40 && !random.one_in(4)) value = std::fmod(value, 1e36);
    ASSERT_NO_FATAL_FAILURE(check({value, random.between(1, 34), decimals, kind, capacity}));
  }
}

}  // namespace
}  // namespace jwnls::test
