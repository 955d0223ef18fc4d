// Colour in messages, for people at a terminal.

#ifndef JWNLS_TOOL_MESSAGE_COLOUR_H_
#define JWNLS_TOOL_MESSAGE_COLOUR_H_

#include <string>
#include <string_view>

namespace jwnls::tool {

/// The message with what does not fit in red and names in bold, by the forms that messages have:
///
///   [PLACE ": "] [COLUMN ": "] KIND " '" TEXT "': " REASON     PLACE and COLUMN are bold. TEXT is
///                                                              red or, where REASON has
///                                                              "'REST' does not", REST in it
///   ... "there is '" NAME "'"                                  NAME is bold
///   ... "did you mean '" NAME "'?"
[[nodiscard]] std::string coloured(std::string_view message);

}  // namespace jwnls::tool

#endif  // JWNLS_TOOL_MESSAGE_COLOUR_H_
