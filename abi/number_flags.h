// The flag bits of the services that format and read numbers, as every caller writes them.

#ifndef JWNLS_ABI_NUMBER_FLAGS_H_
#define JWNLS_ABI_NUMBER_FLAGS_H_

#include <cstdint>

namespace jwnls {

// The flag bits of slots 24, 55 and 59.
namespace number_flags {
inline constexpr std::uint32_t general = 0x1;
inline constexpr std::uint32_t fixed = 0x2;
inline constexpr std::uint32_t fraction_only = 0x4;
inline constexpr std::uint32_t integer_first = 0x8;
inline constexpr std::uint32_t exponent_small = 0x10;    // "e"
inline constexpr std::uint32_t exponent_capital = 0x20;  // "E"
inline constexpr std::uint32_t general_capital = 0x400;
inline constexpr std::uint32_t best_fit = 0x800;
inline constexpr std::uint32_t decimal_aligned = 0x1000;
inline constexpr std::uint32_t exponent_only = 0x2000;
inline constexpr std::uint32_t bound_exponent = 0x4000;
inline constexpr std::uint32_t sign = 0x10000;
inline constexpr std::uint32_t group = 0x20000;
inline constexpr std::uint32_t left = 0x40000;
inline constexpr std::uint32_t zero_fill = 0x80000;
inline constexpr std::uint32_t point = 0x100000;
inline constexpr std::uint32_t blank = 0x200000;
inline constexpr std::uint32_t trailing_zeros = 0x400000;
}  // namespace number_flags

// The flag bits of the integer services, and of slot 29 the last two.
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

// The flag bit of slot 30: shown alike with and without it.
namespace currency_flags {
inline constexpr std::uint32_t integer_first = 0x1;
}

// The flag bit of slot 31: negative values stand in parentheses.
namespace percent_flags {
inline constexpr std::uint32_t parentheses = 0x1;
}

// The flag bit of slots 76 and 77.
namespace number_input_flags {
inline constexpr std::uint32_t blank_groups = 0x4000;  // a space counts as the no-break space
}

// The flag bits of the services that read integers.
namespace integer_input_flags {
inline constexpr std::uint32_t hexadecimal = 0x1;         // unsigned members
inline constexpr std::uint32_t trailing_blanks = 0x1000;  // may stand before the end
inline constexpr std::uint32_t fraction = 0x2000;         // may follow, in decimal
inline constexpr std::uint32_t blank_groups = 0x4000;     // a space counts as the no-break space
}  // namespace integer_input_flags

}  // namespace jwnls

#endif  // JWNLS_ABI_NUMBER_FLAGS_H_
