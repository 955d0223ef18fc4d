// The locale database's tables: what is generated at build time, and how a record is put together
// from it.
//
// A record is a sequence of runs: one text, or a list of them in consecutive entries. The lists,
// and the sections of the block in record area 9, are pieces of one array of bytes. A locale's
// pieces stand together, its row behind them: what a first look costs is new pages of the file.
// Equal pieces are stored once where they are large or near.
//
//   piece   = list | section                 of words the low byte stands first
//   list    = text {text}                    as many as the run has entries
//   text    = size:u8 units                  narrow_text is set in the size: each unit is one byte,
//                                            else two
//   section = size:u16 bytes
//   row     = decimal_symbol:u16 grouping_symbol:u16 currency_digits:u8 first_weekday:u8
//             minimal_days:u8 {place:u24}    of a list for each run, of a section for each number

#ifndef JWNLS_EXTENSIONS_LOCALE_DATABASE_LOCALE_TABLES_H_
#define JWNLS_EXTENSIONS_LOCALE_DATABASE_LOCALE_TABLES_H_

#include <cstddef>
#include <cstdint>
#include <iterator>
#include <string_view>
#include <type_traits>

#include "abi/layout_data.h"
#include "abi/locale_record.h"

namespace jwnls::ldb {

/// A canonical locale name, packed so that comparing two takes two comparisons of integers.
struct LocaleKey {
  static constexpr std::size_t max_name_length = 16;

  std::uint64_t high;  // the name's first eight characters, the first one topmost
  std::uint64_t low;   // the rest, zeros behind it

  bool operator==(const LocaleKey&) const = default;
  constexpr bool operator<(const LocaleKey& other) const noexcept {
    return high != other.high ? high < other.high : low < other.low;
  }
};

/// The key of a name of at most max_name_length units. A unit that no name has, zero among them,
/// gives the key that no locale has.
template <typename Unit>
constexpr LocaleKey key_of(std::basic_string_view<Unit> name) noexcept {
  std::uint64_t halves[2] = {};
  for (std::size_t i = 0; i < LocaleKey::max_name_length; ++i) {
    std::uint32_t unit = 0;
    if (i < name.size()) {
      unit = static_cast<std::make_unsigned_t<Unit>>(name[i]);
      if (unit == 0 || unit > 0x7F) return {};
    }
    halves[i / 8] = halves[i / 8] << 8 | unit;
  }
  return {halves[0], halves[1]};
}

/// Consecutive text entries of a record.
struct Run {
  std::uint16_t offset;  // bytes from the record's start
  std::uint16_t count;   // entries
};

/// Every text of a record, in the order in which a locale's row names its lists.
inline constexpr Run runs[] = {
    {offsetof(LocaleRecord, full_weekdays), 7},
    {offsetof(LocaleRecord, short_weekdays), 7},
    {offsetof(LocaleRecord, full_months), 12},
    {offsetof(LocaleRecord, short_months), 12},
    {offsetof(LocaleRecord, date_patterns), 6},  // and time, datetime and style-0 pattern
    {offsetof(LocaleRecord, before_noon), 2},    // and after_noon
    {offsetof(LocaleRecord, full_quarters), 4},
    {offsetof(LocaleRecord, short_quarters), 4},
    {offsetof(LocaleRecord, language_tag), 1},
    {offsetof(LocaleRecord, grouping_length), 1},
    {offsetof(LocaleRecord, language), 3},  // and script and region
    {offsetof(LocaleRecord, currency_symbol_length), 1},
    {offsetof(LocaleRecord, currency_code), 1},
    {offsetof(LocaleRecord, own_name), 1},
    {offsetof(LocaleRecord, english_name), 2},  // and parent_name
};
inline constexpr std::size_t run_count = std::size(runs);

inline constexpr std::uint8_t narrow_text = 0x80;
inline constexpr std::size_t row_head = 7;     // bytes in front of the places
inline constexpr std::size_t place_bytes = 3;  // of each
inline constexpr std::size_t row_places = run_count + jw_layout_sections;

// ---- Generated.

extern const std::uint32_t locale_count;
extern const LocaleKey locale_keys[];        // sorted
extern const std::uint32_t locale_places[];  // in the order of the keys: where rows begin
extern const std::uint8_t pieces[];          // and rows, end to end

}  // namespace jwnls::ldb

#endif  // JWNLS_EXTENSIONS_LOCALE_DATABASE_LOCALE_TABLES_H_
