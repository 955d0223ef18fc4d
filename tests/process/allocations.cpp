#include "tests/process/allocations.h"

#include <cstddef>
#include <cstdlib>
#include <new>

// The linker turns this program's calls of malloc() and calloc() into these (--wrap).
extern "C" {
void* __real_malloc(std::size_t bytes);                     // NOLINT(bugprone-reserved-identifier)
void* __real_calloc(std::size_t count, std::size_t bytes);  // NOLINT(bugprone-reserved-identifier)
}

namespace jwnls::test {
namespace {

thread_local bool counting = false;
thread_local bool all_behind = false;
thread_local long asked = 0;
thread_local long failing = 0;

bool fails() noexcept {
  if (!counting) return false;
  const long number = asked++;
  return number == failing || (all_behind && number > failing);
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

}  // namespace jwnls::test

extern "C" {
void* __wrap_malloc(std::size_t bytes) {  // NOLINT(bugprone-reserved-identifier)
  return jwnls::test::fails() ? nullptr : __real_malloc(bytes);
}
void* __wrap_calloc(std::size_t count, std::size_t bytes) {  // NOLINT(bugprone-reserved-identifier)
  return jwnls::test::fails() ? nullptr : __real_calloc(count, bytes);
}
}

void* operator new(std::size_t bytes) {
  // As the standard library's own does, with what it needs itself.
  void* memory = jwnls::test::fails() ? nullptr : __real_malloc(bytes);
  if (memory == nullptr) throw std::bad_alloc();
  return memory;
}
void* operator new(std::size_t bytes, const std::nothrow_t&) noexcept {
  return jwnls::test::fails() ? nullptr : __real_malloc(bytes);
}
void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }
