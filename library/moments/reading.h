// What reading dates and explaining what is not read have in common.

#ifndef JWNLS_LIBRARY_MOMENTS_READING_H_
#define JWNLS_LIBRARY_MOMENTS_READING_H_

#include <string_view>

#include "include/jwnls/jwnls.h"
#include "library/dates/date_grammar.h"
#include "library/layouts/layout.h"

namespace jwnls::library {

/// The code of jwnls.h.
[[nodiscard]] int code_of(Refusal refusal) noexcept;

/// A trimmed text that stands for no value.
[[nodiscard]] bool is_missing_text(const jwnls_layout& layout, std::string_view text) noexcept;

/// Says of a text of a date, period, time, datetime or instant why it is not read, and where: "the
/// bytes that fit", a reason, and what the locale writes instead. Gives the code that reading it
/// gives. Bounded, whatever the text.
int explain_date(const jwnls_layout& layout, std::string_view text, jwnls_error* error) noexcept;

}  // namespace jwnls::library

#endif  // JWNLS_LIBRARY_MOMENTS_READING_H_
