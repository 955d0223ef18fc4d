// What layouts know of a locale beyond the record's fields: the sections of the block in record
// area 9 (abi/layout_data.h), as bytes.

#ifndef JWNLS_GENERATORS_LOCALES_LAYOUT_DATA_H_
#define JWNLS_GENERATORS_LOCALES_LAYOUT_DATA_H_

#include <array>
#include <cstddef>
#include <string>
#include <string_view>

#include "abi/layout_data.h"

namespace jwnls::generator {

/// Bytes of a section, put together from front to back.
class SectionWriter {
 public:
  void byte(std::size_t value);
  void word(std::size_t value);  // 16 bits, the low byte first
  /// UTF-8 of a text behind its length, one byte. Throws std::runtime_error above `most` bytes.
  void text(std::u16string_view text, std::size_t most = 255);
  void bytes(std::string_view bytes) { bytes_ += bytes; }

  [[nodiscard]] const std::string& all() const { return bytes_; }

 private:
  std::string bytes_;
};

/// The signs of a locale, which stand for themselves in a pattern's affixes.
struct Signs {
  std::u16string minus, plus, percent, per_mille;
};

/// Writes the four affixes of a pattern: prefix, suffix, negative prefix, negative suffix.
void write_affixes(SectionWriter& out, std::u16string_view pattern, const Signs& signs);

/// Symbols, affixes and group sizes of the locale's number kinds.
std::string number_section(const std::string& locale);

/// The symbols of every currency that locales do not write as its code, where they say nothing
/// else.
std::string common_currency_section();

/// The symbols of the currencies of which the locale says something else.
std::string currency_section(const std::string& locale);

/// The names of months and weekdays, and the words that stand between them.
std::string date_name_section(const std::string& locale);

/// The date patterns with the weekday, and the words that join a date and a time.
std::string date_pattern_section(const std::string& locale);

/// A locale's sections in the block's order; an empty one is left out of the block. Throws
/// std::runtime_error when the block would not fit in its area.
using LayoutSections = std::array<std::string, jw_layout_sections>;
LayoutSections layout_sections(const std::string& locale);

}  // namespace jwnls::generator

#endif  // JWNLS_GENERATORS_LOCALES_LAYOUT_DATA_H_
