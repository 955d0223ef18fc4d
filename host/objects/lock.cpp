#include "host/objects/lock.h"

namespace jwnls::host {

HostLock::HostLock(ObjectRegistry& registry) : KernelObject(registry, ObjectKind::lock), Lock{} {
  destroy = [](Lock* lock) {
    auto& self = static_cast<HostLock&>(*lock);
    self.registry().destroy(&self);
  };
  take = [](Lock* lock, std::int64_t, std::int64_t) { static_cast<HostLock&>(*lock).take_now(); };
  release = [](Lock* lock) { static_cast<HostLock&>(*lock).release_now(); };
}

// A mutex may not go while it is locked; one that another thread holds cannot be unlocked from
// here.
HostLock::~HostLock() {
  if (holder_.load(std::memory_order_relaxed) == std::this_thread::get_id()) mutex_.unlock();
}

void HostLock::take_now() noexcept {
  if (holder_.load(std::memory_order_relaxed) == std::this_thread::get_id()) {
    ++depth_;
    return;
  }
  mutex_.lock();
  holder_.store(std::this_thread::get_id(), std::memory_order_relaxed);
  depth_ = 1;
}

void HostLock::release_now() noexcept {
  if (holder_.load(std::memory_order_relaxed) != std::this_thread::get_id()) return;
  if (--depth_ > 0) return;
  holder_.store(std::thread::id(), std::memory_order_relaxed);
  mutex_.unlock();
}

}  // namespace jwnls::host
