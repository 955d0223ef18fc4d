// The option words of layouts, "order=dmy", on their way from the command line to a layout.

#ifndef JWNLS_TOOL_LAYOUT_WORDS_H_
#define JWNLS_TOOL_LAYOUT_WORDS_H_

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace jwnls::tool {

/// Whether a word says how texts are read, how they are written, or both.
enum class Side { reading, writing, both };

/// The words of one side (both: all), in the order given and with blanks between them; words that
/// nobody knows are of each side: the layout says what is wrong with them.
[[nodiscard]] std::string words_of(const std::vector<std::string>& words, Side side);

/// True when a word was given with that value (of flags: empty).
[[nodiscard]] bool gives(const std::vector<std::string>& words, std::string_view name,
                         std::string_view value = {});

/// Takes the words of that name out, and gives the last one's value.
std::optional<std::string> take_word(std::vector<std::string>& words, std::string_view name);

/// Whether the words say the order of dates: who says it has decided.
[[nodiscard]] bool give_order(const std::vector<std::string>& words);

}  // namespace jwnls::tool

#endif  // JWNLS_TOOL_LAYOUT_WORDS_H_
