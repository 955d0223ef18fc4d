// Dates, times of day and datetimes, through the UTF-16 services: their text is right for
// characters beyond U+FFFF too, where the 8-bit services encode each surrogate by itself.

#include <cstdio>
#include <cstdlib>
#include <string>

#include "abi/locale_handle.h"
#include "client/locale.h"
#include "client/locale_state.h"
#include "client/missing_value.h"
#include "client/unit_buffer.h"

namespace jwnls::client {
namespace {

using std::chrono::local_seconds;
using std::chrono::seconds;
using std::chrono::year_month_day;

constexpr seconds one_day = std::chrono::hours{24};
constexpr const char* calendar_range = "outside 1582-01-01 to 20000-12-31";

// The style argument of the date service: 1 chooses date pattern 2, 2 date pattern 3, all others 1.
std::uint32_t service_style(DateStyle style) {
  switch (style) {
    case DateStyle::medium:
      return 1;
    case DateStyle::long_form:
      return 2;
    default:
      return 3;
  }
}

std::string iso_text(year_month_day date) {
  char text[24];
  const int year = static_cast<int>(date.year());
  (void)std::snprintf(text, sizeof text, "%s%04d-%02u-%02u", year < 0 ? "-" : "", std::abs(year),
                      unsigned{date.month()}, unsigned{date.day()});
  return text;
}

std::string number_text(double value) {
  char text[32];
  (void)std::snprintf(text, sizeof text, "%.15g", value);
  return text;
}

tl::unexpected<Error> refused(const char* kind, const std::string& value, Status status,
                              const std::string& reason) {
  return failure(status, std::string(kind) + " " + value + ": " + reason);
}

// Why a raw value stands for nothing.
tl::unexpected<Error> refused_value(const char* kind, const char* unit, double value) {
  if (is_missing(value)) {
    return failure(Status::missing_value, std::string(kind) + " value: missing");
  }
  return refused(kind, number_text(value) + " " + unit, Status::out_of_range, calendar_range);
}

// Why a date is none of the calendar.
tl::unexpected<Error> refused_date(const char* kind, year_month_day date) {
  const bool in_range =
      date.year() >= std::chrono::year{1582} && date.year() <= std::chrono::year{20000};
  return refused(kind, iso_text(date), Status::out_of_range,
                 in_range ? "no such date in the calendar" : calendar_range);
}

// One of the two services that format a datetime value.
template <TextString String>
Result<String> format_value(LocaleHandle* handle, FormatDatetime<char16_t>* service,
                            const char* kind, double value, std::uint32_t style) {
  UnitBuffer buffer;
  const Status status{
      service(handle, value, style, buffer.units, UnitBuffer::capacity, &buffer.length)};
  if (status != Status::ok) {
    return refused(kind, number_text(value) + " seconds", status, status_text(handle, status));
  }
  return buffer.text<String>();
}

}  // namespace

template <TextString String>
Result<String> Locale::format_date(year_month_day date, DateStyle style) const {
  // Checked here: the service takes years 0 to 99 as two-digit years, std::chrono does not.
  if (!date_value(date)) return refused_date("date", date);
  UnitBuffer buffer;
  const Status status{handle()->services.format_date(
      handle(), static_cast<std::int32_t>(unsigned{date.month()}),
      static_cast<std::int32_t>(unsigned{date.day()}), static_cast<int>(date.year()),
      service_style(style), buffer.units, UnitBuffer::capacity, &buffer.length)};
  if (status != Status::ok) {
    return refused("date", iso_text(date), status, status_text(handle(), status));
  }
  return buffer.text<String>();
}

template <TextString String>
Result<String> Locale::format_date(DateValue value, DateStyle style) const {
  const auto date = civil_date(value);
  if (!date) return refused_value("date", "days", value.days);
  return format_date<String>(*date, style);
}

template <TextString String>
Result<String> Locale::format_time(seconds since_midnight) const {
  if (since_midnight < seconds{0} || since_midnight >= one_day) {
    return refused("time", std::to_string(since_midnight.count()) + " seconds",
                   Status::out_of_range, "outside 0 to 86399 seconds since midnight");
  }
  return format_time<String>(DatetimeValue{static_cast<double>(since_midnight.count())});
}

template <TextString String>
Result<String> Locale::format_time(DatetimeValue value) const {
  if (!civil_time(value)) return refused_value("time", "seconds", value.seconds);
  return format_value<String>(handle(), handle()->services.format_time, "time", value.seconds, 0);
}

template <TextString String>
Result<String> Locale::format_datetime(local_seconds time, DatetimeStyle style) const {
  const auto value = datetime_value(time);
  if (!value) {
    constexpr auto first = std::chrono::local_days{std::chrono::year{1582} / 1 / 1};
    constexpr auto end = std::chrono::local_days{std::chrono::year{20001} / 1 / 1};
    if (time < first || time >= end) {  // may be past what a year_month_day holds
      return refused("datetime",
                     std::to_string(time.time_since_epoch().count()) + " seconds from 1970",
                     Status::out_of_range, calendar_range);
    }
    return refused_date("datetime", year_month_day{std::chrono::floor<std::chrono::days>(time)});
  }
  return format_datetime<String>(*value, style);
}

template <TextString String>
Result<String> Locale::format_datetime(std::chrono::sys_seconds instant,
                                       DatetimeStyle style) const {
  const auto time = local_time(instant);
  if (!time) return tl::unexpected<Error>(time.error());
  return format_datetime<String>(*time, style);
}

template <TextString String>
Result<String> Locale::format_datetime(DatetimeValue value, DatetimeStyle style) const {
  if (!civil_time(value)) return refused_value("datetime", "seconds", value.seconds);
  return format_value<String>(handle(), handle()->services.format_datetime, "datetime",
                              value.seconds, static_cast<std::uint32_t>(style));
}

#define JWNLS_INSTANTIATE(String)                                                                 \
  template Result<String> Locale::format_date(year_month_day, DateStyle) const;                   \
  template Result<String> Locale::format_date(DateValue, DateStyle) const;                        \
  template Result<String> Locale::format_time(seconds) const;                                     \
  template Result<String> Locale::format_time(DatetimeValue) const;                               \
  template Result<String> Locale::format_datetime(local_seconds, DatetimeStyle) const;            \
  template Result<String> Locale::format_datetime(std::chrono::sys_seconds, DatetimeStyle) const; \
  template Result<String> Locale::format_datetime(DatetimeValue, DatetimeStyle) const

JWNLS_INSTANTIATE(std::string);
JWNLS_INSTANTIATE(std::u16string);
#undef JWNLS_INSTANTIATE

}  // namespace jwnls::client
