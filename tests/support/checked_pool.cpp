#include "tests/support/checked_pool.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace jwnls::test {
namespace {

constexpr std::size_t guard_bytes = 32;  // on either side
constexpr unsigned char guard_byte = 0xFD;
constexpr unsigned char fresh_byte = 0xCD;  // fills blocks that were not asked for zeroed
constexpr unsigned char freed_byte = 0xDD;

// How much is put aside before the oldest freed block really goes.
constexpr std::uint64_t most_bytes_aside = 8 << 20;

bool all_are(const unsigned char* bytes, std::uint64_t count, unsigned char byte) {
  return std::all_of(bytes, bytes + count, [byte](unsigned char each) { return each == byte; });
}

std::string sized(std::uint64_t bytes) { return "block of " + std::to_string(bytes) + " bytes"; }

}  // namespace

CheckedPool::CheckedPool(Pool* real, std::string title, FaultLog& faults,
                         std::function<bool(const void*)> is_of_any_pool)
    : Pool{},
      real_(real),
      title_(std::move(title)),
      faults_(faults),
      is_of_any_pool_(std::move(is_of_any_pool)) {
  destroy = [](Pool* pool) { static_cast<CheckedPool*>(pool)->destroy_now(); };
  allocate = [](Pool* pool, std::uint64_t bytes, std::uint32_t flags) {
    return static_cast<CheckedPool*>(pool)->take(bytes, flags);
  };
  free = [](Pool* pool, void* memory) { static_cast<CheckedPool*>(pool)->give_back(memory); };
}

void* CheckedPool::take(std::uint64_t bytes, std::uint32_t flags) {
  if (bytes > UINT64_MAX - 2 * guard_bytes) return nullptr;
  void* memory = real_->allocate(real_, bytes + 2 * guard_bytes, flags);
  if (memory == nullptr) return nullptr;
  unsigned char* start = static_cast<unsigned char*>(memory) + guard_bytes;
  std::memset(memory, guard_byte, guard_bytes);
  if ((flags & allocate_zeroed) == 0) std::memset(start, fresh_byte, bytes);
  std::memset(start + bytes, guard_byte, guard_bytes);
  const std::lock_guard guard(mutex_);
  in_use_.emplace(start, Block{start, bytes});
  return start;
}

void CheckedPool::give_back(void* memory) {
  if (memory == nullptr) return;
  {
    const std::lock_guard guard(mutex_);
    if (const auto found = in_use_.find(memory); found != in_use_.end()) {
      const Block block = found->second;
      check_guards_of(block);
      in_use_.erase(found);
      std::memset(block.start, freed_byte, block.bytes);
      aside_.push_back(block);
      aside_bytes_ += block.bytes;
      while (aside_bytes_ > most_bytes_aside) let_go_of_oldest();
      return;
    }
  }
  add_fault("block", was_freed(memory)         ? "freed twice"
                     : is_of_any_pool_(memory) ? "freed into another pool"
                                               : "freed, but it is none of the pool's");
}

void CheckedPool::destroy_now() {
  if (destroyed_) {
    faults_.add(title_ + " destroyed twice");
    return;
  }
  check_guards();
  destroyed_ = true;
  const std::lock_guard guard(mutex_);
  while (!aside_.empty()) let_go_of_oldest();
  in_use_.clear();
  real_->destroy(real_);
}

void CheckedPool::check_guards() {
  const std::lock_guard guard(mutex_);
  for (const auto& [start, block] : in_use_) check_guards_of(block);
}

void CheckedPool::report_blocks_in_use() {
  const std::lock_guard guard(mutex_);
  for (const auto& [start, block] : in_use_) add_fault(sized(block.bytes), "never freed");
}

bool CheckedPool::has_in_use(const void* memory) const {
  const std::lock_guard guard(mutex_);
  return in_use_.contains(memory);
}

bool CheckedPool::was_freed(const void* memory) const {
  const std::lock_guard guard(mutex_);
  return std::any_of(aside_.begin(), aside_.end(),
                     [memory](const Block& block) { return block.start == memory; });
}

void CheckedPool::check_guards_of(const Block& block) {
  if (!all_are(block.start - guard_bytes, guard_bytes, guard_byte)) {
    add_fault(sized(block.bytes), "written before its start");
  }
  if (!all_are(block.start + block.bytes, guard_bytes, guard_byte)) {
    add_fault(sized(block.bytes), "written past its end");
  }
}

void CheckedPool::let_go_of_oldest() {
  const Block block = aside_.front();
  aside_.pop_front();
  aside_bytes_ -= block.bytes;
  if (!all_are(block.start, block.bytes, freed_byte)) {
    add_fault(sized(block.bytes), "written after it was freed");
  }
  real_->free(real_, block.start - guard_bytes);
}

void CheckedPool::add_fault(const std::string& block, std::string_view what) {
  faults_.add(title_ + ": " + block + " " + std::string(what));
}

}  // namespace jwnls::test
