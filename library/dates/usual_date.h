// Dates as nearly all columns have them, read by a call and by a column alike.

#ifndef JWNLS_LIBRARY_DATES_USUAL_DATE_H_
#define JWNLS_LIBRARY_DATES_USUAL_DATE_H_

#include <cstddef>
#include <cstdint>

#include "include/jwnls/jwnls.h"
#include "library/dates/day_scale.h"
#include "library/dates/plain_date.h"
#include "library/layouts/layout.h"

namespace jwnls::library {

/// Whether the module's services read the layout's texts.
[[nodiscard]] inline bool by_services(const jwnls_layout& layout) noexcept {
  return layout.dates == nullptr || layout.options.loose != 0 || layout.options.pattern != 0;
}

/// Whether read_usual_date() may be tried.
[[nodiscard]] inline bool has_usual_dates(const jwnls_layout& layout) noexcept {
  return layout.is(JWNLS_DATE) && !by_services(layout);
}

/// Of a layout that has_usual_dates(): "04.09.2018" as days since 1970. False, and nothing is
/// given, for all other texts.
[[nodiscard]] inline bool read_usual_days(const jwnls_layout& layout, const char* text,
                                          std::size_t length, std::int32_t* days,
                                          std::uint8_t& facts) noexcept {
  DateRead read;
  if (length != 10 || !read_usual_date(*layout.dates, text, read)) return false;
  *days = since_1970(day_from_civil(read.date));
  facts = read.facts;
  return true;
}

}  // namespace jwnls::library

#endif  // JWNLS_LIBRARY_DATES_USUAL_DATE_H_
