// Numbers out: the table of cases, every room, and what is written is read back.

#include <gtest/gtest.h>

#include <bit>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <limits>
#include <random>
#include <string>
#include <string_view>
#include <tuple>

#include "library/layouts/layout.h"
#include "library/numbers/short_decimal.h"
#include "tests/library/number_cases.h"
#include "tests/library/opened_layout.h"
#include "tests/support/seed.h"

namespace {

using jwnls::test::number_cases;
using jwnls::test::NumberCase;
using jwnls::test::open_layout;
using jwnls::test::OpenedLayout;
using jwnls::test::scaled_of;
using jwnls::test::widened;

// Writes into every room up to more than enough: the same code, length and text.
template <typename Unit, typename Write>
std::basic_string<Unit> write_in_every_room(Write write, int expected_code) {
  std::basic_string<Unit> text;
  std::size_t needed = 77;
  const int code = write(static_cast<Unit*>(nullptr), std::size_t{0}, &needed);
  EXPECT_EQ(code, needed != 0 ? JWNLS_ROOM : expected_code);
  for (std::size_t room = 0; room <= needed + 70; ++room) {
    constexpr Unit guard = 0x55;
    std::basic_string<Unit> out(room + 1, guard);
    std::size_t length = 77;
    const int here = write(out.data(), room, &length);
    EXPECT_EQ(here, room >= needed ? expected_code : JWNLS_ROOM);
    EXPECT_EQ(length, needed);
    EXPECT_EQ(out.back(), guard);
    if (here != JWNLS_OK) continue;
    out.resize(length);
    if (text.empty()) text = out;
    EXPECT_EQ(out, text);
    if (testing::Test::HasFailure()) break;
  }
  return text;
}

template <typename Unit, typename Write>
void check(const NumberCase& row, Write write) {
  const auto text = write_in_every_room<Unit>(write, row.code());
  if (row.code() != JWNLS_OK) return;
  if constexpr (sizeof(Unit) == 1) {
    EXPECT_EQ(text, row.expected);
  } else {
    EXPECT_EQ(text, widened(row.expected));
  }
}

template <typename Value>
Value value_of(const std::string& text) {
  Value value = 0;
  std::from_chars(text.data(), text.data() + text.size(), value);
  return value;
}

TEST(FormatNumbers, AnswerTheTable) {
  for (const NumberCase& row : number_cases()) {
    if (row.action == "read") continue;
    SCOPED_TRACE(row.line);
    const OpenedLayout opened = open_layout(row.locale, row.kind_number(), row.options);
    const jwnls_layout* const layout = opened.get();
    if (row.action == "write-decimal") {
      const std::string& given = row.given;
      check<char>(row, [&](char* out, std::size_t room, std::size_t* length) {
        return jwnls_write_decimal(layout, given.data(), given.size(), out, room, length);
      });
      check<char16_t>(row, [&](char16_t* out, std::size_t room, std::size_t* length) {
        return jwnls_write_decimal_utf16(layout, given.data(), given.size(), out, room, length);
      });
      const auto scaled = scaled_of(given);
      if (!scaled) continue;
      check<char>(row, [&](char* out, std::size_t room, std::size_t* length) {
        return jwnls_write_scaled(layout, scaled->value, scaled->scale, out, room, length);
      });
      check<char16_t>(row, [&](char16_t* out, std::size_t room, std::size_t* length) {
        return jwnls_write_scaled_utf16(layout, scaled->value, scaled->scale, out, room, length);
      });
    } else if (row.kind != "integer") {
      const auto value = value_of<double>(row.given);
      check<char>(row, [&](char* out, std::size_t room, std::size_t* length) {
        return jwnls_write_number(layout, value, out, room, length);
      });
      check<char16_t>(row, [&](char16_t* out, std::size_t room, std::size_t* length) {
        return jwnls_write_number_utf16(layout, value, out, room, length);
      });
    } else {
      const bool negative = row.given.front() == '-';
      const auto value = negative ? static_cast<std::uint64_t>(value_of<std::int64_t>(row.given))
                                  : value_of<std::uint64_t>(row.given);
      const auto write_value = [&](auto* out, std::size_t room, std::size_t* length) {
        const auto as_signed = static_cast<std::int64_t>(value);
        if constexpr (sizeof *out == 1) {
          return negative ? jwnls_write_integer(layout, as_signed, out, room, length)
                          : jwnls_write_unsigned(layout, value, out, room, length);
        } else {
          return negative ? jwnls_write_integer_utf16(layout, as_signed, out, room, length)
                          : jwnls_write_unsigned_utf16(layout, value, out, room, length);
        }
      };
      check<char>(row, write_value);
      check<char16_t>(row, write_value);
    }
  }
}

std::string written(const jwnls_layout* layout, double value) {
  char text[1500];
  std::size_t length = 0;
  EXPECT_EQ(jwnls_write_number(layout, value, text, sizeof text, &length), JWNLS_OK);
  return {text, length};
}

// Of all sizes and scales, beside the ends of what is laid out in one pass.
TEST(FormatNumbers, ScaledIntegersAreTheirDecimals) {
  std::mt19937_64 random(jwnls::test::test_seed(14));
  const std::int64_t ends[] = {0, 9'999'999'999'999'999, 10'000'000'000'000'000,
                               std::numeric_limits<std::int64_t>::max(),
                               std::numeric_limits<std::int64_t>::min()};
  for (const auto& [locale, kind, options] :
       {std::tuple("de_DE", JWNLS_NUMBER, ""),
        {"en_IN", JWNLS_NUMBER, "decimals=2 rounding=half-even"},
        {"fr_FR", JWNLS_AMOUNT, ""},
        {"hi_IN", JWNLS_AMOUNT, "digits=own"},
        {"sv_SE", JWNLS_PERCENT, "decimals=1"},
        {"de_CH", JWNLS_INTEGER, ""},
        {"de_DE", JWNLS_DATE, ""}}) {
    SCOPED_TRACE(std::string(locale) + " " + options);
    const OpenedLayout layout = open_layout(locale, kind, options);
    for (int i = 0; i < 30'000; ++i) {
      const auto bits = static_cast<std::int64_t>(random());
      const std::int64_t value = i % 9 == 0 ? ends[random() % 5] : bits >> (random() % 64);
      std::int32_t scale = static_cast<std::int32_t>(random() % 24) - 4;
      if (i % 99 == 0) scale = static_cast<std::int32_t>(random()) >> (random() % 32);
      const std::string decimal =
          std::to_string(value) + "E" + std::to_string(-std::int64_t{scale});
      char expected[4000], text[4000];
      std::size_t expected_length = 77, length = 78;
      const int code = jwnls_write_decimal(layout.get(), decimal.data(), decimal.size(), expected,
                                           sizeof expected, &expected_length);
      ASSERT_EQ(jwnls_write_scaled(layout.get(), value, scale, text, sizeof text, &length), code)
          << decimal;
      ASSERT_EQ(std::string_view(text, length), std::string_view(expected, expected_length))
          << decimal;
    }
  }
}

TEST(FormatNumbers, UsualLayoutsWriteTheQuickWay) {
  using jwnls::library::DigitForm;
  using jwnls::library::ShortForm;
  for (const auto& [kind, options, form] : {std::tuple(JWNLS_NUMBER, "", ShortForm::few),
                                            {JWNLS_NUMBER, "decimals=2", ShortForm::fixed},
                                            {JWNLS_AMOUNT, "", ShortForm::fixed},
                                            {JWNLS_PERCENT, "decimals=1", ShortForm::few}}) {
    const OpenedLayout layout = open_layout("de_DE", kind, options);
    EXPECT_EQ(layout->number.style.short_form, form) << kind << options;
    EXPECT_GT(layout->number.style.short_integers, 1'000'000U);
  }
  jwnls::library::ShortDecimal number;
  EXPECT_TRUE(few_decimals(1234.5, 0, -1, number));
  EXPECT_EQ(number.mantissa, 1'234'500'000U);
  EXPECT_TRUE(few_decimals(1234.5, 0, 8, number));
  EXPECT_EQ(number.mantissa, 123'450'000'000U);
  EXPECT_FALSE(few_decimals(123'456'789.5, 0, 16, number));
  EXPECT_TRUE(fewer_decimals(-12'345'678'901.25, 2, 1, number));
  EXPECT_EQ(number.mantissa, 12'345'678'901'250U);
  EXPECT_TRUE(fewer_decimals(99'999'999'999'999, 2, -1, number));
  EXPECT_EQ(number.mantissa, 9'999'999'999'999'900U);
  EXPECT_TRUE(fixed_decimal(-1234.565, 2, number));
  EXPECT_EQ(number.mantissa, 123'457U);
  for (const auto& [locale, form] : {std::pair("ar_EG", DigitForm::two_bytes),
                                     {"mr_IN", DigitForm::three_bytes},
                                     {"ff_Adlm", DigitForm::four_bytes},
                                     {"de_DE", DigitForm::latin}}) {
    const OpenedLayout layout = open_layout(locale, JWNLS_NUMBER, "digits=own");
    EXPECT_EQ(layout->number.style.short_texts_in<char>().digit_form, form) << locale;
  }
}

// Doubles of up to seventeen digits, at all distances from their neighbours.
TEST(FormatNumbers, ShortestDigitsAreThoseOfTheStandardLibrary) {
  std::mt19937_64 random(jwnls::test::test_seed(17));
  const OpenedLayout layout = open_layout("en_US", JWNLS_NUMBER, "no-group");
  for (int i = 0; i < 200'000; ++i) {
    const auto significand = static_cast<double>(random() >> (random() % 50 + 11));
    double value = std::ldexp(significand, -static_cast<int>(random() % 70));
    if (i % 3 == 0) value = std::nextafter(value / 10, 1e300);
    char text[100];
    char* const end = std::to_chars(text, text + sizeof text, value, std::chars_format::fixed).ptr;
    if (value >= 0x1p52 || end - text > 40) continue;
    ASSERT_EQ(written(layout.get(), value), std::string(std::begin(text), end));
  }
}

TEST(FormatNumbers, FloatsAreShortestAsFloats) {
  const OpenedLayout layout = open_layout("de_DE", JWNLS_NUMBER);
  const std::pair<float, const char*> rows[] = {{0.1F, "0,1"},
                                                {1234.56F, "1.234,56"},
                                                {3.4e10F, "34.000.000.000"},
                                                {16777216.0F, "16.777.216"},
                                                {1e-10F, "0,0000000001"}};
  for (const auto& [value, expected] : rows) {
    char text[100];
    std::size_t length = 0;
    ASSERT_EQ(jwnls_write_float(layout.get(), value, text, sizeof text, &length), JWNLS_OK);
    EXPECT_EQ(std::string_view(text, length), expected);
    char16_t units[100];
    ASSERT_EQ(jwnls_write_float_utf16(layout.get(), value, units, 100, &length), JWNLS_OK);
    EXPECT_EQ(std::string(units, units + length), expected);
  }
}

// More digits than the services write, rounded exactly and away from zero.
TEST(FormatNumbers, AnyCountOfDigitsIsWritten) {
  const OpenedLayout all = open_layout("en_US", JWNLS_NUMBER, "decimals=350 no-group");
  EXPECT_EQ(written(all.get(), 0.1).substr(0, 40), "0.10000000000000000555111512312578270211");
  EXPECT_EQ(written(all.get(), 0.1).size(), 352U);
  EXPECT_EQ(written(all.get(), 1e300).size(), 301U + 351U);
  // A half at the 350th decimal, which 2^-351 has there.
  EXPECT_EQ(written(all.get(), std::ldexp(1.0, -351)).substr(340), "401489257813");
  const OpenedLayout grouped = open_layout("fr_FR", JWNLS_NUMBER, "decimals=2");
  EXPECT_EQ(written(grouped.get(), 1e300).size(), 301U + 2 * 100U + 3U);
}

// Doubles of all sizes come back as they were, with and without groups, in UTF-8 and UTF-16.
TEST(FormatNumbers, WhatIsWrittenIsReadBack) {
  std::mt19937_64 random(jwnls::test::test_seed(13));
  for (const char* locale : {"de_DE", "en_IN", "fr_FR", "de_CH", "sv_SE", "en_US_POSIX"}) {
    SCOPED_TRACE(locale);
    const OpenedLayout layout = open_layout(locale, JWNLS_NUMBER);
    for (int i = 0; i < 20'000; ++i) {
      double value = std::bit_cast<double>(random());
      if (i % 2 != 0) value = static_cast<double>(static_cast<std::int64_t>(random()) >> 20) / 1e4;
      if (!std::isfinite(value)) continue;
      const std::string text = written(layout.get(), value);
      double read = 0;
      ASSERT_EQ(jwnls_read_number(layout.get(), text.data(), text.size(), &read, nullptr), JWNLS_OK)
          << text;
      ASSERT_EQ(read, value) << text;
    }
  }
}

}  // namespace
