// Integer digits with the locale's separators between their groups, as floating values show them.

#ifndef JWNLS_MODULE_NUMFMT_GROUPED_DIGITS_H_
#define JWNLS_MODULE_NUMFMT_GROUPED_DIGITS_H_

#include <cstddef>
#include <cstdint>

#include "module/record/locale_record.h"

namespace jwnls {

/// Writes `count` ASCII digits (1 to 350) into `out` and returns the units written: digits and
/// separators. Returns 0, with nothing of use written, when grouping is impossible: the locale's
/// first group size is 0, or more than `most` units would be needed.
///   digits  16 bytes from any digit on may be read
///   out     room for 2 * count units, and 32 at least
std::size_t write_grouped(const LocaleRecord& record, const char* digits, std::size_t count,
                          std::int64_t most, char16_t* out) noexcept;

}  // namespace jwnls

#endif  // JWNLS_MODULE_NUMFMT_GROUPED_DIGITS_H_
