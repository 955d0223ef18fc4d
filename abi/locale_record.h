// The locale data record: everything that one locale's conventions amount to, in 40,248 bytes.
//
// The locale database extension fills it once, while its handle is made; from then on it is only
// read. Its layout is shared with that extension, so every offset is pinned here. Lengths in it
// come from outside and are not to be trusted: read texts through text_of(), which bounds them.

#ifndef JWNLS_ABI_LOCALE_RECORD_H_
#define JWNLS_ABI_LOCALE_RECORD_H_

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <type_traits>

namespace jwnls {

inline constexpr std::int64_t text_entry_capacity = 60;        // units
inline constexpr std::int64_t currency_symbol_capacity = 128;  // units

/// A pattern, name, designator or symbol text: a length and room for 60 UTF-16 units.
struct TextEntry {
  std::int64_t length;  // units in use; below 1 means empty; not to be trusted: read text_of()
  char16_t units[60];
};

struct LocaleRecord {
  TextEntry locale_name;                 // written by the handle's creation, before the database
  std::uint8_t area_2[96];               // record area 2; no service reads it
  TextEntry full_weekdays[7];            // Sunday first
  TextEntry short_weekdays[7];           // Sunday first
  TextEntry full_months[12];             // January first
  TextEntry short_months[12];            // January first
  TextEntry date_patterns[3];            // "date pattern 1" to "date pattern 3"
  TextEntry time_pattern;                // time formatting
  TextEntry datetime_pattern;            // datetime formatting, every style but 0; "time pattern 1"
  TextEntry style_0_pattern;             // datetime formatting, style 0; "time pattern 2"
  TextEntry before_noon;                 // designator of the hours below 12
  TextEntry after_noon;                  // designator of the hours from 12 on
  std::uint8_t unread_6112[776];         // filled by the database, read by no service
  TextEntry full_quarters[4];            //
  TextEntry short_quarters[4];           //
  TextEntry area_4;                      // record area 4; no service reads it
  std::int64_t grouping_length;          // units of the grouping pattern; below 1 means none
  char16_t grouping_units[60];           //
  char16_t decimal_symbol;               //
  char16_t grouping_symbol;              // 160, the no-break space, is a valid value
  std::uint8_t unread_8172[4];           //
  std::uint8_t area_3[384];              // record area 3; no service reads it
  std::uint64_t currency_symbol_length;  // units
  char16_t currency_symbol[128];         //
  std::uint8_t area_6[136];              // record areas 6, 1, 7, 8 and 9; no service reads them
  TextEntry area_1;                      //
  std::uint8_t area_7[8];                //
  std::uint8_t area_8[528];              //
  std::uint8_t area_9[30624];            //
};

static_assert(sizeof(TextEntry) == 128 && std::is_standard_layout_v<TextEntry>);
static_assert(sizeof(LocaleRecord) == 40248 && std::is_standard_layout_v<LocaleRecord> &&
              std::is_trivially_copyable_v<LocaleRecord>);
static_assert(offsetof(LocaleRecord, area_2) == 128);
static_assert(offsetof(LocaleRecord, full_weekdays) == 224);
static_assert(offsetof(LocaleRecord, short_weekdays) == 1120);
static_assert(offsetof(LocaleRecord, full_months) == 2016);
static_assert(offsetof(LocaleRecord, short_months) == 3552);
static_assert(offsetof(LocaleRecord, date_patterns) == 5088);
static_assert(offsetof(LocaleRecord, time_pattern) == 5472);
static_assert(offsetof(LocaleRecord, datetime_pattern) == 5600);
static_assert(offsetof(LocaleRecord, style_0_pattern) == 5728);
static_assert(offsetof(LocaleRecord, before_noon) == 5856);
static_assert(offsetof(LocaleRecord, after_noon) == 5984);
static_assert(offsetof(LocaleRecord, full_quarters) == 6888);
static_assert(offsetof(LocaleRecord, short_quarters) == 7400);
static_assert(offsetof(LocaleRecord, area_4) == 7912);
static_assert(offsetof(LocaleRecord, grouping_length) == 8040);
static_assert(offsetof(LocaleRecord, grouping_units) == 8048);
static_assert(offsetof(LocaleRecord, decimal_symbol) == 8168);
static_assert(offsetof(LocaleRecord, grouping_symbol) == 8170);
static_assert(offsetof(LocaleRecord, area_3) == 8176);
static_assert(offsetof(LocaleRecord, currency_symbol_length) == 8560);
static_assert(offsetof(LocaleRecord, currency_symbol) == 8568);
static_assert(offsetof(LocaleRecord, area_6) == 8824);
static_assert(offsetof(LocaleRecord, area_1) == 8960);
static_assert(offsetof(LocaleRecord, area_7) == 9088);
static_assert(offsetof(LocaleRecord, area_8) == 9096);
static_assert(offsetof(LocaleRecord, area_9) == 9624);

/// A length out of a record, brought into 0 to `bound` units.
constexpr std::size_t bounded_length(std::int64_t length, std::int64_t bound) noexcept {
  return static_cast<std::size_t>(length < 0 ? 0 : length > bound ? bound : length);
}

/// The text of an entry, whatever its length claims: at most its 60 units.
constexpr std::u16string_view text_of(const TextEntry& entry) noexcept {
  return {entry.units, bounded_length(entry.length, text_entry_capacity)};
}

/// The entry at `index` of the name list that begins `list_offset` bytes into the record.
inline const TextEntry& list_entry(const LocaleRecord& record, std::size_t list_offset,
                                   std::size_t index) noexcept {
  const auto* list = reinterpret_cast<const std::byte*>(&record) + list_offset;
  return reinterpret_cast<const TextEntry*>(list)[index];
}

/// The grouping pattern, at most its 60 units.
constexpr std::u16string_view grouping_of(const LocaleRecord& record) noexcept {
  return {record.grouping_units, bounded_length(record.grouping_length, text_entry_capacity)};
}

/// The currency symbol, at most its 128 units.
constexpr std::u16string_view currency_symbol_of(const LocaleRecord& record) noexcept {
  const std::uint64_t length = record.currency_symbol_length;
  return {record.currency_symbol,
          length < currency_symbol_capacity ? length : std::size_t{currency_symbol_capacity}};
}

}  // namespace jwnls

#endif  // JWNLS_ABI_LOCALE_RECORD_H_
