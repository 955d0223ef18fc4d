// The NLS context: locale names, time-zone names, upper case, and what locale handles are made of.

#ifndef JWNLS_HOST_NLS_CONTEXT_H_
#define JWNLS_HOST_NLS_CONTEXT_H_

#include <filesystem>

#include "abi/host_tables.h"
#include "host/kernel.h"
#include "host/locales/resolved_locales.h"
#include "host/zones/os_zone.h"
#include "host/zones/zone_names.h"
#include "host/zones/zone_service.h"

namespace jwnls::host {

/// The host sets the handle cache once it has one, and destroys it; so it does the locale database,
/// which the module loads. The context's pool, lock and journal end with the kernel's objects.
class HostContext final : public NlsContext {
 public:
  HostContext(HostKernel& kernel, const std::filesystem::path& zone_directory);

  [[nodiscard]] const ZoneNames& zones() const noexcept { return zone_names_; }

 private:
  ResolvedLocales locales_;
  ZoneNames zone_names_;
  OsZone os_zone_;
  HostZoneService zone_service_;
};

}  // namespace jwnls::host

#endif  // JWNLS_HOST_NLS_CONTEXT_H_
