// Calls of the date, time and period input services, checked the same way in both encodings.

#ifndef JWNLS_TESTS_MODULE_READ_DATES_READING_H_
#define JWNLS_TESTS_MODULE_READ_DATES_READING_H_

#include <bit>
#include <chrono>
#include <optional>
#include <string>
#include <string_view>

#include "abi/missing_value.h"
#include "tests/support/encoded.h"
#include "tests/support/guarded_buffer.h"
#include "tests/support/module_fixture.h"
#include "tests/support/reading_call.h"

namespace jwnls::test {

using Service = ReadingService;

/// The date value of a date before 29 February 4000, where both calendars still agree.
constexpr double day(int year, unsigned month, unsigned of_month) {
  using namespace std::chrono;
  const sys_days date =
      std::chrono::year(year) / std::chrono::month(month) / std::chrono::day(of_month);
  return static_cast<double>((date - sys_days(1960y / January / 1)).count());
}

/// What a service answered: the value when the status was ok, else nothing.
struct Reading {
  std::optional<double> value;
  std::uint64_t consumed;
};

/// A test with a handle whose record is set per case.
class ReadingTest : public ModuleTest {
 protected:
  static constexpr double untouched_value = -77.25;

  void SetUp() override {
    handle = create_private();
    host.recording = false;
    LocaleRecord& record = *handle->record;
    const auto fill = [](TextEntry* list, auto... names) { (set_text(*list++, names), ...); };
    fill(record.full_months, u"January", u"February", u"March", u"April", u"May", u"June", u"July",
         u"August", u"September", u"October", u"November", u"December");
    fill(record.short_months, u"Jan", u"Feb", u"Mar", u"Apr", u"May", u"Jun", u"Jul", u"Aug",
         u"Sep", u"Oct", u"Nov", u"Dec");
    fill(record.full_weekdays, u"Sunday", u"Monday", u"Tuesday", u"Wednesday", u"Thursday",
         u"Friday", u"Saturday");
    fill(record.short_weekdays, u"Sun", u"Mon", u"Tue", u"Wed", u"Thu", u"Fri", u"Sat");
    fill(record.full_quarters, u"1st quarter", u"2nd quarter", u"3rd quarter", u"4th quarter");
    fill(record.short_quarters, u"Q1", u"Q2", u"Q3", u"Q4");
    set_text(record.before_noon, u"AM");
    set_text(record.after_noon, u"PM");
  }
  void TearDown() override {
    destroy(handle);
    ModuleTest::TearDown();
  }

  void set_time_patterns(std::u16string_view pattern_1, std::u16string_view pattern_2) {
    set_text(handle->record->datetime_pattern, pattern_1);
    set_text(handle->record->style_0_pattern, pattern_2);
  }

  template <typename Unit>
  Reading read_text(Service service, std::basic_string_view<Unit> text, std::uint32_t mode) {
    return read_units(service, guarded_buffer<Unit>().hold(text),
                      static_cast<std::int64_t>(text.size()), mode);
  }
  template <typename Unit>
  Reading read_units(Service service, const Unit* text, std::int64_t length, std::uint32_t mode) {
    double value = untouched_value;
    std::uint64_t consumed = 9999;
    const std::uint32_t result = reading_slot<Unit>(handle->services, service)(
        handle, text, length, mode, &value, &consumed);
    if (result == code(Status::ok)) return {value, consumed};
    EXPECT_EQ(result, code(Status::no_match));
    EXPECT_EQ(consumed, 0u);
    if (service == Service::time && mode != 4) {
      EXPECT_EQ(value, untouched_value);
    } else {
      EXPECT_EQ(std::bit_cast<std::uint64_t>(value), missing_value_bits);
    }
    return {std::nullopt, consumed};
  }

  /// Reads the text in both encodings and compares; `consumed` counts UTF-16 units.
  void expect_read(Service service, std::u16string_view text, std::uint32_t mode,
                   std::optional<double> value, std::size_t consumed) {
    const std::string bytes = encoded(text);
    const Reading wide = read_text<char16_t>(service, text, mode);
    const Reading narrow = read_text<char>(service, bytes, mode);
    EXPECT_EQ(wide.value, value) << describe(bytes, mode);
    EXPECT_EQ(narrow.value, value) << describe(bytes, mode) << " (UTF-8)";
    if (!value) return;
    EXPECT_EQ(wide.consumed, consumed) << describe(bytes, mode);
    EXPECT_EQ(narrow.consumed, encoded(text.substr(0, consumed)).size())
        << describe(bytes, mode) << " (UTF-8)";
  }

  LocaleHandle* handle = nullptr;

 private:
  std::string describe(const std::string& text, std::uint32_t mode) {
    const LocaleRecord& record = *handle->record;
    return "'" + text + "', mode " + std::to_string(mode) + ", time patterns '" +
           encoded(text_of(record.datetime_pattern)) + "' and '" +
           encoded(text_of(record.style_0_pattern)) + "', date pattern 1 '" +
           encoded(text_of(record.date_patterns[0])) + "'";
  }
};

}  // namespace jwnls::test

#endif  // JWNLS_TESTS_MODULE_READ_DATES_READING_H_
