// Nothing outside the buffer is written, whatever record, numbers and lengths come in.

#include <cstring>

#include "tests/numbers/numbers_test.h"

namespace jwnls::test {
namespace {

class NumberBoundsTest : public NumbersTest {
 protected:
  // Every byte that a number service may read.
  void corrupt_record(Random& random) {
    const auto fill = [&](void* area, std::size_t bytes) {
      for (std::size_t at = 0; at < bytes; at += 8) {
        const std::uint64_t word = random.bits();
        std::memcpy(static_cast<std::byte*>(area) + at, &word,
                    std::min<std::size_t>(8, bytes - at));
      }
    };
    fill(record.grouping_units, sizeof record.grouping_units);
    fill(record.currency_symbol, sizeof record.currency_symbol);
    // Patterns of random units group by three; digits make them interesting.
    if (!random.one_in(4)) {
      for (char16_t& unit : record.grouping_units) unit = random.of(u"0123456789-;;;");
    }
    record.decimal_symbol = static_cast<char16_t>(random.bits());
    record.grouping_symbol = static_cast<char16_t>(random.bits());
    record.grouping_length = static_cast<std::int64_t>(random.bits() >> random.between(0, 63));
    record.currency_symbol_length = random.bits() >> random.between(0, 63);
  }

  template <typename Unit, typename Service>
  void call(std::int64_t capacity, const Service& service) {
    const Outcome<Unit> outcome = run<Unit>(capacity, service);
    if (outcome.status != Status::ok) return;
    ASSERT_GE(outcome.length, 0);
    ASSERT_LE(outcome.length, std::max<std::int64_t>(capacity, 0));
    ASSERT_GE(std::ssize(outcome.text) + 1, outcome.length);  // a unit may look like the guard
  }
};

TEST_F(NumberBoundsTest, HoldForAnyRecordAndAnyArguments) {
  Random random(7);
  const ServiceTable& slots = services;
  for (int i = 0; i < 30000; ++i) {
    if (i % 8 == 0) corrupt_record(random);
    double value = random.one_in(8) ? std::bit_cast<double>(random.bits()) : random.number();
    if (random.one_in(2)) value = std::fmod(value, 1e50);
    const auto whole = random.bits() >> random.between(0, 63);
    const auto number = [&](int most) {
      return random.one_in(8) ? static_cast<std::int32_t>(random.bits())
                              : random.between(-most, most);
    };
    const std::int32_t width = number(60), decimals = number(400);
    const auto flags = static_cast<std::uint32_t>(random.one_in(2) ? random.bits()
                                                                   : random.bits() & random.bits());
    const std::int64_t capacity = random.one_in(20)  ? INT64_MIN
                                  : random.one_in(3) ? random.between(0, 1600)
                                                     : random.between(-1, 60);
    const FloatOptions filled = {
        static_cast<std::uint8_t>(random.bits()), {}, static_cast<char16_t>(random.bits())};
    const FloatOptions* options = random.one_in(2) ? &filled : nullptr;
    const auto floating = [&](auto* service) {
      return [&, service](char16_t* out, std::int64_t room, std::int64_t* length) {
        return service(handle, value, width, decimals, flags, out, room, length);
      };
    };
    const auto with_options = [&](auto* service) {
      return [&, service](auto* out, std::int64_t room, std::int64_t* length) {
        return service(handle, value, width, decimals, flags, out, room, length, options);
      };
    };
    const auto integer =
        [&]<typename Integer, typename Unit>(FormatInteger<Integer, Unit>* service) {
          call<Unit>(capacity, [&](Unit* out, std::int64_t room, std::int64_t* length) {
            return service(handle, static_cast<Integer>(whole), width, decimals, flags, out, room,
                           length);
          });
        };
    call<char16_t>(capacity, floating(slots.format_number));
    call<char16_t>(capacity, floating(slots.format_currency));
    call<char16_t>(capacity, floating(slots.format_percent));
    call<char16_t>(capacity, with_options(slots.format_number_with_options));
    call<char>(capacity, with_options(slots.format_number_8bit));
    integer(slots.format_int64);
    integer(slots.format_uint64);
    integer(slots.format_pointer);
    integer(slots.format_int64_8bit);
    integer(slots.format_uint64_8bit);
    if (HasFatalFailure() || HasNonfatalFailure()) {
      FAIL() << NumberCall{value, width, decimals, flags, capacity, options} << ", grouping "
             << printable(grouping_of(record)) << ", integer " << whole;
    }
  }
}

}  // namespace
}  // namespace jwnls::test
