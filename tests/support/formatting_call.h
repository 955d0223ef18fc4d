// Calls of the six formatting services, in either unit.

#ifndef JWNLS_TESTS_SUPPORT_FORMATTING_CALL_H_
#define JWNLS_TESTS_SUPPORT_FORMATTING_CALL_H_

#include <chrono>

#include "abi/locale_handle.h"

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

template <typename Unit>
std::uint32_t call(LocaleHandle* handle, Service service, const Value& value, std::uint32_t style,
                   Unit* out, std::int64_t capacity, std::int64_t* length) {
  const ServiceTable& slots = handle->services;
  const Instant& at = value.parts;
  FormatDate<Unit>* date = nullptr;
  FormatDatetime<Unit>* other = nullptr;
  if constexpr (sizeof(Unit) == 2) {
    date = slots.format_date;
    other = service == Service::time ? slots.format_time : slots.format_datetime;
  } else {
    date = slots.format_date_8bit;
    other = service == Service::time ? slots.format_time_8bit : slots.format_datetime_8bit;
  }
  return service == Service::date
             ? date(handle, at.month, at.day, at.year, style, out, capacity, length)
             : other(handle, value.seconds, style, out, capacity, length);
}

}  // namespace jwnls::test

#endif  // JWNLS_TESTS_SUPPORT_FORMATTING_CALL_H_
