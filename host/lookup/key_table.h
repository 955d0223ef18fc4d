// A hash table from byte strings to values that only grows, with look-ups that take no lock.
//
// Entries never move and never go before the table does, so a reader needs no count of its own: it
// walks whichever array of slots was current when it began. A new array is published complete; the
// old ones stay until the end, and together they are smaller than the newest.

#ifndef JWNLS_HOST_LOOKUP_KEY_TABLE_H_
#define JWNLS_HOST_LOOKUP_KEY_TABLE_H_

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <mutex>
#include <vector>

#include "abi/host_tables.h"

namespace jwnls::host {

/// A 64-bit hash of `bytes` bytes, well mixed in all its bits. Not for keys of an adversary.
[[nodiscard]] std::uint64_t hash_bytes(const void* key, std::size_t bytes) noexcept;

class KeyTable {
 public:
  struct Entry : TrackEntry {
    std::uint64_t hash;
    std::size_t key_bytes;
    std::unique_ptr<std::byte[]> key;
  };

  KeyTable() = default;
  KeyTable(const KeyTable&) = delete;
  KeyTable& operator=(const KeyTable&) = delete;

  /// The entry of a key, or null. Any number of threads, also while another inserts.
  [[nodiscard]] Entry* find(const void* key, std::size_t bytes) const noexcept;

  /// Adds a key with its value; null when the key is there already. Any thread. Throws bad_alloc,
  /// and the table is then as before.
  Entry* insert(const void* key, std::size_t bytes, void* value);

  /// Every entry in the order of insertion. Not while another thread inserts.
  [[nodiscard]] const std::vector<std::unique_ptr<Entry>>& entries() const { return entries_; }

 private:
  struct Slots {
    explicit Slots(std::size_t count);
    void place(Entry* entry) noexcept;

    std::size_t mask;
    std::unique_ptr<std::atomic<Entry*>[]> entries;
  };

  void grow();

  std::atomic<const Slots*> current_{nullptr};
  std::mutex writers_;  // guards everything below
  std::vector<std::unique_ptr<Slots>> generations_;
  std::vector<std::unique_ptr<Entry>> entries_;
};

}  // namespace jwnls::host

#endif  // JWNLS_HOST_LOOKUP_KEY_TABLE_H_
