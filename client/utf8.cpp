#include "client/utf8.h"

#include <cstddef>
#include <cstdint>

namespace jwnls::client {
namespace {

constexpr bool is_high_surrogate(char32_t unit) { return (unit & 0xFC00U) == 0xD800U; }
constexpr bool is_low_surrogate(char32_t unit) { return (unit & 0xFC00U) == 0xDC00U; }

// The character that begins at `at`, which moves behind it.
char32_t next_character(std::u16string_view text, std::size_t& at) {
  const char32_t unit = text[at++];
  if (!is_high_surrogate(unit) && !is_low_surrogate(unit)) return unit;
  if (is_high_surrogate(unit) && at < text.size() && is_low_surrogate(text[at])) {
    return 0x10000U + ((unit - 0xD800U) << 10) + (text[at++] - 0xDC00U);
  }
  return U'\uFFFD';
}

// What the first byte of a sequence says about it: its continuation bytes, its own bits, and the
// least character that needs so many bytes.
struct LeadByte {
  std::size_t continuations;
  char32_t bits;
  char32_t least;
};

std::optional<LeadByte> lead_byte(unsigned char byte) {
  if (byte < 0x80) return LeadByte{0, byte, 0};
  if ((byte & 0xE0) == 0xC0) return LeadByte{1, byte & 0x1FU, 0x80};
  if ((byte & 0xF0) == 0xE0) return LeadByte{2, byte & 0x0FU, 0x800};
  if ((byte & 0xF8) == 0xF0) return LeadByte{3, byte & 0x07U, 0x10000};
  return std::nullopt;
}

}  // namespace

void append_utf8(std::string& out, std::u16string_view text) {
  out.reserve(out.size() + text.size());
  const auto put = [&out](char32_t byte) { out.push_back(static_cast<char>(byte)); };
  for (std::size_t at = 0; at < text.size();) {
    const char32_t character = next_character(text, at);
    if (character < 0x80) {
      put(character);
    } else if (character < 0x800) {
      put(0xC0U | (character >> 6));
      put(0x80U | (character & 0x3FU));
    } else if (character < 0x10000) {
      put(0xE0U | (character >> 12));
      put(0x80U | ((character >> 6) & 0x3FU));
      put(0x80U | (character & 0x3FU));
    } else {
      put(0xF0U | (character >> 18));
      put(0x80U | ((character >> 12) & 0x3FU));
      put(0x80U | ((character >> 6) & 0x3FU));
      put(0x80U | (character & 0x3FU));
    }
  }
}

std::string to_utf8(std::u16string_view text) {
  std::string out;
  append_utf8(out, text);
  return out;
}

std::optional<std::u16string> to_utf16(std::string_view text) {
  std::u16string out;
  out.reserve(text.size());
  for (std::size_t at = 0; at < text.size();) {
    const auto lead = lead_byte(static_cast<unsigned char>(text[at++]));
    if (!lead || text.size() - at < lead->continuations) return std::nullopt;
    char32_t character = lead->bits;
    for (std::size_t i = 0; i < lead->continuations; ++i) {
      const auto byte = static_cast<unsigned char>(text[at++]);
      if ((byte & 0xC0) != 0x80) return std::nullopt;
      character = (character << 6) | (byte & 0x3FU);
    }
    if (character < lead->least || character > 0x10FFFF) return std::nullopt;
    if (character < 0x10000) {
      if (is_high_surrogate(character) || is_low_surrogate(character)) return std::nullopt;
      out.push_back(static_cast<char16_t>(character));
    } else {
      out.push_back(static_cast<char16_t>(0xD800U + ((character - 0x10000U) >> 10)));
      out.push_back(static_cast<char16_t>(0xDC00U + (character & 0x3FFU)));
    }
  }
  return out;
}

}  // namespace jwnls::client
