// Decimal digits, four at once: the units of a text as the lanes of a word, the first one lowest.
//
// Digits are found and summed up a word at a time, whatever their number, so that numbers of
// unforeseen lengths cost few mispredicted branches. Nothing outside the text is read.

#ifndef JWNLS_MODULE_TEXT_DIGIT_WORDS_H_
#define JWNLS_MODULE_TEXT_DIGIT_WORDS_H_

#include <bit>
#include <cstdint>
#include <cstring>
#include <type_traits>

#include "module/text/unit_encoding.h"

namespace jwnls {

static_assert(std::endian::native == std::endian::little, "the first unit is the lowest lane");

inline constexpr std::uint32_t powers_of_ten_to_4[] = {1, 10, 100, 1'000, 10'000};

/// Up to four digits.
struct FewDigits {
  std::uint32_t value;
  std::uint32_t count;
};

/// Four units of a text, a lane each.
template <typename Unit>
struct DigitWord {
  using Word = std::conditional_t<sizeof(Unit) == 2, std::uint64_t, std::uint32_t>;

  static constexpr unsigned lane_bits = 8 * sizeof(Unit);
  static constexpr Word ones = static_cast<Word>(~Word{0}) / ((Word{1} << lane_bits) - 1);
  static constexpr Word top_bits = ones << (lane_bits - 1);

  Word word = 0;

  /// The four units from `at` on, which is at most `length`; those behind the end are 0. The text
  /// is not empty.
  [[gnu::always_inline]] static DigitWord load(const Unit* text, std::int64_t length,
                                               std::int64_t at) noexcept {
    const std::int64_t rest = length - at;
    if (rest >= 4) [[likely]]
      return load(text + at);
    if (length >= 4) {
      // The last four, less those before `at`; in two steps, for a word has no shift by its width.
      const auto half = static_cast<unsigned>(4 - rest) * (lane_bits / 2);
      return {load(text + (length - 4)).word >> half >> half};
    }
    // All of one to three units, each in its lane, where some may be taken twice.
    const std::int64_t middle = length / 2;
    const std::int64_t last = length - 1;
    const auto in_lane = [text](std::int64_t i) {
      return static_cast<Word>(unit_value(text[i])) << (lane_bits * static_cast<unsigned>(i));
    };
    return {(in_lane(0) | in_lane(middle) | in_lane(last)) >>
            (lane_bits * static_cast<unsigned>(at))};
  }

  /// The four units at `text`.
  [[gnu::always_inline]] static DigitWord load(const Unit* text) noexcept {
    DigitWord units;
    std::memcpy(&units.word, text, sizeof units.word);
    return units;
  }

  /// The value of four digits; false when not all of them are.
  [[gnu::always_inline]] bool four_digits(std::uint32_t zero, std::uint32_t& value) const noexcept {
    const Word values = digit_values(zero);
    value = sum(values);
    return others(values) == 0;
  }

  /// The digits that the units begin with; `zero` is the unit of the digit 0.
  [[gnu::always_inline]] FewDigits leading_digits(std::uint32_t zero) const noexcept {
    const Word values = digit_values(zero);
    const Word rest = others(values);
    if (rest == 0) return {sum(values), 4};
    const auto count = static_cast<std::uint32_t>(std::countr_zero(rest)) / lane_bits;
    return {sum(values << lane_bits << lane_bits * (3 - count)), count};
  }

 private:
  // In each lane a digit becomes its value, and everything else 10 or more.
  [[gnu::always_inline]] Word digit_values(std::uint32_t zero) const noexcept {
    return word ^ zero * ones;
  }
  // The top bit of each lane that is 10 or more. A lane that overflows has that bit itself and
  // disturbs none before it.
  [[gnu::always_inline]] static Word others(Word values) noexcept {
    return (values | (values + top_bits - 10 * ones)) & top_bits;
  }

  // The number that four lanes of digits are. Each product gathers its sums in upper lanes.
  static std::uint32_t sum(Word values) noexcept {
    if constexpr (lane_bits == 16) {
      return static_cast<std::uint32_t>(values * (1 | 10ULL << 16 | 100ULL << 32 | 1000ULL << 48) >>
                                        48);
    } else {
      const Word pairs = (values * (1 | 10u << 8) >> 8) & 0x00FF'00FF;
      return pairs * (1 | 100u << 16) >> 16;
    }
  }
};

}  // namespace jwnls

#endif  // JWNLS_MODULE_TEXT_DIGIT_WORDS_H_
