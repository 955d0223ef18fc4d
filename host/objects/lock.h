// Locks: one thread at a time; a thread may take a lock again that it holds.

#ifndef JWNLS_HOST_OBJECTS_LOCK_H_
#define JWNLS_HOST_OBJECTS_LOCK_H_

#include <atomic>
#include <cstdint>
#include <mutex>
#include <thread>

#include "abi/host_tables.h"
#include "host/objects/object_registry.h"

namespace jwnls::host {

/// A release by a thread that does not hold the lock is ignored: users release on every way out,
/// also on those that come before the lock was taken.
class HostLock final : public KernelObject, public Lock {
 public:
  explicit HostLock(ObjectRegistry& registry);

  /// Releases the lock where the calling thread still holds it.
  ~HostLock() override;

  void take_now() noexcept;
  void release_now() noexcept;

 private:
  std::mutex mutex_;
  // The thread that holds the mutex, or none. A thread finds itself here only if it stored itself,
  // so it need not synchronise with the others to know whether it is the holder.
  std::atomic<std::thread::id> holder_{std::thread::id()};
  std::int64_t depth_ = 0;  // the holder's own
};

}  // namespace jwnls::host

#endif  // JWNLS_HOST_OBJECTS_LOCK_H_
