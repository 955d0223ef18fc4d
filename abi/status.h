// The outcome of every operation: 0, or a code of the host's numbering.
//
// One code means one kind of failure across all services. A code's number stands here and nowhere
// else; inside the module outcomes travel as `Status`, at the boundary as its 32-bit value.

#ifndef JWNLS_ABI_STATUS_H_
#define JWNLS_ABI_STATUS_H_

#include <cstdint>

namespace jwnls {

enum class [[nodiscard]] Status : std::uint32_t{
    ok = 0,
    out_of_memory = 0x803FC002,  // a host pool gave no memory
    not_possible = 0x803FE806,   // a directive that the pattern may not hold; too many digits
    no_os_zone = 0x803FE807,     // the host found no usable time zone of the system
    no_match = 0x803FE80B,       // a text that is no date, time or period of the pattern
    missing_value = 0x803FE80C,  // the value to format is a special missing value
    out_of_range = 0x803FE80D,   // a value outside the calendar; an exponent or value too large
    does_not_fit = 0x803FE80E,   // a text longer than its room; a fraction dropped on input
    filled_with_warning = 0x803FE80F,  // the locale database filled the record, with a warning
    invalid_number = 0x803FE810,       // a text that is no number
    integer_overflow = 0x803FE811,     // an integer beyond its type
    cut_sequence = 0x803FE814,         // UTF-8 that ends inside a sequence
    invalid_width = 0x803FE815,        // a width that a width-bound number format does not take
    decimals_dropped = 0x803FE816,     // a decimal-aligned number that could not keep its decimals
    unknown_selector = 0x803FE817,     // no such area of the locale record
    negative_length = 0x803FE818,      // an integer's text of negative length
    resolved_with_warning = 0x803FE81A,  // the locale name gave a locale that is near, not the same
    null_argument = 0x803FE831,          // a required pointer is null
    no_missing_symbol = 0x803FE83A,      // a missing value is to be shown and its symbol is 0
    lookup_failed = 0x803FE83C,    // a time zone or locale that is unknown or cannot be opened
    grouping_failed = 0x803FE85B,  // digit grouping did not fit the width
    calendar_failed = 0xFFFFFFFF,  // the calendar could not split a date that had passed validation
};

/// The 32-bit form in which a status crosses the module's boundary.
constexpr std::uint32_t code(Status status) noexcept { return static_cast<std::uint32_t>(status); }

}  // namespace jwnls

#endif  // JWNLS_ABI_STATUS_H_
