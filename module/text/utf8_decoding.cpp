#include "module/text/utf8_decoding.h"

#include <cstdint>

namespace jwnls {
namespace {

struct ByteRange {
  std::uint8_t first;
  std::uint8_t last;
};

// What may follow a lead byte: overlong forms and what lies beyond U+10FFFF are wrong from the
// second byte on.
constexpr ByteRange second_byte_range(unsigned lead) {
  switch (lead) {
    case 0xE0:
      return {0xA0, 0xBF};
    case 0xF0:
      return {0x90, 0xBF};
    case 0xF4:
      return {0x80, 0x8F};
    default:
      return {0x80, 0xBF};
  }
}

// The bytes of the sequence that `lead` begins; 1 for a byte that begins none.
constexpr std::size_t sequence_bytes(unsigned lead) {
  if (lead < 0xC2 || lead > 0xF4) return 1;
  return lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
}

}  // namespace

Utf8Sequence decode_utf8(const char* text, std::size_t length) noexcept {
  const unsigned lead = static_cast<unsigned char>(text[0]);
  if (lead < 0x80) return {lead, 1};
  const std::size_t bytes = sequence_bytes(lead);
  if (bytes == 1) return {replacement_unit, 1};

  ByteRange range = second_byte_range(lead);
  char32_t point = lead & (0x7F >> bytes);
  for (std::size_t i = 1; i < bytes; ++i) {
    if (i == length) return {replacement_unit, length};
    const unsigned byte = static_cast<unsigned char>(text[i]);
    if (byte < range.first || byte > range.last) return {replacement_unit, 1};
    point = point << 6 | (byte & 0x3F);
    range = {0x80, 0xBF};
  }
  return {point, bytes};
}

}  // namespace jwnls
