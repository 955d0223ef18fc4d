// The fake host's pools, locks and tracks.

#include "tests/support/fake_objects.h"

namespace jwnls::test {
namespace {

// ---- Pools

void destroy_pool(Pool* table) {
  FakePool& pool = end(table);
  for (const auto& [block, bytes] : pool.blocks) std::free(block);
  pool.blocks.clear();
}

void* allocate(Pool* table, std::uint64_t bytes, std::uint32_t flags) {
  FakePool& pool = fake(table);
  if (pool.host->fails(line("allocate", pool.name, bytes, hex(flags)))) return nullptr;
  void* block = std::malloc(bytes);
  std::memset(block, (flags & allocate_zeroed) != 0 ? 0 : 0xA5, bytes);
  pool.blocks[block] = bytes;
  return block;
}

void free_block(Pool* table, void* block) {
  FakePool& pool = fake(table);
  const auto found = pool.blocks.find(block);
  if (found == pool.blocks.end()) return pool.host->fault("free of what is not the pool's");
  pool.host->note(line("free", pool.name, found->second));
  std::free(block);
  pool.blocks.erase(found);
}

}  // namespace

FakePool& make_pool(FakeHost* host, const std::string& name) {
  FakePool& pool = make<Pool>(host->pools, host, name);
  pool.destroy = destroy_pool;
  pool.allocate = allocate;
  pool.free = free_block;
  return pool;
}

namespace {

// ---- Locks

void take(Lock* table, std::int64_t a, std::int64_t b) {
  FakeLock& lock = fake(table);
  lock.host->note(line("take", lock.name, a, b));
  if (lock.held) lock.host->fault("deadlock on " + lock.name);
  lock.held = true;
  if (lock.host->when_taken) lock.host->when_taken(lock);
}

void release(Lock* table) {
  FakeLock& lock = fake(table);
  lock.host->note(line("release", lock.name));
  // A refused zone name releases the creation lock untaken; hosts ignore that.
  if (!lock.held && &lock != lock.host->creation_lock) {
    lock.host->fault("release of " + lock.name + ", which is not held");
  }
  lock.held = false;
}

}  // namespace

FakeLock& make_lock(FakeHost* host, const std::string& name) {
  FakeLock& lock = make<Lock>(host->locks, host, name);
  lock.destroy = [](Lock* gone) {
    if (end(gone).held) fake(gone).host->fault("destroyed while held");
  };
  lock.take = take;
  lock.release = release;
  return lock;
}

namespace {

// ---- Tracks

void destroy_track(Track* table) {
  FakeTrack& track = end(table);
  for (auto& [key, entry] : track.entries) {
    if (entry.references != 0) track.host->fault("entry not released in " + track.name);
    if (track.destructor != nullptr && track.destructor != host_release) track.destructor(&entry);
  }
  track.entries.clear();
}

std::string key_bytes(const void* key, std::int64_t bytes) {
  return {static_cast<const char*>(key), static_cast<std::size_t>(bytes)};
}

TrackEntry* look_up(Track* table, std::uint32_t flags, std::uint64_t zero, const void* key,
                    std::int64_t bytes) {
  FakeTrack& track = fake(table);
  if (track.host->fails(
          line("look_up", track.name, hex(flags), zero, narrow_key(key, bytes), bytes))) {
    return nullptr;
  }
  const auto found = track.entries.find(key_bytes(key, bytes));
  if (found == track.entries.end()) return nullptr;
  ++found->second.references;
  return &found->second;
}

TrackEntry* insert(Track* table, std::uint32_t flags, std::uint64_t zero, void* value,
                   std::uint64_t zero_too, const void* key, std::int64_t bytes,
                   std::uint32_t* status) {
  FakeTrack& track = fake(table);
  if (track.host->fails(
          line("insert", track.name, hex(flags), zero, zero_too, narrow_key(key, bytes), bytes))) {
    *status = FakeHost::failure_status;
    return nullptr;
  }
  const auto [place, added] = track.entries.try_emplace(key_bytes(key, bytes));
  if (!added) track.host->fault("a second entry of one key in " + track.name);
  place->second.value = value;
  ++place->second.references;
  *status = 0;
  return &place->second;
}

}  // namespace

FakeTrack& make_track(FakeHost* host, const std::string& name) {
  FakeTrack& track = make<Track>(host->tracks, host, name);
  track.destroy = destroy_track;
  track.look_up = look_up;
  track.insert = insert;
  track.set_destructor = [](Track* table, std::uint64_t zero, EntryDestructor destructor) {
    FakeTrack& self = fake(table);
    self.host->note(line("set_destructor", self.name, zero,
                         destructor == host_release ? "the host's" : "the module's"));
    self.destructor = destructor;
  };
  track.release_entry = [](Track* table, TrackEntry* entry) {
    FakeTrack& self = fake(table);
    self.host->note(line("release_entry", self.name));
    if (--static_cast<FakeEntry*>(entry)->references < 0) self.host->fault("entry released twice");
  };
  return track;
}

}  // namespace jwnls::test
