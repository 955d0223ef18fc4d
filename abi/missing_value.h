// Missing values: doubles whose top 16 bits are all ones. They stand for "no value" in every scale.
//
// Each stands for a character: ".", the standard missing value, or "_", "A" to "Z". The byte below
// the top 16 bits holds the complement of the character's code; "_" is stored as "-", whose code is
// the one below that of ".", so that it sorts as the least. The other bytes are 0.
//
// Pure functions, any thread.

#ifndef JWNLS_ABI_MISSING_VALUE_H_
#define JWNLS_ABI_MISSING_VALUE_H_

#include <string.h>

#include "abi/language.h"

/// True for every special missing value, the standard one included. Other NaNs are none.
JW_INLINE int jw_is_missing(double value) {
  uint64_t bits = 0;
  memcpy(&bits, &value, sizeof bits);
  return bits >> 48 == 0xFFFF;
}

/// The missing value of a character: ".", "_" or a capital letter. Any other gives a value that
/// shows as that character, which no service reads.
JW_INLINE double jw_missing_value(char character) {
  const unsigned char stored = (unsigned char)(character == '_' ? '-' : character);
  const uint64_t bits = (uint64_t)0xFFFF << 48 | (uint64_t)(0xFF - stored) << 40;
  double value = 0;
  memcpy(&value, &bits, sizeof value);
  return value;
}

/// The character of a missing value; 0 for a value that is none.
JW_INLINE char jw_missing_character(double value) {
  uint64_t bits = 0;
  memcpy(&bits, &value, sizeof bits);
  if (bits >> 48 != 0xFFFF) return 0;
  const unsigned char stored = (unsigned char)(0xFF - (bits >> 40 & 0xFF));
  return stored == '-' ? '_' : (char)stored;
}

#ifdef __cplusplus
namespace jwnls {

inline constexpr std::uint64_t missing_value_bits = 0xFFFFD10000000000;  // the standard one's

/// The standard missing value, the only one that the calendar and the date services write.
inline double missing_value() noexcept { return ::jw_missing_value('.'); }
inline double missing_value(char character) noexcept { return ::jw_missing_value(character); }
inline char missing_character(double value) noexcept { return ::jw_missing_character(value); }
inline bool is_missing(double value) noexcept { return ::jw_is_missing(value) != 0; }

}  // namespace jwnls
#endif

#endif  // JWNLS_ABI_MISSING_VALUE_H_
