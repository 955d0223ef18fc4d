#include "library/process/opening.h"

#include <pthread.h>

#include <atomic>
#include <cerrno>
#include <mutex>

#include "library/texts/failure.h"

namespace jwnls::library {
namespace {

// Never destroyed: threads may open while the process ends.
union Lock {
  constexpr Lock() : mutex() {}
  ~Lock() {}
  std::mutex mutex;
};
constinit Lock lock;
constinit Lock gathering;
// A thread finds itself here only if it stored itself, so that no order is needed.
constinit std::atomic<pthread_t> holder{};  // 0: none
constinit bool held_for_fork = false;       // guarded by the lock

}  // namespace

void Opening::take() noexcept {
  lock.mutex.lock();
  holder.store(pthread_self(), std::memory_order_relaxed);
}

void Opening::release() noexcept {
  holder.store(pthread_t{}, std::memory_order_relaxed);
  lock.mutex.unlock();
}

bool Opening::is_here() noexcept {
  return holder.load(std::memory_order_relaxed) == pthread_self();
}

Opening::Opening() : errno_(errno) {
  if (is_here()) {
    fail(JWNLS_LOAD, [](Message& message) { message << "nothing opens in a journal function"; });
  }
  take();
}

Opening::~Opening() {
  release();
  errno = errno_;
}

Gathering::Gathering() { gathering.mutex.lock(); }
Gathering::~Gathering() { gathering.mutex.unlock(); }

namespace {

// A journal function may fork, too: its thread has the lock already, and keeps it in the child.
struct ForkHandlers {
  ForkHandlers() {
    const auto before = [] {
      if (Opening::is_here()) return;
      gathering.mutex.lock();
      lock.mutex.lock();
      held_for_fork = true;
    };
    const auto after = [] {
      if (Opening::is_here() || !held_for_fork) return;
      held_for_fork = false;
      lock.mutex.unlock();
      gathering.mutex.unlock();
    };
    (void)pthread_atfork(before, after, after);
  }
};
const ForkHandlers fork_handlers;

}  // namespace
}  // namespace jwnls::library
