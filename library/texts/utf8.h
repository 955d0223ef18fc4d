// UTF-8 and UTF-16, into room of the caller's. Nothing here allocates.

#ifndef JWNLS_LIBRARY_TEXTS_UTF8_H_
#define JWNLS_LIBRARY_TEXTS_UTF8_H_

#include <cstddef>
#include <optional>
#include <string_view>

namespace jwnls::library {

[[nodiscard]] bool is_ascii(std::string_view text) noexcept;

/// The character that a text begins with.
struct Utf8Character {
  char32_t value;     // U+FFFD when not valid
  std::size_t bytes;  // at least 1; of what is not valid: 1
  bool valid;
};

/// Of a text that is not empty. Overlong forms, surrogates and what lies beyond U+10FFFF are not
/// valid, nor is a sequence that the text cuts.
[[nodiscard]] Utf8Character first_character(std::string_view text) noexcept;

/// Encodes a character and gives its bytes.
std::size_t encode_utf8(char32_t c, char (&out)[4]) noexcept;

/// Turns UTF-8 into UTF-16 and gives the units written, at most text.size(); nothing when the text
/// is not valid or outgrows the room.
[[nodiscard]] std::optional<std::size_t> to_utf16(std::string_view text, char16_t* out,
                                                  std::size_t room) noexcept;

/// Turns UTF-16 into UTF-8 and gives the bytes that the whole text takes, at most 3 a unit; what
/// fits is written, cut between characters. A surrogate without its partner becomes U+FFFD.
std::size_t to_utf8(std::u16string_view text, char* out, std::size_t room) noexcept;

}  // namespace jwnls::library

#endif  // JWNLS_LIBRARY_TEXTS_UTF8_H_
