#include "host/zones/os_zone.h"

#include <algorithm>
#include <cstdlib>
#include <ctime>
#include <string_view>
#include <system_error>

#include "host/zones/zone_file.h"

namespace jwnls::host {
namespace {

constexpr std::string_view database_folder = "zoneinfo/";

std::u16string widen(std::string_view text) {
  std::u16string wide;
  for (const char each : text) wide += static_cast<unsigned char>(each);
  return wide;
}

// path = [... "zoneinfo/"] ["posix/"] name     a name of the database, in any letter case
bool zone_of_path(const ZoneNames& names, std::string_view path, ZoneNameText& out) {
  const auto folder = path.rfind(database_folder);
  if (folder != std::string_view::npos) path.remove_prefix(folder + database_folder.size());
  constexpr std::string_view plain_tree = "posix/";  // the same zones again
  if (path.starts_with(plain_tree)) path.remove_prefix(plain_tree.size());
  const ZoneNames::Zone* zone = names.find(widen(path));
  return zone != nullptr && names.normalise(widen(zone->name), out) == Status::ok;
}

// TZ = [":"] ("" | "UTC0" | "UTC+0" | "UTC-0" | "UCT0" | path)     the first five are UTC
//
// All other rules are refused. Those of an offset alone have the opposite sign of the database's
// names: TZ=UTC+5 is west of Greenwich.
bool zone_of_variable(const ZoneNames& names, std::string_view tz, ZoneNameText& out) {
  if (tz.starts_with(':')) tz.remove_prefix(1);
  for (const std::string_view utc : {"", "UTC0", "UTC+0", "UTC-0", "UCT0"}) {
    if (tz == utc) return names.normalise(u"UTC", out) == Status::ok;
  }
  return zone_of_path(names, tz, out);
}

// Follows the links one by one, so that an alias stays the alias that the system was set to.
bool zone_of_link(const ZoneNames& names, std::filesystem::path file, ZoneNameText& out) {
  constexpr int most_links = 16;
  for (int link = 0; link < most_links; ++link) {
    std::error_code error;
    const std::filesystem::path target = std::filesystem::read_symlink(file, error);
    if (error) return false;
    file = (file.parent_path() / target).lexically_normal();
    if (zone_of_path(names, file.string(), out)) return true;
  }
  return false;
}

// The file's first line: {blank} name {blank} ["#" comment]
bool zone_of_name_file(const ZoneNames& names, const std::filesystem::path& file,
                       ZoneNameText& out) {
  constexpr std::size_t most = 256;
  std::string line = read_file(file, most).value_or("");
  line.erase(std::min(line.find_first_of("#\n"), line.size()));
  return names.normalise(widen(line), out) == Status::ok && names.find(out.view()) != nullptr;
}

// Zones go before their aliases, which have the same bytes.
bool zone_of_bytes(const ZoneNames& names, const std::filesystem::path& file, ZoneNameText& out) {
  std::error_code error;
  const std::uintmax_t size = std::filesystem::file_size(file, error);
  if (error) return false;
  const std::optional<std::string> bytes = read_file(file);
  if (!bytes || !bytes->starts_with("TZif")) return false;
  for (const bool aliases : {false, true}) {
    for (const ZoneNames::Zone& zone : names.zones()) {
      const std::filesystem::path candidate = names.directory() / zone.name;
      if (zone.target.empty() == aliases || std::filesystem::file_size(candidate, error) != size) {
        continue;
      }
      if (read_file(candidate) == bytes)
        return names.normalise(widen(zone.name), out) == Status::ok;
    }
  }
  return false;
}

}  // namespace

OsZoneSources OsZoneSources::of_this_system() {
  OsZoneSources sources;
  if (const char* tz = secure_getenv("TZ")) sources.tz = tz;
  sources.local_time_file = "/etc/localtime";
  sources.zone_name_file = "/etc/timezone";
  return sources;
}

Status find_os_zone(const ZoneNames& names, const OsZoneSources& sources, ZoneNameText& out) {
  // ":/etc/localtime" asks for what the system would say without the variable.
  const std::string own_file = sources.local_time_file.string();
  if (sources.tz && *sources.tz != own_file && *sources.tz != ":" + own_file) {
    return zone_of_variable(names, *sources.tz, out) ? Status::ok : Status::lookup_failed;
  }
  const bool found = zone_of_link(names, sources.local_time_file, out) ||
                     zone_of_name_file(names, sources.zone_name_file, out) ||
                     zone_of_bytes(names, sources.local_time_file, out);
  return found ? Status::ok : Status::no_os_zone;
}

const OsZone::Answer& OsZone::now() {
  const std::int64_t moment = std::time(nullptr);
  const Answer* answer = current_.load(std::memory_order_acquire);
  if (answer != nullptr && asked_.load(std::memory_order_relaxed) == moment) return *answer;
  return look_again(moment);
}

const OsZone::Answer& OsZone::look_again(std::int64_t moment) {
  const std::lock_guard guard(asking_);
  const Answer* last = current_.load(std::memory_order_relaxed);
  if (last != nullptr && asked_.load(std::memory_order_relaxed) == moment) return *last;

  auto answer = std::make_unique<Answer>();
  answer->status = find_os_zone(names_, OsZoneSources::of_this_system(), answer->name);
  if (answer->status != Status::ok) answer->name.length = 0;
  // The same answer as once before takes no more memory.
  auto known = std::find_if(answers_.begin(), answers_.end(), [&](const auto& earlier) {
    return earlier->status == answer->status && earlier->name.view() == answer->name.view();
  });
  if (known == answers_.end()) known = answers_.insert(known, std::move(answer));
  current_.store(known->get(), std::memory_order_release);
  asked_.store(moment, std::memory_order_relaxed);
  return **known;
}

}  // namespace jwnls::host
