// A host lock held for the length of a scope.

#ifndef JWNLS_MODULE_HOST_CALLS_LOCK_GUARD_H_
#define JWNLS_MODULE_HOST_CALLS_LOCK_GUARD_H_

#include "module/host_calls/typed_calls.h"

namespace jwnls {

class LockGuard {
 public:
  explicit LockGuard(Lock* lock) noexcept : lock_(lock) { host_calls::take(lock_); }
  ~LockGuard() { host_calls::release(lock_); }
  LockGuard(const LockGuard&) = delete;
  LockGuard& operator=(const LockGuard&) = delete;

 private:
  Lock* lock_;
};

}  // namespace jwnls

#endif  // JWNLS_MODULE_HOST_CALLS_LOCK_GUARD_H_
