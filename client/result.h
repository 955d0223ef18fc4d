// What a call of the client API gives: a value, or an error that says what failed and where.

#ifndef JWNLS_CLIENT_RESULT_H_
#define JWNLS_CLIENT_RESULT_H_

#include <cstddef>
#include <string>
#include <tl/expected.hpp>

#include "abi/status.h"

namespace jwnls::client {

/// A failure. `message` is one line of UTF-8 text for a person: the value or name concerned, then
/// the reason ("date 2024-02-30: ..."); `status` is the code behind it, for a program.
struct Error {
  Status status = Status::ok;
  std::string message;
  /// Of a text that could not be read: the bytes at its begin that fit; what follows does not.
  std::size_t fitting_bytes = 0;
};

/// A value or an Error: `if (result) use(*result); else report(result.error().message);`. It has
/// the interface of C++23's std::expected, map() and and_then() included. value() throws when there
/// is none.
template <typename T>
using Result = tl::expected<T, Error>;

/// An Error, ready to be returned where a Result is due.
inline tl::unexpected<Error> failure(Status status, std::string message) {
  return tl::unexpected<Error>(Error{status, std::move(message), 0});
}

}  // namespace jwnls::client

#endif  // JWNLS_CLIENT_RESULT_H_
