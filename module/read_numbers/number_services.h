// The services that read numbers and integers, as the service table holds them; described with
// their types in abi/locale_handle.h, their flags in abi/number_flags.h.

#ifndef JWNLS_MODULE_READ_NUMBERS_NUMBER_SERVICES_H_
#define JWNLS_MODULE_READ_NUMBERS_NUMBER_SERVICES_H_

#include <cstdint>

#include "abi/locale_handle.h"
#include "abi/number_flags.h"

namespace jwnls {

template <typename Unit>
std::uint32_t read_number(LocaleHandle*, const Unit* text, std::int32_t length, double* value,
                          std::int64_t* consumed) noexcept;

template <typename Unit>
std::uint32_t read_number_with_flags(LocaleHandle*, const Unit* text, std::int32_t length,
                                     double* value, std::int64_t* consumed,
                                     std::uint32_t flags) noexcept;

std::uint32_t read_number_converted(LocaleHandle*, const char* text, std::int32_t length,
                                    double* value, std::int64_t* consumed,
                                    Converter* converter) noexcept;

std::uint32_t read_number_ebcdic(LocaleHandle*, const char* text, std::int32_t length,
                                 double* value, std::int64_t* consumed,
                                 Converter* converter) noexcept;

template <typename Integer, typename Unit>
std::uint32_t read_integer(LocaleHandle*, const Unit* text, std::int64_t length,
                           std::uint32_t flags, Integer* value, std::int64_t* consumed) noexcept;

}  // namespace jwnls

#endif  // JWNLS_MODULE_READ_NUMBERS_NUMBER_SERVICES_H_
