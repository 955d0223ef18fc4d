#include "host/objects/lock.h"

namespace jwnls::host {
namespace {

// Every thread has its own address for this.
thread_local const char this_thread = 0;

}  // namespace

HostLock::HostLock(ObjectRegistry& registry, const char* name)
    : KernelObject(registry, "lock", name), Lock{} {
  destroy = [](Lock* lock) {
    auto* self = static_cast<HostLock*>(lock);
    self->registry().destroy(self);
  };
  take = [](Lock* lock, std::int64_t, std::int64_t) { static_cast<HostLock*>(lock)->take_now(); };
  release = [](Lock* lock) { static_cast<HostLock*>(lock)->release_now(); };
}

void HostLock::end() noexcept {
  const void* holder = holder_.load(std::memory_order_relaxed);
  if (holder == nullptr) return;
  if (registry().checking()) registry().faults().add(title() + " destroyed while it is held");
  // A mutex may not go while it is locked; another thread's cannot be unlocked from here.
  if (holder == &this_thread) {
    depth_ = 1;
    release_now();
  }
}

void HostLock::take_now() noexcept {
  if (holder_.load(std::memory_order_relaxed) == &this_thread) {
    ++depth_;
    return;
  }
  mutex_.lock();
  holder_.store(&this_thread, std::memory_order_relaxed);
  depth_ = 1;
}

void HostLock::release_now() noexcept {
  if (holder_.load(std::memory_order_relaxed) != &this_thread) return;
  if (--depth_ > 0) return;
  holder_.store(nullptr, std::memory_order_relaxed);
  mutex_.unlock();
}

}  // namespace jwnls::host
