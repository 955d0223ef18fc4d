#include "tool/session.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <iterator>
#include <sstream>
#include <string_view>
#include <vector>

#include "tool/exit_code.h"
#include "tool/nearest_name.h"
#include "tool/options_table.h"
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

// The locale that may be meant, also by what people call its language: "german".
std::string locale_meant(const std::string& name) {
  std::vector<std::string> languages;
  std::vector<std::string> names;
  (void)each_locale([&](const jwnls_locale_info& each) {
    names.emplace_back(each.name);
    char canonical[64];
    int exact = 0;
    const bool is_language = names.back().find('_') == std::string::npos &&
                             jwnls_match_locale(each.english_name, canonical, &exact) == JWNLS_OK;
    if (is_language) languages.emplace_back(each.english_name);
  });
  languages.insert(languages.end(), names.begin(), names.end());
  return did_you_mean(name, languages);
}

// The zone that may be meant, also by its city alone: "berlin".
std::string zone_meant(const std::string& zone) {
  std::vector<std::string> names;
  (void)jwnls_zones(
      [](void* all, const char* name) {
        static_cast<std::vector<std::string>*>(all)->emplace_back(name);
        return 0;
      },
      &names);
  std::string meant = did_you_mean(zone, names);
  if (!meant.empty()) return meant;
  std::vector<std::string> cities;
  cities.reserve(names.size());
  for (const std::string& name : names) cities.push_back(name.substr(name.rfind('/') + 1));
  const auto city = nearest_name(zone, cities);
  if (!city) return {};
  const auto found = std::find(cities.begin(), cities.end(), *city) - cities.begin();
  return "; did you mean " + in_quotes(names[static_cast<std::size_t>(found)]) + "?";
}

// What a word may be meant to be that a layout refuses, by what it says:
//   option 'stile=long': no such word
//   option 'style=shrt': the value is one of medium short long full
std::string word_meant(const std::string& message) {
  constexpr std::string_view begin = "option '";
  constexpr std::string_view list = "the value is one of ";
  const std::string word =
      message.substr(begin.size(), message.find('\'', begin.size()) - begin.size());
  const std::size_t equals = std::min(word.find('='), word.size());
  const std::size_t values = message.find(list);
  std::vector<std::string> names;
  if (values != std::string::npos) {
    std::istringstream words(message.substr(values + list.size()));
    names.assign(std::istream_iterator<std::string>(words), {});
    return did_you_mean(word.substr(std::min(equals + 1, word.size())), names);
  }
  if (!message.ends_with("no such word")) return {};
  for (const OptionRow& row : option_rows()) {
    if (row.is_word) names.emplace_back(row.name);
  }
  return did_you_mean(word.substr(0, equals), names);
}

}  // namespace

std::string find_locale(const std::string& name, const char* category) {
  const LocaleChoice choice = name.empty() ? environment_locale(category) : LocaleChoice{name, {}};
  const std::string origin = choice.origin.empty() ? "" : " (from " + choice.origin + ")";
  char canonical[64];
  int exact = 0;
  if (jwnls_match_locale(choice.name.c_str(), canonical, &exact) != JWNLS_OK) {
    throw Failure{ExitCode::unavailable, "locale " + in_quotes(choice.name) + ": unknown" + origin +
                                             locale_meant(choice.name)};
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
    const bool is_unknown = error.code == JWNLS_UNKNOWN;
    throw Failure{ExitCode::unavailable,
                  error.text + (is_unknown ? zone_meant(zone) : std::string())};
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
  if (message.starts_with("option ")) {
    throw Failure{ExitCode::usage, message + word_meant(message) + " (see --help)"};
  }
  constexpr std::string_view zone = "time zone '";
  const std::size_t end = message.rfind("': unknown");
  const bool is_zone = message.starts_with(zone) && end != std::string::npos;
  throw Failure{
      ExitCode::unavailable,
      is_zone ? message + zone_meant(message.substr(zone.size(), end - zone.size())) : message};
}

}  // namespace jwnls::tool
