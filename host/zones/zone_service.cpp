#include "host/zones/zone_service.h"

#include <algorithm>
#include <cstring>
#include <ctime>
#include <exception>
#include <optional>
#include <string>

#include "abi/status.h"
#include "host/objects/memory_refusals.h"
#include "host/zones/utc_offset.h"
#include "host/zones/zone_file.h"

namespace jwnls {
namespace {

using Moment = cctz::time_point<cctz::seconds>;

Moment moment_of(std::int64_t seconds) { return Moment(cctz::seconds(seconds)); }

std::int64_t seconds_of(Moment moment) { return moment.time_since_epoch().count(); }

void describe(const cctz::time_zone& zone, std::int64_t moment, Zone::Snapshot& snapshot) {
  const cctz::time_zone::absolute_lookup found = zone.lookup(moment_of(moment));
  snapshot.offset_seconds = found.offset;
  const std::size_t length =
      std::min(std::strlen(found.abbr), static_cast<std::size_t>(zone_abbreviation_capacity));
  std::transform(found.abbr, found.abbr + length, snapshot.abbreviation,
                 [](char letter) { return static_cast<unsigned char>(letter); });
  snapshot.length = static_cast<std::int64_t>(length);

  cctz::time_zone::civil_transition transition;
  // The latest transition before the next second is the one that is in force.
  const std::int64_t next_second = std::min(moment, INT64_MAX - 1) + 1;
  if (zone.prev_transition(moment_of(next_second), &transition)) {
    snapshot.first = seconds_of(zone.lookup(transition.to).trans);
  }
  if (zone.next_transition(moment_of(moment), &transition)) {
    snapshot.last = seconds_of(zone.lookup(transition.to).trans) - 1;
  }
}

}  // namespace

const Zone::Snapshot& Zone::renew(std::int64_t moment) {
  const std::lock_guard guard(renewing_);
  for (const auto& snapshot : snapshots_) {
    if (!snapshot->covers(moment)) continue;
    current_.store(snapshot.get(), std::memory_order_release);
    return *snapshot;
  }
  auto snapshot = std::make_unique<Snapshot>(Snapshot{INT64_MIN, INT64_MAX, 0, 3, u"UTC"});
  if (zone_) describe(*zone_, moment, *snapshot);
  // Whatever the database says, the snapshot covers the moment that it was made for.
  if (!snapshot->covers(moment)) snapshot->first = snapshot->last = moment;
  snapshots_.push_back(std::move(snapshot));
  current_.store(snapshots_.back().get(), std::memory_order_release);
  return *snapshots_.back();
}

namespace host {
namespace {

// The zone's own file, else that of the zone which an alias stands for: some systems install the
// older aliases apart from the zones. UTC needs none. Null where there is no such file.
std::unique_ptr<Zone> load(const ZoneNames& names, const ZoneNames::Zone& zone) {
  if (zone.name == "UTC") return std::make_unique<Zone>();
  for (const std::string& name : {zone.name, zone.target}) {
    if (name.empty()) continue;
    if (auto loaded = load_zone_file(names.directory() / name)) {
      return std::make_unique<Zone>(*loaded);
    }
  }
  return nullptr;
}

std::uint32_t zone_info_now(ZoneService*, Zone* zone, char16_t abbreviation[50],
                            std::int64_t* length, std::int64_t* offset_seconds) {
  try {
    const Zone::Snapshot& snapshot = zone->at(std::time(nullptr));
    // All but a few abbreviations have 3 to 5 units: 8 units are copied at once, which is faster
    // than counting them, and both sides have room for 50.
    constexpr std::int64_t usual = 8;
    if (snapshot.length <= usual) {
      std::memcpy(abbreviation, snapshot.abbreviation, usual * sizeof(char16_t));
    } else {
      std::memcpy(abbreviation, snapshot.abbreviation,
                  static_cast<std::size_t>(snapshot.length) * sizeof(char16_t));
    }
    *length = snapshot.length;
    *offset_seconds = snapshot.offset_seconds;
    return code(Status::ok);
  } catch (const std::exception&) {
    return code(Status::out_of_memory);
  }
}

}  // namespace

HostZoneService::HostZoneService(const ZoneNames& names) : ZoneService{}, names_(names) {
  open = [](ZoneService* service, const char16_t* name, std::int64_t length,
            std::uint64_t) -> Zone* {
    if (name == nullptr || length < 1) return nullptr;
    return static_cast<HostZoneService&>(*service).open_zone(
        {name, static_cast<std::size_t>(length)});
  };
  close = [](ZoneService* service, Zone* zone) {
    static_cast<HostZoneService&>(*service).close_zone(zone);
  };
  zone_info = zone_info_now;
}

Zone* HostZoneService::open_zone(std::u16string_view name) noexcept {
  try {
    std::unique_ptr<Zone> zone;
    if (const ZoneNames::Zone* known = names_.find(name)) {
      zone = load(names_, *known);
    } else if (const std::optional<int> offset = parse_utc_offset(name)) {
      zone = std::make_unique<Zone>(cctz::fixed_time_zone(cctz::seconds(*offset)));
    }
    if (zone == nullptr) return nullptr;
    zone->at(std::time(nullptr));
    Zone* opened = zone.get();
    const std::lock_guard guard(mutex_);
    zones_.emplace(opened, std::move(zone));
    return opened;
  } catch (const std::bad_alloc&) {
    ++memory_refusals;
    return nullptr;
  } catch (const std::exception&) {
    return nullptr;  // it cannot be read just now
  }
}

void HostZoneService::close_zone(Zone* zone) noexcept {
  const std::lock_guard guard(mutex_);
  zones_.erase(zone);
}

}  // namespace host
}  // namespace jwnls
