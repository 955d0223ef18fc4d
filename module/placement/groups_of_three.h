// The usual grouping, threes throughout, without a branch on the number of digits.

#ifndef JWNLS_MODULE_PLACEMENT_GROUPS_OF_THREE_H_
#define JWNLS_MODULE_PLACEMENT_GROUPS_OF_THREE_H_

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>

#include "abi/locale_record.h"
#include "module/digits/digit_block.h"
#include "module/digits/digit_groups.h"
#include "module/digits/powers_of_ten.h"
#include "module/placement/symbols.h"

namespace jwnls {

inline bool groups_by_three(const LocaleRecord& record) noexcept {
  return record.grouping_length == 1 && record.grouping_units[0] == u'3';
}

/// The separators among `count` digits, at least one.
constexpr int separators_of_three(int count) noexcept {
  return static_cast<int>(static_cast<unsigned>(count - 1) / 3);
}

/// The most digits that can be grouped at once.
inline constexpr int most_grouped_digits = 3 * most_groups;

namespace groups_of_three {

inline constexpr int most_decimals_beside = 3;

// How a number stands in front of eighteen digits: the first group of its integers padded to three,
// the decimals a group of their own.
struct Place {
  std::uint64_t factor;  // that puts it there
  std::size_t groups;
  std::size_t padding;  // digits that the first group has too many
  std::int64_t length;  // of the groups with their separators
};

// By the number of decimals, and of integers.
inline constexpr auto places = [] {
  std::array<std::array<Place, most_grouped_digits + 1>, most_decimals_beside + 1> made{};
  for (unsigned decimals = 0; decimals < made.size(); ++decimals) {
    for (unsigned integers = 1; integers <= most_grouped_digits; ++integers) {
      const unsigned groups = (integers + 2) / 3;
      const unsigned digits = 3 * groups;
      if (digits + decimals > most_grouped_digits) break;
      made[decimals][integers] = {powers_of_ten[most_grouped_digits - digits - decimals], groups,
                                  digits - integers, integers + groups - 1};
    }
  }
  return made;
}();

}  // namespace groups_of_three

/// Where the groups of a number go that has so many integers (1 to 18), and behind them decimals
/// (up to 3; then 15 integers at most).
inline const groups_of_three::Place& place_of_groups(int integers, int decimals) noexcept {
  return groups_of_three::places[static_cast<unsigned>(decimals)][static_cast<unsigned>(integers)];
}

namespace groups_of_three {

// The places of integers by their highest bit, which tells their length to one digit.
struct BitRow {
  std::uint64_t more_from;  // from this number on it has a digit more
  // For those numbers, and the bits that the others change.
  std::uint64_t factor, factor_change;
  std::uint64_t packed, packed_change;  // groups, 2^8 * padding, 2^16 * length
};

inline constexpr auto bit_rows = [] {
  constexpr auto packed = [](const Place& place) {
    return place.groups | place.padding << 8 | static_cast<std::uint64_t>(place.length) << 16;
  };
  std::array<BitRow, 60> rows{};  // 10^18 is below 2^60
  std::size_t count = 1;
  for (std::size_t i = 0; i < rows.size(); ++i) {
    if (std::uint64_t{1} << i >= powers_of_ten[count]) ++count;
    const Place& place = places[0][count];
    const Place& more = places[0][count < most_grouped_digits ? count + 1 : count];
    rows[i] = {powers_of_ten[count], more.factor, place.factor ^ more.factor, packed(more),
               packed(place) ^ packed(more)};
  }
  return rows;
}();

}  // namespace groups_of_three

/// Where the groups of an integer below 10^18 go. Without a branch, which integers of all lengths
/// would take at random.
inline groups_of_three::Place place_of_groups(std::uint64_t number) noexcept {
  const unsigned bit = 63 ^ static_cast<unsigned>(std::countl_zero(number | 1));
  const groups_of_three::BitRow& row = groups_of_three::bit_rows[bit];
  const std::uint64_t change = 0 - std::uint64_t{number < row.more_from};
  const std::uint64_t factor = row.factor ^ (row.factor_change & change);
  const std::uint64_t packed = row.packed ^ (row.packed_change & change);
  return {factor, packed & 0xFF, packed >> 8 & 0xFF, static_cast<std::int64_t>(packed >> 16)};
}

/// Writes a number with a separator between groups of three, counted from the right, as many units
/// as its place says. Its decimals follow behind one unit that is left to the caller: the first
/// `shown` of them, behind which only zeros follow. Behind the text stand zero units, 24 units in
/// all at most.
template <typename Unit>
[[gnu::always_inline]] inline void write_groups_of_three(std::uint64_t number,
                                                         const groups_of_three::Place& place,
                                                         int shown, Unit separator,
                                                         Unit* out) noexcept {
  write_18_digits_in_groups(number * place.factor, place.groups, place.padding,
                            static_cast<std::size_t>(shown), separator, out);
}

/// The last `integers` + `decimals` digits of a number below 10^16, which has no more: the integers
/// in groups; then, if any are shown, the decimal symbol and the first `shown` of the decimals,
/// behind which only zeros follow. Returns the text's end.
template <typename Unit>
[[gnu::always_inline]] inline Unit* write_groups_of_three(Symbols<Unit> symbols,
                                                          std::uint64_t number, int integers,
                                                          int decimals, int shown,
                                                          Unit* out) noexcept {
  const Unit separator = symbols.grouping();
  if (decimals <= groups_of_three::most_decimals_beside && integers <= 15) [[likely]] {
    const auto& place = place_of_groups(integers, decimals);
    write_groups_of_three(number, place, shown, separator, out);
    out += place.length;
  } else {
    const std::uint64_t whole = number / powers_of_ten[decimals];
    const std::uint64_t rest = number - whole * powers_of_ten[decimals];
    const auto& place = place_of_groups(integers, 0);
    write_groups_of_three(whole, place, 0, separator, out);
    out += place.length;
    DigitBlock(rest, decimals).write(shown, out + 1);
  }
  if (shown == 0) return out;
  *out = symbols.decimal();
  return out + 1 + shown;
}

}  // namespace jwnls

#endif  // JWNLS_MODULE_PLACEMENT_GROUPS_OF_THREE_H_
