// Texts that are no datetimes whatever their words mean.

#ifndef JWNLS_LIBRARY_MOMENTS_MOMENT_SHAPE_H_
#define JWNLS_LIBRARY_MOMENTS_MOMENT_SHAPE_H_

#include <string_view>

#include "library/dates/date_layout.h"
#include "library/locale_data/number_runs.h"
#include "library/moments/time_layout.h"

namespace jwnls::library {

/// Whether a trimmed text without an offset, which folding leaves its numbers and none of whose
/// names has digits, certainly is no date and time, nor one outside the calendar: wherever the two
/// of them part, its numbers are not those of a date in front and a time behind, or no time ends
/// so, or no date begins so. False says nothing.
[[nodiscard]] bool is_no_moment(const DateLayout& dates, const TimeLayout& times,
                                std::string_view text, const NumberRuns& runs) noexcept;

}  // namespace jwnls::library

#endif  // JWNLS_LIBRARY_MOMENTS_MOMENT_SHAPE_H_
