// The usual grouping, threes throughout, without a branch on the number of digits.

#ifndef JWNLS_MODULE_NUMFMT_GROUPS_OF_THREE_H_
#define JWNLS_MODULE_NUMFMT_GROUPS_OF_THREE_H_

#include <cstdint>

#include "module/numfmt/digit_block.h"
#include "module/numfmt/grouping.h"
#include "module/record/locale_record.h"

namespace jwnls {

inline bool groups_by_three(const LocaleRecord& record) noexcept {
  return grouping_of(record) == u"3";
}

/// The separators among `count` digits, at least one.
constexpr int separators_of_three(int count) noexcept {
  return static_cast<int>(static_cast<unsigned>(count - 1) / 3);
}

/// The most digits that can be grouped at once.
inline constexpr int most_grouped_digits = 15;

/// Writes the last `count` digits (1 to 15) of a number with a separator between groups of three,
/// counted from the right; behind the text zero units, 20 units in all at most. Returns its length.
template <typename Unit>
[[gnu::always_inline]] inline int write_groups_of_three(std::uint64_t number, int count,
                                                        Unit separator, Unit* out) noexcept {
  const int groups = separators_of_three(count) + 1;
  const DigitBlock block(number, 3 * groups);
  block.write_groups(groups, 3 * groups - count, separator, 3 * groups, out);
  return count + groups - 1;
}

/// The same with decimals: of the last `integers` + `decimals` digits of a number below 10^16 the
/// integers (1 to 15) in groups; then, if any are shown, the record's symbol and the first `shown`
/// of the decimals, behind which only zeros follow. Returns the text's end.
template <typename Unit>
[[gnu::always_inline]] inline Unit* write_groups_of_three(const LocaleRecord& record,
                                                          std::uint64_t number, int integers,
                                                          int decimals, int shown,
                                                          Unit* out) noexcept {
  const auto separator = static_cast<Unit>(record.grouping_symbol);
  const int groups = separators_of_three(integers) + 1;
  const int places = 3 * groups;
  if (decimals <= 3 && places + decimals <= most_grouped_digits) [[likely]] {
    // The decimals are one more group, and the symbol is what separates it.
    const DigitBlock block(number, places + decimals);
    block.write_groups(groups, places - integers, separator, places + shown, out);
    out += integers + groups - 1;
  } else {
    const std::uint64_t whole = number / powers_of_ten[decimals];
    const std::uint64_t rest = number - whole * powers_of_ten[decimals];
    out += write_groups_of_three(whole, integers, separator, out);
    DigitBlock(rest, decimals).write(shown, out + 1);
  }
  if (shown == 0) return out;
  *out = static_cast<Unit>(record.decimal_symbol);
  return out + 1 + shown;
}

}  // namespace jwnls

#endif  // JWNLS_MODULE_NUMFMT_GROUPS_OF_THREE_H_
