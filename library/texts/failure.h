// What opening throws inside the library. The functions of jwnls.h catch it, and bad_alloc, at the
// seam: neither leaves them. Reading and writing values throw nothing.

#ifndef JWNLS_LIBRARY_TEXTS_FAILURE_H_
#define JWNLS_LIBRARY_TEXTS_FAILURE_H_

#include <new>
#include <utility>

#include "include/jwnls/jwnls.h"
#include "library/texts/message.h"

namespace jwnls::library {

struct Failure {
  jwnls_error error;
};

/// Throws a failure whose message `tell` writes.
template <typename Tell>
[[noreturn]] void fail(int code, Tell tell) {
  Failure failure;
  Message message(&failure.error, code);
  tell(message);
  throw failure;
}

/// Runs what may throw, and gives the code of jwnls.h; a failure's message goes to `error`, which
/// may be null.
template <typename Action>
int guarded(jwnls_error* error, Action action) noexcept {
  try {
    action();
    if (error != nullptr) Message(error, JWNLS_OK);
    return JWNLS_OK;
  } catch (const Failure& failure) {
    if (error != nullptr) *error = failure.error;
    return failure.error.code;
  } catch (const std::bad_alloc&) {
    Message(error, JWNLS_MEMORY) << "no memory";
    return JWNLS_MEMORY;
  } catch (...) {
    Message(error, JWNLS_LOAD) << "the system refused what was asked of it";
    return JWNLS_LOAD;
  }
}

}  // namespace jwnls::library

#endif  // JWNLS_LIBRARY_TEXTS_FAILURE_H_
