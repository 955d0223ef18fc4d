#include "module/host_calls/time_zone.h"

#include "abi/status.h"
#include "module/host_calls/lock_guard.h"
#include "module/host_calls/typed_calls.h"

namespace jwnls {
namespace {

// The zone that the track holds under a name, or null.
Zone* cached_zone(Track* track, const ZoneName& name) noexcept {
  TrackEntry* entry = host_calls::look_up(track, name.text());
  if (entry == nullptr) return nullptr;
  Zone* zone = static_cast<ZoneEntry*>(entry->value)->zone;
  host_calls::release_entry(track, entry);
  return zone;
}

// Opens a zone and adds it to the track; null, and nothing left behind, when any step fails.
Zone* open_and_cache(LocaleHandle* handle, const ZoneName& name) noexcept {
  ZoneService* service = handle->context->zone_service;
  Pool* pool = handle->context->pool;
  Zone* zone = service->open(service, name.units, name.length, 0);
  if (zone == nullptr) return nullptr;
  auto* cached = host_calls::allocate_zeroed<ZoneEntry>(pool);
  if (cached == nullptr) {
    service->close(service, zone);
    return nullptr;
  }
  *cached = {zone, service, pool};
  std::uint32_t status = 0;  // not looked at: no caller has a use for it
  if (!host_calls::insert(handle->zone_track, name.text(), cached, status)) {
    service->close(service, zone);
    host_calls::free(pool, cached);
    return nullptr;
  }
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
  host_calls::free(cached->pool, cached);
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
