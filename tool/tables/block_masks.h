// Where the bytes that matter stand in 64 bytes of a table: a bit a byte, the first byte's the
// lowest. With SSE2, which every x86-64 has, and with NEON, which every AArch64 has; other
// machines, and builds with JWNLS_PORTABLE_SCANNER, have none and go byte by byte.

#ifndef JWNLS_TOOL_TABLES_BLOCK_MASKS_H_
#define JWNLS_TOOL_TABLES_BLOCK_MASKS_H_

#include <cstddef>
#include <cstdint>

#if !defined(JWNLS_PORTABLE_SCANNER) && defined(__SSE2__)
#define JWNLS_BLOCK_MASKS 1
#include <emmintrin.h>
#elif !defined(JWNLS_PORTABLE_SCANNER) && defined(__aarch64__) && defined(__ARM_NEON)
#define JWNLS_BLOCK_MASKS 1
#include <arm_neon.h>
#else
#define JWNLS_BLOCK_MASKS 0
#endif

namespace jwnls::tool {

constexpr std::size_t block_bytes = 64;

#if JWNLS_BLOCK_MASKS && defined(__SSE2__)

/// 64 bytes in registers, to be asked for several characters.
class Block {
 public:
  explicit Block(const char* bytes) {
    for (int part = 0; part < 4; ++part) {
      parts_[part] = _mm_loadu_si128(reinterpret_cast<const __m128i*>(bytes) + part);
    }
  }
  [[nodiscard]] std::uint64_t where(char character) const {
    const __m128i wanted = _mm_set1_epi8(character);
    std::uint64_t mask = 0;
    for (int part = 0; part < 4; ++part) {
      const int bits = _mm_movemask_epi8(_mm_cmpeq_epi8(parts_[part], wanted));
      mask |= static_cast<std::uint64_t>(static_cast<unsigned>(bits)) << (16 * part);
    }
    return mask;
  }

 private:
  __m128i parts_[4];
};

#elif JWNLS_BLOCK_MASKS

class Block {
 public:
  explicit Block(const char* bytes) {
    for (int part = 0; part < 4; ++part) {
      parts_[part] = vld1q_u8(reinterpret_cast<const std::uint8_t*>(bytes) + 16 * part);
    }
  }
  // Each byte that is equal keeps its bit of eight; pairs are added until eight bytes are one.
  [[nodiscard]] std::uint64_t where(char character) const {
    const uint8x16_t wanted = vdupq_n_u8(static_cast<std::uint8_t>(character));
    const uint8x16_t bits = {1, 2, 4, 8, 16, 32, 64, 128, 1, 2, 4, 8, 16, 32, 64, 128};
    uint8x16_t equal[4];
    for (int part = 0; part < 4; ++part) {
      equal[part] = vandq_u8(vceqq_u8(parts_[part], wanted), bits);
    }
    const uint8x16_t quarters =
        vpaddq_u8(vpaddq_u8(equal[0], equal[1]), vpaddq_u8(equal[2], equal[3]));
    return vgetq_lane_u64(vreinterpretq_u64_u8(vpaddq_u8(quarters, quarters)), 0);
  }

 private:
  uint8x16_t parts_[4];
};

#endif

/// Whether a text holds one of four characters. 16 bytes behind it may be read, whatever they are.
class AnyOfFour {
 public:
  AnyOfFour(char first, char second, char third, char fourth)
      : characters_{wanted(first), wanted(second), wanted(third), wanted(fourth)} {}

  [[nodiscard]] bool is_in(const char* text, std::size_t size) const;

 private:
#if JWNLS_BLOCK_MASKS && defined(__SSE2__)
  using Wanted = __m128i;
  static Wanted wanted(char character) { return _mm_set1_epi8(character); }
#else
  using Wanted = char;
  static Wanted wanted(char character) { return character; }
#endif
  Wanted characters_[4];
};

#if JWNLS_BLOCK_MASKS && defined(__SSE2__)

inline bool AnyOfFour::is_in(const char* text, std::size_t size) const {
  for (std::size_t at = 0; at < size; at += 16) {
    const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(text + at));
    const __m128i equal = _mm_or_si128(
        _mm_or_si128(_mm_cmpeq_epi8(bytes, characters_[0]), _mm_cmpeq_epi8(bytes, characters_[1])),
        _mm_or_si128(_mm_cmpeq_epi8(bytes, characters_[2]), _mm_cmpeq_epi8(bytes, characters_[3])));
    const auto found = static_cast<unsigned>(_mm_movemask_epi8(equal));
    const unsigned used = size - at < 16 ? (1U << (size - at)) - 1U : 0xFFFFU;
    if ((found & used) != 0) return true;
  }
  return false;
}

#else

inline bool AnyOfFour::is_in(const char* text, std::size_t size) const {
  bool is_found = false;
  for (std::size_t at = 0; at < size; ++at) {
    for (const char each : characters_) is_found |= text[at] == each;
  }
  return is_found;
}

#endif

}  // namespace jwnls::tool

#endif  // JWNLS_TOOL_TABLES_BLOCK_MASKS_H_
