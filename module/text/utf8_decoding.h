// UTF-8 to code points, whatever stands in the text: every byte belongs to exactly one sequence.

#ifndef JWNLS_MODULE_TEXT_UTF8_DECODING_H_
#define JWNLS_MODULE_TEXT_UTF8_DECODING_H_

#include <cstddef>

namespace jwnls {

inline constexpr char16_t replacement_unit = 0xFFFD;  // what malformed UTF-8 reads as

/// A decoded UTF-8 sequence: its code point and the bytes it takes. Surrogates encoded in three
/// bytes are themselves. A byte that cannot stand where it does is U+FFFD and takes one byte; a
/// text that ends inside a sequence whose bytes are right so far is U+FFFD and takes what remains.
struct Utf8Sequence {
  char32_t point;
  std::size_t bytes;
};

/// Decodes what `length` bytes, at least one, begin with.
Utf8Sequence decode_utf8(const char* text, std::size_t length) noexcept;

}  // namespace jwnls

#endif  // JWNLS_MODULE_TEXT_UTF8_DECODING_H_
