#include "client/quoting.h"

#include <cstddef>
#include <cstdio>

#include "client/utf8.h"

namespace jwnls::client {
namespace {

constexpr std::size_t shown_bytes = 80;  // of a longer text

// The most bytes of `text`, at most `limit`, that end between two characters.
std::string_view cut(std::string_view text, std::size_t limit) {
  if (text.size() <= limit) return text;
  while (limit > 0 && (static_cast<unsigned char>(text[limit]) & 0xC0) == 0x80) --limit;
  return text.substr(0, limit);
}

}  // namespace

std::string in_quotes(std::string_view text) {
  const std::string_view shown = cut(text, shown_bytes);
  const bool valid = to_utf16(shown).has_value();
  std::string out = "'";
  for (const char byte : shown) {
    const auto value = static_cast<unsigned char>(byte);
    if (value < 0x20 || value == 0x7F || (value >= 0x80 && !valid)) {
      char escape[5];
      (void)std::snprintf(escape, sizeof escape, "\\x%02X", unsigned{value});
      out += escape;
    } else {
      out += byte;
    }
  }
  return out + (shown.size() < text.size() ? "...'" : "'");
}

}  // namespace jwnls::client
