// The host's option that places two-digit years: JW_NAME_YEARCUTOFF.
//
// Period input asks for it; everything that formats, and date and datetime input, keep the fixed
// default_year_cutoff.

#ifndef JWNLS_MODULE_HOST_CALLS_YEAR_CUTOFF_H_
#define JWNLS_MODULE_HOST_CALLS_YEAR_CUTOFF_H_

#include <cstdint>

namespace jwnls {

/// The first year of the window of two-digit years: the option's value, read from the kernel again
/// with each call, or 1950 when the kernel gives none. A value outside the range of the result,
/// which no window can use, is the nearer bound. Any thread may call this when the kernel's option
/// reading may be called by any thread.
std::int32_t year_cutoff_option() noexcept;

}  // namespace jwnls

#endif  // JWNLS_MODULE_HOST_CALLS_YEAR_CUTOFF_H_
