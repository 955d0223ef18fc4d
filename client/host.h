// The host that an application starts to get at locales: it loads the module and the extensions.

#ifndef JWNLS_CLIENT_HOST_H_
#define JWNLS_CLIENT_HOST_H_

#include <cstdint>
#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "client/locale.h"
#include "client/result.h"

namespace jwnls::host {
class Host;
}

namespace jwnls::client {

struct HostOptions {
  /// Folders searched in order for jwnlsloc.so and the extensions; empty: default_extension_path().
  std::vector<std::filesystem::path> extension_path;
  /// The time-zone database; empty: $TZDIR, else the system's.
  std::filesystem::path zone_directory;
  /// Options of the module, by name; they win over environment variables of the same names.
  std::map<std::string, std::string> options;
  /// Called with each warning that module and host write, from any thread; empty: they are dropped.
  std::function<void(std::string_view message)> journal;
};

/// $JWNLS_EXTENSION_PATH (folders separated by ":"), then the folder of the running program and
/// "../lib/jwnls" beside it.
[[nodiscard]] std::vector<std::filesystem::path> default_extension_path();

/// A locale that the database knows.
struct LocaleInfo {
  std::string name;          // "de_DE"
  std::string english_name;  // "German (Germany)"
  std::string own_name;      // "Deutsch (Deutschland)"
};

/// What a locale name leads to.
struct LocaleMatch {
  std::string name;  // canonical: "de_DE"
  bool exact;        // false for a near relative: "de_US" gives "de", "german" "de"
};

/// A running host. Copies share it, and every Locale keeps it alive. Any thread may call anything.
class Host {
 public:
  /// Starts a host and loads the module. The error says which file could not be loaded and why.
  [[nodiscard]] static Result<Host> open(HostOptions options = {});

  /// Looks a locale name up without opening it; lookup_failed when it is unknown.
  [[nodiscard]] Result<LocaleMatch> match(std::string_view name) const;

  /// A locale by its name, as people write them ("de_DE", "de-DE", "de_DE.UTF-8", "german"), with a
  /// time zone ("Europe/Berlin", "UTC+05:30"; empty: the system's). Callers that ask for the same
  /// pair share one handle. Unknown names are errors (lookup_failed); match() tells a near relative
  /// apart.
  [[nodiscard]] Result<Locale> locale(std::string_view name, std::string_view zone = {}) const;

  /// The same with a handle of its own, whose time zone can be changed: Locale::set_time_zone().
  [[nodiscard]] Result<Locale> private_locale(std::string_view name,
                                              std::string_view zone = {}) const;

  /// Every locale of the database, sorted by name.
  [[nodiscard]] std::vector<LocaleInfo> locales() const;

  /// Every time zone of the database, sorted by name.
  [[nodiscard]] const std::vector<std::string>& time_zones() const;

  /// What holds in a time zone now; lookup_failed when it is unknown.
  [[nodiscard]] Result<TimeZone> time_zone(std::string_view name) const;

 private:
  explicit Host(std::shared_ptr<host::Host> host) : host_(std::move(host)) {}

  std::shared_ptr<host::Host> host_;
};

}  // namespace jwnls::client

#endif  // JWNLS_CLIENT_HOST_H_
