#include <gtest/gtest.h>

#include "tests/host/hosts.h"

namespace jwnls::host {
namespace {

TEST(Lock, OneThreadAtATimeAndOnlyItsHolderReleasesIt) {
  Host host(HostConfiguration{});
  Kernel* kernel = host.kernel();
  Lock* lock = kernel->create_lock(kernel, nullptr, nullptr, "test lock");
  lock->release(lock);  // nobody holds it

  int unguarded = 0;  // ThreadSanitizer sees a race when the lock fails
  in_threads([&](int) {
    for (int round = 0; round < 2000; ++round) {
      lock->release(lock);  // another thread may hold it: ignored
      lock->take(lock, 1, 1);
      lock->take(lock, 1, 1);  // it is this thread's already
      lock->release(lock);
      ++unguarded;
      lock->release(lock);
      lock->release(lock);
    }
  });
  EXPECT_EQ(unguarded, thread_count * 2000);
  lock->take(lock, 1, 1);
  lock->destroy(lock);  // is unlocked before
}

}  // namespace
}  // namespace jwnls::host
