#include "host/objects/pool.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <new>
#include <string>

namespace jwnls::host {
namespace {

// A block's state tells a live block from a freed one and from what is no block at all.
constexpr std::uint64_t in_use = 0x55534B434F4C4221;
constexpr std::uint64_t freed = 0x44454552464B4C42;

constexpr std::uint64_t front_guard = 0xFDFDFDFDFDFDFDFD;
constexpr unsigned char back_guard_byte = 0xFD;
constexpr std::size_t back_guard_bytes = 32;
constexpr unsigned char fresh_byte = 0xCD;  // fills blocks that were not asked for zeroed
constexpr unsigned char freed_byte = 0xDD;

// How much is put aside before the oldest freed block really goes.
constexpr std::uint64_t most_bytes_aside = 8 << 20;

unsigned char* contents(const void* header, std::size_t header_bytes) {
  return static_cast<unsigned char*>(const_cast<void*>(header)) + header_bytes;
}

bool all_are(const unsigned char* bytes, std::uint64_t count, unsigned char byte) {
  return std::all_of(bytes, bytes + count, [byte](unsigned char each) { return each == byte; });
}

}  // namespace

HostPool::HostPool(ObjectRegistry& registry, const char* name)
    : KernelObject(registry, "pool", name), Pool{}, checking_(registry.checking()), ring_{&ring_,
                                                                                          &ring_,
                                                                                          this,
                                                                                          0,
                                                                                          0,
                                                                                          0} {
  destroy = [](Pool* pool) {
    auto* self = static_cast<HostPool*>(pool);
    self->registry().destroy(self);
  };
  allocate = [](Pool* pool, std::uint64_t bytes, std::uint32_t flags) {
    return static_cast<HostPool*>(pool)->take(bytes, flags);
  };
  free = [](Pool* pool, void* memory) { static_cast<HostPool*>(pool)->give_back(memory); };
}

HostPool::~HostPool() { end(); }

void HostPool::end() noexcept {
  if (host_owned()) report_blocks_in_use();
  const std::lock_guard guard(mutex_);
  while (!aside_.empty()) let_go_of_oldest();
  for (Block* block = ring_.next; block != &ring_;) {
    Block* next = block->next;
    if (checking_) check_guards(block);
    std::free(block);
    block = next;
  }
  ring_.previous = ring_.next = &ring_;
}

void* HostPool::take(std::uint64_t bytes, std::uint32_t flags) noexcept {
  const std::uint64_t extra = sizeof(Block) + (checking_ ? back_guard_bytes : 0);
  // What is larger than the address space is a negative size, or garbage.
  if (bytes > (std::uint64_t{1} << 47) - extra) return nullptr;
  const bool zeroed = (flags & allocate_zeroed) != 0;
  void* memory = zeroed ? std::calloc(1, bytes + extra) : std::malloc(bytes + extra);
  if (memory == nullptr) return nullptr;

  auto* block = ::new (memory) Block{nullptr, nullptr, this, bytes, in_use, front_guard};
  unsigned char* start = contents(block, sizeof(Block));
  if (checking_) {
    if (!zeroed) std::memset(start, fresh_byte, bytes);
    std::memset(start + bytes, back_guard_byte, back_guard_bytes);
  }
  const std::lock_guard guard(mutex_);
  link(block);
  return start;
}

void HostPool::give_back(void* memory) noexcept {
  if (memory == nullptr) return;
  auto* block = reinterpret_cast<Block*>(static_cast<unsigned char*>(memory) - sizeof(Block));
  const std::lock_guard guard(mutex_);
  if (block->state != in_use || block->pool != this) {
    if (checking_) {
      add_fault(block, block->state == freed    ? "freed twice"
                       : block->state == in_use ? "freed into another pool"
                                                : "freed, but it is none of the pool's");
    }
    return;
  }
  unlink(block);
  if (checking_) {
    check_guards(block);
    put_aside(block);
    return;
  }
  block->state = freed;
  std::free(block);
}

void HostPool::put_aside(Block* block) noexcept {
  block->state = freed;
  std::memset(contents(block, sizeof(Block)), freed_byte, block->bytes);
  try {
    aside_.push_back(block);
  } catch (const std::bad_alloc&) {
    std::free(block);
    return;
  }
  aside_bytes_ += block->bytes;
  while (aside_bytes_ > most_bytes_aside) let_go_of_oldest();
}

void HostPool::let_go_of_oldest() noexcept {
  Block* block = aside_.front();
  aside_.pop_front();
  aside_bytes_ -= block->bytes;
  if (!all_are(contents(block, sizeof(Block)), block->bytes, freed_byte)) {
    add_fault(block, "written after it was freed");
  }
  std::free(block);
}

void HostPool::check_blocks() noexcept {
  if (!checking_) return;
  const std::lock_guard guard(mutex_);
  for (const Block* block = ring_.next; block != &ring_; block = block->next) check_guards(block);
}

void HostPool::report_blocks_in_use() noexcept {
  if (!checking_) return;
  const std::lock_guard guard(mutex_);
  for (const Block* block = ring_.next; block != &ring_; block = block->next) {
    add_fault(block, "never freed");
  }
}

void HostPool::link(Block* block) noexcept {
  block->previous = ring_.previous;
  block->next = &ring_;
  ring_.previous->next = block;
  ring_.previous = block;
}

void HostPool::unlink(Block* block) noexcept {
  block->previous->next = block->next;
  block->next->previous = block->previous;
}

void HostPool::check_guards(const Block* block) noexcept {
  if (block->guard != front_guard) add_fault(block, "written before its start");
  const unsigned char* end = contents(block, sizeof(Block)) + block->bytes;
  if (!all_are(end, back_guard_bytes, back_guard_byte)) add_fault(block, "written past its end");
}

void HostPool::add_fault(const Block* block, std::string_view what) noexcept {
  try {
    // The size of what is no block is anything.
    const bool known = block->state == in_use || block->state == freed;
    const std::string size = known ? " of " + std::to_string(block->bytes) + " bytes" : "";
    registry().faults().add(title() + ": block" + size + " " + std::string(what));
  } catch (const std::bad_alloc&) {  // NOLINT(bugprone-empty-catch): the fault goes unrecorded
  }
}

}  // namespace jwnls::host
