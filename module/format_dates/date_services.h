// The date, time and datetime formatting services, as the service table holds them.
//
// date_services.cpp instantiates them for UTF-16 output, date_services_8bit.cpp for 8-bit output.

#ifndef JWNLS_MODULE_FORMAT_DATES_DATE_SERVICES_H_
#define JWNLS_MODULE_FORMAT_DATES_DATE_SERVICES_H_

#include "module/calendar/calendar.h"
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

/// Widens a two-digit year by the fixed cutoff of 1950; false when the parts form no date.
inline bool make_date(std::int32_t month, std::int32_t day, std::int32_t year,
                      CivilDate& date) noexcept {
  if (year >= 0 && year <= 99) {
    year = static_cast<std::int32_t>(widen_year(year, default_year_cutoff));
  }
  if (year < first_year || year > last_year || month < 1 || month > 12 || day < 1) return false;
  date = {year, month, day};
  // Only 29 February asks for the year: branches on the month, or on days above 28, are a gamble.
  constexpr std::uint8_t common_lengths[12] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
  return day <= common_lengths[month - 1] || (month == 2 && day == 29 && is_leap_year(year));
}

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
  if (!date_services::make_date(month, day, year, date)) return code(Status::out_of_range);
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
