// What a locale says about its numbers: from the layout data of its database, or from its record
// where there is none. The only place that layouts of numbers ask.

#ifndef JWNLS_LIBRARY_LOCALE_DATA_NUMBER_DATA_H_
#define JWNLS_LIBRARY_LOCALE_DATA_NUMBER_DATA_H_

#include <cstdint>
#include <string>
#include <string_view>

#include "abi/layout_data.h"
#include "abi/locale_record.h"
#include "library/locale_data/layout_block.h"

namespace jwnls::library {

/// Digits of the last group, and of those before it: 3 and 2 in "12,34,567". 0: no groups.
struct GroupSizes {
  std::uint8_t primary = 0;
  std::uint8_t secondary = 0;

  bool operator==(const GroupSizes&) const = default;
};

/// What stands around the digits; U+00A4 stands for the currency's symbol, at most once.
struct Affixes {
  std::string prefix, suffix;
};

/// How one kind of number is written.
struct KindData {
  GroupSizes sizes;
  Affixes positive, negative;
};

/// How numbers are written in one set of digits. Texts are UTF-8 of at most longest_symbol bytes.
struct NumberSymbols {
  std::string digits = "0";  // the zero that the others follow in Unicode, or all ten
  std::string decimal = ".";
  std::string group = ",";
  std::string money_decimal = ".";
  std::string money_group = ",";
  std::string minus = "-";
  std::string plus = "+";
  std::string percent = "%";
  std::string per_mille = "\u2030";
  std::string infinity = "\u221E";
  std::string nan = "NaN";
  KindData kinds[jw_layout_kinds];
};
inline constexpr std::size_t longest_symbol = 32;
inline constexpr std::size_t longest_currency_symbol = 64;

struct NumberData {
  bool from_record = false;  // the database has no layout data
  unsigned minimum_grouping =
      1;                // digits in front of the first group symbol, or no groups; 0: none
  NumberSymbols latin;  // with the digits 0 to 9
  NumberSymbols own;    // with the locale's own; the same where it has none
  // Of the record, which the services go by.
  GroupSizes record_sizes;
  std::string record_decimal, record_group;
  bool triangle_minus = false;  // U+25B3 and U+25B2 are minus signs
};

/// Affixes as they stand in a section.
struct AffixTexts {
  std::string_view prefix, suffix;

  explicit operator Affixes() const { return {std::string(prefix), std::string(suffix)}; }
};

/// The four texts of affixes from a section; false where they are none.
[[nodiscard]] bool read_affixes(SectionReader& in, AffixTexts& positive, AffixTexts& negative);

/// The data of the locale that a record was made for. Throws bad_alloc.
[[nodiscard]] NumberData number_data(const LocaleRecord& record);

/// The same of the bytes of a section, into `data`; false where they are not what they must be.
[[nodiscard]] bool read_number_section(std::string_view section, NumberData& data);

}  // namespace jwnls::library

#endif  // JWNLS_LIBRARY_LOCALE_DATA_NUMBER_DATA_H_
