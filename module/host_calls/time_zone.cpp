#include "module/host_calls/time_zone.h"

#include "module/host_calls/lock_guard.h"

namespace jwnls {
namespace {

constexpr std::int64_t key_bytes(const ZoneName& name) {
  return name.length * static_cast<std::int64_t>(sizeof(char16_t));
}

// The zone that the track holds under a name, or null.
Zone* cached_zone(Track* track, const ZoneName& name) noexcept {
  TrackEntry* entry = track->look_up(track, track_look_up, 0, name.units, key_bytes(name));
  if (entry == nullptr) return nullptr;
  Zone* zone = static_cast<ZoneEntry*>(entry->value)->zone;
  track->release_entry(track, entry);
  return zone;
}

// Opens a zone and adds it to the track; null, and nothing left behind, when any step fails.
Zone* open_and_cache(LocaleHandle* handle, const ZoneName& name) noexcept {
  ZoneService* service = handle->context->zone_service;
  Pool* pool = handle->context->pool;
  Zone* zone = service->open(service, name.units, name.length, 0);
  if (zone == nullptr) return nullptr;
  auto* cached = static_cast<ZoneEntry*>(pool->allocate(pool, sizeof(ZoneEntry), allocate_zeroed));
  if (cached == nullptr) {
    service->close(service, zone);
    return nullptr;
  }
  *cached = {zone, service, pool};
  std::uint32_t status = 0;
  Track* track = handle->zone_track;
  TrackEntry* entry =
      track->insert(track, track_insert, 0, cached, 0, name.units, key_bytes(name), &status);
  if (entry == nullptr) {
    service->close(service, zone);
    pool->free(pool, cached);
    return nullptr;
  }
  track->release_entry(track, entry);
  return zone;
}

}  // namespace

Zone* open_zone(LocaleHandle* handle, const ZoneName& name) noexcept {
  if (Zone* zone = cached_zone(handle->zone_track, name)) return zone;
  // Another thread may have added it meanwhile: looking again under the lock opens each zone once.
  const LockGuard guard(handle->zone_lock);
  if (Zone* zone = cached_zone(handle->zone_track, name)) return zone;
  return open_and_cache(handle, name);
}

Zone* look_up_zone(LocaleHandle* handle, const char16_t* name, std::int64_t length) noexcept {
  ZoneName normalised = {};
  if (normalise_zone(handle->context, name, length, normalised) != code(Status::ok)) {
    return nullptr;
  }
  return open_zone(handle, normalised);
}

std::uint32_t destroy_zone_entry(TrackEntry* entry) noexcept {
  auto* cached = static_cast<ZoneEntry*>(entry->value);
  cached->service->close(cached->service, cached->zone);
  cached->pool->free(cached->pool, cached);
  return code(Status::ok);
}

void read_zone_info(LocaleHandle* handle, ZoneInfo& info) noexcept {
  Zone* zone = current_zone(handle);
  ZoneService* service = handle->context->zone_service;
  if (zone == nullptr || service == nullptr) return;
  std::int64_t length = 0;
  std::int64_t offset_seconds = 0;
  if (service->zone_info(service, zone, info.abbreviation, &length, &offset_seconds) !=
      code(Status::ok)) {
    return;
  }
  info.length = bounded_length(length, zone_abbreviation_capacity);
  info.offset_seconds = offset_seconds;
}

}  // namespace jwnls
