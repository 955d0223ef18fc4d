#include "tool/session.h"

#include <cstdlib>

#include "tool/exit_code.h"
#include "tool/output.h"

namespace jwnls::tool {

LocaleChoice environment_locale(const char* category,
                                const std::function<const char*(const char* name)>& variable) {
  for (const char* name : {"LC_ALL", category, "LANG"}) {
    const char* value = variable(name);
    if (value != nullptr && *value != '\0') return {value, name};
  }
  return {"C", {}};
}

client::Host open_host(std::map<std::string, std::string> module_options) {
  client::HostOptions options;
  options.options = std::move(module_options);
  options.journal = [](std::string_view message) {
    report(std::string("warning: ").append(message));
  };
  auto host = client::Host::open(std::move(options));
  if (!host) throw Failure{ExitCode::unavailable, host.error().message};
  return *host;
}

client::Locale open_locale(const client::Host& host, const std::string& locale_name,
                           const char* category, const std::string& zone) {
  const LocaleChoice choice = locale_name.empty() ? environment_locale(category, std::getenv)
                                                  : LocaleChoice{locale_name, {}};
  const std::string origin = choice.origin.empty() ? "" : " (from " + choice.origin + ")";
  const auto match = host.match(choice.name);
  if (!match) throw Failure{ExitCode::unavailable, match.error().message + origin};
  if (!match->exact) {
    report("note: locale " + client::in_quotes(choice.name) + origin +
           " is not known as such; using " + match->name);
  }
  const auto locale = host.locale(choice.name, zone);
  if (!locale) throw Failure{ExitCode::unavailable, locale.error().message};
  return *locale;
}

}  // namespace jwnls::tool
