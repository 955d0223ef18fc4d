#include "module/digits/scaling_power.h"

#include <array>
#include <cstddef>

namespace jwnls {
namespace {

// A significand of ten 32-bit words, the top bit set, most significant word first. Each step rounds
// down by less than one unit of the last word, so after 345 of them 128 bits are right or one too
// low.
struct Significand {
  std::array<std::uint32_t, 10> words{};

  constexpr void times_ten() {
    std::uint64_t carry = 0;
    for (std::size_t i = words.size(); i-- > 0;) {
      const std::uint64_t product = std::uint64_t{words[i]} * 10 + carry;
      words[i] = static_cast<std::uint32_t>(product);
      carry = product >> 32;
    }
    while (carry != 0) {  // back to 320 bits
      shift_right_by_one(static_cast<std::uint32_t>(carry & 1));
      carry >>= 1;
    }
  }

  constexpr void over_ten() {
    // One word more than there are keeps the precision that the normalisation needs.
    std::uint64_t remainder = 0;
    for (std::uint32_t& word : words) {
      const std::uint64_t dividend = remainder << 32 | word;
      word = static_cast<std::uint32_t>(dividend / 10);
      remainder = dividend % 10;
    }
    auto extra = static_cast<std::uint32_t>((remainder << 32) / 10);
    while ((words[0] & 0x80000000) == 0) {
      for (std::size_t i = 0; i < words.size(); ++i) {
        const std::uint32_t next = i + 1 < words.size() ? words[i + 1] : extra;
        words[i] = words[i] << 1 | next >> 31;
      }
      extra <<= 1;
    }
  }

  constexpr ScalingPower top() const {
    return {std::uint64_t{words[0]} << 32 | words[1], std::uint64_t{words[2]} << 32 | words[3]};
  }

 private:
  constexpr void shift_right_by_one(std::uint32_t incoming) {
    for (std::uint32_t& word : words) {
      const std::uint32_t outgoing = word & 1;
      word = word >> 1 | incoming << 31;
      incoming = outgoing;
    }
  }
};

}  // namespace

constinit const ScalingPowers scaling_powers = [] {
  ScalingPowers made{};
  Significand one;
  one.words[0] = 0x80000000;
  Significand power = one;
  for (int k = 0; k <= highest_scaling_power; ++k) {
    made.from_lowest[k - lowest_scaling_power] = power.top();
    power.times_ten();
  }
  power = one;
  for (int k = -1; k >= lowest_scaling_power; --k) {
    power.over_ten();
    made.from_lowest[k - lowest_scaling_power] = power.top();
  }
  return made;
}();

}  // namespace jwnls
