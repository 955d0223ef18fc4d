#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
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
  blocks = {take(pool, 5000, allocate_zeroed)};
  EXPECT_TRUE(std::all_of(blocks[0], blocks[0] + 5000, [](char byte) { return byte == 0; }));
  pool->free(pool, nullptr);
  EXPECT_EQ(take(pool, UINT64_MAX), nullptr);
  EXPECT_EQ(take(pool, UINT64_MAX - 32), nullptr);
  pool->destroy(pool);  // with half of the blocks in use: AddressSanitizer sees any that stay
}

TEST(Pool, ThreadsShareIt) {
  CheckedHost host(with_modules());
  Pool* pool = make_pool(host);
  in_threads([pool](int) {
    for (std::uint64_t round = 0; round < 500; ++round) {
      char* block = take(pool, round * 100);  // more than a checked pool keeps aside
      std::memset(block, 1, round * 100);
      pool->free(pool, block);
    }
  });
  pool->destroy(pool);
}

}  // namespace
}  // namespace jwnls::host
