// The generated tables behind the character classes and the upper-case mapping.

#ifndef JWNLS_HOST_LOOKUP_CHARACTER_TABLES_H_
#define JWNLS_HOST_LOOKUP_CHARACTER_TABLES_H_

#include <cstdint>

namespace jwnls::host {

// 65,536 class words, one for each unit: bit 0x0002 for the lower-case letters (general category
// Ll), nothing else. In the file as they are, so that a process takes only the pages that it reads.
extern const std::uint16_t character_classes[65536];

extern const std::uint8_t upper_case_page_of[512];
extern const std::uint16_t upper_case_pages[][128];

}  // namespace jwnls::host

#endif  // JWNLS_HOST_LOOKUP_CHARACTER_TABLES_H_
