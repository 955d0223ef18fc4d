// The locale database's tables: what is generated at build time, and how a record is put together
// from it.
//
// A record is a sequence of runs: one text, or a list of them in consecutive entries. A locale's
// row names a list for each run. Equal texts, and equal lists of them, are stored once; so are the
// sections of the block in record area 9, of which a row names one for each place.

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

struct LocaleRow {
  std::uint16_t lists[run_count];  // where each run's list of texts begins in list_texts
  std::uint16_t sections[jw_layout_sections];  // of layout data, by number; an empty one is none
  char16_t decimal_symbol;
  char16_t grouping_symbol;
  std::uint8_t currency_digits;
  std::uint8_t first_weekday;
  std::uint8_t minimal_days;
};

// ---- Generated.

extern const std::uint32_t locale_count;
extern const LocaleKey locale_keys[];     // sorted
extern const LocaleRow locale_rows[];     // in the order of the keys
extern const std::uint16_t list_texts[];  // lists of text numbers, end to end
extern const std::uint32_t
    text_offsets[];             // where each text begins in `texts`; one more at the end
extern const char16_t texts[];  // text_entry_capacity units more at the end
extern const std::uint32_t section_offsets[];  // where each section begins; one more at the end
extern const std::uint8_t section_bytes[];     // sections, end to end

}  // namespace jwnls::ldb

#endif  // JWNLS_EXTENSIONS_LOCALE_DATABASE_LOCALE_TABLES_H_
