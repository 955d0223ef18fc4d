// Tracks: keyed tables whose look-ups take no lock.

#ifndef JWNLS_HOST_OBJECTS_TRACK_H_
#define JWNLS_HOST_OBJECTS_TRACK_H_

#include <atomic>
#include <cstdint>

#include "abi/host_tables.h"
#include "host/lookup/key_table.h"
#include "host/objects/object_registry.h"

namespace jwnls::host {

/// An entry that look-up or insertion gave is valid until it is released, and in fact until the
/// track is destroyed, which calls the element destructor once for each entry, the newest first.
/// The host's own release (destructor value 1), like none, leaves the values alone. Any thread may
/// look up and insert.
class HostTrack final : public KernelObject, public Track {
 public:
  explicit HostTrack(ObjectRegistry& registry);
  ~HostTrack() override;

  TrackEntry* find(const void* key, std::int64_t key_bytes) noexcept;

  /// Null with *status, if not null: lookup_failed for a key that is there already or no key at
  /// all, out_of_memory. Otherwise the new entry, with *status ok.
  TrackEntry* add(void* value, const void* key, std::int64_t key_bytes,
                  std::uint32_t* status) noexcept;

 private:
  KeyTable table_;
  std::atomic<EntryDestructor> destructor_{nullptr};
};

}  // namespace jwnls::host

#endif  // JWNLS_HOST_OBJECTS_TRACK_H_
