// Date, time and datetime formatting into 8-bit text (UTF-8): slots 81, 80 and 82.

#include "module/format_dates/date_services.h"

namespace jwnls {

template std::uint32_t format_date(LocaleHandle*, std::int32_t, std::int32_t, std::int32_t,
                                   std::uint32_t, char*, std::int64_t, std::int64_t*) noexcept;
template std::uint32_t format_time(LocaleHandle*, double, std::uint32_t, char*, std::int64_t,
                                   std::int64_t*) noexcept;
template std::uint32_t format_datetime(LocaleHandle*, double, std::uint32_t, char*, std::int64_t,
                                       std::int64_t*) noexcept;

}  // namespace jwnls
