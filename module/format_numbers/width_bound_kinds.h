// The width-bound kinds of the floating formatter: they choose between fixed and exponent notation
// by what a field of 1 to 32 places can show, and never show more than 15 significant digits.

#ifndef JWNLS_MODULE_FORMAT_NUMBERS_WIDTH_BOUND_KINDS_H_
#define JWNLS_MODULE_FORMAT_NUMBERS_WIDTH_BOUND_KINDS_H_

#include <cstdint>

#include "abi/locale_record.h"
#include "module/format_numbers/number_request.h"
#include "module/format_numbers/short_number.h"

namespace jwnls {

/// Formats 0 or a finite value above (its sign apart) into the field that the request asks for.
void format_width_bound(const LocaleRecord& record, const NumberRequest& request, double magnitude,
                        bool negative, std::int64_t capacity, ShortNumber& out) noexcept;

}  // namespace jwnls

#endif  // JWNLS_MODULE_FORMAT_NUMBERS_WIDTH_BOUND_KINDS_H_
