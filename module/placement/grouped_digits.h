// Integer digits with the locale's separators between their groups, as floating values show them.

#ifndef JWNLS_MODULE_PLACEMENT_GROUPED_DIGITS_H_
#define JWNLS_MODULE_PLACEMENT_GROUPED_DIGITS_H_

#include <cstddef>

#include "abi/locale_record.h"
#include "module/placement/group_sizes.h"
#include "module/placement/groups_of_three.h"
#include "module/placement/symbols.h"

namespace jwnls {

/// The separators that `count` integer digits get, or -1 where the locale's first size is 0.
inline int count_separators(const LocaleRecord& record, int count) noexcept {
  if (groups_by_three(record)) [[likely]]
    return separators_of_three(count);
  FloatGroupSizes groups(grouping_of(record));
  if (groups.size() == 0) return -1;
  int separators = 0;
  for (auto left = static_cast<std::size_t>(count); left > groups.size(); ++separators) {
    left -= groups.size();
    groups.advance();
  }
  return separators;
}

/// Writes `count` digits with `separators` among them.
template <typename Unit>
void write_grouped(Symbols<Unit> symbols, const char* digits, int count, int separators,
                   Unit* out) noexcept {
  FloatGroupSizes groups(grouping_of(symbols.record));
  Unit* position = out + count + separators;
  std::size_t left_in_group = groups.size();
  for (int i = count; i-- > 0;) {
    if (left_in_group == 0) {
      *--position = symbols.grouping();
      groups.advance();
      left_in_group = groups.size();
    }
    *--position = static_cast<Unit>(static_cast<unsigned char>(digits[i]));
    --left_in_group;
  }
}

}  // namespace jwnls

#endif  // JWNLS_MODULE_PLACEMENT_GROUPED_DIGITS_H_
