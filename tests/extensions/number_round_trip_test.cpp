// Over all locales: what the number services write is read back to the value that its digits say.

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <random>
#include <string>
#include <type_traits>
#include <utility>

#include "abi/number_flags.h"
#include "host/locales/locale_names.h"
#include "module/frame/service_table.h"
#include "module/host_calls/kernel_handle.h"
#include "tests/extensions/loaded_extension.h"
#include "tests/support/seed.h"

namespace jwnls::test {
namespace {

constexpr std::int64_t room = 512;

/// Calls `check` with a handle of each locale.
template <typename Check>
void in_every_locale(Check check) {
  store_kernel_handle(nullptr);
  const Database database;
  LocaleHandle handle = {};
  handle.services = services;
  for (const host::LocaleRow& row : host::available_locales()) {
    SCOPED_TRACE(row.name);
    const auto record = database.record(row.name);
    handle.record = record.get();
    check(&handle, *record);
    if (testing::Test::HasFailure()) break;  // one locale's rows are enough to read
  }
}

// The double that a number's digits say, by the C library.
double value_of(std::u16string_view text, const LocaleRecord& record) {
  std::string plain;
  for (const char16_t unit : text) {
    if (unit == record.decimal_symbol) {
      plain += '.';
    } else if (unit != record.grouping_symbol) {
      plain += static_cast<char>(unit);
    }
  }
  return std::strtod(plain.c_str(), nullptr);
}

struct NumberKind {
  std::uint32_t flags;
  std::int32_t decimals;
  double largest;
  double tolerance;  // relative; 0 where the digits and the power of ten are exact doubles
};
const NumberKind number_kinds[] = {
    {number_flags::fixed, 3, 1e11, 0},
    {number_flags::fixed | number_flags::group, 2, 1e12, 0},
    {number_flags::exponent_small, 8, 1e14, 0},
    {number_flags::general, 12, 1e300, 1e-15},
    {number_flags::exponent_capital, 16, 1e300, 1e-15},
    {number_flags::fixed | number_flags::group, 20, 1e120, 1e-14},  // within 150 digits
    {number_flags::best_fit, 0, 1e12, 0},
};

TEST(NumberRoundTrip, Numbers) {
  std::mt19937_64 random(test_seed(1));
  in_every_locale([&random](LocaleHandle* handle, const LocaleRecord& record) {
    const ServiceTable& slots = handle->services;
    for (const NumberKind& kind : number_kinds) {
      for (int i = 0; i < 24; ++i) {
        std::uniform_real_distribution<double> magnitude(-5, std::log10(kind.largest));
        const double number = (i % 2 == 0 ? 1 : -1) * std::pow(10, magnitude(random));
        char16_t out[room];
        std::int64_t length = 0;
        const std::int32_t width = kind.flags == number_flags::best_fit ? 15 : 0;
        ASSERT_EQ(slots.format_number(handle, number, width, kind.decimals, kind.flags, out, room,
                                      &length),
                  0u);
        std::u16string text(out, static_cast<std::size_t>(length));
        const double expected = value_of(text, record);
        const auto reads = [&](auto slot, const auto& read_text, auto... more) {
          double value = 0;
          std::int64_t consumed = 0;
          EXPECT_EQ(slot(handle, read_text.data(), static_cast<std::int32_t>(read_text.size()),
                         &value, &consumed, more...),
                    0u);
          EXPECT_EQ(consumed, length);
          EXPECT_NEAR(value, expected, std::abs(expected) * kind.tolerance) << number;
        };
        reads(slots.read_number, text);
        if (std::max(record.decimal_symbol, record.grouping_symbol) < 0x80) {
          reads(slots.read_number_8bit, std::string(text.begin(), text.end()));
        }
        if (record.grouping_symbol == 0xA0) {  // as it is typed
          std::replace(text.begin(), text.end(), u'\u00A0', u' ');
          reads(slots.read_number_with_flags, text, number_input_flags::blank_groups);
        }
      }
    }
  });
}

// Every integer type in both encodings: plain, grouped, signed or hexadecimal.
TEST(NumberRoundTrip, Integers) {
  using namespace integer_flags;
  std::mt19937_64 random(test_seed(2));
  in_every_locale([&random](LocaleHandle* handle, const LocaleRecord&) {
    const auto check = [&]<typename Integer, typename Unit>(FormatInteger<Integer, Unit>* format,
                                                            ReadInteger<Integer, Unit>* read) {
      for (int i = 0; i < 96; ++i) {
        const bool hexadecimal = i % 4 > 1 && std::is_unsigned_v<Integer>;
        const std::uint32_t kinds[] = {0, group, hexadecimal_small, hexadecimal_capital | prefix};
        const std::uint32_t kind = hexadecimal || i % 4 < 2 ? kinds[i % 4] : sign;
        using Limits = std::numeric_limits<Integer>;
        auto value = static_cast<Integer>(static_cast<Integer>(random()) >>
                                          random() % (sizeof(Integer) * 8));
        if (i < 8) value = i < 4 ? Limits::max() : Limits::min();
        Unit out[room];
        std::int64_t length = 0;
        ASSERT_EQ(format(handle, value, 0, 1, kind, out, room, &length), 0u);
        Integer back = 0;
        std::int64_t consumed = 0;
        const std::uint32_t flags = hexadecimal ? integer_input_flags::hexadecimal : 0;
        ASSERT_EQ(read(handle, out, length, flags, &back, &consumed), 0u) << value;
        ASSERT_EQ(std::pair(back, consumed), std::pair(value, length));
      }
    };
    const ServiceTable& slots = handle->services;
    check(slots.format_int64, slots.read_int64);
    check(slots.format_uint64, slots.read_uint64);
    check(slots.format_int32, slots.read_int32);
    check(slots.format_uint32, slots.read_uint32);
    check(slots.format_int64_8bit, slots.read_int64_8bit);
    check(slots.format_uint64_8bit, slots.read_uint64_8bit);
    check(slots.format_int32_8bit, slots.read_int32_8bit);
    check(slots.format_uint32_8bit, slots.read_uint32_8bit);
  });
}

}  // namespace
}  // namespace jwnls::test
