// The handle's time zones: the track that caches the opened ones, and what a zone says of itself.

#ifndef JWNLS_MODULE_HOST_CALLS_TIME_ZONE_H_
#define JWNLS_MODULE_HOST_CALLS_TIME_ZONE_H_

#include <algorithm>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "abi/locale_handle.h"
#include "abi/status.h"

namespace jwnls {

/// What a handle's time-zone track holds for each zone; allocated zero-filled from the context's
/// pool.
struct ZoneEntry {
  Zone* zone;
  ZoneService* service;  // opened the zone and closes it
  Pool* pool;            // the entry's own
};
static_assert(sizeof(ZoneEntry) == 24);

/// A zone name as the host normalised it.
struct ZoneName {
  char16_t units[zone_name_capacity];
  std::int64_t length;  // 0 to 50, whatever the host reported

  std::u16string_view text() const noexcept { return {units, static_cast<std::size_t>(length)}; }
  /// Brings a length that the host wrote into the buffer's bounds.
  void bound_length() noexcept { length = std::clamp<std::int64_t>(length, 0, zone_name_capacity); }
};

/// Asks the host for the canonical form of a zone name. Returns the host's own status, 0 = success.
inline std::uint32_t normalise_zone(NlsContext* context, const char16_t* name, std::int64_t length,
                                    ZoneName& out) noexcept {
  std::uint64_t extra = 0;
  out.length = zone_name_capacity;
  const std::uint32_t status = context->normalise_zone(context, name, length, normalise_zone_flags,
                                                       out.units, &out.length, &extra);
  out.bound_length();
  return status;
}

/// Asks the host for the operating system's zone. Returns the host's own status; whatever it is,
/// the name is what the query left.
inline std::uint32_t query_os_zone(NlsContext* context, ZoneName& out) noexcept {
  out = {.units = {}, .length = zone_name_capacity};
  const std::uint32_t status = context->os_zone(context, out.units, &out.length, os_zone_flags);
  out.bound_length();
  return status;
}

/// The opened zone of a normalised name, from the handle's track or else opened and added to it
/// under the zone lock. Null when it cannot be opened or kept. The track owns it. Any thread.
Zone* open_zone(LocaleHandle*, const ZoneName& name) noexcept;

/// Normalises a name as a person writes it and opens it; null when either fails. Any thread.
Zone* look_up_zone(LocaleHandle*, const char16_t* name, std::int64_t length) noexcept;

/// The destructor of the track's entries: closes the zone and frees the entry.
std::uint32_t destroy_zone_entry(TrackEntry*) noexcept;

inline Zone* current_zone(LocaleHandle* handle) noexcept {
  return std::atomic_ref<Zone*>(handle->zone).load(std::memory_order_acquire);
}

inline void set_current_zone(LocaleHandle* handle, Zone* zone) noexcept {
  std::atomic_ref<Zone*>(handle->zone).store(zone, std::memory_order_release);
}

/// What the handle's zone says of the present moment.
struct ZoneInfo {
  char16_t abbreviation[zone_abbreviation_capacity] = {};
  std::size_t length = 0;           // units of the abbreviation, 0 to 50
  std::int64_t offset_seconds = 0;  // east of UTC
};

/// Asks the host; a failure, or a handle without a zone, gives no abbreviation and offset 0.
void read_zone_info(LocaleHandle*, ZoneInfo&) noexcept;

}  // namespace jwnls

#endif  // JWNLS_MODULE_HOST_CALLS_TIME_ZONE_H_
