// Reads the text of a date by its layout. See date_grammar.h for the grammar.

#ifndef JWNLS_LIBRARY_DATES_DATE_TEXT_H_
#define JWNLS_LIBRARY_DATES_DATE_TEXT_H_

#include <cstdint>
#include <string_view>

#include "library/dates/date_grammar.h"
#include "library/dates/date_layout.h"
#include "library/texts/longest_text.h"

namespace jwnls::library {

inline constexpr std::size_t folded_room = 600;  // more than any date has

/// Without the blanks around it; ASCII blanks and U+00A0.
[[nodiscard]] std::string_view trimmed_slowly(std::string_view text) noexcept;
[[nodiscard]] inline std::string_view trimmed(std::string_view text) noexcept {
  const auto is_plain = [](char end) {
    return is_ascii(end) ? end > ' ' : end != '\xC2' && end != '\xA0';
  };
  if (!text.empty() && is_plain(text.front()) && is_plain(text.back())) [[likely]]
    return text;
  return trimmed_slowly(text);
}

/// Blank in ways that trimming does not see: other blanks and marks of direction.
[[nodiscard]] bool is_blank_text(std::string_view text) noexcept;

/// Reads a whole text, trimmed, of at most 1,024 bytes: quickly when it can be told so, else by
/// full_date().
[[nodiscard]] DateRead read_date_text(const DateLayout& layout, std::string_view text) noexcept;

/// The same of texts that plain_date.h does not read, into a fresh `read`.
void read_uncommon_date(const DateLayout& layout, std::string_view text, DateRead& read) noexcept;

/// The two ways of it. Where the quick one does not say `undecided`, both say the same. The place
/// is one of `text`, and the refusal the first, where `with_place` is true; else both mean nothing.
[[nodiscard]] DateRead quick_date(const DateLayout& layout, std::string_view text,
                                  bool with_place = false) noexcept;
[[nodiscard, gnu::noinline]] DateRead full_date(const DateLayout& layout, std::string_view text,
                                                bool with_place = false) noexcept;

}  // namespace jwnls::library

#endif  // JWNLS_LIBRARY_DATES_DATE_TEXT_H_
