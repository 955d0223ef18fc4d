// The plain kinds of the floating formatter: fixed, fraction, general and exponent.

#ifndef JWNLS_MODULE_FORMAT_NUMBERS_PLAIN_KINDS_H_
#define JWNLS_MODULE_FORMAT_NUMBERS_PLAIN_KINDS_H_

#include "abi/locale_record.h"
#include "module/placement/field.h"

namespace jwnls {

/// Formats 0 or a finite value above (its sign apart) into a field. `length` may be null; for 8-bit
/// output it is in bytes.
template <typename Unit>
Status format_plain(const LocaleRecord& record, const NumberRequest& request, double magnitude,
                    bool negative, Unit* out, std::int64_t capacity, std::int64_t* length) noexcept;

}  // namespace jwnls

#endif  // JWNLS_MODULE_FORMAT_NUMBERS_PLAIN_KINDS_H_
