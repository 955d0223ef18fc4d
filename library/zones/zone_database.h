// One release of a time-zone database, as a process sees it.

#ifndef JWNLS_LIBRARY_ZONES_ZONE_DATABASE_H_
#define JWNLS_LIBRARY_ZONES_ZONE_DATABASE_H_

#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "host/zones/os_zone.h"
#include "host/zones/zone_names.h"
#include "library/zones/zone.h"

namespace jwnls::library {

/// Zones of the database are opened once each, so there are never more of them than it has; rules
/// and fixed offsets live with the layouts that have them. Everything throws a Failure (LOAD for
/// what cannot be read, maybe just now: the next call tries again) and bad_alloc. One thread.
class ZoneDatabase {
 public:
  /// An empty folder: $TZDIR, else the system's.
  explicit ZoneDatabase(const std::string& folder) : names_(folder) {}

  /// The zone of a name in any letter case, of "UTC+05:30", of a rule (posix_zone.h).
  std::shared_ptr<const Zone> open(std::string_view name);

  /// The system's: $TZ, else /etc/localtime, else UTC.
  std::shared_ptr<const Zone> open_system(
      const host::OsZoneSources& sources = host::OsZoneSources::of_this_system());

  /// Every zone's name, sorted; and the release, empty when the database does not say.
  [[nodiscard]] const std::vector<std::string>& names() const;
  [[nodiscard]] const std::string& version() const;

 private:
  std::shared_ptr<const Zone> open_known(const host::ZoneNames::Zone& known);

  host::ZoneNames names_;
  std::map<std::string, std::shared_ptr<const Zone>, std::less<>> opened_;
};

}  // namespace jwnls::library

#endif  // JWNLS_LIBRARY_ZONES_ZONE_DATABASE_H_
