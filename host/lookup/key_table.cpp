#include "host/lookup/key_table.h"

#include <cstring>

namespace jwnls::host {
namespace {

constexpr std::uint64_t multiplier = 0x9E3779B97F4A7C15;  // the golden ratio's bits
constexpr std::uint64_t increment = 0xD1B54A32D192ED03;   // odd, of no pattern

template <typename Word>
std::uint64_t load(const unsigned char* bytes) noexcept {
  Word word = 0;
  std::memcpy(&word, bytes, sizeof word);
  return word;
}

// Both halves of a 128-bit product, so that every input bit reaches every output bit.
std::uint64_t mix(std::uint64_t a, std::uint64_t b) noexcept {
  __extension__ using Wide = unsigned __int128;
  const Wide product = static_cast<Wide>(a) * b;
  return static_cast<std::uint64_t>(product) ^ static_cast<std::uint64_t>(product >> 64);
}

}  // namespace

std::uint64_t hash_bytes(const void* key, std::size_t bytes) noexcept {
  const auto* at = static_cast<const unsigned char*>(key);
  std::uint64_t hash = bytes * multiplier;
  std::uint64_t first = 0;
  std::uint64_t last = 0;
  std::size_t left = bytes;
  for (; left > 16; left -= 16, at += 16) {
    hash = mix(load<std::uint64_t>(at) ^ hash, load<std::uint64_t>(at + 8) ^ multiplier);
  }
  // The last 1 to 16 bytes as two words that may overlap.
  if (left >= 8) {
    first = load<std::uint64_t>(at);
    last = load<std::uint64_t>(at + left - 8);
  } else if (left >= 4) {
    first = load<std::uint32_t>(at);
    last = load<std::uint32_t>(at + left - 4);
  } else if (left > 0) {
    first = static_cast<std::uint64_t>(at[0]) << 8 | at[left / 2];
    last = at[left - 1];
  }
  return mix(mix(first ^ hash, last ^ multiplier) ^ increment, multiplier);
}

KeyTable::Slots::Slots(std::size_t count)
    : mask(count - 1), entries(std::make_unique<std::atomic<Entry*>[]>(count)) {}

void KeyTable::Slots::place(Entry* entry) noexcept {
  std::size_t at = entry->hash & mask;
  while (entries[at].load(std::memory_order_relaxed) != nullptr) at = (at + 1) & mask;
  entries[at].store(entry, std::memory_order_release);
}

KeyTable::Entry* KeyTable::find(const void* key, std::size_t bytes) const noexcept {
  const Slots* slots = current_.load(std::memory_order_acquire);
  if (slots == nullptr) return nullptr;
  const std::uint64_t hash = hash_bytes(key, bytes);
  // At least half of the slots are empty, so the walk ends.
  for (std::size_t at = hash & slots->mask;; at = (at + 1) & slots->mask) {
    Entry* entry = slots->entries[at].load(std::memory_order_acquire);
    if (entry == nullptr) return nullptr;
    if (entry->hash == hash && entry->key_bytes == bytes &&
        std::memcmp(entry->key.get(), key, bytes) == 0) {
      return entry;
    }
  }
}

KeyTable::Entry* KeyTable::insert(const void* key, std::size_t bytes, void* value) {
  const std::lock_guard guard(writers_);
  if (find(key, bytes) != nullptr) return nullptr;

  auto entry = std::make_unique<Entry>();
  entry->value = value;
  entry->hash = hash_bytes(key, bytes);
  entry->key_bytes = bytes;
  entry->key = std::make_unique<std::byte[]>(bytes);
  if (bytes > 0) std::memcpy(entry->key.get(), key, bytes);

  if (generations_.empty() || (entries_.size() + 1) * 2 > generations_.back()->mask + 1) grow();
  entries_.push_back(std::move(entry));
  Entry* added = entries_.back().get();
  generations_.back()->place(added);
  return added;
}

void KeyTable::grow() {
  constexpr std::size_t first_count = 8;  // most tracks hold a single zone
  const std::size_t count =
      generations_.empty() ? first_count : (generations_.back()->mask + 1) * 2;
  auto slots = std::make_unique<Slots>(count);
  for (const auto& entry : entries_) slots->place(entry.get());
  generations_.push_back(std::move(slots));
  current_.store(generations_.back().get(), std::memory_order_release);
}

}  // namespace jwnls::host
