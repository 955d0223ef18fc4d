// An offset from UTC as people write it.

#ifndef JWNLS_TOOL_ZONE_TEXT_H_
#define JWNLS_TOOL_ZONE_TEXT_H_

#include <chrono>
#include <string>

namespace jwnls::tool {

/// "UTC+01:00"; seconds only where there are some.
[[nodiscard]] std::string offset_text(std::chrono::seconds offset);

}  // namespace jwnls::tool

#endif  // JWNLS_TOOL_ZONE_TEXT_H_
