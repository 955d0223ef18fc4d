// A pool before a host's own that finds what its users do wrong with its blocks.

#ifndef JWNLS_TESTS_SUPPORT_CHECKED_POOL_H_
#define JWNLS_TESTS_SUPPORT_CHECKED_POOL_H_

#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <mutex>
#include <string>
#include <string_view>

#include "abi/host_tables.h"
#include "tests/support/fault_log.h"

namespace jwnls::test {

/// Every block has guards on both sides and stays put aside for a while after it was freed, so that
/// an overrun, an underrun, a second free, a write after the free and a free into the wrong pool
/// are found, and do no harm. Any thread.
class CheckedPool final : public Pool {
 public:
  /// `is_of_any_pool` tells whether a block is in use in any pool of the host.
  CheckedPool(Pool* real, std::string title, FaultLog& faults,
              std::function<bool(const void*)> is_of_any_pool);

  /// Adds the faults of every block in use whose guards are damaged.
  void check_guards();

  /// Adds every block in use as never freed.
  void report_blocks_in_use();

  [[nodiscard]] const std::string& title() const { return title_; }
  [[nodiscard]] bool is_destroyed() const { return destroyed_; }
  [[nodiscard]] bool has_in_use(const void* memory) const;

 private:
  struct Block {
    unsigned char* start;
    std::uint64_t bytes;
  };

  void* take(std::uint64_t bytes, std::uint32_t flags);
  void give_back(void* memory);
  void destroy_now();
  bool was_freed(const void* memory) const;
  void check_guards_of(const Block& block);
  void let_go_of_oldest();
  void add_fault(const std::string& block, std::string_view what);

  Pool* const real_;
  const std::string title_;
  FaultLog& faults_;
  const std::function<bool(const void*)> is_of_any_pool_;
  bool destroyed_ = false;
  mutable std::mutex mutex_;  // guards everything below
  std::map<const void*, Block> in_use_;
  std::deque<Block> aside_;  // freed blocks, oldest first
  std::uint64_t aside_bytes_ = 0;
};

}  // namespace jwnls::test

#endif  // JWNLS_TESTS_SUPPORT_CHECKED_POOL_H_
