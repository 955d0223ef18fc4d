// The flag bits of the services that format and read numbers, as every caller writes them.
//
// A bit that a service does not know has no effect. Constants only: nothing is owned, any thread.

#ifndef JWNLS_ABI_NUMBER_FLAGS_H_
#define JWNLS_ABI_NUMBER_FLAGS_H_

#include "abi/language.h"

// ---- Slots 24, 55 and 59: floating values.

// The kind. Several asked for together: the first of exponent-only, bound exponent,
// decimal-aligned, best fit (also decimals 99), general, exponent, fraction only, fixed and integer
// first that is asked for. None asked for: general.
#define JW_NUMBER_GENERAL 0x1u            // fixed or exponent form, whichever suits the value
#define JW_NUMBER_FIXED 0x2u              // 1234.50
#define JW_NUMBER_FRACTION_ONLY 0x4u      // fixed without the integer digits: "0" in their place
#define JW_NUMBER_INTEGER_FIRST 0x8u      // as fixed
#define JW_NUMBER_EXPONENT_SMALL 0x10u    // 1.2345e+03
#define JW_NUMBER_EXPONENT_CAPITAL 0x20u  // 1.2345E+03
#define JW_NUMBER_GENERAL_CAPITAL 0x400u  // general, its exponent form with "E"
// The kinds that are bound to a width of 1 to 32 (the exponent kinds: 7 to 32).
#define JW_NUMBER_BEST_FIT 0x800u          // as many digits as the width takes; decimals not read
#define JW_NUMBER_DECIMAL_ALIGNED 0x1000u  // the decimals asked for, fewer where the width is short
#define JW_NUMBER_EXPONENT_ONLY 0x2000u    // exponent form that fills the width
// Exponent form with these decimals; decimals 0: fixed; below 0: decimal-aligned with as many.
#define JW_NUMBER_BOUND_EXPONENT 0x4000u
// How it is shown. The width-bound kinds know grouping alone of these.
#define JW_NUMBER_SIGN 0x10000u       // "+" before values that are not negative
#define JW_NUMBER_GROUP 0x20000u      // separators between the integer digits; no exponent form
#define JW_NUMBER_LEFT 0x40000u       // blanks behind the text, not in front of it
#define JW_NUMBER_ZERO_FILL 0x80000u  // zeros up to the width, unless left-justified
#define JW_NUMBER_POINT 0x100000u     // the decimal symbol, also without decimals
#define JW_NUMBER_BLANK 0x200000u     // a blank for the sign of values that are not negative
#define JW_NUMBER_TRAILING_ZEROS 0x400000u  // kept, in the general kind

// Decimals that ask for the best-fit kind by themselves.
#define JW_NUMBER_BEST_FIT_DECIMALS 99

// ---- The integer services; slot 29 knows the last two only.

#define JW_INTEGER_HEXADECIMAL_SMALL 0x80u     // unsigned members; wins over the capital one
#define JW_INTEGER_HEXADECIMAL_CAPITAL 0x100u  // unsigned members
#define JW_INTEGER_OCTAL 0x200u                // unsigned members, without a hexadecimal bit
#define JW_INTEGER_SIGN 0x10000u               // signed members: "+"
#define JW_INTEGER_GROUP 0x20000u              // decimal only
#define JW_INTEGER_LEFT 0x40000u
#define JW_INTEGER_ZERO_FILL 0x80000u     // with minimum digits 0, unless left-justified
#define JW_INTEGER_BLANK 0x200000u        // signed members: a blank for the "+"
#define JW_INTEGER_PREFIX 0x800000u       // "0x" or "0X", with a hexadecimal bit
#define JW_INTEGER_OCTAL_ZERO 0x1000000u  // one "0" in front, with the octal bit
#define JW_POINTER_PREFIX 0x1u            // "0x"
#define JW_POINTER_LEFT 0x2u

// ---- Slot 30, shown alike with and without it; slot 31: negative values stand in parentheses.

#define JW_CURRENCY_INTEGER_FIRST 0x1u
#define JW_PERCENT_PARENTHESES 0x1u

// ---- Slots 76 and 77. Where the grouping symbol is the no-break space, a blank with a digit
// behind it counts as one.

#define JW_READ_NUMBER_BLANK_GROUPS 0x4000u

// ---- The services that read integers.

#define JW_READ_INTEGER_HEXADECIMAL 0x1u         // unsigned members
#define JW_READ_INTEGER_TRAILING_BLANKS 0x1000u  // may stand before the end; nothing else may
#define JW_READ_INTEGER_FRACTION 0x2000u         // may follow, in decimal, and is dropped
#define JW_READ_INTEGER_BLANK_GROUPS 0x4000u     // a blank counts as the no-break space

#ifdef __cplusplus
namespace jwnls {

namespace number_flags {
inline constexpr uint32_t general = JW_NUMBER_GENERAL;
inline constexpr uint32_t fixed = JW_NUMBER_FIXED;
inline constexpr uint32_t fraction_only = JW_NUMBER_FRACTION_ONLY;
inline constexpr uint32_t integer_first = JW_NUMBER_INTEGER_FIRST;
inline constexpr uint32_t exponent_small = JW_NUMBER_EXPONENT_SMALL;
inline constexpr uint32_t exponent_capital = JW_NUMBER_EXPONENT_CAPITAL;
inline constexpr uint32_t general_capital = JW_NUMBER_GENERAL_CAPITAL;
inline constexpr uint32_t best_fit = JW_NUMBER_BEST_FIT;
inline constexpr uint32_t decimal_aligned = JW_NUMBER_DECIMAL_ALIGNED;
inline constexpr uint32_t exponent_only = JW_NUMBER_EXPONENT_ONLY;
inline constexpr uint32_t bound_exponent = JW_NUMBER_BOUND_EXPONENT;
inline constexpr uint32_t sign = JW_NUMBER_SIGN;
inline constexpr uint32_t group = JW_NUMBER_GROUP;
inline constexpr uint32_t left = JW_NUMBER_LEFT;
inline constexpr uint32_t zero_fill = JW_NUMBER_ZERO_FILL;
inline constexpr uint32_t point = JW_NUMBER_POINT;
inline constexpr uint32_t blank = JW_NUMBER_BLANK;
inline constexpr uint32_t trailing_zeros = JW_NUMBER_TRAILING_ZEROS;
}  // namespace number_flags

namespace integer_flags {
inline constexpr uint32_t hexadecimal_small = JW_INTEGER_HEXADECIMAL_SMALL;
inline constexpr uint32_t hexadecimal_capital = JW_INTEGER_HEXADECIMAL_CAPITAL;
inline constexpr uint32_t octal = JW_INTEGER_OCTAL;
inline constexpr uint32_t sign = JW_INTEGER_SIGN;
inline constexpr uint32_t group = JW_INTEGER_GROUP;
inline constexpr uint32_t left = JW_INTEGER_LEFT;
inline constexpr uint32_t zero_fill = JW_INTEGER_ZERO_FILL;
inline constexpr uint32_t blank = JW_INTEGER_BLANK;
inline constexpr uint32_t prefix = JW_INTEGER_PREFIX;
inline constexpr uint32_t octal_zero = JW_INTEGER_OCTAL_ZERO;
inline constexpr uint32_t pointer_prefix = JW_POINTER_PREFIX;
inline constexpr uint32_t pointer_left = JW_POINTER_LEFT;
}  // namespace integer_flags

namespace currency_flags {
inline constexpr uint32_t integer_first = JW_CURRENCY_INTEGER_FIRST;
}

namespace percent_flags {
inline constexpr uint32_t parentheses = JW_PERCENT_PARENTHESES;
}

namespace number_input_flags {
inline constexpr uint32_t blank_groups = JW_READ_NUMBER_BLANK_GROUPS;
}

namespace integer_input_flags {
inline constexpr uint32_t hexadecimal = JW_READ_INTEGER_HEXADECIMAL;
inline constexpr uint32_t trailing_blanks = JW_READ_INTEGER_TRAILING_BLANKS;
inline constexpr uint32_t fraction = JW_READ_INTEGER_FRACTION;
inline constexpr uint32_t blank_groups = JW_READ_INTEGER_BLANK_GROUPS;
}  // namespace integer_input_flags

}  // namespace jwnls
#endif

#endif  // JWNLS_ABI_NUMBER_FLAGS_H_
