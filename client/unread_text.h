// What is said of a text that is not read.

#ifndef JWNLS_CLIENT_UNREAD_TEXT_H_
#define JWNLS_CLIENT_UNREAD_TEXT_H_

#include <cstddef>
#include <string>
#include <string_view>

#include "client/result.h"

namespace jwnls::client {

/// "date 'x': " and the reason.
tl::unexpected<Error> unread(const char* kind, std::string_view text, Status status,
                             const std::string& reason, std::size_t fitting_bytes = 0);

/// The reason is how far the text fits what the locale of that name writes.
tl::unexpected<Error> unread_behind(const char* kind, std::string_view text,
                                    const std::string& locale_name, Status status,
                                    std::size_t fitting_bytes);

}  // namespace jwnls::client

#endif  // JWNLS_CLIENT_UNREAD_TEXT_H_
