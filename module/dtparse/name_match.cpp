#include "module/dtparse/name_match.h"

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstring>

#include "module/dtparse/unit_block.h"

namespace jwnls {
namespace {

constexpr NameMatch no_name = {NameMatch::none, 0};
constexpr NameMatch undecided = {NameMatch::undecided, 0};

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

enum class Verdict : std::uint8_t { same, other, undecided };

// Unit by unit. What is not ASCII can only be told when it is equal in UTF-16.
template <typename Unit>
[[gnu::noinline]] Verdict compare_units(std::u16string_view name, const Unit* text) noexcept {
  for (const char16_t unit : name) {
    const auto other = static_cast<std::make_unsigned_t<Unit>>(*text++);
    if (unit == other && (sizeof(Unit) > 1 || unit < 0x80)) continue;
    if (unit >= 0x80 || other >= 0x80) return Verdict::undecided;
    if (simple_upper_case(unit) != simple_upper_case(other)) return Verdict::other;
  }
  return Verdict::same;
}

// The first units of a name, which choose those that are compared.
constexpr std::size_t leading_units = 3;

// Whether a leading unit has an ASCII letter for its capital: U+0131 or U+017F.
[[gnu::noinline]] bool have_ascii_capitals(const TextEntry* entries, std::size_t count) noexcept {
  return std::any_of(entries, entries + count, [](const TextEntry& entry) noexcept {
    const std::u16string_view leading(entry.units, leading_units);
    return leading.find_first_of(u"\u0131\u017F") != leading.npos;
  });
}

template <typename Unit>
class NameSearch {
 public:
  // Of the text's leading units, those count that are ASCII; the first one is.
  NameSearch(__m128i block, const Unit* at, const Unit* end) noexcept
      : text_(block), at_(at), end_(end) {
    constexpr std::uint64_t all_three = 0xFFFFFFFFFFFF;
    std::uint64_t counted = all_three;
    const auto units = static_cast<std::uint64_t>(_mm_cvtsi128_si64(block));
    if ((units & 0xFF80FF800000) != 0) [[unlikely]] {
      if ((units & 0xFF800000) != 0) counted &= ~std::uint64_t{0xFFFF0000};
      if ((units & 0xFF8000000000) != 0) counted &= ~std::uint64_t{0xFFFF00000000};
    }
    counted_ = _mm_set1_epi64x(static_cast<long long>(counted));
    leading_ = _mm_and_si128(small(_mm_unpacklo_epi64(block, block)), counted_);
  }

  [[gnu::always_inline]] NameMatch run(const LocaleRecord& record, NameList list) const noexcept {
    const TextEntry* entries = &list_entry(record, list.offset, 0);
    std::uint32_t names = 0;
    if (!(list.count == 12  ? filter<12>(entries, names)
          : list.count == 7 ? filter<7>(entries, names)
          : list.count == 4 ? filter<4>(entries, names)
                            : filter<2>(entries, names))) {
      return undecided;
    }
    for (; names != 0; names &= names - 1) {
      const int index = std::countr_zero(names);
      const std::int64_t length = entries[index].length;  // no less than leading_units
      if (length > 2 * block_units) [[unlikely]]
        return undecided;
      if (length > end_ - at_) [[unlikely]]
        continue;
      const std::u16string_view name(entries[index].units, static_cast<std::size_t>(length));
      const Verdict verdict = equal(name) ? Verdict::same : compare_units(name, at_);
      if (verdict == Verdict::same) return NameMatch{index, length};
      if (verdict == Verdict::undecided) return undecided;
    }
    return no_name;
  }

 private:
  // Small letters for capitals; other units may change, alike in text and names.
  static __m128i small(__m128i units) noexcept { return _mm_or_si128(units, _mm_set1_epi16(0x20)); }

  // Sets the lower one of two bits for each name whose leading units could be the text's. False
  // when that cannot be told: the list has shorter names, or leading units with ASCII capitals.
  template <std::size_t count>
  [[gnu::always_inline]] bool filter(const TextEntry* entries,
                                     std::uint32_t& names) const noexcept {
    __m128i least = _mm_set1_epi16(0x7FFF);  // of each 16-bit lane of all names' heads
    __m128i all_units = _mm_setzero_si128();
    const auto head = [&](std::size_t index) noexcept {
      const TextEntry& name = entries[std::min(index, count - 1)];
      const __m128i length_and_units = _mm_loadu_si128(reinterpret_cast<const __m128i*>(&name));
      least = _mm_min_epi16(least, length_and_units);
      return length_and_units;
    };
    // Each name's units make two lanes: the first two, and the third.
    const auto two_names = [&](std::size_t i) noexcept {
      const __m128i units = _mm_unpackhi_epi64(head(i), head(i + 1));
      all_units = _mm_or_si128(all_units, units);
      return _mm_cmpeq_epi32(_mm_and_si128(small(units), counted_), leading_);
    };
    const auto four_names = [&](std::size_t i) noexcept {
      const __m128i lanes_of_two = two_names(i);
      const __m128i lanes_of_more = two_names(i + 2);
      const __m128 a = _mm_castsi128_ps(lanes_of_two);
      const __m128 b = _mm_castsi128_ps(lanes_of_more);
      const __m128 both = _mm_and_ps(_mm_shuffle_ps(a, b, 0x88), _mm_shuffle_ps(a, b, 0xDD));
      return static_cast<std::uint32_t>(_mm_movemask_ps(both));
    };
    names = four_names(0);
    if (count > 4) names |= four_names(4) << 4;
    if (count > 8) names |= four_names(8) << 8;
    if (count % 4 != 0) names &= (1u << count) - 1;
    // The lowest lane of a length is its value, the highest one has its sign; what the lanes
    // between hold can only make it longer.
    const std::int64_t lengths = _mm_cvtsi128_si64(least);
    if (lengths < 0 || static_cast<std::int16_t>(lengths) < int{leading_units}) return false;
    // The bit of 0x100, which no Latin-1 unit has, on top of each lane.
    const bool latin = (lanes(_mm_slli_epi16(all_units, 7)) & 0xAAAA) == 0;
    return latin || !have_ascii_capitals(entries, count);
  }

  // Whether a name of at most two blocks is there as it is written. The second block ends with it,
  // or is the first one once more.
  bool equal(std::u16string_view name) const noexcept {
    const std::ptrdiff_t excess = static_cast<std::ptrdiff_t>(name.size()) - block_units;
    const std::ptrdiff_t behind = excess & ~(excess >> 63);  // spelled so that they are no branches
    const std::ptrdiff_t compared = block_units + (excess & excess >> 63);
    const __m128i last = end_ - at_ >= block_units ? unit_block::load(at_ + behind) : text_;
    const __m128i same =
        _mm_and_si128(_mm_cmpeq_epi16(unit_block::load(name.data()), text_),
                      _mm_cmpeq_epi16(unit_block::load(name.data() + behind), last));
    const std::uint32_t wanted = (1u << 2 * compared) - 1;
    const bool is_text =
        sizeof(Unit) > 1 || excess <= 0 || lanes(_mm_cmpgt_epi16(last, _mm_set1_epi16(0x7F))) == 0;
    return (wanted & ~lanes(same)) == 0 && is_text;
  }

  __m128i text_;  // its first eight units
  const Unit* at_;
  const Unit* end_;
  __m128i counted_;  // the bits of the leading units that count, twice
  __m128i leading_;  // what small() makes of them, twice
};

#endif

}  // namespace

template <typename Unit>
NameMatch match_name(const Unit* start, const Unit* at, const Unit* end, const LocaleRecord& record,
                     const NameList (&lists)[2]) noexcept {
#if defined(__SSE2__)
  __m128i block = _mm_setzero_si128();
  if (static_cast<std::make_unsigned_t<Unit>>(*at) >= 0x80 || !load_block(start, at, end, block)) {
    return undecided;
  }
  const NameSearch<Unit> search(block, at, end);
  for (const NameList list : lists) {
    if (list.count == 0) break;
    const NameMatch match = search.run(record, list);
    if (match.index != NameMatch::none) return match;
  }
  return no_name;
#else
  (void)start, (void)at, (void)end, (void)record, (void)lists;
  return undecided;
#endif
}

template NameMatch match_name(const char16_t*, const char16_t*, const char16_t*,
                              const LocaleRecord&, const NameList (&)[2]) noexcept;
template NameMatch match_name(const char*, const char*, const char*, const LocaleRecord&,
                              const NameList (&)[2]) noexcept;

}  // namespace jwnls
