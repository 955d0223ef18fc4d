// What the headers of this folder write alike in C11 and in C++17 and later: fixed-width integers,
// char16_t, checks at compile time, and the places of members.

#ifndef JWNLS_ABI_LANGUAGE_H_
#define JWNLS_ABI_LANGUAGE_H_

#include <stddef.h>
#include <stdint.h>

#ifdef __cplusplus
#include <cstddef>
#include <cstdint>
#include <type_traits>
#define JW_STATIC_ASSERT(condition, text) static_assert(condition, text)
#define JW_INLINE inline
#else
#include <uchar.h>
#define JW_STATIC_ASSERT(condition, text) _Static_assert(condition, text)
#define JW_INLINE static inline
#endif

// A member's place is part of the interface: `offset` bytes, or `word` 64-bit words, into `type`.
#define JW_AT_OFFSET(type, member, offset) \
  JW_STATIC_ASSERT(offsetof(type, member) == (offset), #member " is out of place")
#define JW_AT_WORD(type, member, word) JW_AT_OFFSET(type, member, (word)*8)
#define JW_SIZE_IS(type, bytes) JW_STATIC_ASSERT(sizeof(type) == (bytes), #type " has another size")

JW_STATIC_ASSERT(sizeof(void*) == 8, "every word of the tables has 64 bits");

#endif  // JWNLS_ABI_LANGUAGE_H_
