// Over all locales: what the number services write is read back to the value that its digits say.

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <random>
#include <string>
#include <type_traits>
#include <vector>

#include "host/locale_names.h"
#include "module/frame/service_table.h"
#include "module/record/number_flags.h"
#include "module/text/kernel_handle.h"
#include "tests/database/loaded_extension.h"

namespace jwnls::test {
namespace {

constexpr std::int64_t room = 512;

class NumberRoundTrip : public testing::Test {
 protected:
  NumberRoundTrip() {
    store_kernel_handle(nullptr);
    handle_.services = services;
  }

  /// Calls `check` with the handle of each locale.
  template <typename Check>
  void in_every_locale(Check check) {
    const Database database;
    std::size_t locales = 0;
    for (const host::LocaleRow& row : host::available_locales()) {
      SCOPED_TRACE(row.name);
      const auto record = database.record(row.name);
      handle_.record = record.get();
      check(&handle_, *record);
      ++locales;
      if (HasFailure()) break;  // one locale's rows are enough to read
    }
    EXPECT_GT(locales, 700u);
  }

 private:
  LocaleHandle handle_ = {};
};

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

TEST_F(NumberRoundTrip, Numbers) {
  in_every_locale(
      [random = std::mt19937_64(1)](LocaleHandle* handle, const LocaleRecord& record) mutable {
        const ServiceTable& slots = handle->services;
        const auto read_all = [](auto slot, LocaleHandle* with, const auto& text, auto... more) {
          double value = 0;
          std::int64_t consumed = 0;
          const auto length = static_cast<std::int32_t>(text.size());
          EXPECT_EQ(slot(with, text.data(), length, &value, &consumed, more...), 0u);
          EXPECT_EQ(consumed, length);
          return value;
        };
        for (const NumberKind& kind : number_kinds) {
          for (int i = 0; i < 24; ++i) {
            std::uniform_real_distribution<double> magnitude(-5, std::log10(kind.largest));
            const double value = (i % 2 == 0 ? 1 : -1) * std::pow(10, magnitude(random));
            char16_t out[room];
            std::int64_t length = 0;
            const std::int32_t width = kind.flags == number_flags::best_fit ? 15 : 0;
            ASSERT_EQ(slots.format_number(handle, value, width, kind.decimals, kind.flags, out,
                                          room, &length),
                      0u);
            std::u16string text(out, static_cast<std::size_t>(length));
            const double expected = value_of(text, record);
            const double tolerance = std::abs(expected) * kind.tolerance;
            EXPECT_NEAR(read_all(slots.read_number, handle, text), expected, tolerance) << value;
            if (record.grouping_symbol == 0xA0) {  // as it is typed
              std::replace(text.begin(), text.end(), u'\u00A0', u' ');
              EXPECT_NEAR(read_all(slots.read_number_with_flags, handle, text,
                                   number_input_flags::blank_groups),
                          expected, tolerance);
            }
            if (std::max(record.decimal_symbol, record.grouping_symbol) < 0x80) {
              EXPECT_NEAR(
                  read_all(slots.read_number_8bit, handle, std::string(text.begin(), text.end())),
                  expected, tolerance);
            }
          }
        }
      });
}

TEST_F(NumberRoundTrip, Integers) {
  in_every_locale([random = std::mt19937_64(2)](LocaleHandle* handle, const LocaleRecord&) mutable {
    const ServiceTable& slots = handle->services;
    const auto check = [&]<typename Integer, typename Unit>(FormatInteger<Integer, Unit>* format,
                                                            ReadInteger<Integer, Unit>* read) {
      using namespace integer_flags;
      const std::vector<std::uint32_t> kinds =
          std::is_signed_v<Integer> ? std::vector<std::uint32_t>{0, group, sign}
                                    : std::vector<std::uint32_t>{0, group, hexadecimal_small,
                                                                 hexadecimal_capital | prefix};
      for (const std::uint32_t kind : kinds) {
        for (int i = 0; i < 24; ++i) {
          using Limits = std::numeric_limits<Integer>;
          const auto value = i == 0   ? Limits::max()
                             : i == 1 ? Limits::min()
                                      : static_cast<Integer>(static_cast<Integer>(random()) >>
                                                             random() % (sizeof(Integer) * 8));
          Unit out[room];
          std::int64_t length = 0;
          ASSERT_EQ(format(handle, value, 0, 1, kind, out, room, &length), 0u);
          const bool hexadecimal = (kind & (hexadecimal_small | hexadecimal_capital)) != 0;
          Integer back = 0;
          std::int64_t consumed = 0;
          ASSERT_EQ(read(handle, out, length, hexadecimal ? integer_input_flags::hexadecimal : 0,
                         &back, &consumed),
                    0u)
              << value;
          EXPECT_EQ(back, value);
          EXPECT_EQ(consumed, length);
        }
      }
    };
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
