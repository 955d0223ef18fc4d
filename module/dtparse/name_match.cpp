#include "module/dtparse/name_match.h"

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstring>

#include "module/dtparse/unit_block.h"

namespace jwnls {
namespace {

#if defined(__SSE2__)

using unit_block::lanes;
constexpr std::ptrdiff_t block_units = unit_block::units;

// The eight units from `at` on, zeros behind the end of the text; false when they cannot be loaded
// or, in UTF-8, are not ASCII.
bool load_block(const char16_t* start, const char16_t* at, const char16_t* end,
                __m128i& block) noexcept {
  if (end - at >= block_units) [[likely]] {
    block = unit_block::load(at);
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

enum class Verdict : std::uint8_t { same, other, undecided };

template <typename Unit>
class NameSearch {
 public:
  NameSearch(__m128i block, const Unit* at, const Unit* end) noexcept
      : text_(block), at_(at), end_(end) {
    // Of the first two units, the second counts only if it is an ASCII one.
    const auto two = static_cast<std::uint32_t>(_mm_cvtsi128_si32(block));
    counted_ = _mm_set1_epi32(-1);
    if (two >= 0x80 << 16) [[unlikely]]
      counted_ = _mm_set1_epi32(0xFFFF);
    key_ = _mm_and_si128(counted_, small(_mm_shuffle_epi32(block, 0)));
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
      // The filter has seen that it is no less than 2.
      const std::int64_t length = entries[index].length;
      if (length > text_entry_capacity) [[unlikely]]
        return NameMatch::undecided();
      const std::u16string_view name(entries[index].units, static_cast<std::size_t>(length));
      const Verdict verdict = compare(name);
      if (verdict == Verdict::other) continue;
      if (verdict == Verdict::undecided) return NameMatch::undecided();
      if (length > block_units && !same_rest(name, at_)) return NameMatch::undecided();
      return NameMatch::of(index, name.size());
    }
    return NameMatch::none();
  }

 private:
  // Small letters for capitals; other units may change, alike in text and names.
  static __m128i small(__m128i units) noexcept { return _mm_or_si128(units, _mm_set1_epi16(0x20)); }

  struct Possible {
    bool known;
    std::uint32_t names;  // a bit each
  };

  // The names whose first two units could be the text's. Unknown when the list has names of fewer
  // units, or one of the units whose capital is an ASCII letter (U+0131 and U+017F, told by a bit
  // that no Latin-1 unit has).
  template <std::size_t count>
  [[gnu::always_inline]] Possible filter(const TextEntry* entries) const noexcept {
    __m128i least = _mm_set1_epi16(0x7FFF);  // of each 16-bit lane of all names' heads
    __m128i all_units = _mm_setzero_si128();
    const auto head = [&](std::size_t index) noexcept {
      const TextEntry& name = entries[std::min(index, count - 1)];
      const __m128i length_and_units = _mm_loadu_si128(reinterpret_cast<const __m128i*>(&name));
      least = _mm_min_epi16(least, length_and_units);
      return length_and_units;
    };
    const auto four_names = [&](std::size_t i) noexcept {
      const __m128i two = _mm_unpackhi_epi32(head(i), head(i + 1));
      const __m128i two_more = _mm_unpackhi_epi32(head(i + 2), head(i + 3));
      const __m128i units = _mm_unpacklo_epi64(two, two_more);
      all_units = _mm_or_si128(all_units, units);
      return _mm_cmpeq_epi32(_mm_and_si128(small(units), counted_), key_);
    };
    const __m128i first_eight =
        _mm_packs_epi32(four_names(0), count > 4 ? four_names(4) : _mm_setzero_si128());
    const __m128i others = count > 8 ? four_names(8) : _mm_setzero_si128();
    const __m128i same = _mm_packs_epi16(first_eight, _mm_packs_epi32(others, others));
    const auto names = static_cast<std::uint32_t>(_mm_movemask_epi8(same));
    // The lowest lane of a length is its value, the highest one has its sign; what the lanes
    // between hold can only make it longer.
    const std::int64_t lengths = _mm_cvtsi128_si64(least);
    const bool long_enough = lengths >= 0 && static_cast<std::int16_t>(lengths) >= 2;
    const std::uint32_t beyond_latin = lanes(_mm_slli_epi16(all_units, 7)) & 0xAAAA;
    return {long_enough && beyond_latin == 0, names & ((1u << count) - 1)};
  }

  // The units that the block holds.
  Verdict compare(std::u16string_view name) const noexcept {
    const __m128i units = _mm_loadu_si128(reinterpret_cast<const __m128i*>(name.data()));
    // Spelled so that it is no branch.
    const std::ptrdiff_t excess = static_cast<std::ptrdiff_t>(name.size()) - block_units;
    const std::ptrdiff_t compared = block_units + (excess & excess >> 63);
    const std::uint32_t wanted = (1u << 2 * compared) - 1;
    if ((wanted & ~lanes(_mm_cmpeq_epi16(units, text_))) != 0) {
      const __m128i same = _mm_cmpeq_epi16(ascii_upper_case(units), ascii_upper_case(text_));
      const std::uint32_t other = wanted & ~lanes(same);
      const __m128i upper = _mm_and_si128(_mm_or_si128(units, text_), _mm_set1_epi16(~0x7F));
      const std::uint32_t ascii = lanes(_mm_cmpeq_epi16(upper, _mm_setzero_si128()));
      if ((other & ascii) != 0) return Verdict::other;
      if (other != 0) return Verdict::undecided;
    }
    if (name.size() > static_cast<std::size_t>(end_ - at_)) [[unlikely]]
      return Verdict::undecided;
    return Verdict::same;
  }

  // Whether the units behind the block are the same, ASCII alone.
  [[gnu::noinline]] static bool same_rest(std::u16string_view name, const Unit* text) noexcept {
    for (std::size_t i = std::size_t{block_units}; i < name.size(); ++i) {
      const auto unit = static_cast<std::make_unsigned_t<Unit>>(text[i]);
      if (name[i] >= 0x80 || unit >= 0x80) return false;
      if (simple_upper_case(name[i]) != simple_upper_case(unit)) return false;
    }
    return true;
  }

  __m128i text_;  // its eight units
  const Unit* at_;
  const Unit* end_;
  __m128i key_;      // what small() makes of the first two units that count, four times
  __m128i counted_;  // the bits of them
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
