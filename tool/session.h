// Gets a command its host and its locale, and tells the user what is amiss with them.

#ifndef JWNLS_TOOL_SESSION_H_
#define JWNLS_TOOL_SESSION_H_

#include <functional>
#include <map>
#include <string>

#include "client/jwnls.h"

namespace jwnls::tool {

/// A locale name and where it comes from, for messages: "LC_TIME", or empty for the command line.
struct LocaleChoice {
  std::string name;
  std::string origin;
};

/// The locale that the environment asks for: the first of LC_ALL, `category` ("LC_TIME") and LANG
/// that is set and not empty, else "C". `variable` is getenv() but for tests.
[[nodiscard]] LocaleChoice environment_locale(
    const char* category, const std::function<const char*(const char* name)>& variable);

/// Starts the host, with options of the module by name; its warnings go to standard error. Throws
/// Failure{unavailable}.
[[nodiscard]] client::Host open_host(std::map<std::string, std::string> module_options = {});

/// Opens the locale of a command line, or the environment's for `category` when `locale_name` is
/// empty, with a time zone (empty: the system's). Reports a name that has only a near relative.
/// Throws Failure{unavailable}.
[[nodiscard]] client::Locale open_locale(const client::Host& host, const std::string& locale_name,
                                         const char* category, const std::string& zone);

}  // namespace jwnls::tool

#endif  // JWNLS_TOOL_SESSION_H_
