// The plain kinds of the floating formatter: fixed, fraction, general and exponent.

#ifndef JWNLS_MODULE_NUMFMT_PLAIN_KINDS_H_
#define JWNLS_MODULE_NUMFMT_PLAIN_KINDS_H_

#include "module/numfmt/number_field.h"

namespace jwnls {

/// Formats 0 or a finite value above (its sign apart) and places it.
void format_plain(const LocaleRecord& record, const NumberRequest& request, double magnitude,
                  bool negative, std::int64_t capacity, NumberField& field) noexcept;

}  // namespace jwnls

#endif  // JWNLS_MODULE_NUMFMT_PLAIN_KINDS_H_
