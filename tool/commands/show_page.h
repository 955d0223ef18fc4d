// `jwnls show LOCALE --html FILE`: a locale's conventions as a page, with examples that its layouts
// write and read as the page is made.

#ifndef JWNLS_TOOL_COMMANDS_SHOW_PAGE_H_
#define JWNLS_TOOL_COMMANDS_SHOW_PAGE_H_

#include <string>

#include "tool/commands/locale_facts.h"

namespace jwnls::tool {

[[nodiscard]] std::string show_page(const LocaleFacts& facts);

}  // namespace jwnls::tool

#endif  // JWNLS_TOOL_COMMANDS_SHOW_PAGE_H_
