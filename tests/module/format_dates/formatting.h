// Calls of the six formatting services, checked the same way for both kinds of unit.

#ifndef JWNLS_TESTS_MODULE_FORMAT_DATES_FORMATTING_H_
#define JWNLS_TESTS_MODULE_FORMAT_DATES_FORMATTING_H_

#include <string>
#include <string_view>

#include "tests/support/encoded.h"
#include "tests/support/formatting_call.h"
#include "tests/support/guarded_buffer.h"
#include "tests/support/module_fixture.h"

namespace jwnls::test {

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
  /// `outgrown`: the text is what is left of one longer than the work area.
  void expect_text(Service service, const Value& value, std::u16string_view text,
                   std::uint32_t style = 0, bool outgrown = false) {
    expect_units<char16_t>(service, value, text, style, outgrown);
    expect_units<char>(service, value, encoded(text), style, outgrown);
  }
  template <typename Unit>
  void expect_units(Service service, const Value& value, std::basic_string_view<Unit> text,
                    std::uint32_t style = 0, bool outgrown = false) {
    auto& buffer = guarded_buffer<Unit>();
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
    auto& buffer = guarded_buffer<Unit>();
    Unit* out = buffer.reset(16);
    std::int64_t length = untouched_length;
    ASSERT_EQ(call(handle, service, value, 0, out, 16, &length), code(expected)) << describe(16);
    ASSERT_EQ(length, untouched_length) << describe(16);
    ASSERT_TRUE(buffer.untouched(0)) << describe(16);
  }

  LocaleHandle* handle = nullptr;

 private:
  std::string describe(std::int64_t capacity) {
    return "date pattern '" + encoded(text_of(pattern_of(Service::date))) + "', capacity " +
           std::to_string(capacity);
  }
};

}  // namespace jwnls::test

#endif  // JWNLS_TESTS_MODULE_FORMAT_DATES_FORMATTING_H_
