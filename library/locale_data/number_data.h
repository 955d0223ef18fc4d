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
struct AffixTexts {
  std::string_view prefix, suffix;
};
/// The same, on its own.
struct Affixes {
  std::string prefix, suffix;

  Affixes() = default;
  explicit Affixes(const AffixTexts& texts) : prefix(texts.prefix), suffix(texts.suffix) {}
  [[nodiscard]] AffixTexts texts() const noexcept { return {prefix, suffix}; }
};

/// How one kind of number is written.
struct KindData {
  GroupSizes sizes;
  AffixTexts positive, negative;
};

/// How numbers are written in one set of digits. Texts are UTF-8 of at most longest_symbol bytes.
struct NumberSymbols {
  std::string_view digits = "0";  // the zero that the others follow in Unicode, or all ten
  std::string_view decimal = ".";
  std::string_view group = ",";
  std::string_view money_decimal = ".";
  std::string_view money_group = ",";
  std::string_view minus = "-";
  std::string_view plus = "+";
  std::string_view percent = "%";
  std::string_view per_mille = "\u2030";
  std::string_view infinity = "\u221E";
  std::string_view nan = "NaN";
  KindData kinds[jw_layout_kinds];
};
inline constexpr std::size_t longest_symbol = 32;
inline constexpr std::size_t longest_currency_symbol = 64;

/// A character of the record, in UTF-8.
class RecordSymbol {
 public:
  RecordSymbol() = default;
  explicit RecordSymbol(char16_t unit) noexcept;
  [[nodiscard]] std::string_view text() const noexcept { return {bytes_, size_}; }

 private:
  char bytes_[3] = {};
  std::uint8_t size_ = 0;
};

/// Texts stand in the record or in the object itself, which therefore is not copied.
struct NumberData {
  NumberData() = default;
  explicit NumberData(const LocaleRecord& record) noexcept;
  NumberData(const NumberData&) = delete;
  NumberData& operator=(const NumberData&) = delete;

  bool from_record = false;  // the database has no layout data
  unsigned minimum_grouping =
      1;                // digits in front of the first group symbol, or no groups; 0: none
  NumberSymbols latin;  // with the digits 0 to 9
  NumberSymbols own;    // with the locale's own; the same where it has none
  // Of the record, which the services go by.
  GroupSizes record_sizes;
  RecordSymbol record_decimal, record_group;
  bool triangle_minus = false;  // U+25B3 and U+25B2 are minus signs
};

/// The four texts of affixes from a section; false where they are none.
[[nodiscard]] bool read_affixes(SectionReader& in, AffixTexts& positive,
                                AffixTexts& negative) noexcept;

/// What the bytes of a section say, into `data`; false where they are not what they must be.
[[nodiscard]] bool read_number_section(std::string_view section, NumberData& data) noexcept;

}  // namespace jwnls::library

#endif  // JWNLS_LIBRARY_LOCALE_DATA_NUMBER_DATA_H_
