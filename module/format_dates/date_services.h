// The date, time and datetime formatting services, as the service table holds them.
//
// date_services.cpp instantiates them for UTF-16 output, date_services_8bit.cpp for 8-bit output.

#ifndef JWNLS_MODULE_FORMAT_DATES_DATE_SERVICES_H_
#define JWNLS_MODULE_FORMAT_DATES_DATE_SERVICES_H_

#include "abi/missing_value.h"
#include "module/calendar/civil.h"
#include "module/calendar/datetime_value.h"
#include "module/format_dates/pattern_formatter.h"

namespace jwnls {

// Each is described with its type in abi/locale_handle.h.
template <typename Unit>
std::uint32_t format_date(LocaleHandle*, std::int32_t month, std::int32_t day, std::int32_t year,
                          std::uint32_t style, Unit* out, std::int64_t capacity,
                          std::int64_t* length) noexcept;

template <typename Unit>
std::uint32_t format_time(LocaleHandle*, double value, std::uint32_t style, Unit* out,
                          std::int64_t capacity, std::int64_t* length) noexcept;

template <typename Unit>
std::uint32_t format_datetime(LocaleHandle*, double value, std::uint32_t style, Unit* out,
                              std::int64_t capacity, std::int64_t* length) noexcept;

// ---- Bodies, for the two files that instantiate them.

namespace date_services {

template <typename Unit>
[[gnu::always_inline]] inline std::uint32_t format_value(LocaleHandle* handle, double value,
                                                         const TextEntry& pattern, Unit* out,
                                                         std::int64_t capacity,
                                                         std::int64_t* length) noexcept {
  if (!datetime_in_range(value)) [[unlikely]] {
    return code(is_missing(value) ? Status::missing_value : Status::out_of_range);
  }
  FormatParts parts(value);
  return code(PatternFormatter<Unit>(handle, parts).format(pattern, out, capacity, length));
}

}  // namespace date_services

template <typename Unit>
std::uint32_t format_date(LocaleHandle* handle, std::int32_t month, std::int32_t day,
                          std::int32_t year, std::uint32_t style, Unit* out, std::int64_t capacity,
                          std::int64_t* length) noexcept {
  CivilDate date;
  if (!make_date(month, day, year, default_year_cutoff, date)) return code(Status::out_of_range);
  FormatParts parts(date);
  const TextEntry& pattern = handle->record->date_patterns[style == 1 || style == 2 ? style : 0];
  return code(PatternFormatter<Unit>(handle, parts).format(pattern, out, capacity, length));
}

template <typename Unit>
std::uint32_t format_time(LocaleHandle* handle, double value, std::uint32_t /*style*/, Unit* out,
                          std::int64_t capacity, std::int64_t* length) noexcept {
  return date_services::format_value(handle, value, handle->record->time_pattern, out, capacity,
                                     length);
}

template <typename Unit>
std::uint32_t format_datetime(LocaleHandle* handle, double value, std::uint32_t style, Unit* out,
                              std::int64_t capacity, std::int64_t* length) noexcept {
  const LocaleRecord& record = *handle->record;
  return date_services::format_value(handle, value,
                                     style == 0 ? record.style_0_pattern : record.datetime_pattern,
                                     out, capacity, length);
}

}  // namespace jwnls

#endif  // JWNLS_MODULE_FORMAT_DATES_DATE_SERVICES_H_
