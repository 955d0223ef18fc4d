// The quick way to find out which month's or weekday's name a text goes on with. It knows ASCII
// letters' cases only, and leaves everything else undecided.
//
// All of it is inline: a call costs more than a tenth of what is done here.

#ifndef JWNLS_MODULE_READ_DATES_QUICK_NAMES_H_
#define JWNLS_MODULE_READ_DATES_QUICK_NAMES_H_

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>
#include <type_traits>

#include "abi/locale_record.h"
#include "module/read_dates/name_filter.h"
#include "module/read_dates/names.h"

namespace jwnls {

struct NameMatch {
  std::int64_t index;  // in its list, or one of those below
  std::int64_t units;  // of the name, when there is one

  static constexpr std::int64_t none = -1;       // no name of either list
  static constexpr std::int64_t undecided = -2;  // only read_name can tell
};

#if defined(__SSE2__)

namespace name_match {

using unit_block::lanes;
inline constexpr std::ptrdiff_t block_units = unit_block::units;

// The eight units from `at` on, zeros behind the end of the text; false when they cannot be loaded
// or, in UTF-8, are not ASCII.
inline bool load_block(const char16_t* start, const char16_t* at, const char16_t* end,
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
inline bool load_block(const char* start, const char* at, const char* end,
                       __m128i& block) noexcept {
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

// Whether the text from `at` on, of which `block` is the beginning, is a name of at most two blocks
// as it is written. The second block ends with the name, or is the first one once more.
template <typename Unit>
[[gnu::always_inline]] inline bool equal(std::u16string_view name, __m128i block, const Unit* at,
                                         const Unit* end) noexcept {
  const std::ptrdiff_t excess = static_cast<std::ptrdiff_t>(name.size()) - block_units;
  const std::ptrdiff_t behind = excess & ~(excess >> 63);  // spelled so that they are no branches
  const std::ptrdiff_t compared = block_units + (excess & excess >> 63);
  const __m128i last = end - at >= block_units ? unit_block::load(at + behind) : block;
  const __m128i same = _mm_and_si128(_mm_cmpeq_epi16(unit_block::load(name.data()), block),
                                     _mm_cmpeq_epi16(unit_block::load(name.data() + behind), last));
  const std::uint32_t wanted = (1u << 2 * compared) - 1;
  const bool is_text =
      sizeof(Unit) > 1 || excess <= 0 || lanes(_mm_cmpgt_epi16(last, _mm_set1_epi16(0x7F))) == 0;
  return (wanted & ~lanes(same)) == 0 && is_text;
}

inline constexpr std::size_t months = 12;
inline constexpr std::size_t weekdays = 7;

// Apart, so that nothing of it has a place in memory where months are read.
struct Choice {
  bool known;
  NameSet names;
};
[[gnu::noinline]] inline Choice choose_weekdays(__m128i block, const TextEntry* names) noexcept {
  Choice choice = {false, 0};
  choice.known = LeadingUnits(block).choose<weekdays>(names, choice.names);
  return choice;
}

}  // namespace name_match

/// Looks for the first entry that the text goes on with in the first list, then in the second.
///   start    where the text, or what was read of it, begins: units from here on may be looked at
///   at, end  where the name begins, and the end of the text; not the same
template <typename Unit>
[[gnu::always_inline]] inline NameMatch match_name(const Unit* start, const Unit* at,
                                                   const Unit* end, const LocaleRecord& record,
                                                   const NameList (&lists)[2]) noexcept {
  using name_match::Verdict;
  if (lists[0].count < name_match::weekdays) return {NameMatch::undecided, 0};  // short names, few
  __m128i block = _mm_setzero_si128();
  if (static_cast<std::make_unsigned_t<Unit>>(*at) >= 0x80 ||
      !name_match::load_block(start, at, end, block)) {
    return {NameMatch::undecided, 0};
  }
  const LeadingUnits leading(block);
  for (const NameList& list : lists) {
    if (list.count == 0) break;
    const TextEntry* names = &list_entry(record, list.offset, 0);
    NameSet chosen = 0;
    bool known = false;
    if (list.count == name_match::months) [[likely]] {
      known = leading.choose<name_match::months>(names, chosen);
    } else {
      const name_match::Choice choice = name_match::choose_weekdays(block, names);
      known = choice.known;
      chosen = choice.names;
    }
    if (!known) return {NameMatch::undecided, 0};
    for (; chosen != 0; chosen &= chosen - 1) {
      const int index = std::countr_zero(chosen);
      const std::int64_t length = names[index].length;  // no less than leading_units
      if (length > 2 * name_match::block_units) return {NameMatch::undecided, 0};
      if (length > end - at) continue;
      const std::u16string_view name(names[index].units, static_cast<std::size_t>(length));
      if (name_match::equal(name, block, at, end)) [[likely]]
        return {index, length};
      const Verdict verdict = name_match::compare_units(name, at);
      if (verdict == Verdict::same) return {index, length};
      if (verdict == Verdict::undecided) return {NameMatch::undecided, 0};
    }
  }
  return {NameMatch::none, 0};
}

#else

template <typename Unit>
NameMatch match_name(const Unit*, const Unit*, const Unit*, const LocaleRecord&,
                     const NameList (&)[2]) noexcept {
  return {NameMatch::undecided, 0};
}

#endif

}  // namespace jwnls

#endif  // JWNLS_MODULE_READ_DATES_QUICK_NAMES_H_
