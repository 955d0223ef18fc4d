// Names of time zones: which there are, and what people write for them.
//
//   written = {blank} (name | offset) {blank}     a name of the database, in any letter case
//                                                 offset: host/zones/utc_offset.h

#ifndef JWNLS_HOST_ZONES_ZONE_NAMES_H_
#define JWNLS_HOST_ZONES_ZONE_NAMES_H_

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <mutex>
#include <string>
#include <string_view>
#include <vector>

#include "abi/host_tables.h"
#include "abi/status.h"
#include "host/lookup/answer_cache.h"

namespace jwnls::host {

/// A zone's name, as the module's buffers hold it.
struct ZoneNameText {
  char16_t units[zone_name_capacity] = {};
  std::size_t length = 0;

  [[nodiscard]] std::u16string_view view() const noexcept { return {units, length}; }
};

/// The zones of one compiled time-zone database, read at first need: from its list `tzdata.zi`, or
/// else from the folder itself. What is there and cannot be read, maybe just now, throws
/// std::system_error, and the next call reads again; every call may throw bad_alloc. Any thread.
class ZoneNames {
 public:
  struct Zone {
    std::string name;
    std::string target;  // of an alias: the zone that it stands for, if the list says so
  };

  /// An empty folder is $TZDIR (in programs without raised privileges, and where it is absolute),
  /// else the system's.
  explicit ZoneNames(const std::filesystem::path& directory);

  /// The database's folder; the system's is looked for at first need.
  [[nodiscard]] const std::filesystem::path& directory() const;

  /// Every zone and alias, sorted by name.
  [[nodiscard]] const std::vector<Zone>& zones() const;
  [[nodiscard]] const std::vector<std::string>& names() const;

  /// "2025b"; empty when the database does not say.
  [[nodiscard]] const std::string& version() const;

  /// The zone of a name, whatever its case; null when there is none. "UTC" is always there. What is
  /// no zone of its own is none: "posix/...", "right/...", "localtime", "Factory", paths, rules.
  [[nodiscard]] const Zone* find(std::u16string_view name) const;

  /// Brings a name as people write it into the form that zones are known by: without the blanks
  /// around it and in the right case, but an alias as that alias. "UTC+5:30" becomes "UTC+05:30",
  /// and "UTC+0" becomes "UTC". ok, or lookup_failed for what is no zone.
  [[nodiscard]] Status normalise(std::u16string_view name, ZoneNameText& out) const;

  /// What normalise() gave before for the very same text, or null. Valid as long as this object.
  [[nodiscard]] const ZoneNameText* normal_before(std::u16string_view name) const noexcept {
    return normal_.find(name);
  }

 private:
  [[nodiscard]] Status normalise_anew(std::u16string_view name, ZoneNameText& out) const;
  void read_once() const;
  void read();
  bool read_list();
  void read_folder();
  void index_names();
  [[nodiscard]] std::size_t slot_of(std::string_view folded) const noexcept;

  mutable std::mutex finding_;
  mutable std::atomic<bool> is_found_{false};
  mutable std::filesystem::path directory_;
  mutable AnswerCache<ZoneNameText> normal_;
  mutable std::mutex reading_;
  mutable std::atomic<bool> is_read_{false};
  // Written by the first reader, and never again.
  std::vector<Zone> zones_;
  std::vector<std::string> names_;
  std::string version_;
  std::vector<std::string> folded_;   // the names in lower case, in the order of zones_
  std::vector<std::uint16_t> slots_;  // open addressing: 0 empty, else 1 + index into zones_
};

}  // namespace jwnls::host

#endif  // JWNLS_HOST_ZONES_ZONE_NAMES_H_
