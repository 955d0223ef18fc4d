// The date, time, datetime and period input services, as the service table holds them.

#ifndef JWNLS_MODULE_READ_DATES_DATE_SERVICES_H_
#define JWNLS_MODULE_READ_DATES_DATE_SERVICES_H_

#include <cstdint>

#include "abi/locale_handle.h"

namespace jwnls {

/// Reads a time of day: seconds since midnight. Mode 4 recognises the whole text among the
/// record's time patterns and what derives from them; 1 walks time pattern 1, strictly; every other
/// mode walks time pattern 2, leniently when a bit of 0x1FC is set. A single pattern may leave text
/// behind its end. ok or no_match; a single pattern that fails leaves the value as it was.
template <typename Unit>
std::uint32_t read_time(LocaleHandle*, const Unit* text, std::int64_t length, std::uint32_t mode,
                        double* value, std::uint64_t* consumed) noexcept;

/// Reads a date value (days) or, with bit 0x200 of `mode`, a datetime value (seconds). Bits 0x3: 1
/// to 3 walk that date pattern alone, which may leave text behind its end; 0 recognises the whole
/// text among the record's date patterns and common layouts. Bits 0x1FC: the lenient dialect. A
/// datetime takes the whole text: time pattern 1, or a date alone (midnight), or a date and a time
/// of day with blanks and at most one of "T", "t", "," and ":" between them. Trailing blanks never
/// matter. A zone is read and not applied: the value is the wall clock's. Two-digit years are
/// placed by the pattern walker. ok or no_match; parts that form no date fail at once.
template <typename Unit>
std::uint32_t read_date(LocaleHandle*, const Unit* text, std::int64_t length, std::uint32_t mode,
                        double* value, std::uint64_t* consumed) noexcept;

/// Reads the label of a month, week or quarter ("Month3, 2024", "Week9 2024", "W9, 2024",
/// "Quarter1 2024", "Qtr1 2024", "Q1, 2024", "Mar-2024", "3/2024", in any case) as the date value
/// of the period's first day. `mode` changes nothing: the dialect is always the lenient one. Two
/// digits of a year are placed by the option JW_NAME_YEARCUTOFF. ok or no_match; a period that
/// does not exist, or begins before 1 January 1582, does not match.
template <typename Unit>
std::uint32_t read_period(LocaleHandle*, const Unit* text, std::int64_t length, std::uint32_t mode,
                          double* value, std::uint64_t* consumed) noexcept;

}  // namespace jwnls

#endif  // JWNLS_MODULE_READ_DATES_DATE_SERVICES_H_
