// Memory pools: blocks that can be freed one by one, and all go with their pool.

#ifndef JWNLS_HOST_OBJECTS_POOL_H_
#define JWNLS_HOST_OBJECTS_POOL_H_

#include <cstddef>
#include <cstdint>
#include <deque>
#include <mutex>
#include <string_view>

#include "abi/host_tables.h"
#include "host/objects/object_registry.h"

namespace jwnls::host {

/// Blocks are aligned to 16 bytes. Any thread may allocate and free.
///
/// In a checking host a block has guards on both sides and stays put aside for a while after it was
/// freed, so that an overrun, an underrun, a second free, a write after the free and a free into
/// the wrong pool are reported, and do no harm. In any other host they are the caller's peril.
class HostPool final : public KernelObject, public Pool {
 public:
  HostPool(ObjectRegistry& registry, const char* name);
  ~HostPool() override;

  void end() noexcept override;

  /// Null when out of memory. Zero-filled where `flags` has allocate_zeroed.
  void* take(std::uint64_t bytes, std::uint32_t flags) noexcept;
  void give_back(void* memory) noexcept;

  /// When checking: reports every block in use whose guards are damaged.
  void check_blocks() noexcept;

  /// When checking: reports every block in use as never freed. So ends a pool of the host's own; a
  /// pool that another owner destroys takes its blocks with it rightly.
  void report_blocks_in_use() noexcept;

 private:
  // Stands before every block, in a ring that begins and ends at ring_.
  struct alignas(16) Block {
    Block* previous;
    Block* next;
    HostPool* pool;
    std::uint64_t bytes;
    std::uint64_t state;
    std::uint64_t guard;
  };

  void link(Block* block) noexcept;
  static void unlink(Block* block) noexcept;
  void put_aside(Block* block) noexcept;
  void let_go_of_oldest() noexcept;
  void check_guards(const Block* block) noexcept;
  void add_fault(const Block* block, std::string_view what) noexcept;

  const bool checking_;
  mutable std::mutex mutex_;
  Block ring_;
  std::deque<Block*> aside_;       // freed blocks, oldest first
  std::uint64_t aside_bytes_ = 0;  // of the blocks put aside
};

}  // namespace jwnls::host

#endif  // JWNLS_HOST_OBJECTS_POOL_H_
