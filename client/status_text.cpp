#include <cstdio>

#include "abi/message_texts.h"
#include "client/locale_state.h"
#include "client/utf8.h"

namespace jwnls::client {

std::string status_text(LocaleHandle* handle, Status status) {
  if (handle != nullptr && handle->messages != nullptr) {
    const auto* texts = reinterpret_cast<const MessageTexts*>(handle->messages);
    char16_t text[message_text_capacity];
    std::int64_t length = 0;
    const Status told{
        texts->message(handle->messages, code(status), text, message_text_capacity, &length)};
    if (told == Status::ok) return to_utf8({text, bounded_length(length, message_text_capacity)});
  }
  char number[24];
  (void)std::snprintf(number, sizeof number, "status 0x%08X", static_cast<unsigned>(code(status)));
  return number;
}

}  // namespace jwnls::client
