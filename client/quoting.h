// Names and values as they stand in messages.

#ifndef JWNLS_CLIENT_QUOTING_H_
#define JWNLS_CLIENT_QUOTING_H_

#include <string>
#include <string_view>

namespace jwnls::client {

/// `text` between single quotes, always one line of valid UTF-8: control characters and malformed
/// bytes are escaped ("\x1B"), and a long text is cut ("...").
[[nodiscard]] std::string in_quotes(std::string_view text);

}  // namespace jwnls::client

#endif  // JWNLS_CLIENT_QUOTING_H_
