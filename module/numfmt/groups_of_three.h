// The usual grouping, threes throughout, without a branch on the number of digits.

#ifndef JWNLS_MODULE_NUMFMT_GROUPS_OF_THREE_H_
#define JWNLS_MODULE_NUMFMT_GROUPS_OF_THREE_H_

#include <array>
#include <cstddef>
#include <cstdint>

#include "module/numfmt/digit_block.h"
#include "module/numfmt/grouping.h"
#include "module/record/locale_record.h"

namespace jwnls {

inline bool groups_by_three(const LocaleRecord& record) noexcept {
  return record.grouping_length == 1 && record.grouping_units[0] == u'3';
}

/// The separators among `count` digits, at least one.
constexpr int separators_of_three(int count) noexcept {
  return static_cast<int>(static_cast<unsigned>(count - 1) / 3);
}

/// The most digits that can be grouped at once.
inline constexpr int most_grouped_digits = 15;

namespace groups_of_three {

inline constexpr int most_decimals_beside = 3;

// What puts a number with so many decimals in front of a block: the first group of its integers
// padded to three digits, the decimals a group of their own.
struct Row {
  std::uint64_t more_from[4];  // from these on the integers have a group more
  std::uint64_t factors[5];    // by the number of groups less one
};

inline constexpr auto rows = [] {
  std::array<Row, most_decimals_beside + 1> made{};
  for (std::size_t decimals = 0; decimals < made.size(); ++decimals) {
    for (std::size_t i = 0; i < 4; ++i) {
      made[decimals].more_from[i] = powers_of_ten[3 * (i + 1) + decimals];
    }
    for (std::size_t i = 0; i < 5; ++i) {
      const std::size_t places = 3 * (i + 1) + decimals;
      made[decimals].factors[i] = places <= block_digits ? powers_of_ten[block_digits - places] : 0;
    }
  }
  return made;
}();

}  // namespace groups_of_three

/// Writes a number of at most 15 - decimals digits, or 12 and decimals, with a separator between
/// groups of three, counted from the right. The last `decimals` of its digits (up to 3), which its
/// `integers` (at least 1) do not count, follow behind one unit that is left to the caller; the
/// first `shown` of them, behind which only zeros follow. Behind the text stand zero units, 20
/// units in all at most. Returns the length of the integers.
template <typename Unit>
[[gnu::always_inline]] inline int write_groups_of_three(std::uint64_t number, int integers,
                                                        int decimals, int shown, Unit separator,
                                                        Unit* out) noexcept {
  const groups_of_three::Row& row = groups_of_three::rows[static_cast<unsigned>(decimals)];
  unsigned more = 0;  // groups than one
  for (const std::uint64_t from : row.more_from) more += number >= from ? 1 : 0;
  const DigitBlock block = DigitBlock::scaled(number, row.factors[more]);
  const int places = static_cast<int>(3 * more) + 3;
  block.write_groups(static_cast<int>(more) + 1, places - integers, separator, places + shown, out);
  return integers + static_cast<int>(more);
}

/// The last `integers` + `decimals` digits of a number below 10^16, which has no more: the integers
/// (1 to 15) in groups; then, if any are shown, the record's symbol and the first `shown` of the
/// decimals, behind which only zeros follow. Returns the text's end.
template <typename Unit>
[[gnu::always_inline]] inline Unit* write_groups_of_three(const LocaleRecord& record,
                                                          std::uint64_t number, int integers,
                                                          int decimals, int shown,
                                                          Unit* out) noexcept {
  const auto separator = static_cast<Unit>(record.grouping_symbol);
  if (decimals <= groups_of_three::most_decimals_beside && integers <= 12) [[likely]] {
    out += write_groups_of_three(number, integers, decimals, shown, separator, out);
  } else {
    const std::uint64_t whole = number / powers_of_ten[decimals];
    const std::uint64_t rest = number - whole * powers_of_ten[decimals];
    out += write_groups_of_three(whole, integers, 0, 0, separator, out);
    DigitBlock(rest, decimals).write(shown, out + 1);
  }
  if (shown == 0) return out;
  *out = static_cast<Unit>(record.decimal_symbol);
  return out + 1 + shown;
}

}  // namespace jwnls

#endif  // JWNLS_MODULE_NUMFMT_GROUPS_OF_THREE_H_
