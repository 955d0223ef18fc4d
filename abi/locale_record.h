// The locale data record: everything that one locale's conventions amount to, in 40,248 bytes.
//
// The making of a handle allocates it from the NLS context's pool and writes the locale's name at
// its head; the locale database's `fill` writes every byte from 128 on; from then on it is only
// read, by any thread, and goes with its handle. A host reaches it through word 92 of a handle, or
// area by area through service slot 45.
//
// Its layout is shared with the database, so every offset is pinned here. Lengths in it come from
// outside: the services bound them, and so should every other reader (in C++: text_of()).
// docs/locale-record.md says how jwnlsldb fills it. Members that no service reads are marked "-".

#ifndef JWNLS_ABI_LOCALE_RECORD_H_
#define JWNLS_ABI_LOCALE_RECORD_H_

#include "abi/language.h"

#ifdef __cplusplus
#include <string_view>
#endif

#define JW_TEXT_ENTRY_CAPACITY 60        // units
#define JW_CURRENCY_SYMBOL_CAPACITY 128  // units
#define JW_NO_BREAK_SPACE 160            // as grouping symbol

/// A pattern, name, designator or symbol text: a length and room for 60 UTF-16 units. Not
/// terminated. A length below 1 means empty, one above 60 counts as 60.
typedef struct jw_text_entry {
  int64_t length;  // units in use
  char16_t units[60];
} jw_text_entry;

/// In patterns "%" introduces a directive: "%", perhaps "?" or "#", and a letter. Every other unit
/// stands for itself.
typedef struct jw_locale_record {
  jw_text_entry locale_name;        // area 0: the canonical name; written before the database fills
  uint8_t area_2[96];               // area 2: - zeros
  jw_text_entry full_weekdays[7];   // area 5: Sunday first; in the form that stands inside a date
  jw_text_entry short_weekdays[7];  // Sunday first
  jw_text_entry full_months[12];    // January first; in the form that stands inside a date
  jw_text_entry short_months[12];   // January first
  jw_text_entry date_patterns[3];   // "date pattern 1" to 3: short and numeric, medium, long
  jw_text_entry time_pattern;       // time formatting: the time of day with seconds
  jw_text_entry datetime_pattern;   // datetime formatting, every style but 0; "time pattern 1"
  jw_text_entry style_0_pattern;    // datetime formatting, style 0; "time pattern 2"
  jw_text_entry before_noon;        // designator of the hours below 12
  jw_text_entry after_noon;         // designator of the hours from 12 on
  uint8_t unread_6112[776];         // - zeros
  jw_text_entry full_quarters[4];   // read on input
  jw_text_entry short_quarters[4];  // read on input
  jw_text_entry language_tag;       // area 4: - the BCP 47 tag, "zh-Hant-TW"
  int64_t grouping_length;          // units of the grouping pattern; below 1 means none
  char16_t grouping_units[60];      // group sizes from the point leftward: "3", "3;2"
  char16_t decimal_symbol;          //
  char16_t grouping_symbol;         // JW_NO_BREAK_SPACE is a valid value
  uint8_t unread_8172[4];           // - zeros
  jw_text_entry language;           // area 3: - "zh"
  jw_text_entry script;             // - "Hant"; the likely one where the name has none
  jw_text_entry region;             // - "TW"; likewise
  uint64_t currency_symbol_length;  // units; above 128 counts as 128
  char16_t currency_symbol[128];    // a symbol that ends in a letter has a no-break space behind it
  jw_text_entry currency_code;      // area 6: - ISO 4217, "EUR"; "XXX" where there is none
  int64_t currency_decimals;        // - of the currency's minor unit
  jw_text_entry own_name;           // area 1: - the locale's name in its own language
  int32_t first_weekday;            // area 7: - of the week; 1 is Sunday
  int32_t first_week_days;          // - how many days of a new year its first week has at least
  jw_text_entry english_name;       // area 8: - the locale's
  jw_text_entry parent_name;        // - the locale that it inherits from; empty: none
  uint8_t unread_9352[272];         // - zeros
  uint8_t area_9[30624];            // area 9: - see layout_data.h
} jw_locale_record;

/// The areas that service slot 45 hands out, by selector.
enum jw_record_area {
  JW_AREA_RECORD = 0,
  JW_AREA_OWN_NAME = 1,
  JW_AREA_2 = 2,
  JW_AREA_LANGUAGE = 3,  // and script and region
  JW_AREA_LANGUAGE_TAG = 4,
  JW_AREA_WEEKDAYS = 5,     // and what follows them
  JW_AREA_CURRENCY = 6,     // code and decimals
  JW_AREA_WEEK = 7,         // first weekday and days of the first week
  JW_AREA_OTHER_NAMES = 8,  // English name and parent
  JW_AREA_9 = 9
};

JW_SIZE_IS(jw_text_entry, 128);
JW_AT_OFFSET(jw_text_entry, units, 8);
JW_SIZE_IS(jw_locale_record, 40248);
JW_AT_OFFSET(jw_locale_record, area_2, 128);
JW_AT_OFFSET(jw_locale_record, full_weekdays, 224);
JW_AT_OFFSET(jw_locale_record, short_weekdays, 1120);
JW_AT_OFFSET(jw_locale_record, full_months, 2016);
JW_AT_OFFSET(jw_locale_record, short_months, 3552);
JW_AT_OFFSET(jw_locale_record, date_patterns, 5088);
JW_AT_OFFSET(jw_locale_record, time_pattern, 5472);
JW_AT_OFFSET(jw_locale_record, datetime_pattern, 5600);
JW_AT_OFFSET(jw_locale_record, style_0_pattern, 5728);
JW_AT_OFFSET(jw_locale_record, before_noon, 5856);
JW_AT_OFFSET(jw_locale_record, after_noon, 5984);
JW_AT_OFFSET(jw_locale_record, unread_6112, 6112);
JW_AT_OFFSET(jw_locale_record, full_quarters, 6888);
JW_AT_OFFSET(jw_locale_record, short_quarters, 7400);
JW_AT_OFFSET(jw_locale_record, language_tag, 7912);
JW_AT_OFFSET(jw_locale_record, grouping_length, 8040);
JW_AT_OFFSET(jw_locale_record, grouping_units, 8048);
JW_AT_OFFSET(jw_locale_record, decimal_symbol, 8168);
JW_AT_OFFSET(jw_locale_record, grouping_symbol, 8170);
JW_AT_OFFSET(jw_locale_record, language, 8176);
JW_AT_OFFSET(jw_locale_record, script, 8304);
JW_AT_OFFSET(jw_locale_record, region, 8432);
JW_AT_OFFSET(jw_locale_record, currency_symbol_length, 8560);
JW_AT_OFFSET(jw_locale_record, currency_symbol, 8568);
JW_AT_OFFSET(jw_locale_record, currency_code, 8824);
JW_AT_OFFSET(jw_locale_record, currency_decimals, 8952);
JW_AT_OFFSET(jw_locale_record, own_name, 8960);
JW_AT_OFFSET(jw_locale_record, first_weekday, 9088);
JW_AT_OFFSET(jw_locale_record, first_week_days, 9092);
JW_AT_OFFSET(jw_locale_record, english_name, 9096);
JW_AT_OFFSET(jw_locale_record, parent_name, 9224);
JW_AT_OFFSET(jw_locale_record, area_9, 9624);

#ifdef __cplusplus
namespace jwnls {

using TextEntry = ::jw_text_entry;
using LocaleRecord = ::jw_locale_record;

static_assert(std::is_standard_layout_v<LocaleRecord> &&
              std::is_trivially_copyable_v<LocaleRecord>);

inline constexpr std::int64_t text_entry_capacity = JW_TEXT_ENTRY_CAPACITY;
inline constexpr std::int64_t currency_symbol_capacity = JW_CURRENCY_SYMBOL_CAPACITY;

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
#endif

#endif  // JWNLS_ABI_LOCALE_RECORD_H_
