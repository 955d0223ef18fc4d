#include "client/missing_value.h"

#include <gtest/gtest.h>

#include <bit>
#include <cstdint>
#include <limits>

namespace jwnls::client {
namespace {

TEST(MissingValue, HasTheBitsThatEveryStoredOneHas) {
  const auto check = [&](char name, char character, std::uint64_t bits) {
    const auto missing = MissingValue::named(name);
    ASSERT_TRUE(missing) << name;
    EXPECT_EQ(missing->character(), character);
    EXPECT_EQ(std::bit_cast<std::uint64_t>(missing->value()), bits) << name;
    EXPECT_EQ(MissingValue::of(missing->value()), missing) << name;
    EXPECT_TRUE(is_missing(missing->value())) << name;
  };
  check('.', '.', 0xFFFFD10000000000);
  check('_', '_', 0xFFFFD20000000000);
  check('A', 'A', 0xFFFFBE0000000000);
  check('a', 'A', 0xFFFFBE0000000000);
  check('Z', 'Z', 0xFFFFA50000000000);
  EXPECT_EQ(MissingValue(), MissingValue::named('.'));
}

TEST(MissingValue, IsNoOtherCharacterAndNoOtherDouble) {
  for (const char name : {'-', '0', '@', '[', '`', '{', ' ', '\0', '\xFF'}) {
    EXPECT_FALSE(MissingValue::named(name)) << name;
  }
  using Limits = std::numeric_limits<double>;
  for (const double magnitude : {0.0, 1.0, Limits::infinity(), Limits::quiet_NaN()}) {
    for (const double number : {magnitude, -magnitude}) {
      EXPECT_FALSE(is_missing(number)) << number;
      EXPECT_FALSE(MissingValue::of(number)) << number;
    }
  }
  const double nameless = std::bit_cast<double>(0xFFFFFFFFFFFFFFFFU);
  EXPECT_TRUE(is_missing(nameless));
  EXPECT_FALSE(MissingValue::of(nameless));
}

}  // namespace
}  // namespace jwnls::client
