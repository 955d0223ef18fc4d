#include "module/digits/power_of_two_limbs.h"

#include <array>
#include <cstddef>

#include "module/digits/powers_of_ten.h"

namespace jwnls {
namespace {

constexpr int rows = highest_power - lowest_power + 1;
constexpr int fraction_limbs = 68;  // 2^-1080 has 1080 decimals
constexpr int integer_limbs = 19;   // 2^970 has 293 digits

struct Row {
  std::int16_t begin;  // of its limbs in the table
  std::int8_t lowest;
  std::int8_t highest;
};

// A number with all its limbs, from limb -fraction_limbs up.
struct Expansion {
  std::array<std::uint64_t, fraction_limbs + integer_limbs> limbs{};

  // 1024 times a limb and its carry fit 64 bits.
  constexpr void multiply_by_1024() {
    std::uint64_t carry = 0;
    for (std::uint64_t& limb : limbs) {
      const std::uint64_t product = limb * 1024 + carry;
      limb = product % ten_to_16;
      carry = product / ten_to_16;
    }
  }

  constexpr void divide_by_1024() {
    std::uint64_t remainder = 0;
    for (std::size_t i = limbs.size(); i-- > 0;) {
      const std::uint64_t dividend = remainder * ten_to_16 + limbs[i];
      limbs[i] = dividend / 1024;
      remainder = dividend % 1024;
    }
  }

  constexpr int lowest() const {
    int i = 0;
    while (limbs[static_cast<std::size_t>(i)] == 0) ++i;
    return i - fraction_limbs;
  }
  constexpr int highest() const {
    int i = static_cast<int>(limbs.size()) - 1;
    while (limbs[static_cast<std::size_t>(i)] == 0) --i;
    return i - fraction_limbs;
  }
};

// Hands every row's expansion to `take`, from the lowest power up or down from zero.
template <typename Take>
constexpr void for_each_row(Take take) {
  Expansion one;
  one.limbs[fraction_limbs] = 1;
  Expansion number = one;
  for (int power = 0; power <= highest_power; ++power) {
    take(power, number);
    if (power < highest_power) number.multiply_by_1024();
  }
  number = one;
  for (int power = -1; power >= lowest_power; --power) {
    number.divide_by_1024();
    take(power, number);
  }
}

constexpr std::size_t total_limbs = [] {
  int total = 0;
  for_each_row([&](int, const Expansion& row) { total += row.highest() - row.lowest() + 1; });
  return static_cast<std::size_t>(total);
}();

struct Table {
  std::array<Row, rows> index;
  std::array<std::uint64_t, total_limbs> limbs;
};

constexpr Table table = [] {
  Table made{};
  std::size_t used = 0;
  for_each_row([&](int power, const Expansion& row) {
    const int lowest = row.lowest();
    const int highest = row.highest();
    made.index[static_cast<std::size_t>(power - lowest_power)] = {
        static_cast<std::int16_t>(used), static_cast<std::int8_t>(lowest),
        static_cast<std::int8_t>(highest)};
    for (int limb = lowest; limb <= highest; ++limb) {
      const int place = limb + fraction_limbs;
      made.limbs[used++] = row.limbs[static_cast<std::size_t>(place)];
    }
  });
  return made;
}();

}  // namespace

LimbRow limbs_of_power(int power) noexcept {
  const Row& row = table.index[static_cast<std::size_t>(power - lowest_power)];
  return {table.limbs.data() + row.begin, row.lowest, row.highest};
}

}  // namespace jwnls
