// Opened time zones, and what is in force in them now.

#ifndef JWNLS_HOST_ZONES_ZONE_SERVICE_H_
#define JWNLS_HOST_ZONES_ZONE_SERVICE_H_

#include <cctz/time_zone.h>

#include <atomic>
#include <cstdint>
#include <memory>
#include <mutex>
#include <optional>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "abi/host_tables.h"
#include "host/zones/zone_names.h"

namespace jwnls {

/// An opened time zone. What is in force is read from an immutable snapshot that covers the time
/// between two transitions; a reader outside of it makes, or finds, the one it needs. Snapshots
/// live until the zone closes, so readers need no lock and no count. Any thread.
struct Zone {
 public:
  /// What is in force from one moment to another, in seconds since 1 January 1970.
  struct Snapshot {
    std::int64_t first;
    std::int64_t last;
    std::int64_t offset_seconds;  // east of UTC
    std::int64_t length;          // units of the abbreviation
    char16_t abbreviation[zone_abbreviation_capacity];

    [[nodiscard]] bool covers(std::int64_t moment) const noexcept {
      return moment >= first && moment <= last;
    }
  };

  /// UTC: the most usual zone of all, for which the library for time zones is not even called.
  Zone() = default;
  explicit Zone(const cctz::time_zone& zone) : zone_(zone) {}

  /// The snapshot that covers a moment. Throws bad_alloc when there is no memory for a new one.
  const Snapshot& at(std::int64_t moment) {
    const Snapshot* snapshot = current_.load(std::memory_order_acquire);
    if (snapshot != nullptr && snapshot->covers(moment)) [[likely]] {
      return *snapshot;
    }
    return renew(moment);
  }

 private:
  const Snapshot& renew(std::int64_t moment);

  const std::optional<cctz::time_zone> zone_;
  std::atomic<const Snapshot*> current_{nullptr};
  std::mutex renewing_;  // guards the list
  std::vector<std::unique_ptr<const Snapshot>> snapshots_;
};

namespace host {

/// Opens the zones of a database by their names, whatever the case, and those of the form
/// "UTC+05:30". A zone is as its file was when it was opened; the names are read once.
class HostZoneService final : public ZoneService {
 public:
  /// Closes what is left open when it ends.
  explicit HostZoneService(const ZoneNames& names);

  /// Null for a name that is no zone's, for a file that cannot be read now, or without memory.
  Zone* open_zone(std::u16string_view name) noexcept;
  void close_zone(Zone* zone) noexcept;

 private:
  const ZoneNames& names_;
  std::mutex mutex_;
  std::unordered_map<const Zone*, std::unique_ptr<Zone>> zones_;
};

}  // namespace host
}  // namespace jwnls

#endif  // JWNLS_HOST_ZONES_ZONE_SERVICE_H_
