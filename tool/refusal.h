// The reason why a value is refused, as an error of a Result.

#ifndef JWNLS_TOOL_REFUSAL_H_
#define JWNLS_TOOL_REFUSAL_H_

#include <string_view>

#include "jwnls/jwnls.hpp"

namespace jwnls::tool {

/// The reason is cut where it is longer than the messages of the library may be.
[[nodiscard]] inline jwnls_error refusal(std::string_view reason) {
  jwnls_error error = {};
  error.code = JWNLS_UNREAD;
  reason.copy(error.text, sizeof error.text - 1);
  return error;
}

}  // namespace jwnls::tool

#endif  // JWNLS_TOOL_REFUSAL_H_
