// Gets a command its host and its locale, and tells the user what is amiss with them.

#ifndef JWNLS_TOOL_SESSION_H_
#define JWNLS_TOOL_SESSION_H_

#include <map>
#include <string>

#include "client/jwnls.h"

namespace jwnls::tool {

/// Starts the host, with options of the module by name; its warnings go to standard error. Throws
/// Failure{unavailable}.
[[nodiscard]] client::Host open_host(std::map<std::string, std::string> module_options = {});

/// Opens the locale of a command line with a time zone (empty: the system's). When `locale_name` is
/// empty, it is the environment's: the first of LC_ALL, `category` ("LC_TIME") and LANG that is set
/// and not empty, else "C". Reports a name that has only a near relative. Throws
/// Failure{unavailable}.
[[nodiscard]] client::Locale open_locale(const client::Host& host, const std::string& locale_name,
                                         const char* category, const std::string& zone);

}  // namespace jwnls::tool

#endif  // JWNLS_TOOL_SESSION_H_
