// What a locale's layout data (abi/layout_data.h) say about its dates. The texts are in UTF-8 and
// stand in the record.

#ifndef JWNLS_LIBRARY_LOCALE_DATA_DATE_DATA_H_
#define JWNLS_LIBRARY_LOCALE_DATA_DATE_DATA_H_

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "abi/locale_record.h"
#include "library/locale_data/name_list.h"

namespace jwnls::library {

/// A month's name, as it is written, that folds to the name of another.
struct ExactName {
  std::string_view text;
  int month;
};

/// Folded names; see library/locale_data/name_list.h.
struct DateNameData {
  struct Name {
    std::uint16_t begin;  // in `texts`
    std::uint8_t size;    // at most NameList::longest
    NameMeaning meaning;
  };

  std::string texts;  // of the names, one behind the other
  std::vector<Name> names;
  std::vector<ExactName> exact;

  void add(std::string_view text, const NameMeaning& meaning);
  [[nodiscard]] std::string_view text_of(const Name& name) const noexcept {
    return std::string_view(texts).substr(name.begin, name.size);
  }
};

/// Nothing where the record has no such data, or none that hold together. Throws bad_alloc.
std::optional<DateNameData> read_date_name_data(const LocaleRecord& record);

/// What stands around a date and a time of day.
struct DateJoint {
  bool time_first = false;
  std::string_view before, between, behind;
};

struct DatePatternData {
  bool short_year_first = false;             // in short dates
  std::string_view full;                     // full dates, in the directives of the record's
  std::array<DateJoint, 4> joints;           // with short, medium, long and full dates
  std::array<std::string_view, 7> weekdays;  // in full dates, from Sunday; empty: the record's
};

std::optional<DatePatternData> read_date_pattern_data(const LocaleRecord& record) noexcept;

}  // namespace jwnls::library

#endif  // JWNLS_LIBRARY_LOCALE_DATA_DATE_DATA_H_
