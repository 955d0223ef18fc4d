#include "tests/process/allocations.h"

#include <malloc.h>

#include <cstddef>
#include <cstdlib>
#include <new>

// The linker turns this program's calls of malloc() and its like into these (--wrap).
extern "C" {
// NOLINTBEGIN(bugprone-reserved-identifier)
void* __real_malloc(std::size_t bytes);
void* __real_calloc(std::size_t count, std::size_t bytes);
void* __real_aligned_alloc(std::size_t alignment, std::size_t bytes);
void __real_free(void* memory);
// NOLINTEND(bugprone-reserved-identifier)
}

namespace jwnls::test {
namespace {

thread_local bool counting = false;
thread_local bool all_behind = false;
thread_local long asked = 0;
thread_local long failing = 0;
thread_local long live = 0;
thread_local long bytes_live = 0;
thread_local long bytes_given = 0;

bool fails() noexcept {
  if (!counting) return false;
  const long number = asked++;
  return number == failing || (all_behind && number > failing);
}

template <typename Allocate>
void* unless_it_fails(Allocate allocate) noexcept {
  void* memory = fails() ? nullptr : allocate();
  if (memory == nullptr) return nullptr;
  const auto bytes = static_cast<long>(::malloc_usable_size(memory));
  ++live;
  bytes_live += bytes;
  bytes_given += bytes;
  return memory;
}

void give_back(void* memory) noexcept {
  if (memory != nullptr) {
    --live;
    bytes_live -= static_cast<long>(::malloc_usable_size(memory));
  }
  __real_free(memory);
}

}  // namespace

void fail_allocation(long number, bool for_ever) noexcept {
  failing = number;
  all_behind = for_ever;
  asked = 0;
  counting = true;
}

long allow_allocations() noexcept {
  counting = false;
  return asked;
}

long live_blocks() noexcept { return live; }
long live_bytes() noexcept { return bytes_live; }
long given_bytes() noexcept { return bytes_given; }

}  // namespace jwnls::test

using jwnls::test::give_back;
using jwnls::test::unless_it_fails;

extern "C" {
// NOLINTBEGIN(bugprone-reserved-identifier)
void* __wrap_malloc(std::size_t bytes) {
  return unless_it_fails([bytes] { return __real_malloc(bytes); });
}
void* __wrap_calloc(std::size_t count, std::size_t bytes) {
  return unless_it_fails([count, bytes] { return __real_calloc(count, bytes); });
}
void* __wrap_aligned_alloc(std::size_t alignment, std::size_t bytes) {
  return unless_it_fails([alignment, bytes] { return __real_aligned_alloc(alignment, bytes); });
}
void __wrap_free(void* memory) { give_back(memory); }
// NOLINTEND(bugprone-reserved-identifier)
}

void* operator new(std::size_t bytes) {
  void* memory = unless_it_fails([bytes] { return __real_malloc(bytes); });
  if (memory == nullptr) throw std::bad_alloc();
  return memory;
}
void* operator new(std::size_t bytes, const std::nothrow_t&) noexcept {
  return unless_it_fails([bytes] { return __real_malloc(bytes); });
}
void operator delete(void* memory) noexcept { give_back(memory); }
void operator delete(void* memory, std::size_t) noexcept { give_back(memory); }
