#include "host/objects/track.h"

#include <new>
#include <string>

#include "abi/status.h"

namespace jwnls::host {

HostTrack::HostTrack(ObjectRegistry& registry, const char* name)
    : KernelObject(registry, "track", name), Track{}, checking_(registry.checking()) {
  destroy = [](Track* track) {
    auto* self = static_cast<HostTrack*>(track);
    self->registry().destroy(self);
  };
  look_up = [](Track* track, std::uint32_t, std::uint64_t, const void* key,
               std::int64_t key_bytes) -> TrackEntry* {
    return static_cast<HostTrack*>(track)->find(key, key_bytes);
  };
  insert = [](Track* track, std::uint32_t, std::uint64_t, void* value, std::uint64_t,
              const void* key, std::int64_t key_bytes, std::uint32_t* status) -> TrackEntry* {
    return static_cast<HostTrack*>(track)->add(value, key, key_bytes, status);
  };
  set_destructor = [](Track* track, std::uint64_t, EntryDestructor destructor) {
    static_cast<HostTrack*>(track)->destructor_.store(destructor, std::memory_order_release);
  };
  release_entry = [](Track* track, TrackEntry* entry) {
    auto* self = static_cast<HostTrack*>(track);
    if (self->checking_ && entry != nullptr) --self->given_out_;
  };
}

void HostTrack::end() noexcept {
  const std::int64_t unbalanced = given_out_.load();
  if (unbalanced > 0) {
    registry().faults().add(title() + ": " + std::to_string(unbalanced) + " entries not released");
  } else if (unbalanced < 0) {
    registry().faults().add(title() + ": entries released more often than given");
  }
  const EntryDestructor destructor = destructor_.load(std::memory_order_acquire);
  if (destructor == nullptr || destructor == host_release) return;
  const auto& entries = table_.entries();
  for (auto entry = entries.rbegin(); entry != entries.rend(); ++entry) destructor(entry->get());
}

TrackEntry* HostTrack::find(const void* key, std::int64_t key_bytes) noexcept {
  if (key == nullptr || key_bytes < 0) return nullptr;
  KeyTable::Entry* entry = table_.find(key, static_cast<std::size_t>(key_bytes));
  if (checking_ && entry != nullptr) ++given_out_;
  return entry;
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
      outcome = Status::out_of_memory;
    }
  }
  if (checking_ && entry != nullptr) ++given_out_;
  if (status != nullptr) *status = code(outcome);
  return entry;
}

}  // namespace jwnls::host
