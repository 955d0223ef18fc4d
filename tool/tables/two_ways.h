// What is said of values that could be meant otherwise.

#ifndef JWNLS_TOOL_TABLES_TWO_WAYS_H_
#define JWNLS_TOOL_TABLES_TWO_WAYS_H_

#include <cstdint>
#include <string>
#include <string_view>

#include "jwnls/jwnls.hpp"

namespace jwnls::tool {

/// What a text is read as, and what it is elsewhere: with another order= of the layout, else in the
/// first locale that reads another value. "2024-01-02 here, 2024-02-01 with order=dmy; order=
/// decides"; "2024-11-15 here, 2024-10-15 in hr"; empty where none is found. Throws
/// Failure{unavailable}. All locales are asked, which takes some 10 milliseconds.
[[nodiscard]] std::string meanings(const Layout& layout, std::string_view text);

/// "1 value could be meant otherwise and none decides; the first is '1.234': 1234 here, 1.234 in
/// en"
///   first  the text, with its place
[[nodiscard]] std::string undecided_values(std::uint64_t count, const std::string& first,
                                           const std::string& meanings);

}  // namespace jwnls::tool

#endif  // JWNLS_TOOL_TABLES_TWO_WAYS_H_
