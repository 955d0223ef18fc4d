#include "module/text/joining.h"

#include <algorithm>

#include "module/text/copy_text.h"

namespace jwnls {

std::size_t join_texts(std::span<const std::u16string_view> pieces, char16_t separator,
                       char16_t* out, std::int64_t capacity) noexcept {
  const bool terminated = capacity < 0;
  const auto room = static_cast<std::size_t>(terminated ? -(capacity + 1) : capacity);
  std::size_t length = 0;
  for (std::size_t i = 0; i < pieces.size(); ++i) {
    if (i > 0 && separator != no_separator && length < room) out[length++] = separator;
    const std::u16string_view piece = pieces[i].substr(0, room - length);
    copy_text(out + length, piece.data(), piece.size() * sizeof(char16_t));
    length += piece.size();
  }
  if (terminated) {
    out[length] = u'\0';
  } else {
    std::fill(out + length, out + room, u' ');
  }
  return length;
}

}  // namespace jwnls
