// Which names of a list could be the one that a text goes on with, by the leading units of all of
// them at once.

#ifndef JWNLS_MODULE_READ_DATES_NAME_FILTER_H_
#define JWNLS_MODULE_READ_DATES_NAME_FILTER_H_

#include "module/text/unit_block.h"

#if defined(__SSE2__)

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "abi/locale_record.h"

namespace jwnls {

/// Some names of a list, a bit each.
using NameSet = std::uint32_t;

/// The units by which names are chosen: the first three.
inline constexpr std::size_t leading_units = 3;

/// Whether a leading unit has an ASCII letter for its capital: U+0131 or U+017F.
[[gnu::noinline]] inline bool have_ascii_capitals(const TextEntry* names,
                                                  std::size_t count) noexcept {
  return std::any_of(names, names + count, [](const TextEntry& name) noexcept {
    const std::u16string_view leading(name.units, leading_units);
    return leading.find_first_of(u"\u0131\u017F") != leading.npos;
  });
}

/// Whether a choice among a list's names can be relied on.
enum class Choice : std::uint8_t {
  sure,
  unless_shared,  // unless a leading unit has the capital of an ASCII letter: some are not Latin-1
  none,           // a name has fewer units than those that lead
};

/// The leading units of a text.
class LeadingUnits {
 public:
  /// Takes a text's first units, the first one an ASCII unit. Of the others those count that are.
  [[gnu::always_inline]] explicit LeadingUnits(__m128i block) noexcept {
    const auto units = static_cast<std::uint64_t>(_mm_cvtsi128_si64(block));
    constexpr std::uint64_t above_ascii = 0xFF80FF80FF80;
    compared_ = (units & above_ascii) == 0 ? twice(0xFFFFFFFFFFFF & without_case)
                                           : twice(counted_units(units) & without_case);
    units_ = _mm_and_si128(_mm_unpacklo_epi64(block, block), compared_);
  }

  /// Sets the names that could begin with these units.
  template <std::size_t count>
  [[gnu::always_inline]] Choice choose(const TextEntry* names, NameSet& chosen) const noexcept {
    Seen seen = {_mm_set1_epi16(0x7FFF), _mm_setzero_si128()};
    chosen = choose_four<count, 0>(names, seen);
    if constexpr (count > 4) chosen |= choose_four<count, 4>(names, seen) << 4;
    if constexpr (count > 8) chosen |= choose_four<count, 8>(names, seen) << 8;
    if constexpr (count % 4 != 0) chosen &= (1u << count) - 1;
    // The lowest lane of a length is its value, the highest one has its sign; what the lanes
    // between hold can only make it longer.
    const std::int64_t lengths = _mm_cvtsi128_si64(seen.least);
    if (lengths < 0 || static_cast<std::int16_t>(lengths) < int{leading_units}) return Choice::none;
    // The bit of 0x100, which no Latin-1 unit has, on top of each lane.
    const std::uint32_t others = unit_block::lanes(_mm_slli_epi16(seen.units, 7)) & 0xAAAA;
    return others == 0 ? Choice::sure : Choice::unless_shared;
  }

 private:
  struct Seen {
    __m128i least;  // of each 16-bit lane of a name's length
    __m128i units;  // all names', or'ed
  };

  [[gnu::always_inline]] static __m128i twice(std::uint64_t units) noexcept {
    return _mm_set1_epi64x(static_cast<long long>(units));
  }

  static std::uint64_t counted_units(std::uint64_t units) noexcept {
    std::uint64_t counted = 0xFFFF;
    if ((units & 0xFF800000) == 0) counted |= 0xFFFF0000;
    if ((units & 0xFF8000000000) == 0) counted |= 0xFFFF00000000;
    return counted;
  }

  // Of each unit all but the bit that tells a letter's cases apart; other units that differ by it
  // alone count as the same, which only chooses a name too many.
  static constexpr std::uint64_t without_case = 0xFFDFFFDFFFDFFFDF;

  // The length and the first four units of a name; the last one's behind the list's end.
  template <std::size_t count>
  [[gnu::always_inline]] static __m128i head(const TextEntry* names, std::size_t index,
                                             Seen& seen) noexcept {
    const TextEntry& name = names[std::min(index, count - 1)];
    __m128i length_and_units = _mm_loadu_si128(reinterpret_cast<const __m128i*>(&name));
    asm("" : "+x"(length_and_units));  // loaded once: g++ 12 takes each use from memory otherwise
    seen.least = _mm_min_epi16(seen.least, length_and_units);
    return length_and_units;
  }

  // For each of two names a lane for its first two units and one for the third.
  template <std::size_t count>
  [[gnu::always_inline]] __m128 compare_two(const TextEntry* names, std::size_t index,
                                            Seen& seen) const noexcept {
    const __m128i one = head<count>(names, index, seen);
    const __m128i units = _mm_unpackhi_epi64(one, head<count>(names, index + 1, seen));
    seen.units = _mm_or_si128(seen.units, units);
    asm("" : "+x"(seen.units));
    const __m128i same = _mm_cmpeq_epi32(_mm_and_si128(units, compared_), units_);
    return _mm_castsi128_ps(same);
  }

  template <std::size_t count, std::size_t index>
  [[gnu::always_inline]] NameSet choose_four(const TextEntry* names, Seen& seen) const noexcept {
    const __m128 a = compare_two<count>(names, index, seen);
    const __m128 b = compare_two<count>(names, index + 2, seen);
    const __m128 same = _mm_and_ps(_mm_shuffle_ps(a, b, 0x88), _mm_shuffle_ps(a, b, 0xDD));
    return static_cast<NameSet>(_mm_movemask_ps(same));
  }

  __m128i compared_;  // the bits that are compared, twice
  __m128i units_;     // the text's, twice
};

}  // namespace jwnls

#endif

#endif  // JWNLS_MODULE_READ_DATES_NAME_FILTER_H_
