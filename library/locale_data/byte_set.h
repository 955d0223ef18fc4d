// Sets of bytes, by which texts are told of without a look at their characters.

#ifndef JWNLS_LIBRARY_LOCALE_DATA_BYTE_SET_H_
#define JWNLS_LIBRARY_LOCALE_DATA_BYTE_SET_H_

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace jwnls::library {

class ByteSet {
 public:
  constexpr void add(char byte) noexcept {
    const auto index = static_cast<unsigned char>(byte);
    bits_[index / 64] |= std::uint64_t{1} << index % 64;
  }
  constexpr void add_range(unsigned first, unsigned last) noexcept {
    for (; first <= last; ++first) add(static_cast<char>(first));
  }
  constexpr void add_all(std::string_view bytes) noexcept {
    for (const char each : bytes) add(each);
  }
  constexpr void remove(char byte) noexcept {
    const auto index = static_cast<unsigned char>(byte);
    bits_[index / 64] &= ~(std::uint64_t{1} << index % 64);
  }

  constexpr void add_all(const ByteSet& others) noexcept {
    for (std::size_t i = 0; i < bits_.size(); ++i) bits_[i] |= others.bits_[i];
  }
  constexpr void remove_all(const ByteSet& others) noexcept {
    for (std::size_t i = 0; i < bits_.size(); ++i) bits_[i] &= ~others.bits_[i];
  }

  [[nodiscard]] constexpr bool has(char byte) const noexcept { return (bit_of(byte) & 1) != 0; }
  /// Whether some byte of a text is one of them.
  [[nodiscard]] bool has_any(std::string_view text) const noexcept {
    std::uint64_t found = 0;
    for (const char each : text) found |= bit_of(each);
    return (found & 1) != 0;
  }
  /// Whether all of them are.
  [[nodiscard]] bool has_all(std::string_view text) const noexcept {
    std::uint64_t found = 1;
    for (const char each : text) found &= bit_of(each);
    return (found & 1) != 0;
  }

 private:
  // In the lowest bit; others above it.
  [[nodiscard]] constexpr std::uint64_t bit_of(char byte) const noexcept {
    const auto index = static_cast<unsigned char>(byte);
    return bits_[index / 64] >> index % 64;
  }

  std::array<std::uint64_t, 4> bits_{};
};

}  // namespace jwnls::library

#endif  // JWNLS_LIBRARY_LOCALE_DATA_BYTE_SET_H_
