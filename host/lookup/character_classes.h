// Case of UTF-16 units, by Unicode's simple mappings. Surrogates have none.

#ifndef JWNLS_HOST_LOOKUP_CHARACTER_CLASSES_H_
#define JWNLS_HOST_LOOKUP_CHARACTER_CLASSES_H_

#include <cstdint>

#include "host/lookup/character_tables.h"

namespace jwnls::host {

/// The simple upper-case mapping of one unit; a unit without one stays as it is.
[[nodiscard]] inline char16_t upper_case(char16_t unit) noexcept {
  if (unit < 0x80) return unit >= u'a' && unit <= u'z' ? static_cast<char16_t>(unit - 0x20) : unit;
  const std::uint16_t* page = upper_case_pages[upper_case_page_of[unit >> 7]];
  return static_cast<char16_t>(unit + page[unit & 0x7F]);
}

}  // namespace jwnls::host

#endif  // JWNLS_HOST_LOOKUP_CHARACTER_CLASSES_H_
