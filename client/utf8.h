// UTF-16, the services' encoding, to and from UTF-8, the application's.

#ifndef JWNLS_CLIENT_UTF8_H_
#define JWNLS_CLIENT_UTF8_H_

#include <optional>
#include <string>
#include <string_view>

namespace jwnls::client {

/// Appends `text` as valid UTF-8: a surrogate pair becomes one four-byte character, a surrogate
/// without its partner U+FFFD.
void append_utf8(std::string& out, std::u16string_view text);

/// `text` as valid UTF-8, by the same rules.
[[nodiscard]] std::string to_utf8(std::u16string_view text);

/// `text` as UTF-16, or nothing when it is no valid UTF-8 (cut, overlong or surrogate sequences, or
/// characters past U+10FFFF).
[[nodiscard]] std::optional<std::u16string> to_utf16(std::string_view text);

}  // namespace jwnls::client

#endif  // JWNLS_CLIENT_UTF8_H_
