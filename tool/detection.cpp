#include "tool/detection.h"

#include <algorithm>
#include <string_view>

#include "tool/exit_code.h"
#include "tool/session.h"

namespace jwnls::tool {

Detection::Detection(const jwnls_texts& texts, const std::string& locales, const char* kinds)
    : detection_(nullptr, &jwnls_detection_close) {
  jwnls_detection* detection = nullptr;
  jwnls_error error = {};
  if (jwnls_detect(&texts, kinds, locales.c_str(), &detection, &error) != JWNLS_OK) {
    throw Failure{ExitCode::unavailable, error.text};
  }
  detection_.reset(detection);
}

int Detection::kind() const { return jwnls_detection_kind(detection_.get()); }

int Detection::most_read() const {
  int most = JWNLS_INTEGER;
  for (int kind = JWNLS_NUMBER; jwnls_kind_name(kind) != nullptr; ++kind) {
    if (found(kind).read > found(most).read) most = kind;
  }
  return most;
}

jwnls_detected_kind Detection::found(int kind) const {
  jwnls_detected_kind found = {};
  found.size = sizeof found;
  (void)jwnls_detected_kind_of(detection_.get(), kind, &found);
  return found;
}

jwnls_detected_reading Detection::reading(int kind, std::size_t index) const {
  jwnls_detected_reading reading = {};
  reading.size = sizeof reading;
  (void)jwnls_detected_reading_of(detection_.get(), kind, index, &reading);
  return reading;
}

std::vector<std::string> Detection::locales(int kind, std::size_t reading) const {
  std::vector<std::string> names;
  const auto name = [&](std::size_t index) {
    return jwnls_detected_locale(detection_.get(), kind, reading, index);
  };
  while (const char* next = name(names.size())) names.emplace_back(next);
  return names;
}

std::string find_locales(const std::string& list) {
  std::string names;
  std::string_view rest = list;
  while (!rest.empty()) {
    const std::size_t end = std::min(rest.find_first_of(", \t"), rest.size());
    const std::string name(rest.substr(0, end));
    rest.remove_prefix(std::min(end + 1, rest.size()));
    if (name.empty()) continue;
    names.append(names.empty() ? "" : ",").append(name == "*" ? name : find_locale(name, ""));
  }
  return names;
}

std::string listed(const std::vector<std::string>& items, std::size_t limit) {
  std::string text;
  const std::size_t shown = std::min(items.size(), limit);
  for (std::size_t i = 0; i < shown; ++i) text.append(i == 0 ? "" : ", ").append(items[i]);
  if (shown < items.size()) text += " and " + std::to_string(items.size() - shown) + " more";
  return text;
}

}  // namespace jwnls::tool
