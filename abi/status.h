// The outcome of every operation: 0, or a code of the host's numbering.
//
// One code means one kind of failure across all services. A code's number stands here and nowhere
// else; at the boundary it travels as a 32-bit value, in C++ behind it as a `Status`. After
// JW_DOES_NOT_FIT what fits is delivered; after any other failure the out-arguments are as they
// were, unless the service says otherwise. Numbers of the host's own (from its locale database, its
// resolution of names, its tracks) pass through the module unchanged.
//
// Constants only: nothing is owned, any thread.

#ifndef JWNLS_ABI_STATUS_H_
#define JWNLS_ABI_STATUS_H_

#include "abi/language.h"

#define JW_OK 0x0u
#define JW_OUT_OF_MEMORY 0x803FC002u  // a host pool gave no memory
#define JW_NOT_POSSIBLE 0x803FE806u   // a directive that the pattern may not hold; > 350 digits
#define JW_NO_OS_ZONE 0x803FE807u     // the host found no usable time zone of the system
#define JW_NO_MATCH 0x803FE80Bu       // a text that is no date, time or period of the pattern
#define JW_MISSING_VALUE 0x803FE80Cu  // the value to format is a special missing value
#define JW_OUT_OF_RANGE 0x803FE80Du   // outside the calendar; an exponent or value too large
#define JW_DOES_NOT_FIT 0x803FE80Eu   // longer than its room; a fraction dropped on input
#define JW_FILLED_WITH_WARNING 0x803FE80Fu  // the locale database filled the record, with a warning
#define JW_INVALID_NUMBER 0x803FE810u       // a text that is no number
#define JW_INTEGER_OVERFLOW 0x803FE811u     // an integer beyond its type
#define JW_CUT_SEQUENCE 0x803FE814u         // UTF-8 that ends inside a sequence
#define JW_INVALID_WIDTH 0x803FE815u     // a width that a width-bound number format does not take
#define JW_DECIMALS_DROPPED 0x803FE816u  // a decimal-aligned number could not keep its decimals
#define JW_UNKNOWN_SELECTOR 0x803FE817u  // no such area of the locale record
#define JW_NEGATIVE_LENGTH 0x803FE818u   // an integer's text of negative length
#define JW_RESOLVED_WITH_WARNING 0x803FE81Au  // a locale that is near the one asked for
#define JW_NULL_ARGUMENT 0x803FE831u          // a required pointer is null
#define JW_NO_MISSING_SYMBOL 0x803FE83Au      // a missing value is to be shown and its symbol is 0
#define JW_LOOKUP_FAILED 0x803FE83Cu    // a zone or locale that is unknown or cannot be opened
#define JW_GROUPING_FAILED 0x803FE85Bu  // digit grouping did not fit the width
#define JW_CALENDAR_FAILED 0xFFFFFFFFu  // the calendar did not split a date that it had accepted

#ifdef __cplusplus
namespace jwnls {

enum class [[nodiscard]] Status : uint32_t{
    ok = JW_OK,
    out_of_memory = JW_OUT_OF_MEMORY,
    not_possible = JW_NOT_POSSIBLE,
    no_os_zone = JW_NO_OS_ZONE,
    no_match = JW_NO_MATCH,
    missing_value = JW_MISSING_VALUE,
    out_of_range = JW_OUT_OF_RANGE,
    does_not_fit = JW_DOES_NOT_FIT,
    filled_with_warning = JW_FILLED_WITH_WARNING,
    invalid_number = JW_INVALID_NUMBER,
    integer_overflow = JW_INTEGER_OVERFLOW,
    cut_sequence = JW_CUT_SEQUENCE,
    invalid_width = JW_INVALID_WIDTH,
    decimals_dropped = JW_DECIMALS_DROPPED,
    unknown_selector = JW_UNKNOWN_SELECTOR,
    negative_length = JW_NEGATIVE_LENGTH,
    resolved_with_warning = JW_RESOLVED_WITH_WARNING,
    null_argument = JW_NULL_ARGUMENT,
    no_missing_symbol = JW_NO_MISSING_SYMBOL,
    lookup_failed = JW_LOOKUP_FAILED,
    grouping_failed = JW_GROUPING_FAILED,
    calendar_failed = JW_CALENDAR_FAILED,
};

/// The 32-bit form in which a status crosses the module's boundary.
constexpr uint32_t code(Status status) noexcept { return static_cast<uint32_t>(status); }

}  // namespace jwnls
#endif

#endif  // JWNLS_ABI_STATUS_H_
