// Writes dates, times, datetimes and instants straight into the caller's room: by the layout's
// writer, times and what the writer does not know by the services.

#include <cstdint>
#include <cstring>

#include "include/jwnls/jwnls.h"
#include "library/dates/date_layout.h"
#include "library/dates/day_scale.h"
#include "library/dates/service_call.h"
#include "library/layouts/layout.h"

namespace {

using jwnls::CivilDate;
using jwnls::LocaleHandle;
using jwnls::seconds_per_day;
using jwnls::ServiceTable;
using jwnls::Status;
using jwnls::library::DateLayout;
using jwnls::library::deliver;
using jwnls::library::deliver_converted;
using jwnls::library::Joint;

// The slots of the writing services, by the unit.
template <typename Unit>
struct Slots;
template <>
struct Slots<char> {
  static auto date(const ServiceTable& services) { return services.format_date_8bit; }
  static auto time(const ServiceTable& services) { return services.format_time_8bit; }
  static auto datetime(const ServiceTable& services) { return services.format_datetime_8bit; }
  static std::string_view before(const Joint& joint) { return joint.before; }
  static std::string_view between(const Joint& joint) { return joint.between; }
  static std::string_view behind(const Joint& joint) { return joint.behind; }
};
template <>
struct Slots<char16_t> {
  static auto date(const ServiceTable& services) { return services.format_date; }
  static auto time(const ServiceTable& services) { return services.format_time; }
  static auto datetime(const ServiceTable& services) { return services.format_datetime; }
  static std::u16string_view before(const Joint& joint) { return joint.before_units; }
  static std::u16string_view between(const Joint& joint) { return joint.between_units; }
  static std::u16string_view behind(const Joint& joint) { return joint.behind_units; }
};

// Runs `call`, which is a template over the unit, for the caller's unit or by way of UTF-16.
template <typename Unit, typename Call>
int write(const jwnls_layout* layout, Call call, Unit* out, std::size_t room,
          std::size_t* length) noexcept {
  if constexpr (sizeof(Unit) == 1) {
    if (layout->locale->beyond_bmp) [[unlikely]] {
      return deliver_converted([&call](char16_t* to, std::int64_t capacity,
                                       std::int64_t* size) { return call(to, capacity, size); },
                               out, room, length);
    }
  }
  return deliver<Unit>(call, out, room, length);
}

// By the layout's own writer.
template <typename Unit>
[[gnu::always_inline]] inline int give(const DateLayout& dates, std::int32_t day,
                                       std::int32_t second, Unit* out, std::size_t room,
                                       std::size_t* length) noexcept {
  *length = dates.writer->texts<Unit>().write(day, second, out, room);
  return *length <= room ? JWNLS_OK : JWNLS_ROOM;
}

template <typename Unit>
int write_date(const jwnls_layout* layout, std::int32_t days, Unit* out, std::size_t room,
               std::size_t* length) noexcept {
  *length = 0;
  if (!layout->is(JWNLS_DATE)) return JWNLS_KIND;
  const auto day = jwnls::library::calendar_day(days);
  if (!day) return JWNLS_RANGE;
  if (layout->dates->writer != nullptr) [[likely]] {
    return give(*layout->dates, *day, 0, out, room, length);
  }
  const CivilDate date = jwnls::civil_from_day(*day);
  LocaleHandle* const handle = layout->locale->handle;
  const std::uint32_t style = layout->dates->date_style;
  return write(
      layout,
      [=](auto* to, std::int64_t capacity, std::int64_t* size) {
        using To = std::remove_pointer_t<decltype(to)>;
        return Slots<To>::date(handle->services)(handle, date.month, date.day, date.year, style, to,
                                                 capacity, size);
      },
      out, room, length);
}

// A datetime of another style than the medium, by the services: its parts, and what stands around
// them.
template <typename Unit>
std::uint32_t compose(const jwnls_layout* layout, std::int32_t day, double seconds, Unit* out,
                      std::int64_t capacity, std::int64_t* length) noexcept {
  LocaleHandle* const handle = layout->locale->handle;
  const DateLayout& dates = *layout->dates;
  const CivilDate date = jwnls::civil_from_day(day);
  std::int64_t at = 0;
  const auto put_date = [&] {
    std::int64_t size = 0;
    const Status status{Slots<Unit>::date(handle->services)(
        handle, date.month, date.day, date.year, dates.date_style, out + at, capacity - at, &size)};
    at += size;
    return status;
  };
  const auto put_time = [&] {
    std::int64_t size = 0;
    const Status status{
        Slots<Unit>::time(handle->services)(handle, seconds, 0, out + at, capacity - at, &size)};
    at += size;
    return status;
  };
  const auto put_text = [&](auto text) {
    const auto size = static_cast<std::int64_t>(text.size());
    if (capacity - at < size) return Status::does_not_fit;
    if (size > 0) std::memcpy(out + at, text.data(), text.size() * sizeof(Unit));
    at += size;
    return Status::ok;
  };
  const Joint& joint = dates.joint;
  Status status = put_text(Slots<Unit>::before(joint));
  if (status == Status::ok) status = joint.time_first ? put_time() : put_date();
  if (status == Status::ok) status = put_text(Slots<Unit>::between(joint));
  if (status == Status::ok) status = joint.time_first ? put_date() : put_time();
  if (status == Status::ok) status = put_text(Slots<Unit>::behind(joint));
  *length = at;
  return code(status);
}

struct Floor {
  std::int64_t quotient, remainder;
};
constexpr Floor floor_divide(std::int64_t value, std::int64_t divisor) noexcept {
  const std::int64_t remainder = value % divisor;
  const std::int64_t below = remainder < 0 ? 1 : 0;
  return {value / divisor - below, remainder + below * divisor};
}

template <typename Unit>
int write_datetime(const jwnls_layout* layout, std::int64_t microseconds, Unit* out,
                   std::size_t room, std::size_t* length) noexcept {
  *length = 0;
  const bool is_instant = layout->is(JWNLS_INSTANT);
  if (!is_instant && !layout->is(JWNLS_DATETIME)) return JWNLS_KIND;
  std::int64_t seconds =
      floor_divide(microseconds, jwnls::library::microseconds_per_second).quotient;
  if (is_instant && layout->zone != nullptr) seconds += layout->zone->offset_at(seconds);
  const Floor days = floor_divide(seconds, seconds_per_day);
  const auto day = jwnls::library::calendar_day(days.quotient);
  if (!day) return JWNLS_RANGE;
  if (layout->dates->writer != nullptr) [[likely]] {
    return give(*layout->dates, *day, static_cast<std::int32_t>(days.remainder), out, room, length);
  }
  const double value = static_cast<double>(std::int64_t{*day} * seconds_per_day + days.remainder);
  LocaleHandle* const handle = layout->locale->handle;
  if (layout->dates->is_composed) {
    return write(
        layout,
        [=](auto* to, std::int64_t capacity, std::int64_t* size) {
          return compose(layout, *day, value, to, capacity, size);
        },
        out, room, length);
  }
  return write(
      layout,
      [=](auto* to, std::int64_t capacity, std::int64_t* size) {
        using To = std::remove_pointer_t<decltype(to)>;
        return Slots<To>::datetime(handle->services)(handle, value, 1, to, capacity, size);
      },
      out, room, length);
}

template <typename Unit>
int write_time(const jwnls_layout* layout, std::int64_t microseconds, Unit* out, std::size_t room,
               std::size_t* length) noexcept {
  *length = 0;
  if (!layout->is(JWNLS_TIME)) return JWNLS_KIND;
  const std::int64_t seconds = microseconds / jwnls::library::microseconds_per_second;
  if (microseconds < 0 || seconds >= seconds_per_day) return JWNLS_RANGE;
  LocaleHandle* const handle = layout->locale->handle;
  return write(
      layout,
      [=](auto* to, std::int64_t capacity, std::int64_t* size) {
        using To = std::remove_pointer_t<decltype(to)>;
        return Slots<To>::time(handle->services)(handle, static_cast<double>(seconds), 0, to,
                                                 capacity, size);
      },
      out, room, length);
}

}  // namespace

extern "C" {

int jwnls_write_date(const jwnls_layout* layout, int32_t days, JWNLS_WRITE) {
  return write_date(layout, days, out, room, length);
}
int jwnls_write_datetime(const jwnls_layout* layout, int64_t microseconds, JWNLS_WRITE) {
  return write_datetime(layout, microseconds, out, room, length);
}
int jwnls_write_time(const jwnls_layout* layout, int64_t microseconds, JWNLS_WRITE) {
  return write_time(layout, microseconds, out, room, length);
}
int jwnls_write_date_utf16(const jwnls_layout* layout, int32_t days, JWNLS_WRITE_UTF16) {
  return write_date(layout, days, out, room, length);
}
int jwnls_write_datetime_utf16(const jwnls_layout* layout, int64_t microseconds,
                               JWNLS_WRITE_UTF16) {
  return write_datetime(layout, microseconds, out, room, length);
}
int jwnls_write_time_utf16(const jwnls_layout* layout, int64_t microseconds, JWNLS_WRITE_UTF16) {
  return write_time(layout, microseconds, out, room, length);
}

}  // extern "C"
