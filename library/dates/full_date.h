// Full dates, with their weekdays, which no service writes: "Freitag, 15. März 2024".

#ifndef JWNLS_LIBRARY_DATES_FULL_DATE_H_
#define JWNLS_LIBRARY_DATES_FULL_DATE_H_

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "abi/locale_record.h"
#include "library/locale_data/date_data.h"
#include "module/calendar/civil.h"

namespace jwnls::library {

/// A pattern and the names for it, in one encoding.
template <typename Unit>
struct FullDateTexts {
  using Text = std::basic_string<Unit>;
  struct Part {
    char directive;  // 0: a literal
    Text literal;
  };
  std::vector<Part> parts;
  std::array<Text, 12> full_months, short_months;
  std::array<Text, 7> full_weekdays, short_weekdays;  // from Sunday

  /// Writes a day, counted as the calendar does, and gives its units; more than `room` when it does
  /// not fit, and then nothing behind the room is touched.
  std::size_t write(std::int32_t day, Unit* out, std::size_t room) const noexcept;
};

struct FullDate {
  FullDateTexts<char> narrow;
  FullDateTexts<char16_t> wide;

  template <typename Unit>
  [[nodiscard]] const FullDateTexts<Unit>& texts() const noexcept {
    if constexpr (sizeof(Unit) == 1) {
      return narrow;
    } else {
      return wide;
    }
  }
};

/// Throws bad_alloc.
std::unique_ptr<const FullDate> make_full_date(const LocaleRecord& record,
                                               const DatePatternData& data);

extern template struct FullDateTexts<char>;
extern template struct FullDateTexts<char16_t>;

}  // namespace jwnls::library

#endif  // JWNLS_LIBRARY_DATES_FULL_DATE_H_
