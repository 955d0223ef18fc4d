#include "host/objects/lock.h"

namespace jwnls::host {
namespace {

// Every thread has its own address for this.
thread_local const char this_thread = 0;

}  // namespace

HostLock::HostLock(ObjectRegistry& registry) : KernelObject(registry, ObjectKind::lock), Lock{} {
  destroy = [](Lock* lock) {
    auto* self = static_cast<HostLock*>(lock);
    self->registry().destroy(self);
  };
  take = [](Lock* lock, std::int64_t, std::int64_t) { static_cast<HostLock*>(lock)->take_now(); };
  release = [](Lock* lock) { static_cast<HostLock*>(lock)->release_now(); };
}

// A mutex may not go while it is locked; one that another thread holds cannot be unlocked from
// here.
HostLock::~HostLock() {
  if (holder_.load(std::memory_order_relaxed) != &this_thread) return;
  depth_ = 1;
  release_now();
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
