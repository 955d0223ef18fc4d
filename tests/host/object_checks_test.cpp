// The checks that the tests of the host rely on.

#include "tests/support/object_checks.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "tests/host/hosts.h"

namespace jwnls::host {
namespace {

Pool* make_pool(Host& host, const char* name) {
  Kernel* kernel = host.kernel();
  return kernel->create_pool(kernel, &pool_parameters, nullptr, name);
}

char* take(Pool* pool, std::uint64_t bytes) {
  return static_cast<char*>(pool->allocate(pool, bytes, 0));
}

TEST(ObjectChecks, FindFaultsThatDoNoHarm) {
  const auto check = [](const std::string& fault, const auto& act) {
    std::vector<std::string> at_the_end;
    CheckedHost host(HostConfiguration{}, &at_the_end);
    Pool* pool = make_pool(host, "first");
    act(pool, take(pool, 24), make_pool(host, "second"));
    EXPECT_EQ(host.faults(), std::vector<std::string>{fault});
  };
  check("pool 'first': block freed twice", [](Pool* pool, char* block, Pool*) {
    pool->free(pool, block);
    pool->free(pool, block);
  });
  check("pool 'second': block freed into another pool",
        [](Pool*, char* block, Pool* other) { other->free(other, block); });
  check("pool 'first': block of 24 bytes written past its end",
        [](Pool*, char* block, Pool*) { block[24] = 'x'; });
  check("pool 'first': block of 24 bytes written before its start",
        [](Pool*, char* block, Pool*) { block[-1] = 'x'; });
  check("pool 'first': block freed, but it is none of the pool's",
        [](Pool* pool, char* block, Pool*) { pool->free(pool, block + 16); });
  check("pool 'first': block of 24 bytes written after it was freed",
        [](Pool* pool, char* block, Pool*) {
          pool->free(pool, block);
          block[5] = 'x';
          pool->destroy(pool);
        });
  check("pool 'first' destroyed twice", [](Pool* pool, char*, Pool*) {
    pool->destroy(pool);
    pool->destroy(pool);
  });
}

TEST(ObjectChecks, FindWhatIsLeftWhenTheHostEnds) {
  std::vector<std::string> faults;
  {
    CheckedHost host(HostConfiguration{}, &faults);
    Kernel* kernel = host.kernel();
    make_pool(host, "forgotten");
    kernel->create_lock(kernel, nullptr, nullptr, "forgotten");
    Track* track = kernel->create_track(kernel, &track_parameters, nullptr, "forgotten");
    std::uint32_t status = 0;
    track->insert(track, track_insert, 0, nullptr, 0, "key", 3, &status);
    take(host.context()->pool, 896);
    host.context()->zone_service->open(host.context()->zone_service, u"UTC", 3, 0);
    // Not faults: what was destroyed, and the blocks that their pool's owner destroyed with it.
    Pool* pool = make_pool(host, "destroyed");
    take(pool, 96);
    pool->destroy(pool);
  }
  std::sort(faults.begin(), faults.end());
  EXPECT_EQ(faults, (std::vector<std::string>{
                        "1 time zones never closed",
                        "lock 'forgotten' never destroyed",
                        "pool 'forgotten' never destroyed",
                        "pool 'of the context': block of 896 bytes never freed",
                        "track 'forgotten' never destroyed",
                        "track 'forgotten': 1 entries not released",
                    }));
}

}  // namespace
}  // namespace jwnls::host
