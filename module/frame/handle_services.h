// The handle's own small services: text comparison, record areas, the locale name, the handle cache
// and the time zone. Their types in abi/locale_handle.h say what each does.

#ifndef JWNLS_MODULE_FRAME_HANDLE_SERVICES_H_
#define JWNLS_MODULE_FRAME_HANDLE_SERVICES_H_

#include "abi/locale_handle.h"

namespace jwnls {

std::uint32_t no_operation(LocaleHandle*) noexcept;
std::int32_t compare_texts(LocaleHandle*, const char16_t* a, std::int64_t a_length,
                           const char16_t* b, std::int64_t b_length, std::uint32_t mode) noexcept;
std::uint32_t record_area(LocaleHandle*, std::uint32_t selector, void** area) noexcept;
std::uint32_t copy_locale_name(LocaleHandle*, char16_t* name, std::int64_t* length) noexcept;
Track* create_handle_cache(LocaleHandle*) noexcept;
std::uint32_t set_time_zone(LocaleHandle*, const char16_t* zone, std::int64_t length) noexcept;

}  // namespace jwnls

#endif  // JWNLS_MODULE_FRAME_HANDLE_SERVICES_H_
