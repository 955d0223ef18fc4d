#include "tool/session.h"

#include <cstdlib>

#include "tool/exit_code.h"
#include "tool/output.h"

namespace jwnls::tool {
namespace {

// A locale name and where it comes from, for messages: "LC_TIME", or empty for the command line.
struct LocaleChoice {
  std::string name;
  std::string origin;
};

LocaleChoice environment_locale(const char* category) {
  for (const char* name : {"LC_ALL", category, "LANG"}) {
    const char* value = std::getenv(name);
    if (value != nullptr && *value != '\0') return {value, name};
  }
  return {"C", {}};
}

}  // namespace

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
  const LocaleChoice choice =
      locale_name.empty() ? environment_locale(category) : LocaleChoice{locale_name, {}};
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
