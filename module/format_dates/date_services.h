// The date, time and datetime formatting services, as the service table holds them.
// UTF-16 output in slots 22, 44 and 23, 8-bit output (UTF-8) in slots 81, 80 and 82.

#ifndef JWNLS_MODULE_FORMAT_DATES_DATE_SERVICES_H_
#define JWNLS_MODULE_FORMAT_DATES_DATE_SERVICES_H_

#include <cstdint>

#include "abi/locale_handle.h"

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

}  // namespace jwnls

#endif  // JWNLS_MODULE_FORMAT_DATES_DATE_SERVICES_H_
