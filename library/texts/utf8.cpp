#include "library/texts/utf8.h"

#include <algorithm>
#include <cstring>

namespace jwnls::library {
namespace {

constexpr bool is_high_surrogate(char32_t unit) { return (unit & 0xFC00U) == 0xD800U; }
constexpr bool is_low_surrogate(char32_t unit) { return (unit & 0xFC00U) == 0xDC00U; }

}  // namespace

std::size_t encode_utf8(char32_t c, char (&out)[4]) noexcept {
  if (c < 0x80) {
    out[0] = static_cast<char>(c);
    return 1;
  }
  const auto follow = [c](int shift) { return static_cast<char>(0x80U | ((c >> shift) & 0x3FU)); };
  if (c < 0x800) {
    out[0] = static_cast<char>(0xC0U | (c >> 6));
    out[1] = follow(0);
    return 2;
  }
  if (c < 0x10000) {
    out[0] = static_cast<char>(0xE0U | (c >> 12));
    out[1] = follow(6);
    out[2] = follow(0);
    return 3;
  }
  out[0] = static_cast<char>(0xF0U | (c >> 18));
  out[1] = follow(12);
  out[2] = follow(6);
  out[3] = follow(0);
  return 4;
}

Utf8Character first_character(std::string_view text) noexcept {
  constexpr Utf8Character bad = {U'\uFFFD', 1, false};
  const auto lead = static_cast<unsigned char>(text.front());
  if (lead < 0x80) return {lead, 1, true};
  const std::size_t bytes = lead < 0xC2   ? 0
                            : lead < 0xE0 ? 2
                            : lead < 0xF0 ? 3
                            : lead < 0xF5 ? 4
                                          : 0;
  if (bytes == 0 || text.size() < bytes) return bad;
  char32_t value = lead & (0x7FU >> bytes);
  for (std::size_t i = 1; i < bytes; ++i) {
    const auto byte = static_cast<unsigned char>(text[i]);
    if ((byte & 0xC0) != 0x80) return bad;
    value = (value << 6) | (byte & 0x3FU);
  }
  constexpr char32_t least[] = {0, 0, 0x80, 0x800, 0x10000};
  if (value < least[bytes] || value > 0x10FFFF || (value & 0xFFFFF800U) == 0xD800U) return bad;
  return {value, bytes, true};
}

// ASCII is taken eight bytes at once, characters of up to three bytes at a glance.
bool is_utf8(std::string_view text) noexcept {
  const char* at = text.data();
  const char* const end = at + text.size();
  const auto byte = [&at](std::ptrdiff_t i) { return static_cast<unsigned char>(at[i]); };
  const auto continues = [&at](std::ptrdiff_t i) { return continues_character(at[i]); };
  while (at != end) {
    const unsigned lead = byte(0);
    if (lead < 0x80) {
      at += end - at >= 8 && is_ascii({at, 8}) ? 8 : 1;
    } else if (lead >= 0xC2 && lead < 0xE0 && end - at >= 2 && continues(1)) {
      at += 2;
    } else if (lead >= 0xE0 && lead < 0xF0 && end - at >= 3 && continues(1) && continues(2) &&
               (lead != 0xE0 || byte(1) >= 0xA0) && (lead != 0xED || byte(1) < 0xA0)) {
      at += 3;
    } else {
      const Utf8Character next = first_character({at, static_cast<std::size_t>(end - at)});
      if (!next.valid) return false;
      at += next.bytes;
    }
  }
  return true;
}

std::optional<std::size_t> to_utf16(std::string_view text, char16_t* out,
                                    std::size_t room) noexcept {
  std::size_t units = 0;
  while (!text.empty()) {
    // ASCII, as most texts are, eight at a time.
    if (text.size() >= 8 && room - units >= 8 && is_ascii(text.substr(0, 8))) {
      for (std::size_t i = 0; i < 8; ++i) out[units + i] = static_cast<unsigned char>(text[i]);
      units += 8;
      text.remove_prefix(8);
      continue;
    }
    const Utf8Character next = first_character(text);
    const std::size_t taken = next.value > 0xFFFF ? 2 : 1;
    if (!next.valid || room - units < taken) return std::nullopt;
    if (taken == 1) {
      out[units] = static_cast<char16_t>(next.value);
    } else {
      out[units] = static_cast<char16_t>(0xD800U + ((next.value - 0x10000U) >> 10));
      out[units + 1] = static_cast<char16_t>(0xDC00U + (next.value & 0x3FFU));
    }
    units += taken;
    text.remove_prefix(next.bytes);
  }
  return units;
}

std::size_t to_utf8(std::u16string_view text, char* out, std::size_t room) noexcept {
  // ASCII in front, as most texts are throughout.
  std::size_t bytes = 0;
  const std::size_t most = std::min(text.size(), room);
  for (; bytes < most && text[bytes] < 0x80; ++bytes) out[bytes] = static_cast<char>(text[bytes]);
  bool cut = false;
  for (std::size_t at = bytes; at < text.size(); ++at) {
    char32_t c = text[at];
    if (is_high_surrogate(c) && at + 1 < text.size() && is_low_surrogate(text[at + 1])) {
      c = 0x10000U + ((c - 0xD800U) << 10) + (text[++at] - 0xDC00U);
    } else if (is_high_surrogate(c) || is_low_surrogate(c)) {
      c = U'\uFFFD';
    }
    char encoded[4];
    const std::size_t length = encode_utf8(c, encoded);
    cut = cut || bytes + length > room;
    if (!cut) std::memcpy(out + bytes, encoded, length);
    bytes += length;
  }
  return bytes;
}

}  // namespace jwnls::library
