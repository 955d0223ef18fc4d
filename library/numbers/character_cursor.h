// A text of UTF-8 looked at character by character.

#ifndef JWNLS_LIBRARY_NUMBERS_CHARACTER_CURSOR_H_
#define JWNLS_LIBRARY_NUMBERS_CHARACTER_CURSOR_H_

#include <cstddef>
#include <string_view>

#include "library/numbers/characters.h"
#include "library/texts/utf8.h"

namespace jwnls::library {

/// The base of a scanner, which moves on behind what it knows.
class CharacterCursor {
 protected:
  explicit CharacterCursor(std::string_view text) noexcept : text_(text) { look(); }

  [[nodiscard]] bool ended() const { return at_ == text_.size(); }

  // Looks at the character at at_: 0 at the end.
  void look() {
    if (ended()) {
      c_ = 0;
      bytes_ = 0;
      return;
    }
    if (const auto byte = static_cast<unsigned char>(text_[at_]); byte < 0x80) [[likely]] {
      c_ = byte;
      bytes_ = 1;
      return;
    }
    const Utf8Character next = first_character(text_.substr(at_));
    if (!next.valid && valid_) {
      valid_ = false;
      invalid_at_ = at_;
    }
    c_ = next.value;
    bytes_ = next.bytes;
  }
  void advance() {
    at_ += bytes_;
    look();
  }
  // Whether a digit follows the present character.
  [[nodiscard]] bool digit_behind() const {
    const std::string_view rest = text_.substr(at_ + bytes_);
    if (rest.empty()) return false;
    const auto byte = static_cast<unsigned char>(rest.front());
    if (byte < 0x80) return byte >= '0' && byte <= '9';
    return digit_of(first_character(rest).value).zero != 0;
  }

  void skip_pad() {
    while (!ended() && (is_blank(c_) || is_mark(c_))) advance();
  }

  const std::string_view text_;
  std::size_t at_ = 0;
  char32_t c_ = 0;         // the character at at_
  std::size_t bytes_ = 0;  // that it takes
  bool valid_ = true;      // what was looked at is UTF-8, or else where it is not
  std::size_t invalid_at_ = 0;
};

}  // namespace jwnls::library

#endif  // JWNLS_LIBRARY_NUMBERS_CHARACTER_CURSOR_H_
