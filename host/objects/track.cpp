#include "host/objects/track.h"

#include <new>

#include "abi/status.h"
#include "host/objects/memory_refusals.h"

namespace jwnls::host {

HostTrack::HostTrack(ObjectRegistry& registry)
    : KernelObject(registry, ObjectKind::track), Track{} {
  destroy = [](Track* track) {
    auto& self = static_cast<HostTrack&>(*track);
    self.registry().destroy(&self);
  };
  look_up = [](Track* track, std::uint32_t, std::uint64_t, const void* key,
               std::int64_t key_bytes) -> TrackEntry* {
    return static_cast<HostTrack&>(*track).find(key, key_bytes);
  };
  insert = [](Track* track, std::uint32_t, std::uint64_t, void* value, std::uint64_t,
              const void* key, std::int64_t key_bytes, std::uint32_t* status) -> TrackEntry* {
    return static_cast<HostTrack&>(*track).add(value, key, key_bytes, status);
  };
  set_destructor = [](Track* track, std::uint64_t, EntryDestructor destructor) {
    static_cast<HostTrack&>(*track).destructor_.store(destructor, std::memory_order_release);
  };
  release_entry = [](Track*, TrackEntry*) {};  // entries stay as long as the track
}

HostTrack::~HostTrack() {
  const EntryDestructor destructor = destructor_.load(std::memory_order_acquire);
  if (destructor == nullptr || destructor == host_release) return;
  const auto& entries = table_.entries();
  for (auto entry = entries.rbegin(); entry != entries.rend(); ++entry) destructor(entry->get());
}

TrackEntry* HostTrack::find(const void* key, std::int64_t key_bytes) noexcept {
  if (key == nullptr || key_bytes < 0) return nullptr;
  return table_.find(key, static_cast<std::size_t>(key_bytes));
}

TrackEntry* HostTrack::add(void* value, const void* key, std::int64_t key_bytes,
                           std::uint32_t* status) noexcept {
  Status outcome = Status::lookup_failed;
  KeyTable::Entry* entry = nullptr;
  if (key != nullptr && key_bytes >= 0) {
    try {
      entry = table_.insert(key, static_cast<std::size_t>(key_bytes), value);
      if (entry != nullptr) outcome = Status::ok;
    } catch (const std::bad_alloc&) {
      ++memory_refusals;
      outcome = Status::out_of_memory;
    }
  }
  if (status != nullptr) *status = code(outcome);
  return entry;
}

}  // namespace jwnls::host
