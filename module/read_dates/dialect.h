// The two dialects that a pattern may be read in.
//
// Strict: literals match exactly, most numbers are fixed-width fields. Lenient: literals match
// without regard to case, a blank of the pattern may be absent, numbers are free-width, and more
// directives are known. input_directives.cpp says what each makes of a directive, side by side.

#ifndef JWNLS_MODULE_READ_DATES_DIALECT_H_
#define JWNLS_MODULE_READ_DATES_DIALECT_H_

#include <cstdint>

#include "abi/reading_modes.h"

namespace jwnls {

enum class Dialect : std::uint8_t { strict, lenient };

/// The dialect that a service's mode word asks for.
constexpr Dialect dialect_of(std::uint32_t mode) noexcept {
  return (mode & reading_modes::lenient_bits) != 0 ? Dialect::lenient : Dialect::strict;
}

}  // namespace jwnls

#endif  // JWNLS_MODULE_READ_DATES_DIALECT_H_
