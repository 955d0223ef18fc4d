// The message extension `jwemsg`: a text for every status code.
//
// A host's module loads it and keeps it in word 4 of each locale handle, so whoever has a handle
// has the texts:
//
//   auto* messages = reinterpret_cast<MessageTexts*>(handle->messages);
//   messages->message(handle->messages, status, text, std::size(text), &length);

#ifndef JWNLS_ABI_MESSAGE_TEXTS_H_
#define JWNLS_ABI_MESSAGE_TEXTS_H_

#include "abi/host_tables.h"

namespace jwnls {

struct MessageTexts {
  MessageExtension base;  // word 2 destroys the object
  Pool* pool;             // the object's own
  HostWord word_4[6];
  /// Writes the English text of a status code: a sentence without its full stop, of at most
  /// message_text_capacity units, not terminated.
  ///   capacity  units of room at `out`; below 0 counts as 0
  ///   length    receives the units written
  /// Returns ok; does_not_fit with what fits; lookup_failed for a code that has no text of its own
  /// ("unknown status 0x80000001" is written); null_argument when `out` or `length` is null.
  /// Any thread.
  std::uint32_t (*message)(MessageExtension*, std::uint32_t status, char16_t* out,
                           std::int64_t capacity, std::int64_t* length);
};
inline constexpr std::int64_t message_text_capacity = 120;

static_assert(offsetof(MessageTexts, message) == 10 * 8);

}  // namespace jwnls

#endif  // JWNLS_ABI_MESSAGE_TEXTS_H_
