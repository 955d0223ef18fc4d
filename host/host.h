// The host that an embedder starts: it finds and loads the module and its extensions, and provides
// everything that they ask for - pools, locks, tracks, journals, options, locale names, time zones.
//
//   jwnls::host::HostConfiguration configuration;
//   configuration.extension_path = {"/opt/app/lib"};
//   jwnls::host::Host host(std::move(configuration));
//   std::string error;
//   if (host.factory(&error) == nullptr) return fail(error);
//   std::uint32_t status = 0;
//   LocaleHandle* handle = host.create_handle(u"de_DE", u"Europe/Berlin", false, &status);
//
// Any number of threads may use one host, and a process may run several hosts at once: each has its
// own instance of the module, its own handles and its own options.

#ifndef JWNLS_HOST_HOST_H_
#define JWNLS_HOST_HOST_H_

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "abi/host_tables.h"
#include "abi/locale_handle.h"
#include "host/configuration.h"

namespace jwnls::host {

class Host {
 public:
  /// Loads nothing; what can fail, fails in factory().
  explicit Host(HostConfiguration configuration);

  /// Destroys the cached handles, the extensions and the factory, then every object that is left.
  /// No other thread may use the host or its handles by then.
  ~Host();

  Host(const Host&) = delete;
  Host& operator=(const Host&) = delete;

  /// The tables that the module is given. They live as long as the host.
  [[nodiscard]] Kernel* kernel() noexcept;
  [[nodiscard]] NlsContext* context() noexcept;

  /// The module's factory. The first call loads the module (jwextver, factory), proves that the
  /// message extension and the locale database load as well, and makes the context's handle cache.
  /// Null when any of that fails: *error, if not null, then says what failed, where, and why, and
  /// the next call tries again. Any thread.
  Factory* factory(std::string* error);

  /// A handle for a locale and a time zone.
  ///   locale, zone    as people write them ("de_DE", "German", "europe/berlin", "UTC+05:30"); an
  ///                   empty zone is the operating system's
  ///   private_handle  false: the one handle that all callers share, which the host destroys;
  ///                   true: one of the caller's own, for destroy_handle()
  ///   status          if not null: ok with a handle; otherwise lookup_failed for an unknown locale
  ///                   or zone, not_possible when factory() fails, out_of_memory
  ///   error           if not null: without a handle, why this call could not load something; empty
  ///                   where no load failed
  /// Null is a failure whatever the status: with ok or resolved_with_warning an extension or a part
  /// of the handle could not be made. A name that gives a locale
  /// near to it ("de_US": de) makes a handle with status ok; match_locale_name() tells the two
  /// apart.
  LocaleHandle* create_handle(std::u16string_view locale, std::u16string_view zone,
                              bool private_handle, std::uint32_t* status,
                              std::string* error = nullptr);

  /// Destroys a private handle, and nothing when null. The caller made it with this host.
  void destroy_handle(LocaleHandle* handle) noexcept;

  /// Sets an option from now on, in place of the configuration's and the environment's.
  void set_option(std::string_view name, std::string_view value);

  /// Every time zone that can be opened, sorted by name: zones and aliases, no "UTC+hh:mm" forms.
  [[nodiscard]] const std::vector<std::string>& zone_names() const;

  /// The release of the time-zone database, such as "2025b"; empty when it does not say.
  [[nodiscard]] std::string zone_database_version() const;

 private:
  class Parts;
  std::unique_ptr<Parts> parts_;
};

}  // namespace jwnls::host

#endif  // JWNLS_HOST_HOST_H_
