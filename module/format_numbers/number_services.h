// The floating, currency and percent services, as the service table holds them; described with
// their types in abi/locale_handle.h, their flags in abi/number_flags.h.

#ifndef JWNLS_MODULE_FORMAT_NUMBERS_NUMBER_SERVICES_H_
#define JWNLS_MODULE_FORMAT_NUMBERS_NUMBER_SERVICES_H_

#include <cstdint>

#include "abi/locale_handle.h"

namespace jwnls {

std::uint32_t format_number(LocaleHandle*, double value, std::int32_t width, std::int32_t decimals,
                            std::uint32_t flags, char16_t* out, std::int64_t capacity,
                            std::int64_t* length) noexcept;

std::uint32_t format_number_with_options(LocaleHandle*, double value, std::int32_t width,
                                         std::int32_t decimals, std::uint32_t flags, char16_t* out,
                                         std::int64_t capacity, std::int64_t* length,
                                         const FloatOptions* options) noexcept;

std::uint32_t format_number_8bit(LocaleHandle*, double value, std::int32_t width,
                                 std::int32_t decimals, std::uint32_t flags, char* out,
                                 std::int64_t capacity, std::int64_t* length,
                                 const FloatOptions* options) noexcept;

/// The currency symbol directly in front of a grouped number. Only bit 0x1 of `flags` is read.
std::uint32_t format_currency(LocaleHandle*, double value, std::int32_t width,
                              std::int32_t decimals, std::uint32_t flags, char16_t* out,
                              std::int64_t capacity, std::int64_t* length) noexcept;

/// A hundredfold with "%" behind it; with bit 0x1 of `flags` negative values stand in parentheses.
std::uint32_t format_percent(LocaleHandle*, double value, std::int32_t width, std::int32_t decimals,
                             std::uint32_t flags, char16_t* out, std::int64_t capacity,
                             std::int64_t* length) noexcept;

}  // namespace jwnls

#endif  // JWNLS_MODULE_FORMAT_NUMBERS_NUMBER_SERVICES_H_
