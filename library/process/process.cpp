#include "library/process/process.h"

#include <cctz/civil_time.h>
#include <cctz/time_zone.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <map>
#include <mutex>
#include <utility>

#include "host/host.h"
#include "host/locales/locale_names.h"
#include "library/process/linked_modules.h"
#include "library/process/module_folders.h"
#include "library/texts/failure.h"
#include "library/texts/utf8.h"

namespace jwnls::library {
namespace {

// What the first call makes and nothing ever takes away.
class Process {
 public:
  Process() : host_(configuration()) {
    std::string why;
    if (host_.factory(&why) == nullptr) {
      fail(JWNLS_LOAD, [&](Message& message) { message.said(why); });
    }
  }

  const Locale& locale(std::string_view canonical) {
    const std::lock_guard guard(opening_);
    if (const auto known = locales_.find(canonical); known != locales_.end()) return known->second;
    Locale locale = make_locale(canonical);
    return locales_.emplace(canonical, std::move(locale)).first->second;
  }

 private:
  static host::HostConfiguration configuration() {
    host::HostConfiguration configuration;
    if (const char* folders = secure_getenv("JWNLS_EXTENSION_PATH")) {
      configuration.extension_path = absolute_folders(folders);
    }
    configuration.linked_modules = linked_modules();
    configuration.last_extension_path = folders_beside_library();
    return configuration;
  }

  Locale make_locale(std::string_view canonical);

  host::Host host_;
  std::mutex opening_;
  std::map<std::string, Locale, std::less<>> locales_;
};

// A surrogate in some text of the record that a service writes.
bool has_surrogates(const LocaleRecord& record) {
  const auto* const first = reinterpret_cast<const TextEntry*>(&record.full_weekdays);
  const auto* const end = reinterpret_cast<const TextEntry*>(&record.unread_6112);
  for (const TextEntry* entry = first; entry != end; ++entry) {
    for (const char16_t unit : text_of(*entry)) {
      if ((unit & 0xF800U) == 0xD800U) return true;
    }
  }
  return false;
}

Locale Process::make_locale(std::string_view canonical) {
  std::array<char16_t, 80> name;
  const std::size_t length = to_utf16(canonical, name.data(), name.size()).value_or(0);
  // Wall-clock values carry no zone, so that any serves; layouts hold the zones that they convert
  // by.
  std::uint32_t status = 0;
  std::string why;
  LocaleHandle* handle = host_.create_handle({name.data(), length}, u"UTC", false, &status, &why);
  if (handle == nullptr) {
    fail(JWNLS_LOAD, [&](Message& message) {
      (message << "locale ").quoted(canonical) << ": ";
      message.said(why.empty() ? "its data cannot be loaded" : why);
    });
  }
  return {std::string(canonical), handle, handle->record, has_surrogates(*handle->record)};
}

Process& process() {
  static std::mutex making;
  static Process* made = nullptr;
  const std::lock_guard guard(making);
  if (made == nullptr) made = new Process;  // stays: see the header
  return *made;
}

host::LocaleMatch match(std::string_view name) {
  std::array<char16_t, 96> units;
  const auto length = to_utf16(name, units.data(), units.size());
  if (!length) return {Status::lookup_failed, {}};
  return host::match_locale_name({units.data(), *length});
}

// A zone of the library for zones.
class DatabaseZone final : public Zone {
 public:
  DatabaseZone(std::string name, cctz::time_zone zone) : Zone(std::move(name)), zone_(zone) {}

  [[nodiscard]] std::int32_t offset_at(std::int64_t moment) const noexcept override {
    return zone_.lookup(cctz::time_point<cctz::seconds>(cctz::seconds(moment))).offset;
  }
  [[nodiscard]] std::string_view abbreviation_at(std::int64_t moment) const noexcept override {
    return zone_.lookup(cctz::time_point<cctz::seconds>(cctz::seconds(moment))).abbr;
  }
  [[nodiscard]] Moments moments_of(std::int64_t clock) const noexcept override {
    const auto found = zone_.lookup(cctz::civil_second(1970, 1, 1) + clock);
    const auto seconds = [](auto point) { return point.time_since_epoch().count(); };
    switch (found.kind) {
      case cctz::time_zone::civil_lookup::UNIQUE:
        return {1, seconds(found.pre), 0};
      case cctz::time_zone::civil_lookup::REPEATED:
        return {2, seconds(found.pre), seconds(found.post)};
      default:
        return {0, seconds(found.pre), seconds(found.post)};
    }
  }

 private:
  cctz::time_zone zone_;
};

}  // namespace

std::shared_ptr<const Zone> open_zone(std::string_view name) {
  cctz::time_zone zone;
  if (!cctz::load_time_zone(std::string(name), &zone)) {
    fail(JWNLS_UNKNOWN,
         [name](Message& message) { (message << "time zone ").quoted(name) << ": unknown"; });
  }
  return std::make_shared<DatabaseZone>(std::string(name), zone);
}

const Locale& open_locale(std::string_view name) {
  const host::LocaleMatch found = match(name);
  if (found.canonical.empty()) {
    fail(JWNLS_UNKNOWN,
         [name](Message& message) { (message << "locale ").quoted(name) << ": unknown"; });
  }
  return process().locale(found.canonical);
}

}  // namespace jwnls::library

extern "C" {

int jwnls_match_locale(const char* name, char canonical[64], int* exact) {
  const auto found = jwnls::library::match(name);
  const std::size_t length = std::min<std::size_t>(found.canonical.size(), 63);
  found.canonical.copy(canonical, length);
  canonical[length] = '\0';
  *exact = found.status == jwnls::Status::ok ? 1 : 0;
  return length > 0 ? JWNLS_OK : JWNLS_UNKNOWN;
}

}  // extern "C"
