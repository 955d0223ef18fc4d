// Texts that are no dates whatever their words mean.

#ifndef JWNLS_LIBRARY_DATES_DATE_SHAPE_H_
#define JWNLS_LIBRARY_DATES_DATE_SHAPE_H_

#include <cstdint>
#include <string_view>

#include "library/dates/date_layout.h"
#include "library/dates/date_parts.h"

namespace jwnls::library {

/// Whether a trimmed text is certainly no date of the layout, nor one outside the calendar: it has
/// too many numbers or too few, or of sizes that no date has, or marks around them that no date
/// has, or begins or ends in a word that is none of the locale's. False says nothing.
///   numbers  of the text
[[nodiscard]] bool is_no_date(const DateLayout& layout, std::string_view text,
                              const Numbers& numbers) noexcept;

/// The same of a date in front of something else, of one to three numbers, where the text ends with
/// what follows the last of them, has_no_numbered() and keeps its numbers when it is folded.
[[nodiscard]] bool is_no_date_in_front(const DateLayout& layout, std::string_view text,
                                       const Numbers& numbers) noexcept;

/// The same of a date behind something else: the last numbers of the text.
[[nodiscard]] bool is_no_date_behind(const DateLayout& layout, std::string_view text,
                                     const Numbers& numbers) noexcept;

/// The same of a text of three numbers, of at most 64 bytes, before its numbers are
/// taken, by what stands around them.
///   digits  of the text: a bit for each byte
[[nodiscard]] bool is_no_date_at_once(const DateLayout& layout, std::string_view text,
                                      std::uint64_t digits) noexcept;

/// Whether certainly no name with digits in it stands in a text.
[[nodiscard]] bool has_no_numbered(const DateLayout& layout, std::string_view text) noexcept;

}  // namespace jwnls::library

#endif  // JWNLS_LIBRARY_DATES_DATE_SHAPE_H_
