// Copying texts of a few dozen bytes, which is most of what this module copies.

#ifndef JWNLS_MODULE_TEXT_COPY_TEXT_H_
#define JWNLS_MODULE_TEXT_COPY_TEXT_H_

#include <cstddef>
#include <cstdint>
#include <cstring>

namespace jwnls {

/// Copies a finished text. Texts of up to 64 bytes, nearly all, go as two or four blocks that
/// overlap.
inline void copy_text(void* to, const void* from, std::size_t bytes) noexcept {
  auto* out = static_cast<std::byte*>(to);
  const auto* in = static_cast<const std::byte*>(from);
  if (bytes >= 16 && bytes <= 64) [[likely]] {
    std::memcpy(out, in, 16);
    if (bytes > 32) {
      std::memcpy(out + 16, in + 16, 16);
      std::memcpy(out + bytes - 32, in + bytes - 32, 16);
    }
    std::memcpy(out + bytes - 16, in + bytes - 16, 16);
  } else if (bytes >= 8 && bytes < 16) {
    std::memcpy(out, in, 8);
    std::memcpy(out + bytes - 8, in + bytes - 8, 8);
  } else if (bytes != 0) {
    std::memcpy(out, in, bytes);
  }
}

/// Sets units to zero: up to 64 bytes, nearly all, in two or four blocks that overlap.
template <typename Unit>
void zero_units(Unit* out, std::int64_t count) noexcept {
  constexpr std::byte zeros[64] = {};
  const auto bytes = static_cast<std::size_t>(count) * sizeof(Unit);
  if (bytes <= sizeof zeros) [[likely]] {
    copy_text(out, zeros, bytes);
  } else {
    std::memset(out, 0, bytes);
  }
}

}  // namespace jwnls

#endif  // JWNLS_MODULE_TEXT_COPY_TEXT_H_
