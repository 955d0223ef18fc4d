#include "host/objects/pool.h"

#include <cstdlib>
#include <new>

#include "host/objects/memory_refusals.h"

namespace jwnls::host {

HostPool::HostPool(ObjectRegistry& registry) : KernelObject(registry, ObjectKind::pool), Pool{} {
  destroy = [](Pool* pool) {
    auto* self = static_cast<HostPool*>(pool);
    self->registry().destroy(self);
  };
  allocate = [](Pool* pool, std::uint64_t bytes, std::uint32_t flags) {
    return static_cast<HostPool*>(pool)->take(bytes, flags);
  };
  free = [](Pool* pool, void* memory) { static_cast<HostPool*>(pool)->give_back(memory); };
}

HostPool::~HostPool() {
  for (Block* block = ring_.next; block != &ring_;) {
    Block* next = block->next;
    std::free(block);
    block = next;
  }
}

void* HostPool::take(std::uint64_t bytes, std::uint32_t flags) noexcept {
  // What is larger than the address space is a negative size, or garbage.
  if (bytes > (std::uint64_t{1} << 47) - sizeof(Block)) return nullptr;
  const bool zeroed = (flags & allocate_zeroed) != 0;
  void* memory =
      zeroed ? std::calloc(1, sizeof(Block) + bytes) : std::malloc(sizeof(Block) + bytes);
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
