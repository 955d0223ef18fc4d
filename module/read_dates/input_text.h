// What the input services share: the text as a caller hands it in, and what they hand back.

#ifndef JWNLS_MODULE_READ_DATES_INPUT_TEXT_H_
#define JWNLS_MODULE_READ_DATES_INPUT_TEXT_H_

#include <cstddef>
#include <cstdint>

#include "abi/missing_value.h"
#include "abi/status.h"
#include "module/text/text_cursor.h"

namespace jwnls {

/// A caller's text; a negative length counts as 0.
template <typename Unit>
struct InputText {
  InputText(const Unit* caller_text, std::int64_t caller_length) noexcept
      : text(caller_text),
        length(caller_length < 0 ? 0 : static_cast<std::size_t>(caller_length)) {}

  InputText without_trailing_blanks() const noexcept {
    InputText trimmed = *this;
    while (trimmed.length > 0 && text[trimmed.length - 1] == static_cast<Unit>(' ')) {
      --trimmed.length;
    }
    return trimmed;
  }
  TextCursor<Unit> cursor() const noexcept { return {text, length}; }
  /// The units (bytes) before `at`, a cursor of this text.
  std::uint64_t consumed_at(const TextCursor<Unit>& at) const noexcept {
    return length - at.remaining();
  }

  const Unit* text;
  std::size_t length;
};

inline std::uint32_t deliver_no_match(double* value, std::uint64_t* consumed) noexcept {
  *value = missing_value();
  *consumed = 0;
  return code(Status::no_match);
}

inline std::uint32_t deliver(double read, std::uint64_t units, double* value,
                             std::uint64_t* consumed) noexcept {
  *value = read;
  *consumed = units;
  return code(Status::ok);
}

}  // namespace jwnls

#endif  // JWNLS_MODULE_READ_DATES_INPUT_TEXT_H_
