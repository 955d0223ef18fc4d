#include "host/objects/pool.h"

#include <cstdlib>
#include <cstring>
#include <new>

#include "host/objects/memory_refusals.h"

namespace jwnls::host {

HostPool::HostPool(ObjectRegistry& registry) : KernelObject(registry, ObjectKind::pool), Pool{} {
  destroy = [](Pool* pool) {
    auto& self = static_cast<HostPool&>(*pool);
    self.registry().destroy(&self);
  };
  allocate = [](Pool* pool, std::uint64_t bytes, std::uint32_t flags) {
    return static_cast<HostPool&>(*pool).take(bytes, flags);
  };
  free = [](Pool* pool, void* memory) { static_cast<HostPool&>(*pool).give_back(memory); };
}

HostPool::~HostPool() {
  for (Block* block = ring_.next; block != &ring_;) {
    Block* next = block->next;
    std::free(block);
    block = next;
  }
}

namespace {

// malloc() and memset(), not calloc(): that one does not hand out what the thread has just freed,
// but cuts up a large block, such as a record's, of which the pages are there already. Apart from
// the other calls of malloc(), for compilers take the two for calloc().
[[gnu::noinline]] void* small_zeroed_block(std::size_t bytes) noexcept {
  void* const volatile memory = std::malloc(bytes);
  return memory != nullptr ? std::memset(memory, 0, bytes) : nullptr;
}

// On pages of its own: of large blocks, such as records, users touch the front, and every page that
// is touched for the first time costs more than what is written there.
void* large_block(std::size_t bytes) noexcept {
  constexpr std::size_t page = 4096;
  return std::aligned_alloc(page, (bytes + page - 1) / page * page);
}

}  // namespace

void* HostPool::take(std::uint64_t bytes, std::uint32_t flags) noexcept {
  // What is larger than the address space is a negative size, or garbage.
  if (bytes > (std::uint64_t{1} << 47) - sizeof(Block)) return nullptr;
  const std::size_t size = sizeof(Block) + bytes;
  const bool zeroed = (flags & allocate_zeroed) != 0;
  constexpr std::size_t small = 1024;
  constexpr std::size_t large = 16 * 1024;
  void* memory = nullptr;
  if (zeroed) {
    memory = size <= small ? small_zeroed_block(size) : std::calloc(1, size);
  } else {
    memory = size < large ? std::malloc(size) : large_block(size);
  }
  if (memory == nullptr) {
    ++memory_refusals;
    return nullptr;
  }
  const std::lock_guard guard(mutex_);
  auto* block = ::new (memory) Block{ring_.previous, &ring_};
  block->previous->next = block;
  ring_.previous = block;
  return block + 1;
}

void HostPool::give_back(void* memory) noexcept {
  if (memory == nullptr) return;
  Block* block = static_cast<Block*>(memory) - 1;
  {
    const std::lock_guard guard(mutex_);
    block->previous->next = block->next;
    block->next->previous = block->previous;
  }
  std::free(block);
}

}  // namespace jwnls::host
