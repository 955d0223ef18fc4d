// The functions of jwnls.h about the process: versions, codes, lists, zones, settings.

#include <algorithm>
#include <array>
#include <cstring>
#include <iterator>
#include <string>
#include <string_view>

#include "host/locales/locale_names.h"
#include "host/locales/name_tables.h"
#include "include/jwnls/jwnls.h"
#include "library/process/process.h"
#include "library/texts/failure.h"
#include "library/texts/give_text.h"
#include "library/texts/utf8.h"

namespace {

using jwnls::library::guarded;

constexpr const char* code_texts[] = {"read",
                                      "not read",
                                      "out of range",
                                      "missing",
                                      "does not fit",
                                      "not available",
                                      "cannot be loaded",
                                      "no memory",
                                      "not for layouts of this kind"};

std::string utf8_of(std::u16string_view text) {
  std::string bytes(text.size() * 3, '\0');
  bytes.resize(jwnls::library::to_utf8(text, bytes.data(), bytes.size()));
  return bytes;
}

// Terminated, and cut where it does not fit.
template <std::size_t room>
void copy_text(std::string_view text, char (&out)[room]) {
  out[text.copy(out, room - 1)] = '\0';
}

}  // namespace

extern "C" {

int jwnls_version_number(void) { return JWNLS_VERSION_NUMBER; }
const char* jwnls_version(void) { return JWNLS_VERSION; }
const char* jwnls_interface_version(void) { return "6.1"; }
const char* jwnls_data_version(void) { return jwnls::host::names::data_version; }

int jwnls_zones_version(char* out, size_t room, size_t* length) {
  *length = 0;
  std::string version;
  const int code = guarded(nullptr, [&] { version = jwnls::library::zones_version(); });
  return code == JWNLS_OK ? jwnls::library::give_text(version, out, room, length) : code;
}

const char* jwnls_code_text(int code) {
  const bool is_known = code >= 0 && code < static_cast<int>(std::size(code_texts));
  return is_known ? code_texts[code] : "no code of jwnls.h";
}

int jwnls_locales(int (*visit)(void* context, const jwnls_locale_info* locale), void* context) {
  int result = JWNLS_OK;
  const int code = guarded(nullptr, [&] {
    for (const auto& row : jwnls::host::available_locales()) {
      const std::string name(row.name);
      const std::string english_name = utf8_of(row.english_name);
      const std::string own_name = utf8_of(row.own_name);
      const jwnls_locale_info info = {sizeof info, name.c_str(), english_name.c_str(),
                                      own_name.c_str()};
      result = visit(context, &info);
      if (result != 0) return;
    }
  });
  return code == JWNLS_OK ? result : code;
}

int jwnls_zones(int (*visit)(void* context, const char* zone), void* context) {
  int result = JWNLS_OK;
  const int code = guarded(nullptr, [&] {
    for (const std::string& name : jwnls::library::zone_names()) {
      result = visit(context, name.c_str());
      if (result != 0) return;
    }
  });
  return code == JWNLS_OK ? result : code;
}

int jwnls_match_locale(const char* name, char canonical[64], int* exact) {
  std::array<char16_t, 96> units;
  const auto count = jwnls::library::to_utf16(name, units.data(), units.size());
  const auto found = jwnls::host::match_locale_name({units.data(), count.value_or(0)});
  const std::size_t length = std::min<std::size_t>(found.canonical.size(), 63);
  found.canonical.copy(canonical, length);
  canonical[length] = '\0';
  *exact = found.status == jwnls::Status::ok ? 1 : 0;
  return length > 0 ? JWNLS_OK : JWNLS_UNKNOWN;
}

int jwnls_zone_at(const char* zone, int64_t seconds, jwnls_zone_state* state, jwnls_error* error) {
  return guarded(error, [&] {
    const auto opened = jwnls::library::open_zone(zone != nullptr ? zone : "");
    jwnls_zone_state now = {};
    now.size = std::min(state->size, sizeof now);
    now.offset_seconds = opened->offset_at(seconds);
    copy_text(opened->abbreviation_at(seconds), now.abbreviation);
    copy_text(opened->name(), now.name);
    std::memcpy(state, &now, now.size);
  });
}

int jwnls_reload_zones(jwnls_error* error) {
  return guarded(error, [] { jwnls::library::reload_zones(); });
}

int jwnls_configure(const char* setting, const char* value, jwnls_error* error) {
  return guarded(error, [&] { jwnls::library::configure(setting, value != nullptr ? value : ""); });
}

void jwnls_set_journal(void (*write)(void* context, const char* message), void* context) {
  jwnls::library::set_journal(write, context);
}

}  // extern "C"
