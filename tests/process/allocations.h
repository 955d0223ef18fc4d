// Allocations that fail on demand: those of operator new and of the host's pools.

#ifndef JWNLS_TESTS_PROCESS_ALLOCATIONS_H_
#define JWNLS_TESTS_PROCESS_ALLOCATIONS_H_

namespace jwnls::test {

/// From now on this thread's allocations fail: the one with that number, counted from 0, and with
/// `for_ever` all behind it.
void fail_allocation(long number, bool for_ever) noexcept;

/// Lets all succeed again, and gives how many were asked for since.
long allow_allocations() noexcept;

/// How many blocks this thread has more than when it began, as far as it frees what it allocates.
long live_blocks() noexcept;

/// The same in bytes, and the bytes of all blocks that this thread was ever given.
long live_bytes() noexcept;
long given_bytes() noexcept;

}  // namespace jwnls::test

#endif  // JWNLS_TESTS_PROCESS_ALLOCATIONS_H_
