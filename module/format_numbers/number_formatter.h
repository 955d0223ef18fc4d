// The floating formatter: every kind, missing values and infinities, into the caller's buffer.

#ifndef JWNLS_MODULE_FORMAT_NUMBERS_NUMBER_FORMATTER_H_
#define JWNLS_MODULE_FORMAT_NUMBERS_NUMBER_FORMATTER_H_

#include <cstdint>

#include "abi/locale_handle.h"

namespace jwnls {

/// Formats any double by the rules of slots 24, 55 and 59, with a service's arguments.
///   capacity  units of the output; below 0 counts as 0
///   length    may be null; in bytes for 8-bit output
///   options   may be null
template <typename Unit>
std::uint32_t format_with_options(LocaleHandle* handle, double value, std::int32_t width,
                                  std::int32_t decimals, std::uint32_t flags, Unit* out,
                                  std::int64_t capacity, std::int64_t* length,
                                  const FloatOptions* options) noexcept;

/// The same without options.
template <typename Unit>
std::uint32_t format_any_number(LocaleHandle* handle, double value, std::int32_t width,
                                std::int32_t decimals, std::uint32_t flags, Unit* out,
                                std::int64_t capacity, std::int64_t* length) noexcept;

}  // namespace jwnls

#endif  // JWNLS_MODULE_FORMAT_NUMBERS_NUMBER_FORMATTER_H_
