// The integer and pointer services, as the service table holds them: signed and unsigned, 32 and 64
// bits, decimal, octal and hexadecimal, in UTF-16 and 8-bit text, from one implementation.

#ifndef JWNLS_MODULE_FORMAT_NUMBERS_INTEGER_SERVICES_H_
#define JWNLS_MODULE_FORMAT_NUMBERS_INTEGER_SERVICES_H_

#include <cstdint>

#include "abi/locale_handle.h"
#include "abi/number_flags.h"

namespace jwnls {

/// Writes an integer into a field.
///   width           the field, below 1 none; in units of the output, like every count here
///   minimum_digits  zeros are added up to it; a negative one means 6. Separators count towards it.
/// ok or does_not_fit: with nothing written where width or minimum exceed the capacity, else with
/// the low-order units that fit and the whole length in `*length`. What the text leaves of the
/// capacity is set to zero units. 0 with a minimum of 0 is an empty text.
template <typename Integer, typename Unit>
std::uint32_t format_integer(LocaleHandle*, Integer value, std::int32_t width,
                             std::int32_t minimum_digits, std::uint32_t flags, Unit* out,
                             std::int64_t capacity, std::int64_t* length) noexcept;

/// Writes a pointer in hexadecimal, "NIL" for 0; the width's absolute value is the field, and
/// `minimum_digits` is not read.
std::uint32_t format_pointer(LocaleHandle*, std::uint64_t value, std::int32_t width,
                             std::int32_t minimum_digits, std::uint32_t flags, char16_t* out,
                             std::int64_t capacity, std::int64_t* length) noexcept;

}  // namespace jwnls

#endif  // JWNLS_MODULE_FORMAT_NUMBERS_INTEGER_SERVICES_H_
