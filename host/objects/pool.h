// Memory pools: blocks that can be freed one by one, and all go with their pool.

#ifndef JWNLS_HOST_OBJECTS_POOL_H_
#define JWNLS_HOST_OBJECTS_POOL_H_

#include <cstdint>
#include <mutex>

#include "abi/host_tables.h"
#include "host/objects/object_registry.h"

namespace jwnls::host {

/// Blocks of the C library's heap, aligned to 16 bytes. Any thread may allocate and free.
class HostPool final : public KernelObject, public Pool {
 public:
  explicit HostPool(ObjectRegistry& registry);

  /// Frees every block that is still in use.
  ~HostPool() override;

  /// Null when out of memory. Zero-filled where `flags` has allocate_zeroed.
  void* take(std::uint64_t bytes, std::uint32_t flags) noexcept;

  /// Frees a block of this pool, and nothing when null.
  void give_back(void* memory) noexcept;

 private:
  // Stands before every block, in a ring that begins and ends at ring_.
  struct alignas(16) Block {
    Block* previous;
    Block* next;
  };

  std::mutex mutex_;  // guards the ring
  Block ring_{&ring_, &ring_};
};

}  // namespace jwnls::host

#endif  // JWNLS_HOST_OBJECTS_POOL_H_
