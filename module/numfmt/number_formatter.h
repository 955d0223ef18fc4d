// The floating formatter: every kind, missing values and infinities, into a NumberField.

#ifndef JWNLS_MODULE_NUMFMT_NUMBER_FORMATTER_H_
#define JWNLS_MODULE_NUMFMT_NUMBER_FORMATTER_H_

#include "module/frame/locale_handle.h"
#include "module/numfmt/number_field.h"

namespace jwnls {

/// Formats any double by the rules of slots 24, 55 and 59.
///   capacity  units, 0 or above
///   options   may be null
void format_double(const LocaleRecord& record, double value, const NumberRequest& request,
                   std::int64_t capacity, const FloatOptions* options, NumberField& field) noexcept;

}  // namespace jwnls

#endif  // JWNLS_MODULE_NUMFMT_NUMBER_FORMATTER_H_
