// A list of folded names of months and weekdays and of the words between them, as it is put
// together: from the locale's record, from its layout data, or by the generator of those data.
//
// Names are folded (see library/texts/folding.h) and have no dot at their end; one text may be
// several things at once: the Spanish "mar" is Tuesday and March.

#ifndef JWNLS_LIBRARY_LOCALE_DATA_NAME_LIST_H_
#define JWNLS_LIBRARY_LOCALE_DATA_NAME_LIST_H_

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <string_view>

#include "library/locale_data/pattern_parts.h"

namespace jwnls::library {

/// What a name stands for.
struct NameMeaning {
  std::uint8_t month = 0;    // 1 to 12; 0: none
  std::uint8_t weekday = 0;  // 1 (Sunday) to 7; 0: none; `some_weekday`: of two, not to be checked
  bool word : 1 = false;     // may stand between the parts of a date
  bool two_months : 1 = false;     // the name of two months: says nothing
  bool false_friend : 1 = false;   // the name of another month in a related language
  bool is_beginning : 1 = false;   // of a month's name
  bool begins_longer : 1 = false;  // a longer name has another word behind it

  static constexpr std::uint8_t some_weekday = 8;
  [[nodiscard]] bool is_name() const noexcept { return month != 0 || weekday != 0 || two_months; }
};

/// The order in which names are looked for in a text: by first byte, the longest first.
[[nodiscard]] inline bool is_looked_for_before(std::string_view a, std::string_view b) noexcept {
  if (a.front() != b.front()) {
    return static_cast<unsigned char>(a.front()) < static_cast<unsigned char>(b.front());
  }
  return a.size() != b.size() ? a.size() > b.size() : a < b;
}

/// The form in which a name is kept; empty for what is no name, as "3月", a number with a word.
std::string folded_name(std::string_view name);

class NameList {
 public:
  /// The most bytes of a folded name that are kept.
  static constexpr std::size_t longest = 200;

  // All of these allocate. Texts are UTF-8, as they are written.
  void add_month(std::string_view name, int month);
  void add_weekday(std::string_view name, int weekday);
  void add_word(std::string_view word);
  /// Adds a month's name of a second language: the names of the first win, their beginnings do not.
  void add_foreign_month(std::string_view name, int month);
  /// Adds the words of a pattern; and the names of months together with the letters that stand
  /// directly before or behind them in it, as prepositions do in Hebrew.
  void add_pattern(const PatternParts& pattern, const std::string (&full_months)[12],
                   const std::string (&short_months)[12]);
  /// Adds beginnings of three letters and more that only one month's names have and no weekday's,
  /// where `is_free(text, month)` allows it.
  void add_beginnings(const std::function<bool(const std::string&, int)>& is_free);

  std::map<std::string, NameMeaning, std::less<>> names;
};

}  // namespace jwnls::library

#endif  // JWNLS_LIBRARY_LOCALE_DATA_NAME_LIST_H_
