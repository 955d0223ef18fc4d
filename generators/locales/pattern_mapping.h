// From CLDR's date and time patterns ("d. MMMM y") to a record's ("%E. %B %Y").

#ifndef JWNLS_GENERATORS_LOCALES_PATTERN_MAPPING_H_
#define JWNLS_GENERATORS_LOCALES_PATTERN_MAPPING_H_

#include <string>
#include <string_view>
#include <vector>

namespace jwnls::generator {

/// The texts of a locale that its patterns may need.
struct PatternNames {
  std::vector<std::u16string> full_months;   // as CLDR has them
  std::vector<std::u16string> short_months;  //
  std::u16string era;                        // of the present
};

/// Whether date recognition may rearrange a pattern's fields: only the numeric date's.
enum class PatternKind { numeric_date, other };

/// Maps a CLDR pattern. Throws std::runtime_error for a field that no directive expresses.
std::u16string map_pattern(std::u16string_view cldr, const PatternNames& names, PatternKind kind);

/// What a person types: no-break and thin blanks become blanks, bidirectional marks go.
std::u16string typeable(std::u16string_view text);

}  // namespace jwnls::generator

#endif  // JWNLS_GENERATORS_LOCALES_PATTERN_MAPPING_H_
