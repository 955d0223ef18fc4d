// The plain kinds of the floating formatter: fixed, fraction, general and exponent.

#ifndef JWNLS_MODULE_FORMAT_NUMBERS_PLAIN_KINDS_H_
#define JWNLS_MODULE_FORMAT_NUMBERS_PLAIN_KINDS_H_

#include "abi/status.h"
#include "module/format_numbers/number_call.h"

namespace jwnls {

/// Formats a finite value into a field.
template <typename Unit>
Status format_plain(const NumberCall<Unit>& call) noexcept;

}  // namespace jwnls

#endif  // JWNLS_MODULE_FORMAT_NUMBERS_PLAIN_KINDS_H_
