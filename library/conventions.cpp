// A locale's conventions, item by item.

#include <cstdint>
#include <cstring>
#include <string_view>

#include "include/jwnls/jwnls.h"
#include "library/layouts/layout.h"
#include "library/texts/give_text.h"
#include "library/texts/utf8.h"

namespace {

using jwnls::LocaleRecord;
using jwnls::text_of;
using jwnls::TextEntry;

int give_units(std::u16string_view units, char* out, size_t room, size_t* length) {
  char text[3 * jwnls::currency_symbol_capacity];
  const size_t bytes = jwnls::library::to_utf8(units, text, sizeof text);
  return jwnls::library::give_text({text, bytes}, out, room, length);
}

// Where the items that are lists of texts stand.
struct List {
  const TextEntry* first;
  size_t count;
};

template <size_t count>
List list(const TextEntry (&entries)[count]) {
  return {entries, count};
}

List list_of(const LocaleRecord& record, int item) {
  switch (item) {
    case JWNLS_MONTH:
      return list(record.full_months);
    case JWNLS_SHORT_MONTH:
      return list(record.short_months);
    case JWNLS_WEEKDAY:
      return list(record.full_weekdays);
    case JWNLS_SHORT_WEEKDAY:
      return list(record.short_weekdays);
    case JWNLS_DAY_HALF:
      return {&record.before_noon, 2};
    case JWNLS_DATE_PATTERN:
      return list(record.date_patterns);
    case JWNLS_TIME_PATTERN:
      return {&record.time_pattern, 1};
    case JWNLS_DATETIME_PATTERN:
      return {&record.datetime_pattern, 1};
    default:
      return {nullptr, 0};
  }
}

// A number of one digit; nothing where the record says another.
int give_digit(std::int64_t number, char* out, size_t room, size_t* length) {
  if (number < 0 || number > 9) return JWNLS_UNKNOWN;
  const char digit = static_cast<char>('0' + number);
  return jwnls::library::give_text({&digit, 1}, out, room, length);
}

std::u16string_view symbol(const char16_t& unit) { return {&unit, unit == 0 ? 0U : 1U}; }

}  // namespace

extern "C" int jwnls_convention(const jwnls_layout* layout, int item, size_t index, char* out,
                                size_t room, size_t* length) {
  const LocaleRecord& record = *layout->locale->record;
  *length = 0;
  const List entries = list_of(record, item);
  if (index < entries.count) return give_units(text_of(entries.first[index]), out, room, length);
  if (index > 0) return JWNLS_UNKNOWN;
  switch (item) {
    case JWNLS_DECIMAL_SYMBOL:
      return give_units(symbol(record.decimal_symbol), out, room, length);
    case JWNLS_GROUP_SYMBOL:
      return give_units(symbol(record.grouping_symbol), out, room, length);
    case JWNLS_GROUP_SIZES:
      return give_units(jwnls::grouping_of(record), out, room, length);
    case JWNLS_CURRENCY_SYMBOL:
      return give_units(jwnls::currency_symbol_of(record), out, room, length);
    case JWNLS_CURRENCY_CODE:
      return give_units(text_of(record.currency_code), out, room, length);
    case JWNLS_CURRENCY_DECIMALS:
      return give_digit(record.currency_decimals, out, room, length);
    case JWNLS_FIRST_WEEKDAY:  // the record counts from 1
      return give_digit(std::int64_t{record.first_weekday} - 1, out, room, length);
    default:
      return JWNLS_UNKNOWN;
  }
}
