// The groups of an integer part, as a text has them.

#ifndef JWNLS_LIBRARY_NUMBERS_GROUP_RUNS_H_
#define JWNLS_LIBRARY_NUMBERS_GROUP_RUNS_H_

#include <cstddef>

#include "library/locale_data/number_data.h"
#include "library/numbers/characters.h"

namespace jwnls::library {

/// The groups in front of the decimal symbol, as far as sizes go.
struct GroupRuns {
  Separator separator = Separator::none;
  int count = 0;           // of separators
  std::size_t first = 0;   // digits of the first group, of all those between, of the last
  std::size_t middle = 0;  // 0: none
  std::size_t last = 0;
  bool uneven = false;       // groups between of two sizes
  std::size_t first_at = 0;  // where the first and the last separator stand
  std::size_t last_at = 0;

  /// A group of so many digits, and the separator behind it, which stands at a place.
  void add(std::size_t digits, std::size_t at) noexcept {
    if (count == 0) {
      first = digits;
      first_at = at;
    } else {
      uneven = uneven || (middle != 0 && middle != digits);
      middle = digits;
    }
    last_at = at;
    ++count;
  }

  [[nodiscard]] bool fit(GroupSizes sizes) const noexcept {
    return last == sizes.primary && !uneven && (middle == 0 || middle == sizes.secondary) &&
           first <= sizes.secondary;
  }
};

}  // namespace jwnls::library

#endif  // JWNLS_LIBRARY_NUMBERS_GROUP_RUNS_H_
