#include "host/lookup/character_classes.h"

#include <memory>

#include "abi/host_tables.h"

namespace jwnls::host {
namespace {

constexpr std::size_t unit_count = 0x10000;

std::unique_ptr<std::uint16_t[]> make_classes() {
  auto classes = std::make_unique<std::uint16_t[]>(unit_count);
  for (std::size_t run = 0; run < lower_case_run_count; ++run) {
    for (std::size_t unit = lower_case_runs[run].first; unit <= lower_case_runs[run].last; ++unit) {
      classes[unit] = lower_case_class;
    }
  }
  return classes;
}

}  // namespace

const std::uint16_t* character_classes() {
  // No exit handler takes it away: threads may format while the process ends.
  static const std::uint16_t* const classes = make_classes().release();
  return classes;
}

}  // namespace jwnls::host
