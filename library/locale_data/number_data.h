// What a locale says about its numbers: from its record and, where the database has more, from
// that. The only place that layouts of numbers ask.

#ifndef JWNLS_LIBRARY_LOCALE_DATA_NUMBER_DATA_H_
#define JWNLS_LIBRARY_LOCALE_DATA_NUMBER_DATA_H_

#include <cstdint>
#include <string_view>

#include "abi/locale_record.h"

namespace jwnls::library {

/// Digits of the last group, and of those before it: 3 and 2 in "12,34,567". 0: no groups.
struct GroupSizes {
  std::uint8_t primary = 0;
  std::uint8_t secondary = 0;

  bool operator==(const GroupSizes&) const = default;
};

struct NumberData {
  char32_t decimal = U'.';
  char32_t group = 0;        // 0: none
  char32_t exact_group = 0;  // where the record has a plainer blank: U+202F
  GroupSizes sizes;          // of numbers
  GroupSizes amount_sizes;   // of amounts
  int minimum_grouping = 1;  // digits that the first group has at least, or nothing is grouped
  char32_t zero = U'0';      // the first of the locale's own digits
  std::u16string_view minus = u"-";
  std::u16string_view plus = u"+";
  std::u16string_view infinity = u"\u221E";
  bool triangle_minus = false;  // U+25B3 and U+25B2 are minus signs
};

/// The data of the locale that a record was made for; valid as long as the record.
[[nodiscard]] NumberData number_data(const LocaleRecord& record) noexcept;

}  // namespace jwnls::library

#endif  // JWNLS_LIBRARY_LOCALE_DATA_NUMBER_DATA_H_
