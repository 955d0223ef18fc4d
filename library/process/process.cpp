#include "library/process/process.h"

#include <array>
#include <cstdlib>
#include <cstring>
#include <iterator>
#include <map>
#include <utility>

#include "host/host.h"
#include "host/locales/locale_names.h"
#include "host/objects/memory_refusals.h"
#include "library/process/linked_modules.h"
#include "library/process/module_folders.h"
#include "library/process/opening.h"
#include "library/texts/failure.h"
#include "library/texts/utf8.h"
#include "library/zones/zone_database.h"

namespace jwnls::library {
namespace {

// The host with its modules, and every locale that was opened.
class Modules {
 public:
  explicit Modules(std::string_view first_locale);

  const Locale& locale(std::string_view canonical) {
    const auto known = locales_.find(canonical);
    return known != locales_.end() ? known->second : add_locale(canonical);
  }
  void fill(std::string_view canonical, LocaleRecord& record);

 private:
  const Locale& add_locale(std::string_view canonical);

  host::Host host_;
  std::map<std::string, Locale, std::less<>> locales_;
};

// What the process has, all of it guarded by Opening.
struct State {
  Modules* modules = nullptr;  // once made, for ever
  std::shared_ptr<ZoneDatabase> zones;
  std::optional<std::string> module_path;  // none: not configured
  std::optional<std::string> zone_folder;
  void (*journal)(void* context, const char* message) = nullptr;
  void* journal_context = nullptr;
};

// Never destroyed: handles point into it, and threads may use them while the process ends.
union Immortal {
  constexpr Immortal() : state() {}
  ~Immortal() {}
  State state;
};
constinit Immortal process;

// Modules write only while something opens, so that one thread at a time comes here.
void tell_journal(std::uint32_t, std::u16string_view message) {
  const State& state = process.state;
  if (state.journal == nullptr) return;
  jwnls_error line;
  std::array<char, 3 * sizeof line.text> text;
  message = message.substr(0, sizeof line.text);
  const std::size_t bytes = to_utf8(message, text.data(), text.size());
  Message(&line, JWNLS_OK).said({text.data(), bytes});
  state.journal(state.journal_context, line.text);
}

host::HostConfiguration configuration() {
  host::HostConfiguration configuration;
  const State& state = process.state;
  configuration.extension_path = absolute_folders(state.module_path.value_or(""));
  const char* folders = secure_getenv("JWNLS_EXTENSION_PATH");
  if (folders != nullptr && state.module_path.value_or("").empty()) {
    configuration.extension_path = absolute_folders(folders);
  }
  configuration.linked_modules = linked_modules();
  // With the modules linked in there is nothing to look for.
  if (configuration.linked_modules.empty()) {
    configuration.last_extension_path =
        folders_beside_library();  // unreachable: builds that are tested have them linked in
  }
  configuration.journal = tell_journal;
  configuration.shares_handles = false;  // here they are kept by locale
  return configuration;
}

// Statuses do not always say that memory was what failed: whether there was less of it since.
class MemoryWatch {
 public:
  void check() const {
    if (host::memory_refusals.load() != before_) throw std::bad_alloc();
  }

 private:
  const std::uint64_t before_ = host::memory_refusals.load();
};

// A locale's canonical name.
class WideName {
 public:
  explicit WideName(std::string_view name)
      : length_(to_utf16(name, units_.data(), units_.size()).value_or(0)) {}
  [[nodiscard]] std::u16string_view text() const noexcept { return {units_.data(), length_}; }

 private:
  std::array<char16_t, 80> units_{};
  std::size_t length_;
};

// A handle proves that every module can be loaded.
Modules::Modules(std::string_view first_locale) : host_(configuration()) {
  (void)add_locale(first_locale);
}

// A surrogate in some text of the record that a service writes. Four units at a time: few texts
// have any that are as high.
bool has_surrogates(const LocaleRecord& record) {
  constexpr std::uint64_t high = 0x8000800080008000;
  const auto* const first = reinterpret_cast<const TextEntry*>(&record.full_weekdays);
  const auto* const end = reinterpret_cast<const TextEntry*>(&record.unread_6112);
  for (const TextEntry* entry = first; entry != end; ++entry) {
    const std::u16string_view text = text_of(*entry);
    std::uint64_t all = 0;
    for (std::size_t at = 0; at < text.size(); at += 4) {
      static_assert(text_entry_capacity % 4 == 0);
      std::uint64_t units = 0;
      std::memcpy(&units, entry->units + at, sizeof units);
      all |= units;
    }
    if ((all & high) == 0) continue;
    for (const char16_t unit : text) {
      if ((unit & 0xF800U) == 0xD800U) return true;
    }
  }
  return false;
}

const Locale& Modules::add_locale(std::string_view canonical) {
  // Wall-clock values carry no zone, so that any serves; layouts hold the zones that they convert
  // by.
  const MemoryWatch memory;
  std::uint32_t status = 0;
  std::string why;
  const auto destroy = [this](LocaleHandle* made) { host_.destroy_handle(made); };
  std::unique_ptr<LocaleHandle, decltype(destroy)> handle(
      host_.create_handle(WideName(canonical).text(), u"UTC", true, &status, &why), destroy);
  if (handle == nullptr) {
    memory.check();
    fail(JWNLS_LOAD, [&](Message& message) {
      if (why.empty()) {
        (message << "locale ").quoted(canonical) << ": its data cannot be loaded";
      } else {
        message.said(why);
      }
    });
  }
  const LocaleRecord* const record = handle->record;
  Locale locale{std::string(canonical), handle.get(), record, has_surrogates(*record)};
  const Locale& added = locales_.emplace(canonical, std::move(locale)).first->second;
  (void)handle.release();
  return added;
}

// As the module has it done.
void Modules::fill(std::string_view canonical, LocaleRecord& record) {
  const WideName wide(canonical);
  const std::u16string_view name = wide.text();
  record.locale_name.length = static_cast<std::int64_t>(name.size());
  name.copy(record.locale_name.units, std::size(record.locale_name.units));
  const LocaleDatabase* const database = host_.context()->locale_database;
  const std::uint32_t status =
      database->fill(&record, name.data(), static_cast<std::int64_t>(name.size()));
  if (status == code(Status::ok) || status == code(Status::filled_with_warning)) return;
  fail(JWNLS_LOAD, [&](Message& message) {
    (message << "locale ").quoted(canonical) << ": its data cannot be loaded";
  });
}

//   first_locale  what is opened then
Modules& modules(std::string_view first_locale) {
  auto& made = process.state.modules;
  if (made == nullptr) made = new Modules(first_locale);
  return *made;
}

ZoneDatabase& zones() {
  auto& made = process.state.zones;
  if (made == nullptr)
    made = std::make_shared<ZoneDatabase>(process.state.zone_folder.value_or(""));
  return *made;
}

[[noreturn]] void refuse_setting(std::string_view setting, std::string_view value,
                                 std::string_view reason) {
  fail(JWNLS_UNKNOWN, [&](Message& message) {
    (message << "setting ").quoted(setting) << " ";
    message.quoted(value) << ": " << reason;
  });
}

}  // namespace

const Locale& open_locale(std::string_view name) {
  std::array<char16_t, 96> units;
  const auto length = to_utf16(name, units.data(), units.size());
  const auto found = host::match_locale_name({units.data(), length.value_or(0)});
  if (found.canonical.empty()) {
    fail(JWNLS_UNKNOWN,
         [name](Message& message) { (message << "locale ").quoted(name) << ": unknown"; });
  }
  const Opening opening;
  return modules(found.canonical).locale(found.canonical);
}

const Locale& LocaleViewer::look_at(const std::string& name) {
  if (record_ == nullptr) record_ = std::make_unique<LocaleRecord>();
  const Opening opening;
  modules(name).fill(name, *record_);
  locale_.name = name;
  locale_.record = record_.get();
  locale_.passing = true;
  return locale_;
}

std::shared_ptr<const Zone> open_zone(std::string_view name) {
  const Opening opening;
  return name.empty() || name == "system" ? zones().open_system() : zones().open(name);
}

std::vector<std::string> zone_names() {
  const Opening opening;
  return zones().names();
}

std::string zones_version() {
  const Opening opening;
  return zones().version();
}

void reload_zones() {
  const Opening opening;
  auto fresh = std::make_shared<ZoneDatabase>(process.state.zone_folder.value_or(""));
  (void)fresh->names();  // or the one that was stays
  process.state.zones = std::move(fresh);
}

void configure(std::string_view setting, std::string_view value) {
  const Opening opening;
  State& state = process.state;
  if (setting == "module-path") {
    if (state.modules != nullptr) refuse_setting(setting, value, "the modules are loaded already");
    std::string_view rest = value;
    while (!rest.empty()) {
      const std::size_t end = std::min(rest.find(':'), rest.size());
      if (end > 0 && !rest.starts_with('/')) {
        refuse_setting(setting, value, "folders are absolute");
      }
      rest.remove_prefix(std::min(end + 1, rest.size()));
    }
    state.module_path = value;
  } else if (setting == "zone-folder") {
    if (!value.empty() && !value.starts_with('/')) {
      refuse_setting(setting, value, "the folder is not absolute");
    }
    auto fresh = std::make_shared<ZoneDatabase>(std::string(value));
    state.zone_folder = value;
    state.zones = std::move(fresh);
  } else {
    refuse_setting(setting, value, "settings are module-path and zone-folder");
  }
}

void set_journal(void (*write)(void* context, const char* message), void* context) noexcept {
  // A journal function may name its successor: its thread has the lock.
  const bool is_mine = Opening::is_here();
  if (!is_mine) Opening::take();
  process.state.journal = write;
  process.state.journal_context = context;
  if (!is_mine) Opening::release();
}

}  // namespace jwnls::library
