// The services that read numbers and integers, as the service table holds them.
//
// All read the whole of a counted text. Numbers know the record's decimal and grouping symbol, or
// "." and "," without a handle; integers need a handle.

#ifndef JWNLS_MODULE_NUMIN_NUMBER_INPUT_SERVICES_H_
#define JWNLS_MODULE_NUMIN_NUMBER_INPUT_SERVICES_H_

#include <cstdint>

#include "module/frame/locale_handle.h"
#include "module/record/number_flags.h"

namespace jwnls {

/// Reads a number: digits with grouping symbols anywhere before the decimal symbol, an exponent
/// ("E", "e", "D", "d"), blanks around. An empty or blank text and "." are the standard missing
/// value; ".A" to ".Z" (in any case) and "._" the special ones.
///   text, length  units; 8-bit texts are read byte by byte and compared with the record's symbols
///                 as they are, so a symbol above 255 does not occur in them
///   value         written always; the standard missing value on failure
///   consumed      units up to the blanks behind the number; the place that offends on
///                 invalid_number, 0 on out_of_range
/// ok; invalid_number, also for a negative length; out_of_range for an exponent above 30,800 or a
/// value beyond the doubles. Digits past the 150th are dropped, and count for nothing but the
/// length of a fraction.
template <typename Unit>
std::uint32_t read_number(LocaleHandle*, const Unit* text, std::int32_t length, double* value,
                          std::int64_t* consumed) noexcept;

/// The same with number_input_flags.
template <typename Unit>
std::uint32_t read_number_with_flags(LocaleHandle*, const Unit* text, std::int32_t length,
                                     double* value, std::int64_t* consumed,
                                     std::uint32_t flags) noexcept;

/// Reads 8-bit text as read_number does, but for a grouping symbol above 127 other than the
/// no-break space: that is the byte which `converter` makes of it, or "," when it fails or is null.
std::uint32_t read_number_converted(LocaleHandle*, const char* text, std::int32_t length,
                                    double* value, std::int64_t* consumed,
                                    Converter* converter) noexcept;

/// Reads EBCDIC text as read_number does. Symbols above 127 other than the no-break space are the
/// bytes which `converter` makes of them, or EBCDIC's "," when it fails or is null.
std::uint32_t read_number_ebcdic(LocaleHandle*, const char* text, std::int32_t length,
                                 double* value, std::int64_t* consumed,
                                 Converter* converter) noexcept;

/// Reads an integer: a sign (not "-" for unsigned types), digits with grouping symbols anywhere but
/// in front. Blanks may stand before the sign and the digits; a text of nothing else is 0. Blanks
/// are spaces alone. 8-bit text is UTF-8.
///   flags     integer_input_flags
///   consumed  units up to where the digits end
/// ok, with whatever follows a blank or zero unit left to the caller; invalid_number with the
/// digits so far as value; integer_overflow with 0; does_not_fit when a fraction other than zero
/// was dropped; negative_length with nothing written.
template <typename Integer, typename Unit>
std::uint32_t read_integer(LocaleHandle*, const Unit* text, std::int64_t length,
                           std::uint32_t flags, Integer* value, std::int64_t* consumed) noexcept;

}  // namespace jwnls

#endif  // JWNLS_MODULE_NUMIN_NUMBER_INPUT_SERVICES_H_
