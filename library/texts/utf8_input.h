// Texts of the caller's as UTF-8, whatever they came as.

#ifndef JWNLS_LIBRARY_TEXTS_UTF8_INPUT_H_
#define JWNLS_LIBRARY_TEXTS_UTF8_INPUT_H_

#include <cstddef>
#include <string_view>

#include "library/texts/utf8.h"

namespace jwnls::library {

/// UTF-16 as UTF-8, in room of its own: the longest text that is looked at, 1,024 bytes.
class Utf8Input {
 public:
  Utf8Input(const char16_t* text, std::size_t length) noexcept {
    if (length > sizeof bytes_ || !narrow(text, length)) {
      // A longer text is refused for its length alone.
      length = length > sizeof bytes_ ? length : to_utf8({text, length}, bytes_, sizeof bytes_);
    }
    size_ = length;
  }

  [[nodiscard]] const char* data() const noexcept { return bytes_; }
  /// May exceed what data() holds, where it is more than 1,024.
  [[nodiscard]] std::size_t size() const noexcept { return size_; }

 private:
  // ASCII alone.
  bool narrow(const char16_t* text, std::size_t length) noexcept {
    constexpr std::size_t block = 8;  // units that compilers turn into one register
    unsigned all = 0;
    std::size_t i = 0;
    for (; i + block <= length; i += block) {
      for (std::size_t j = 0; j < block; ++j) {
        all |= text[i + j];
        bytes_[i + j] = static_cast<char>(text[i + j]);
      }
    }
    for (; i < length; ++i) {
      all |= text[i];
      bytes_[i] = static_cast<char>(text[i]);
    }
    return all < 0x80;
  }

  char bytes_[1024];
  std::size_t size_;
};

/// The UTF-16 units that the first `bytes` bytes of a text stand for.
[[nodiscard]] inline std::size_t units_of(std::string_view text, std::size_t bytes) noexcept {
  std::size_t units = 0;
  for (text = text.substr(0, bytes); !text.empty();) {
    const Utf8Character next = first_character(text);
    units += next.value > 0xFFFF ? 2 : 1;
    text.remove_prefix(next.bytes);
  }
  return units;
}

}  // namespace jwnls::library

#endif  // JWNLS_LIBRARY_TEXTS_UTF8_INPUT_H_
