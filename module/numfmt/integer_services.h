// The integer and pointer services, as the service table holds them: signed and unsigned, 32 and 64
// bits, decimal, octal and hexadecimal, in UTF-16 and 8-bit text, from one implementation.

#ifndef JWNLS_MODULE_NUMFMT_INTEGER_SERVICES_H_
#define JWNLS_MODULE_NUMFMT_INTEGER_SERVICES_H_

#include "module/frame/locale_handle.h"

namespace jwnls {

namespace integer_flags {
inline constexpr std::uint32_t hexadecimal_small = 0x80;     // unsigned members
inline constexpr std::uint32_t hexadecimal_capital = 0x100;  // unsigned members
inline constexpr std::uint32_t octal = 0x200;                // unsigned members
inline constexpr std::uint32_t sign = 0x10000;               // signed members
inline constexpr std::uint32_t group = 0x20000;
inline constexpr std::uint32_t left = 0x40000;
inline constexpr std::uint32_t zero_fill = 0x80000;
inline constexpr std::uint32_t blank = 0x200000;   // signed members
inline constexpr std::uint32_t prefix = 0x800000;  // "0x", "0X"
inline constexpr std::uint32_t octal_zero = 0x1000000;
// of the pointer member
inline constexpr std::uint32_t pointer_prefix = 0x1;
inline constexpr std::uint32_t pointer_left = 0x2;
}  // namespace integer_flags

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

#endif  // JWNLS_MODULE_NUMFMT_INTEGER_SERVICES_H_
