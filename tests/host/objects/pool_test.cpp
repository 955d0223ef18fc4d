#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

#include "tests/host/hosts.h"

namespace jwnls::host {
namespace {

Pool* make_pool(Host& host, const char* name = "test pool") {
  Kernel* kernel = host.kernel();
  return kernel->create_pool(kernel, &pool_parameters, nullptr, name);
}

char* take(Pool* pool, std::uint64_t bytes, std::uint32_t flags = 0) {
  return static_cast<char*>(pool->allocate(pool, bytes, flags));
}

TEST(Pool, GivesAlignedBlocksZeroedOnRequestAndTakesThemAllWithIt) {
  Host host(HostConfiguration{});
  Pool* pool = make_pool(host);
  std::vector<char*> blocks;
  for (std::uint64_t bytes = 0; bytes < 300; ++bytes) {
    char* block = take(pool, bytes, allocate_zeroed);
    ASSERT_NE(block, nullptr);
    EXPECT_EQ(reinterpret_cast<std::uintptr_t>(block) % 16, 0U);
    EXPECT_TRUE(std::all_of(block, block + bytes, [](char byte) { return byte == 0; }));
    std::memset(block, 0x5A, bytes);
    blocks.push_back(block);
  }
  for (std::size_t at = 0; at < blocks.size(); at += 2) pool->free(pool, blocks[at]);
  pool->free(pool, nullptr);
  EXPECT_EQ(take(pool, UINT64_MAX), nullptr);
  EXPECT_EQ(take(pool, UINT64_MAX - 32), nullptr);
  pool->destroy(pool);  // with half of the blocks in use: AddressSanitizer sees any that stay
}

TEST(Pool, ThreadsShareIt) {
  Host host(checking());
  Pool* pool = make_pool(host);
  in_threads([pool](int) {
    for (std::uint64_t round = 0; round < 500; ++round) {
      char* block = take(pool, round * 100);  // more than a checking pool keeps aside
      std::memset(block, 1, round * 100);
      pool->free(pool, block);
    }
  });
  pool->destroy(pool);
  EXPECT_EQ(host.faults(), std::vector<std::string>());
}

TEST(Pool, FaultsAreFoundAndDoNoHarm) {
  const auto check = [](const std::string& fault, const auto& act) {
    Messages journal;
    Host host(checking(&journal));
    Pool* pool = make_pool(host, "first");
    act(pool, take(pool, 24), make_pool(host, "second"));
    EXPECT_EQ(host.faults(), std::vector<std::string>{fault});
    EXPECT_EQ(journal.at(0), std::pair(journal_fault, fault));
  };
  check("pool 'first': block of 24 bytes freed twice", [](Pool* pool, char* block, Pool*) {
    pool->free(pool, block);
    pool->free(pool, block);
  });
  check("pool 'second': block of 24 bytes freed into another pool",
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

TEST(Pool, WhatIsLeftIsReportedWhenTheHostEnds) {
  Messages journal;
  {
    Host host(checking(&journal));
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
  std::vector<std::string> faults;
  for (const auto& [level, message] : journal) faults.push_back(message);
  std::sort(faults.begin(), faults.end());
  EXPECT_EQ(faults, (std::vector<std::string>{
                        "1 time zones never closed",
                        "lock 'forgotten' never destroyed",
                        "pool 'forgotten' never destroyed",
                        "pool 'jwnls NLS context pool': block of 896 bytes never freed",
                        "track 'forgotten' never destroyed",
                        "track 'forgotten': 1 entries not released",
                    }));
}

}  // namespace
}  // namespace jwnls::host
