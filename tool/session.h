// Gets a command its layouts, and tells the user what is amiss with them.

#ifndef JWNLS_TOOL_SESSION_H_
#define JWNLS_TOOL_SESSION_H_

#include <string>

#include "jwnls/jwnls.hpp"

namespace jwnls::tool {

/// The canonical name of the locale of a command line. When `name` is empty, it is the
/// environment's: the first of LC_ALL, `category` ("LC_TIME") and LANG that is set and not empty,
/// else "C". Reports a name that has only a near relative. Throws Failure{unavailable}.
[[nodiscard]] std::string find_locale(const std::string& name, const char* category);

/// What the clocks of a zone (empty: the system's) show at a moment, in seconds from 1970. Throws
/// Failure{unavailable}.
[[nodiscard]] jwnls_zone_state zone_at(const std::string& zone, std::int64_t seconds);
[[nodiscard]] jwnls_zone_state zone_now(const std::string& zone);

/// "UTC+01:00"; seconds only where there are some.
[[nodiscard]] std::string offset_text(std::int32_t seconds);

/// Opens a layout of a canonical locale; warnings of what it loads go to standard error. Throws
/// Failure: usage for option words that are wrong, unavailable for the rest.
[[nodiscard]] Layout open_layout(const std::string& locale, Kind kind, const std::string& words);

}  // namespace jwnls::tool

#endif  // JWNLS_TOOL_SESSION_H_
