#include "module/text/text_cursor.h"

#include "module/text/utf8_decoding.h"

namespace jwnls {

char16_t TextCursor<char>::next_decoded() noexcept {
  const Utf8Sequence sequence = decode_utf8(at_, remaining());
  if (sequence.point > 0xFFFF && !inside_pair_) {
    inside_pair_ = true;
    return static_cast<char16_t>(0xD7C0 + (sequence.point >> 10));
  }
  at_ += sequence.bytes;
  if (!inside_pair_) return static_cast<char16_t>(sequence.point);
  inside_pair_ = false;
  return static_cast<char16_t>(0xDC00 | (sequence.point & 0x3FF));
}

}  // namespace jwnls
