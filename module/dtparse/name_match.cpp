#include "module/dtparse/name_match.h"

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstring>
#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace jwnls {
namespace {

#if defined(__SSE2__)

constexpr std::ptrdiff_t block_units = 8;

// The eight units from `at` on, zeros behind the end of the text; false when they cannot be loaded
// or, in UTF-8, are not ASCII.
bool load_block(const char16_t* start, const char16_t* at, const char16_t* end,
                __m128i& block) noexcept {
  if (end - at >= block_units) [[likely]] {
    block = _mm_loadu_si128(reinterpret_cast<const __m128i*>(at));
    return true;
  }
  if (end - start < block_units) return false;
  unsigned __int128 units = 0;
  std::memcpy(&units, end - block_units, sizeof units);
  units >>= 16 * (block_units - (end - at));
  std::memcpy(&block, &units, sizeof block);
  return true;
}
bool load_block(const char* start, const char* at, const char* end, __m128i& block) noexcept {
  if (end - start < block_units) return false;
  const char* from = std::min(at, end - block_units);
  std::uint64_t units = 0;
  std::memcpy(&units, from, sizeof units);
  units >>= 8 * (at - from);
  block = _mm_unpacklo_epi8(_mm_cvtsi64_si128(static_cast<long long>(units)), _mm_setzero_si128());
  return (units & 0x8080808080808080) == 0;
}

__m128i ascii_upper_case(__m128i units) noexcept {
  // Units from 'a' to 'z' become the 26 largest signed numbers.
  const __m128i moved = _mm_add_epi16(units, _mm_set1_epi16(0x7FFF - 'z'));
  const __m128i small = _mm_cmpgt_epi16(moved, _mm_set1_epi16(0x7FFF - 26));
  return _mm_sub_epi16(units, _mm_and_si128(small, _mm_set1_epi16(0x20)));
}

// Two bits for each of the eight units.
std::uint32_t lanes(__m128i mask) noexcept {
  return static_cast<std::uint32_t>(_mm_movemask_epi8(mask));
}

enum class Verdict : std::uint8_t { same, other, undecided };

template <typename Unit>
class NameSearch {
 public:
  NameSearch(__m128i block, const Unit* at, const Unit* end) noexcept
      : text_(ascii_upper_case(block)), at_(at), end_(end) {
    // Of the first two units, the second counts only if it is an ASCII one.
    const auto two = static_cast<std::uint32_t>(_mm_cvtsi128_si32(block));
    key_bits_ = two >> 16 < 0x80 ? 0xFFFFFFFF : 0xFFFF;
    key_ = _mm_set1_epi32(static_cast<int>((two | both_small) & key_bits_));
  }

  [[gnu::always_inline]] NameMatch run(const LocaleRecord& record, NameList list) const noexcept {
    const TextEntry* entries = &list_entry(record, list.offset, 0);
    const Possible possible = list.count == 12  ? filter<12>(entries)
                              : list.count == 7 ? filter<7>(entries)
                              : list.count == 4 ? filter<4>(entries)
                                                : filter<2>(entries);
    if (!possible.known) return NameMatch::undecided();
    for (std::uint32_t names = possible.names; names != 0; names &= names - 1) {
      const int index = std::countr_zero(names);
      const std::u16string_view name = text_of(entries[index]);
      switch (compare(name)) {
        case Verdict::same:
          return NameMatch::of(index, name.size());
        case Verdict::other:
          break;
        case Verdict::undecided:
          return NameMatch::undecided();
      }
    }
    return NameMatch::none();
  }

 private:
  static constexpr std::uint32_t both_small = 0x00200020;

  struct Possible {
    bool known;
    std::uint32_t names;  // a bit each
  };

  // The names whose first two units could be the text's. Unknown when the list has names of fewer
  // units, or one of the units whose capital is an ASCII letter (U+0131 and U+017F, told by a bit
  // that no Latin-1 unit has).
  template <std::size_t count>
  [[gnu::always_inline]] Possible filter(const TextEntry* entries) const noexcept {
    const __m128i bits = _mm_set1_epi32(static_cast<int>(key_bits_));
    const __m128i small = _mm_set1_epi32(both_small);
    __m128i least = _mm_set1_epi16(0x7FFF);  // of each 16-bit lane of all names' heads
    __m128i all_units = _mm_setzero_si128();
    const auto head = [&](std::size_t index) noexcept {
      const TextEntry& name = entries[std::min(index, count - 1)];
      const __m128i length_and_units = _mm_loadu_si128(reinterpret_cast<const __m128i*>(&name));
      least = _mm_min_epi16(least, length_and_units);
      return length_and_units;
    };
    std::uint32_t names = 0;
#pragma GCC unroll 3
    for (std::size_t i = 0; i < count; i += 4) {
      const __m128i two = _mm_unpackhi_epi32(head(i), head(i + 1));
      const __m128i two_more = _mm_unpackhi_epi32(head(i + 2), head(i + 3));
      const __m128i units = _mm_unpacklo_epi64(two, two_more);
      all_units = _mm_or_si128(all_units, units);
      const __m128i same = _mm_cmpeq_epi32(_mm_and_si128(_mm_or_si128(units, small), bits), key_);
      names |= static_cast<std::uint32_t>(_mm_movemask_ps(_mm_castsi128_ps(same))) << i;
    }
    // The lowest lane of a length is its value, the highest one has its sign; what the lanes
    // between hold can only make it longer.
    const std::int64_t lengths = _mm_cvtsi128_si64(least);
    const bool long_enough = lengths >= 0 && static_cast<std::int16_t>(lengths) >= 2;
    const std::uint32_t beyond_latin = lanes(_mm_slli_epi16(all_units, 7)) & 0xAAAA;
    return {long_enough && beyond_latin == 0, names & ((1u << count) - 1)};
  }

  Verdict compare(std::u16string_view name) const noexcept {
    const __m128i units = _mm_loadu_si128(reinterpret_cast<const __m128i*>(name.data()));
    // Spelled so that it is no branch.
    const std::ptrdiff_t excess = static_cast<std::ptrdiff_t>(name.size()) - block_units;
    const std::ptrdiff_t compared = block_units + (excess & excess >> 63);
    const std::uint32_t wanted = (1u << 2 * compared) - 1;
    const std::uint32_t other = wanted & ~lanes(_mm_cmpeq_epi16(ascii_upper_case(units), text_));
    if (other != 0) {
      const __m128i upper = _mm_and_si128(_mm_or_si128(units, text_), _mm_set1_epi16(~0x7F));
      const std::uint32_t ascii = lanes(_mm_cmpeq_epi16(upper, _mm_setzero_si128()));
      return (other & ascii) != 0 ? Verdict::other : Verdict::undecided;
    }
    if (name.size() > static_cast<std::size_t>(end_ - at_)) return Verdict::undecided;
    return excess <= 0 ? Verdict::same : compare_rest(name);
  }

  Verdict compare_rest(std::u16string_view name) const noexcept {
    for (std::size_t i = std::size_t{block_units}; i < name.size(); ++i) {
      const auto unit = static_cast<std::make_unsigned_t<Unit>>(at_[i]);
      if (name[i] >= 0x80 || unit >= 0x80) return Verdict::undecided;
      if (simple_upper_case(name[i]) != simple_upper_case(unit)) return Verdict::other;
    }
    return Verdict::same;
  }

  __m128i text_;  // its eight units
  const Unit* at_;
  const Unit* end_;
  std::uint32_t key_bits_;
  __m128i key_;  // what a name's first two units must be, small letters and capitals alike
};

#endif

}  // namespace

template <typename Unit>
NameMatch match_name(const Unit* start, const Unit* at, const Unit* end, const LocaleRecord& record,
                     const NameList (&lists)[2]) noexcept {
#if defined(__SSE2__)
  __m128i block = _mm_setzero_si128();
  if (static_cast<std::make_unsigned_t<Unit>>(*at) >= 0x80 || !load_block(start, at, end, block)) {
    return NameMatch::undecided();
  }
  const NameSearch<Unit> search(block, at, end);
  for (const NameList list : lists) {
    if (list.count == 0) break;
    const NameMatch match = search.run(record, list);
    if (!match.is_none()) return match;
  }
  return NameMatch::none();
#else
  (void)start, (void)at, (void)end, (void)record, (void)lists;
  return NameMatch::undecided();
#endif
}

template NameMatch match_name(const char16_t*, const char16_t*, const char16_t*,
                              const LocaleRecord&, const NameList (&)[2]) noexcept;
template NameMatch match_name(const char*, const char*, const char*, const LocaleRecord&,
                              const NameList (&)[2]) noexcept;

}  // namespace jwnls
