// Calls of the six formatting services, checked the same way for both kinds of unit.

#ifndef JWNLS_TESTS_MODULE_FORMATTING_H_
#define JWNLS_TESTS_MODULE_FORMATTING_H_

#include <chrono>
#include <string>
#include <string_view>
#include <utility>

#include "tests/support/guarded_buffer.h"
#include "tests/support/module_fixture.h"

namespace jwnls::test {

enum class Service { date, time, datetime };

struct Instant {
  int year, month, day;
  int hour = 0, minute = 0, second = 0;
};

/// The datetime value of an instant before 29 February 4000, where both calendars still agree.
constexpr double seconds_of(const Instant& at) {
  using namespace std::chrono;
  const sys_days date = year(at.year) / at.month / at.day;
  const auto days = (date - sys_days(1960y / January / 1)).count();
  return static_cast<double>(days) * 86400 + at.hour * 3600 + at.minute * 60 + at.second;
}

/// What a service is asked to show: the date service takes the parts, the others the seconds.
struct Value {
  Value(Instant at) : parts(at), seconds(seconds_of(at)) {}  // NOLINT: tables read better
  explicit Value(double datetime) : seconds(datetime) {}
  Value(int year, int month, int day) : parts{year, month, day} {}

  Instant parts{};
  double seconds = 0;
};

/// UTF-16 as it is, or each unit as UTF-8 by itself.
template <typename Unit>
std::basic_string<Unit> encode(std::u16string_view text) {
  if constexpr (sizeof(Unit) == 2) {
    return std::u16string(text);
  } else {
    std::string bytes;
    for (const unsigned unit : text) {
      if (unit < 0x80) {
        bytes += static_cast<char>(unit);
        continue;
      }
      bytes += static_cast<char>(unit < 0x800 ? 0xC0 + unit / 64 : 0xE0 + unit / 4096);
      if (unit >= 0x800) bytes += static_cast<char>(0x80 + unit / 64 % 64);
      bytes += static_cast<char>(0x80 + unit % 64);
    }
    return bytes;
  }
}

template <typename Unit>
std::uint32_t call(LocaleHandle* handle, Service service, const Value& value, std::uint32_t style,
                   Unit* out, std::int64_t capacity, std::int64_t* length) {
  const ServiceTable& slots = handle->services;
  const auto pick = [](auto* utf16, auto* utf8) {
    return std::get < sizeof(Unit) == 2 ? 0 : 1 > (std::pair(utf16, utf8));
  };
  switch (service) {
    case Service::date: {
      const auto format = pick(slots.format_date, slots.format_date_8bit);
      const Instant& at = value.parts;
      return format(handle, at.month, at.day, at.year, style, out, capacity, length);
    }
    case Service::time:
      return pick(slots.format_time, slots.format_time_8bit)(handle, value.seconds, style, out,
                                                             capacity, length);
    case Service::datetime:
      return pick(slots.format_datetime, slots.format_datetime_8bit)(handle, value.seconds, style,
                                                                     out, capacity, length);
  }
  return 0;
}

/// A test with a handle, whose patterns are set per case. Every expectation is checked in both
/// units, with guards around the buffers.
class FormattingTest : public ModuleTest {
 protected:
  static constexpr std::int64_t untouched_length = -77;

  void SetUp() override {
    handle = create_private();
    host.recording = false;
  }
  void TearDown() override {
    destroy(handle);
    ModuleTest::TearDown();
  }

  TextEntry& pattern_of(Service service, std::uint32_t style = 0) {
    LocaleRecord& record = *handle->record;
    if (service == Service::date) return record.date_patterns[style == 1 || style == 2 ? style : 0];
    if (service == Service::time) return record.time_pattern;
    return style == 0 ? record.style_0_pattern : record.datetime_pattern;
  }
  void set_pattern(std::u16string_view text) {
    for (const Service each : {Service::date, Service::time, Service::datetime}) {
      set_text(pattern_of(each), text);
    }
  }

  /// The text, at every capacity: whole where it fits, else cut, with nothing written behind it.
  void expect_text(Service service, const Value& value, std::u16string_view text,
                   std::uint32_t style = 0) {
    expect_units<char16_t>(service, value, std::u16string(text), style);
    expect_units<char>(service, value, encode<char>(text), style);
  }

  /// `outgrown`: the text is what is left of one longer than the work area.
  template <typename Unit>
  void expect_units(Service service, const Value& value, const std::basic_string<Unit>& text,
                    std::uint32_t style = 0, bool outgrown = false) {
    auto& buffer = this->buffer<Unit>();
    const auto size = static_cast<std::int64_t>(text.size());
    const std::int64_t step = size > 40 ? 31 : 1;
    for (std::int64_t capacity = -1; capacity <= size + step; capacity += step) {
      const std::int64_t room = std::max<std::int64_t>(capacity, 0);
      const std::int64_t delivered = std::min(room, size);
      Unit* out = buffer.reset(static_cast<std::size_t>(room));
      std::int64_t length = untouched_length;
      const std::uint32_t result =
          call(handle, service, value, style, out, capacity < 0 ? INT64_MIN : capacity, &length);
      const bool whole = delivered == size && !outgrown;
      ASSERT_EQ(result, code(whole ? Status::ok : Status::does_not_fit)) << describe(capacity);
      ASSERT_EQ(length, delivered) << describe(capacity);
      const auto units = static_cast<std::size_t>(delivered);
      ASSERT_EQ(buffer.text(units), text.substr(0, units)) << describe(capacity);
      ASSERT_TRUE(buffer.untouched(units)) << describe(capacity);
    }
  }

  /// A status that delivers nothing: buffer and length stay as they are.
  void expect_failure(Service service, const Value& value, Status expected) {
    expect_failure_in<char16_t>(service, value, expected);
    expect_failure_in<char>(service, value, expected);
  }
  template <typename Unit>
  void expect_failure_in(Service service, const Value& value, Status expected) {
    auto& buffer = this->buffer<Unit>();
    Unit* out = buffer.reset(16);
    std::int64_t length = untouched_length;
    ASSERT_EQ(call(handle, service, value, 0, out, 16, &length), code(expected)) << describe(16);
    ASSERT_EQ(length, untouched_length) << describe(16);
    ASSERT_TRUE(buffer.untouched(0)) << describe(16);
  }

  template <typename Unit>
  GuardedBuffer<Unit>& buffer() {
    if constexpr (sizeof(Unit) == 2) {
      return units_;
    } else {
      return bytes_;
    }
  }

  LocaleHandle* handle = nullptr;

 private:
  std::string describe(std::int64_t capacity) {
    return "date pattern '" + encode<char>(text_of(pattern_of(Service::date))) + "', capacity " +
           std::to_string(capacity);
  }

  GuardedBuffer<char16_t> units_;
  GuardedBuffer<char> bytes_;
};

}  // namespace jwnls::test

#endif  // JWNLS_TESTS_MODULE_FORMATTING_H_
