#include "tool/session.h"

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <vector>

#include "tool/exit_code.h"
#include "tool/nearest_name.h"
#include "tool/output.h"
#include "tool/terminal_text.h"

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

std::string find_locale(const std::string& name, const char* category) {
  const LocaleChoice choice = name.empty() ? environment_locale(category) : LocaleChoice{name, {}};
  const std::string origin = choice.origin.empty() ? "" : " (from " + choice.origin + ")";
  char canonical[64];
  int exact = 0;
  if (jwnls_match_locale(choice.name.c_str(), canonical, &exact) != JWNLS_OK) {
    std::vector<std::string> names;
    (void)each_locale([&names](const jwnls_locale_info& each) { names.emplace_back(each.name); });
    throw Failure{ExitCode::unavailable, "locale " + in_quotes(choice.name) + ": unknown" + origin +
                                             did_you_mean(choice.name, names)};
  }
  if (exact == 0) {
    report("note: locale " + in_quotes(choice.name) + origin + " is not known as such; using " +
           canonical);
  }
  return canonical;
}

jwnls_zone_state zone_at(const std::string& zone, std::int64_t seconds) {
  jwnls_zone_state state = {};
  state.size = sizeof state;
  jwnls_error error = {};
  if (jwnls_zone_at(zone.c_str(), seconds, &state, &error) != JWNLS_OK) {
    std::vector<std::string> names;
    (void)jwnls_zones(
        [](void* all, const char* name) {
          static_cast<std::vector<std::string>*>(all)->emplace_back(name);
          return 0;
        },
        &names);
    const bool is_unknown = error.code == JWNLS_UNKNOWN;
    throw Failure{ExitCode::unavailable,
                  error.text + (is_unknown ? did_you_mean(zone, names) : std::string())};
  }
  return state;
}

jwnls_zone_state zone_now(const std::string& zone) {
  const auto now = std::chrono::system_clock::now().time_since_epoch();
  return zone_at(zone, std::chrono::floor<std::chrono::seconds>(now).count());
}

std::string offset_text(std::int32_t seconds) {
  const std::chrono::hh_mm_ss parts{std::chrono::seconds(seconds)};
  char text[32];
  (void)std::snprintf(text, sizeof text, "UTC%c%02d:%02d:%02d", parts.is_negative() ? '-' : '+',
                      static_cast<int>(parts.hours().count()),
                      static_cast<int>(parts.minutes().count()),
                      static_cast<int>(parts.seconds().count()));
  std::string all(text);
  if (parts.seconds().count() == 0) all.resize(all.size() - std::string_view(":00").size());
  return all;
}

Layout open_layout(const std::string& locale, Kind kind, const std::string& words) {
  jwnls_set_journal(
      [](void*, const char* message) { report(std::string("warning: ").append(message)); },
      nullptr);
  auto layout = Layout::open(locale, kind, words);
  if (layout) return *layout;
  // Only the words are the command line's own fault: a zone may be there elsewhere.
  const std::string message = layout.message();
  if (message.starts_with("option ")) throw Failure{ExitCode::usage, message + " (see --help)"};
  throw Failure{ExitCode::unavailable, message};
}

}  // namespace jwnls::tool
