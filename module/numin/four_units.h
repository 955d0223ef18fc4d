// Four units of a text at once, as the 16-bit lanes of a word: the first unit in the lowest lane.
//
// Digits are found and summed up a word at a time, whatever their number, so that numbers of
// unforeseen lengths cost few mispredicted branches. Nothing outside the text is read.

#ifndef JWNLS_MODULE_NUMIN_FOUR_UNITS_H_
#define JWNLS_MODULE_NUMIN_FOUR_UNITS_H_

#include <bit>
#include <cstdint>
#include <cstring>

#include "module/numin/unit_encoding.h"

namespace jwnls {

static_assert(std::endian::native == std::endian::little, "the first unit is the lowest lane");

inline constexpr std::uint32_t powers_of_ten_to_4[] = {1, 10, 100, 1'000, 10'000};

/// Up to four digits.
struct FewDigits {
  std::uint32_t value;
  std::uint32_t count;
};

namespace four_units {

inline constexpr std::uint64_t every_lane = 0x0001'0001'0001'0001;

inline std::uint64_t load(const char16_t* text) noexcept {
  std::uint64_t word = 0;
  std::memcpy(&word, text, sizeof word);
  return word;
}
inline std::uint64_t load(const char* text) noexcept {
  std::uint32_t bytes = 0;
  std::memcpy(&bytes, text, sizeof bytes);
  const std::uint64_t pairs = (std::uint64_t{bytes} << 16 | bytes) & 0x0000'FFFF'0000'FFFF;
  return (pairs << 8 | pairs) & 0x00FF'00FF'00FF'00FF;
}

}  // namespace four_units

/// The four units from `at` on, which is at most `length`; those behind the end are 0.
template <typename Unit>
[[gnu::always_inline]] inline std::uint64_t four_units_at(const Unit* text, std::int64_t length,
                                                          std::int64_t at) noexcept {
  const std::int64_t rest = length - at;
  if (rest >= 4) [[likely]]
    return four_units::load(text + at);
  if (length >= 4) {
    // The last four, less those before `at`; in two steps, for the word has no shift by 64.
    const auto half = static_cast<unsigned>(4 - rest) * 8;
    return four_units::load(text + (length - 4)) >> half >> half;
  }
  std::uint64_t word = 0;
  for (std::int64_t i = length; i-- > at;) word = word << 16 | unit_value(text[i]);
  return word;
}

/// The digits that four units begin with; `zero` is the unit of the digit 0.
[[gnu::always_inline]] inline FewDigits leading_digits(std::uint64_t units,
                                                       std::uint32_t zero) noexcept {
  using four_units::every_lane;
  // In each lane a digit becomes its value, and everything else 10 or more, which reaches the
  // lane's top bit. A lane that overflows has that bit itself and disturbs none before it.
  const std::uint64_t values = units ^ zero * every_lane;
  const std::uint64_t others =
      (values | (values + (0x8000 - 10) * every_lane)) & 0x8000 * every_lane;
  // The digits go to the upper lanes, where one multiplication sums them up.
  constexpr std::uint64_t weights = 1 | 10ULL << 16 | 100ULL << 32 | 1000ULL << 48;
  if (others == 0) return {static_cast<std::uint32_t>(values * weights >> 48), 4};
  const auto count = static_cast<std::uint32_t>(std::countr_zero(others)) / 16;
  return {static_cast<std::uint32_t>((values << 16 << (48 - 16 * count)) * weights >> 48), count};
}

}  // namespace jwnls

#endif  // JWNLS_MODULE_NUMIN_FOUR_UNITS_H_
