#include "module/format_dates/date_services.h"

#include "abi/locale_record.h"
#include "abi/missing_value.h"
#include "abi/status.h"
#include "module/calendar/civil.h"
#include "module/calendar/datetime_value.h"
#include "module/format_dates/pattern_formatter.h"
#include "module/format_dates/shown_parts.h"

namespace jwnls {
namespace {

std::uint32_t refusal(double value) noexcept {
  return code(is_missing(value) ? Status::missing_value : Status::out_of_range);
}

// By a pattern of a clock: the date is split when it is first asked for.
template <typename Unit>
[[gnu::noinline]] std::uint32_t format_clock(LocaleHandle* handle, double value,
                                             const TextEntry& pattern, Unit* out,
                                             std::int64_t capacity, std::int64_t* length) noexcept {
  if (!datetime_in_range(value)) [[unlikely]]
    return refusal(value);
  ShownParts parts(value);
  return code(PatternFormatter<Unit>(handle, parts).format(pattern, out, capacity, length));
}

}  // namespace

template <typename Unit>
std::uint32_t format_date(LocaleHandle* handle, std::int32_t month, std::int32_t day,
                          std::int32_t year, std::uint32_t style, Unit* out, std::int64_t capacity,
                          std::int64_t* length) noexcept {
  CivilDate date;
  if (!make_date(month, day, year, default_year_cutoff, date)) return code(Status::out_of_range);
  ShownParts parts(date);
  const TextEntry& pattern = handle->record->date_patterns[style == 1 || style == 2 ? style : 0];
  return code(PatternFormatter<Unit>(handle, parts).format(pattern, out, capacity, length));
}

template <typename Unit>
std::uint32_t format_time(LocaleHandle* handle, double value, std::uint32_t /*style*/, Unit* out,
                          std::int64_t capacity, std::int64_t* length) noexcept {
  return format_clock(handle, value, handle->record->time_pattern, out, capacity, length);
}

template <typename Unit>
std::uint32_t format_datetime(LocaleHandle* handle, double value, std::uint32_t style, Unit* out,
                              std::int64_t capacity, std::int64_t* length) noexcept {
  const LocaleRecord& record = *handle->record;
  if (style == 0) {  // as a rule the locale's time pattern
    return format_clock(handle, value, record.style_0_pattern, out, capacity, length);
  }
  if (!datetime_in_range(value)) [[unlikely]]
    return refusal(value);
  ShownParts parts(value);
  parts.split_date();
  return code(
      PatternFormatter<Unit>(handle, parts).format(record.datetime_pattern, out, capacity, length));
}

template std::uint32_t format_date(LocaleHandle*, std::int32_t, std::int32_t, std::int32_t,
                                   std::uint32_t, char16_t*, std::int64_t, std::int64_t*) noexcept;
template std::uint32_t format_time(LocaleHandle*, double, std::uint32_t, char16_t*, std::int64_t,
                                   std::int64_t*) noexcept;
template std::uint32_t format_datetime(LocaleHandle*, double, std::uint32_t, char16_t*,
                                       std::int64_t, std::int64_t*) noexcept;
template std::uint32_t format_date(LocaleHandle*, std::int32_t, std::int32_t, std::int32_t,
                                   std::uint32_t, char*, std::int64_t, std::int64_t*) noexcept;
template std::uint32_t format_time(LocaleHandle*, double, std::uint32_t, char*, std::int64_t,
                                   std::int64_t*) noexcept;
template std::uint32_t format_datetime(LocaleHandle*, double, std::uint32_t, char*, std::int64_t,
                                       std::int64_t*) noexcept;

}  // namespace jwnls
