// The quickest way to read the dates that most texts with a name are: "4. September 2018".

#ifndef JWNLS_LIBRARY_DATES_NAMED_DATE_H_
#define JWNLS_LIBRARY_DATES_NAMED_DATE_H_

#include <string_view>

#include "library/dates/date_layout.h"
#include "library/dates/date_parts.h"

namespace jwnls::library {

/// Reads two numbers and one or two names with nothing but blanks, dots, commas and the locale's
/// words around them, in one pass. False for every other text, of which `read` says nothing. True:
/// the text is read, or refused for good.
///   numbers  of the text, two of them
[[nodiscard]] bool read_named_date(const DateLayout& layout, std::string_view text,
                                   const Numbers& numbers, DateRead& read) noexcept;

}  // namespace jwnls::library

#endif  // JWNLS_LIBRARY_DATES_NAMED_DATE_H_
