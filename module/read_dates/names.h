// Names: texts of the record that are matched without regard to case.

#ifndef JWNLS_MODULE_READ_DATES_NAMES_H_
#define JWNLS_MODULE_READ_DATES_NAMES_H_

#include <cstdint>
#include <string_view>

#include "abi/locale_record.h"
#include "module/text/same_text.h"
#include "module/text/text_cursor.h"

namespace jwnls {

/// Reads `name`; false, and nothing read, when the text does not go on with it.
template <typename Unit>
bool read_text(TextCursor<Unit>& input, std::u16string_view name) noexcept {
  TextCursor<Unit> ahead = input;
  for (const char16_t unit : name) {
    if (ahead.at_end() || !same_unit_nocase(unit, ahead.next())) return false;
  }
  input = ahead;
  return true;
}

/// A run of entries in the record.
struct NameList {
  std::uint16_t offset;  // bytes from the start of the record
  std::uint16_t count;   // 0: no list
};

/// Reads the first entry, in list order, that the text goes on with: not the longest. An empty
/// entry matches and reads nothing. Returns its index, or -1.
template <typename Unit>
std::int32_t read_name(TextCursor<Unit>& input, const LocaleRecord& record,
                       NameList list) noexcept {
  TextCursor<Unit> after_first = input;
  const bool ended = input.at_end();
  const char16_t first = ended ? u'\0' : simple_upper_case(after_first.next());
  for (std::uint16_t i = 0; i < list.count; ++i) {
    const std::u16string_view name = text_of(list_entry(record, list.offset, i));
    if (name.empty()) return i;
    // Nearly every name is rejected on its first unit.
    if (ended || simple_upper_case(name.front()) != first) continue;
    TextCursor<Unit> rest = after_first;
    if (!read_text(rest, name.substr(1))) continue;
    input = rest;
    return i;
  }
  return -1;
}

}  // namespace jwnls

#endif  // JWNLS_MODULE_READ_DATES_NAMES_H_
