// Eight units of a text in one register, whatever its encoding.

#ifndef JWNLS_MODULE_TEXT_UNIT_BLOCK_H_
#define JWNLS_MODULE_TEXT_UNIT_BLOCK_H_

#if defined(__SSE2__)
#include <emmintrin.h>

#include <cstddef>
#include <cstdint>

namespace jwnls::unit_block {

inline constexpr std::ptrdiff_t units = 8;

/// Eight units; the bytes of UTF-8 become units as they are.
inline __m128i load(const char16_t* text) noexcept {
  return _mm_loadu_si128(reinterpret_cast<const __m128i*>(text));
}
inline __m128i load(const char* text) noexcept {
  const __m128i bytes = _mm_loadl_epi64(reinterpret_cast<const __m128i*>(text));
  return _mm_unpacklo_epi8(bytes, _mm_setzero_si128());
}

/// Twice eight units as bytes, for the search of ASCII units: what is no byte becomes 0 or 255.
inline __m128i load_bytes(const char16_t* first, const char16_t* second) noexcept {
  return _mm_packus_epi16(load(first), load(second));
}
inline __m128i load_bytes(const char* first, const char* second) noexcept {
  return _mm_unpacklo_epi64(_mm_loadl_epi64(reinterpret_cast<const __m128i*>(first)),
                            _mm_loadl_epi64(reinterpret_cast<const __m128i*>(second)));
}

/// Two bits for each unit whose lane is set.
inline std::uint32_t lanes(__m128i mask) noexcept {
  return static_cast<std::uint32_t>(_mm_movemask_epi8(mask));
}

inline __m128i equal_to(__m128i block, char unit) noexcept {
  return _mm_cmpeq_epi16(block, _mm_set1_epi16(unit));
}

}  // namespace jwnls::unit_block

#endif

#endif  // JWNLS_MODULE_TEXT_UNIT_BLOCK_H_
