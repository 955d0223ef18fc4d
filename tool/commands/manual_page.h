// The manual page, jwnls(1), made of the tables of commands, kinds and options.

#ifndef JWNLS_TOOL_COMMANDS_MANUAL_PAGE_H_
#define JWNLS_TOOL_COMMANDS_MANUAL_PAGE_H_

#include <string>

namespace jwnls::tool {

/// In roff, with the man macros.
[[nodiscard]] std::string manual_page();

}  // namespace jwnls::tool

#endif  // JWNLS_TOOL_COMMANDS_MANUAL_PAGE_H_
