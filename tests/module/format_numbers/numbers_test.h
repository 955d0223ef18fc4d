// A handle over a record of the test's own, calls with guards around the output, and random values
// of every magnitude.

#ifndef JWNLS_TESTS_MODULE_FORMAT_NUMBERS_NUMBERS_TEST_H_
#define JWNLS_TESTS_MODULE_FORMAT_NUMBERS_NUMBERS_TEST_H_

#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdlib>
#include <memory>
#include <random>
#include <string>
#include <string_view>

#include "module/frame/service_table.h"
#include "module/host_calls/kernel_handle.h"
#include "tests/module/format_numbers/number_call.h"
#include "tests/support/encoded.h"
#include "tests/support/guarded_buffer.h"

namespace jwnls::test {

class Random {
 public:
  explicit Random(std::uint64_t seed) : engine_(seed) {}

  std::uint64_t bits() { return engine_(); }
  /// From `low` to `high`, both included.
  template <typename Integer>
  Integer between(Integer low, Integer high) {
    return std::uniform_int_distribution<Integer>(low, high)(engine_);
  }
  bool one_in(int count) { return between(1, count) == 1; }
  template <typename List>
  auto of(const List& list) {
    return std::data(list)[between<std::size_t>(0, std::size(list) - 1)];
  }

  template <typename Element>
  Element of(std::initializer_list<Element> list) {
    return std::data(list)[between<std::size_t>(0, list.size() - 1)];
  }

  /// A finite double of any magnitude, most of them of the kinds that formatters get wrong:
  /// everyday amounts, exact ties, powers of ten and their neighbours, runs of nines, denormals.
  double number() {
    const double sign = one_in(2) ? 1 : -1;
    const auto digits = static_cast<double>(between<std::int64_t>(0, 999'999));
    switch (between(0, 8)) {
      case 0:
        return sign * std::bit_cast<double>(between<std::uint64_t>(0, 0x7FEFFFFFFFFFFFFF));
      case 1:
        return sign * std::bit_cast<double>(bits() >> between(12, 63));
      case 2: {
        const double power = parse("1e" + std::to_string(between(-320, 308)));
        return sign * std::nextafter(power, of({0.0, power, 2 * power}));
      }
      case 3:
        return sign * std::ldexp(2 * digits + 1, between(-30, 3));
      case 4:
        return sign * static_cast<double>(bits() >> between(0, 63));
      case 5: {
        const std::string nines(between<std::size_t>(1, 18), '9');
        return sign * parse(nines + "e" + std::to_string(between(-25, 5)));
      }
      case 6:
        return one_in(3) ? sign * 0.0 : sign * parse("5e" + std::to_string(between(-30, 3)));
      default:
        return sign * digits / std::pow(10, between(0, 8));
    }
  }

 private:
  static double parse(const std::string& text) { return std::strtod(text.c_str(), nullptr); }

  std::mt19937_64 engine_;
};

class NumbersTest : public testing::Test {
 protected:
  NumbersTest()
      : record_(std::make_unique<LocaleRecord>()), handle_(std::make_unique<LocaleHandle>()) {
    store_kernel_handle(nullptr);
    handle->services = services;
    handle->record = &record;
    record.decimal_symbol = u'.';
    record.grouping_symbol = u',';
    set_grouping(u"3");
  }

  void set_grouping(std::u16string_view pattern) { set_grouping(pattern, std::ssize(pattern)); }
  void set_grouping(std::u16string_view pattern, std::int64_t claimed_length) {
    record.grouping_length = claimed_length;
    pattern.copy(record.grouping_units, std::size(record.grouping_units));
  }
  void set_currency(std::u16string_view symbol) {
    record.currency_symbol_length = symbol.size();
    std::copy(symbol.begin(), symbol.end(), record.currency_symbol);
  }

  /// Makes every byte that a number service may read anything.
  void corrupt_record(Random& random) {
    for (char16_t& unit : record.grouping_units) {
      unit = random.one_in(4) ? static_cast<char16_t>(random.bits()) : random.of(u"0123456789-;;;");
    }
    for (char16_t& unit : record.currency_symbol) unit = static_cast<char16_t>(random.bits());
    record.decimal_symbol = static_cast<char16_t>(random.bits());
    record.grouping_symbol = static_cast<char16_t>(random.bits());
    record.grouping_length = static_cast<std::int64_t>(random.bits() >> random.between(0, 63));
    record.currency_symbol_length = random.bits() >> random.between(0, 63);
  }

  /// Calls `service(out, capacity, &length)` and takes down what it did. Writing outside the buffer
  /// is a fault in any test.
  template <typename Unit, typename Service>
  Outcome<Unit> run(std::int64_t capacity, const Service& service) {
    auto& buffer = guarded_buffer<Unit>();
    const auto room = static_cast<std::size_t>(std::max<std::int64_t>(capacity, 0));
    Unit* out = buffer.reset(room);
    Outcome<Unit> outcome;
    outcome.status = Status{service(out, capacity, &outcome.length)};
    outcome.text = buffer.written();
    EXPECT_TRUE(buffer.untouched(room)) << "written before the buffer";
    return outcome;
  }

  /// A floating service, without its scratch.
  template <typename Unit, typename Service>
  Outcome<Unit> run_floating(std::int64_t capacity, const Service& service) {
    Outcome<Unit> outcome = run<Unit>(capacity, service);
    drop_scratch(outcome);
    return outcome;
  }
  /// Slot 55.
  Outcome<char16_t> format(const NumberCall& call) {
    return run_floating<char16_t>(call.capacity, [&](char16_t* out, std::int64_t capacity,
                                                     auto* length) {
      return services.format_number_with_options(handle, call.value, call.width, call.decimals,
                                                 call.flags, out, capacity, length, call.options);
    });
  }
  /// Slot 59.
  Outcome<char> format_8bit(const NumberCall& call) {
    return run_floating<char>(call.capacity, [&](char* out, std::int64_t capacity, auto* length) {
      return services.format_number_8bit(handle, call.value, call.width, call.decimals, call.flags,
                                         out, capacity, length, call.options);
    });
  }

  /// Runs `call` and compares it with the model.
  void check(const NumberCall& call) {
    ASSERT_EQ(format(call), expected_number(record, call))
        << call << ", grouping " << printable(std::u16string(grouping_of(record)));
  }
  /// Runs `call` and compares a text that fills its field.
  void expect(const NumberCall& call, std::u16string_view text, Status status = Status::ok) {
    ASSERT_EQ(format(call), (Outcome<char16_t>{status, std::ssize(text), std::u16string(text)}))
        << call;
  }

 private:
  std::unique_ptr<LocaleRecord> record_;
  std::unique_ptr<LocaleHandle> handle_;

 protected:
  LocaleRecord& record = *record_;
  LocaleHandle* handle = handle_.get();
};

}  // namespace jwnls::test

#endif  // JWNLS_TESTS_MODULE_FORMAT_NUMBERS_NUMBERS_TEST_H_
