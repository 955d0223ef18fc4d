// Four decimal digits as one word.

#ifndef JWNLS_MODULE_TEXT_DIGIT_WORDS_H_
#define JWNLS_MODULE_TEXT_DIGIT_WORDS_H_

#include <bit>
#include <cstdint>
#include <cstring>

namespace jwnls {

namespace digit_words {

template <typename Word>
Word load(const void* units) noexcept {
  Word word = 0;
  std::memcpy(&word, units, sizeof word);
  return word;
}

// Whether each unit is 0x30 to 0x39: its upper bits are those of '0', before and after the addition
// of 6. A carry can only leave a unit that is no digit.
template <typename Word>
bool all_digits(Word units, Word ones, Word upper_bits) noexcept {
  const Word zeros = ones * 0x30;
  return (((units & upper_bits) ^ zeros) | (((units + ones * 6) & upper_bits) ^ zeros)) == 0;
}

}  // namespace digit_words

/// The value of the four units at `text`; false when not all of them are digits, or when this
/// machine's byte order keeps them from being looked at as one word.
inline bool four_digits(const char16_t* text, std::int32_t& value) noexcept {
  if constexpr (std::endian::native != std::endian::little) return false;
  const auto units = digit_words::load<std::uint64_t>(text);
  if (!digit_words::all_digits<std::uint64_t>(units, 0x0001000100010001, 0xFFF0FFF0FFF0FFF0)) {
    return false;
  }
  // The uppermost lane of the product adds up the digits times their weights.
  const std::uint64_t digits = units & 0x000F000F000F000F;
  value = static_cast<std::int32_t>(digits * (1000ull << 48 | 100ull << 32 | 10 << 16 | 1) >> 48);
  return true;
}
inline bool four_digits(const char* text, std::int32_t& value) noexcept {
  if constexpr (std::endian::native != std::endian::little) return false;
  const auto units = digit_words::load<std::uint32_t>(text);
  if (!digit_words::all_digits<std::uint32_t>(units, 0x01010101, 0xF0F0F0F0)) return false;
  const std::uint32_t pairs = (units & 0x0F0F0F0F) * (10 << 8 | 1) >> 8 & 0x00FF00FF;
  value = static_cast<std::int32_t>(pairs * (100 << 16 | 1) >> 16);
  return true;
}

}  // namespace jwnls

#endif  // JWNLS_MODULE_TEXT_DIGIT_WORDS_H_
