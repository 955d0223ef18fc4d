// A finished text on its way into the caller's room.

#ifndef JWNLS_LIBRARY_TEXTS_GIVE_TEXT_H_
#define JWNLS_LIBRARY_TEXTS_GIVE_TEXT_H_

#include <cstddef>
#include <cstring>
#include <string_view>

#include "include/jwnls/jwnls.h"

namespace jwnls::library {

/// OK, or ROOM; the length is given either way. `out` may be null where `room` is 0.
template <typename Unit>
int give_text(std::basic_string_view<Unit> text, Unit* out, std::size_t room,
              std::size_t* length) noexcept {
  *length = text.size();
  if (text.size() > room) return JWNLS_ROOM;
  if (!text.empty()) std::memcpy(out, text.data(), text.size() * sizeof(Unit));
  return JWNLS_OK;
}

inline int give_text(std::string_view text, char* out, std::size_t room,
                     std::size_t* length) noexcept {
  return give_text<char>(text, out, room, length);
}

}  // namespace jwnls::library

#endif  // JWNLS_LIBRARY_TEXTS_GIVE_TEXT_H_
