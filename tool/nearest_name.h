// The name that somebody may have meant.

#ifndef JWNLS_TOOL_NEAREST_NAME_H_
#define JWNLS_TOOL_NEAREST_NAME_H_

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace jwnls::tool {

/// How many letters have to be put in, left out, replaced or exchanged with their neighbour to make
/// one text of the other; case does not count. At most `limit` + 1.
[[nodiscard]] std::size_t edit_distance(std::string_view one, std::string_view other,
                                        std::size_t limit);

/// The name nearest to `name`, of equals the first: equal but for its case, or one or two letters
/// away (of short names: one), or one that begins so. None when nothing is near.
[[nodiscard]] std::optional<std::string> nearest_name(std::string_view name,
                                                      const std::vector<std::string>& names);

/// "; did you mean 'date'?", or nothing: the end of a message about an unknown name.
[[nodiscard]] std::string did_you_mean(std::string_view name,
                                       const std::vector<std::string>& names);

}  // namespace jwnls::tool

#endif  // JWNLS_TOOL_NEAREST_NAME_H_
