// Reads numbers as programs write them: "1234.5", "-5", "1e-3", "0xFF"; not as locales do.
//
//   missing   = "." | "._" | "." letter
//   number    = [sign] (decimal | "inf" | "infinity" | "nan")     words in any letter case
//   decimal   = (digits ["." [digits]] | "." digits) [("e" | "E") [sign] digits]
//   integer   = [sign] (digits | ("0x" | "0X") hexadecimal digits)
//   sign      = "+" | "-"

#ifndef JWNLS_TOOL_PLAIN_NUMBER_H_
#define JWNLS_TOOL_PLAIN_NUMBER_H_

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <tl/expected.hpp>
#include <variant>

#include "client/jwnls.h"

namespace jwnls::tool {

/// ".", "._" or ".A" to ".Z" in any case; nothing for any other text.
[[nodiscard]] std::optional<client::MissingValue> read_missing(std::string_view text);

/// Reads the whole text: the double nearest to it; "inf" and "nan" too. The error is the reason for
/// a person, without the text itself.
[[nodiscard]] tl::expected<double, std::string> read_number(std::string_view text);

/// Signed where the integer can be.
using Integer = std::variant<std::int64_t, std::uint64_t>;

/// Reads the whole text: decimal, or hexadecimal behind "0x". Errors as above.
[[nodiscard]] tl::expected<Integer, std::string> read_integer(std::string_view text);

}  // namespace jwnls::tool

#endif  // JWNLS_TOOL_PLAIN_NUMBER_H_
