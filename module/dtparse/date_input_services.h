// The date, time, datetime and period input services, as the service table holds them.

#ifndef JWNLS_MODULE_DTPARSE_DATE_INPUT_SERVICES_H_
#define JWNLS_MODULE_DTPARSE_DATE_INPUT_SERVICES_H_

#include <cstdint>

#include "module/frame/locale_handle.h"

namespace jwnls {

/// Reads a time of day: seconds since midnight. Mode 4 recognises the whole text among the
/// record's time patterns and what derives from them; 1 walks time pattern 1, strictly; every other
/// mode walks time pattern 2, leniently when a bit of 0x1FC is set. A single pattern may leave text
/// behind its end. ok or no_match; a single pattern that fails leaves the value as it was.
template <typename Unit>
std::uint32_t read_time(LocaleHandle*, const Unit* text, std::int64_t length, std::uint32_t mode,
                        double* value, std::uint64_t* consumed) noexcept;

}  // namespace jwnls

#endif  // JWNLS_MODULE_DTPARSE_DATE_INPUT_SERVICES_H_
