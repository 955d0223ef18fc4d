// UTF-8 and UTF-16, into room of the caller's. Nothing here allocates.

#ifndef JWNLS_LIBRARY_TEXTS_UTF8_H_
#define JWNLS_LIBRARY_TEXTS_UTF8_H_

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <optional>
#include <string_view>

namespace jwnls::library {

/// The bits that any byte of a text has, those of one byte in each of a word's.
[[nodiscard]] inline std::uint64_t bits_of(std::string_view text) noexcept {
  const auto word_at = [](const char* bytes, auto word) -> std::uint64_t {
    std::memcpy(&word, bytes, sizeof word);
    return word;
  };
  const char* const begin = text.data();
  const char* const end = begin + text.size();
  std::uint64_t all = 0;
  if (text.size() >= 8) {  // in words, the last of which may overlap another
    for (const char* at = begin; end - at > 8; at += 8) all |= word_at(at, std::uint64_t{});
    all |= word_at(end - 8, std::uint64_t{});
  } else if (text.size() >= 4) {
    all = word_at(begin, std::uint32_t{}) | word_at(end - 4, std::uint32_t{});
  } else {
    for (const char byte : text) all |= static_cast<unsigned char>(byte);
  }
  return all;
}

[[nodiscard]] inline bool is_ascii(std::string_view text) noexcept {
  return (bits_of(text) & 0x8080808080808080) == 0;
}

/// Whether all of a text stands before the letters of ASCII, as digits and most marks do.
[[nodiscard]] inline bool is_before_letters(std::string_view text) noexcept {
  return (bits_of(text) & 0xC0C0C0C0C0C0C0C0) == 0;
}

/// Whether a byte stands inside a character, behind its first.
[[nodiscard]] constexpr bool continues_character(char byte) noexcept {
  return (static_cast<unsigned char>(byte) & 0xC0) == 0x80;
}

/// Whether all characters of a text are valid; see first_character().
[[nodiscard]] bool is_utf8(std::string_view text) noexcept;

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
