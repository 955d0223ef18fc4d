// Missing values and infinities in the place of a number.

#ifndef JWNLS_MODULE_FORMAT_NUMBERS_MISSING_AND_INFINITE_H_
#define JWNLS_MODULE_FORMAT_NUMBERS_MISSING_AND_INFINITE_H_

#include <cstdint>

#include "abi/locale_handle.h"
#include "module/format_numbers/number_request.h"
#include "module/format_numbers/short_number.h"

namespace jwnls {

/// Any NaN: the character of a missing value, "." for those that are none. `options` may be null;
/// refuses with no_missing_symbol where they ask for a symbol and have none.
void place_missing(double value, const FloatOptions* options, const NumberRequest& request,
                   std::int64_t capacity, ShortNumber& out) noexcept;

/// "Inf" or "-Inf": not localised, and no part of the field beyond needing room in it.
void place_infinity(bool negative, const NumberRequest& request, std::int64_t capacity,
                    ShortNumber& out) noexcept;

}  // namespace jwnls

#endif  // JWNLS_MODULE_FORMAT_NUMBERS_MISSING_AND_INFINITE_H_
