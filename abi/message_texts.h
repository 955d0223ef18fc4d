// The object of the message extension `jwemsg`: a text for every status code.
//
// The extension makes it, in a pool of its own. The module loads one for each locale handle, which
// owns it (word 4), so whoever has a handle has the texts:
//
//   void* extension = handle->messages;  // in C++: a reinterpret_cast
//   jw_message_texts* texts = extension;
//   texts->message(handle->messages, status, text, JW_MESSAGE_TEXT_CAPACITY, &length);
//
// Any thread may ask, as long as the handle lives.

#ifndef JWNLS_ABI_MESSAGE_TEXTS_H_
#define JWNLS_ABI_MESSAGE_TEXTS_H_

#include "abi/host_objects.h"

#ifdef __cplusplus
extern "C" {
#endif

typedef struct jw_message_texts {
  jw_message_extension base;  // word 2 destroys the object
  jw_pool* pool;              // the object's own
  jw_host_word word_4[6];
  /// Writes the English text of a status code: a sentence without its full stop, of at most
  /// JW_MESSAGE_TEXT_CAPACITY units, UTF-16, not terminated.
  ///   capacity  units of room at `out`; below 0 counts as 0
  ///   length    receives the units written
  /// Returns JW_OK; JW_DOES_NOT_FIT with what fits; JW_LOOKUP_FAILED for a code that has no text of
  /// its own ("unknown status 0x80000001" is written); JW_NULL_ARGUMENT, with nothing written, when
  /// `out` or `length` is null.
  uint32_t (*message)(jw_message_extension* extension, uint32_t status, char16_t* out,
                      int64_t capacity, int64_t* length);
} jw_message_texts;
#define JW_MESSAGE_TEXT_CAPACITY 120

#ifdef __cplusplus
}  // extern "C"
#endif

JW_AT_WORD(jw_message_texts, message, 10);

#ifdef __cplusplus
namespace jwnls {
using MessageTexts = ::jw_message_texts;
inline constexpr std::int64_t message_text_capacity = JW_MESSAGE_TEXT_CAPACITY;
}  // namespace jwnls
#endif

#endif  // JWNLS_ABI_MESSAGE_TEXTS_H_
