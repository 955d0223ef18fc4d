// The operating system's time zone, as a name of the time-zone database.

#ifndef JWNLS_HOST_ZONES_OS_ZONE_H_
#define JWNLS_HOST_ZONES_OS_ZONE_H_

#include <atomic>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include "abi/status.h"
#include "host/zones/zone_names.h"

namespace jwnls::host {

/// Where a system says which zone it is in.
struct OsZoneSources {
  std::optional<std::string> tz;          // the environment's TZ, unless it is not set
  std::filesystem::path local_time_file;  // a link to a zone's file, or a copy of one
  std::filesystem::path zone_name_file;   // the zone's name on its first line

  /// $TZ (in programs without raised privileges), /etc/localtime and /etc/timezone.
  static OsZoneSources of_this_system();
};

/// The first of these that says something: TZ; the name that local_time_file links to; the first
/// line of zone_name_file; the zone whose file has the bytes of local_time_file.
///   ok             `out` has the zone's name in its right case
///   lookup_failed  TZ is set, but is no zone of the database: a rule ("EST5EDT4,M3.2.0,..."), a
///                  zone with leap seconds, an unknown name
///   no_os_zone     nothing says which zone it is
/// Throws as ZoneNames and read_file().
[[nodiscard]] Status find_os_zone(const ZoneNames& names, const OsZoneSources& sources,
                                  ZoneNameText& out);

/// The system's zone, looked for again when the last answer is more than a second old: a program
/// that runs for long follows the system, and a call costs a few nanoseconds. Any thread.
class OsZone {
 public:
  struct Answer {
    Status status;
    ZoneNameText name;
  };

  explicit OsZone(const ZoneNames& names) : names_(names) {}

  /// Valid as long as this object. Throws as find_os_zone().
  const Answer& now();

 private:
  const Answer& look_again(std::int64_t moment);

  const ZoneNames& names_;
  std::atomic<const Answer*> current_{nullptr};
  std::atomic<std::int64_t> asked_{0};                  // when, in seconds
  std::mutex asking_;                                   // guards the list
  std::vector<std::unique_ptr<const Answer>> answers_;  // each that there was
};

}  // namespace jwnls::host

#endif  // JWNLS_HOST_ZONES_OS_ZONE_H_
