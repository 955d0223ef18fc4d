// The generated tables behind the character classes and the upper-case mapping.

#ifndef JWNLS_HOST_LOOKUP_CHARACTER_TABLES_H_
#define JWNLS_HOST_LOOKUP_CHARACTER_TABLES_H_

#include <cstddef>
#include <cstdint>

namespace jwnls::host {

struct UnitRun {
  std::uint16_t first;
  std::uint16_t last;
};

extern const UnitRun lower_case_runs[];
extern const std::size_t lower_case_run_count;

extern const std::uint8_t upper_case_page_of[512];
extern const std::uint16_t upper_case_pages[][128];

}  // namespace jwnls::host

#endif  // JWNLS_HOST_LOOKUP_CHARACTER_TABLES_H_
