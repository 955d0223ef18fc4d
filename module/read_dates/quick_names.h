// The quick way to find out which month's or weekday's name a text goes on with. It knows ASCII
// letters' cases only, and leaves everything else undecided.
//
// One function a list length, which calls nothing but what few texts need, at its ends.

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

// A name that may differ from the text in the case of ASCII letters, unit by unit. What is not
// ASCII can only be told when it is equal in UTF-16; what differs is for read_name to find.
template <typename Unit>
[[gnu::noinline]] NameMatch match_spelling(const TextEntry& name, std::int64_t index,
                                           const Unit* text) noexcept {
  for (std::int64_t i = 0; i < name.length; ++i) {
    const char16_t unit = name.units[i];
    const auto other = static_cast<std::make_unsigned_t<Unit>>(text[i]);
    if (unit == other && (sizeof(Unit) > 1 || unit < 0x80)) continue;
    if (unit >= 0x80 || other >= 0x80) return {NameMatch::undecided, 0};
    if (simple_upper_case(unit) != simple_upper_case(other)) return {NameMatch::undecided, 0};
  }
  return {index, name.length};
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

// Whether two ASCII letters or marks at one place, below `length`, differ in more than their case.
[[gnu::always_inline]] inline bool surely_differ(const TextEntry& name, __m128i block,
                                                 std::int64_t length) noexcept {
  const __m128i units = unit_block::load(name.units);
  const __m128i nothing = _mm_setzero_si128();
  const __m128i same =
      _mm_cmpeq_epi16(_mm_and_si128(_mm_xor_si128(units, block), _mm_set1_epi16(~0x20)), nothing);
  const __m128i ascii =
      _mm_cmpeq_epi16(_mm_and_si128(_mm_or_si128(units, block), _mm_set1_epi16(~0x7F)), nothing);
  const std::uint32_t wanted = static_cast<std::uint32_t>((std::uint64_t{1} << 2 * length) - 1);
  return (lanes(_mm_andnot_si128(same, ascii)) & wanted) != 0;
}

// Whether any of the leading units is a letter that others have for their capital: I or S.
[[gnu::noinline]] inline bool has_shared_capital(__m128i block) noexcept {
  const __m128i small = _mm_or_si128(block, _mm_set1_epi16(0x20));
  const __m128i shared =
      _mm_or_si128(unit_block::equal_to(small, 'i'), unit_block::equal_to(small, 's'));
  return (lanes(shared) & ((1u << 2 * leading_units) - 1)) != 0;
}

// One list. The careful form looks at lists with names beyond Latin-1, which the other one hands
// over to it: so that one calls nothing on its way and stays in registers.
template <std::size_t count, bool careful, typename Unit>
[[gnu::noinline]] NameMatch match_listed(const Unit* start, const Unit* at, const Unit* end,
                                         const TextEntry* names) noexcept {
  constexpr NameMatch undecided = {NameMatch::undecided, 0};
  __m128i block = _mm_setzero_si128();
  if (!load_block(start, at, end, block)) return undecided;
  NameSet chosen = 0;
  const Choice choice = LeadingUnits(block).choose<count>(names, chosen);
  if (choice == Choice::none) return undecided;
  if constexpr (!careful) {
    if (choice == Choice::unless_shared) [[unlikely]]
      return match_listed<count, true>(start, at, end, names);
  } else if (has_shared_capital(block) && have_ascii_capitals(names, count)) {
    return undecided;
  }
  for (; chosen != 0; chosen &= chosen - 1) {
    const int index = std::countr_zero(chosen);
    const TextEntry& name = names[index];
    const std::int64_t length = name.length;  // no less than leading_units
    if (length > 2 * block_units) return undecided;
    if (length > end - at) continue;
    if (equal({name.units, static_cast<std::size_t>(length)}, block, at, end)) [[likely]]
      return {index, length};
    if (!surely_differ(name, block, length)) return match_spelling(name, index, at);
  }
  return {NameMatch::none, 0};
}

template <std::size_t count, typename Unit>
[[gnu::always_inline]] inline NameMatch match_lists(const Unit* start, const Unit* at,
                                                    const Unit* end, const LocaleRecord& record,
                                                    const NameList (&lists)[2]) noexcept {
  const TextEntry* names = &list_entry(record, lists[0].offset, 0);
  const NameMatch match = match_listed<count, false>(start, at, end, names);
  if (match.index != NameMatch::none || lists[1].count == 0) return match;
  return match_listed<count, false>(start, at, end, &list_entry(record, lists[1].offset, 0));
}

}  // namespace name_match

/// Looks for the first entry that the text goes on with in the first list, then in the second.
///   start    where the text, or what was read of it, begins: units from here on may be looked at
///   at, end  where the name begins, and the end of the text; not the same
template <typename Unit>
[[gnu::always_inline]] inline NameMatch match_name(const Unit* start, const Unit* at,
                                                   const Unit* end, const LocaleRecord& record,
                                                   const NameList (&lists)[2]) noexcept {
  constexpr std::uint16_t months = 12;
  constexpr std::uint16_t weekdays = 7;
  if (static_cast<std::make_unsigned_t<Unit>>(*at) < 0x80) {
    if (lists[0].count == months) [[likely]]
      return name_match::match_lists<months>(start, at, end, record, lists);
    if (lists[0].count == weekdays)
      return name_match::match_lists<weekdays>(start, at, end, record, lists);
  }
  return {NameMatch::undecided, 0};  // other lists have short names, and few
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
