// The floating formatter: every kind, missing values and infinities, into the caller's buffer.

#ifndef JWNLS_MODULE_FORMAT_NUMBERS_NUMBER_FORMATTER_H_
#define JWNLS_MODULE_FORMAT_NUMBERS_NUMBER_FORMATTER_H_

#include "abi/locale_handle.h"
#include "abi/status.h"
#include "module/placement/number_request.h"

namespace jwnls {

/// Formats any double by the rules of slots 24, 55 and 59.
///   capacity  units of the output, 0 or above
///   length    may be null; in bytes for 8-bit output
///   options   may be null
template <typename Unit>
Status format_double(const LocaleRecord& record, double value, const NumberRequest& request,
                     const FloatOptions* options, Unit* out, std::int64_t capacity,
                     std::int64_t* length) noexcept;

/// The same with a service's arguments, and no options.
template <typename Unit>
std::uint32_t format_number_here(LocaleHandle* handle, double value, std::int32_t width,
                                 std::int32_t decimals, std::uint32_t flags, Unit* out,
                                 std::int64_t capacity, std::int64_t* length) noexcept;

}  // namespace jwnls

#endif  // JWNLS_MODULE_FORMAT_NUMBERS_NUMBER_FORMATTER_H_
