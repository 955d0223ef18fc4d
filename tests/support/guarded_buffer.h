// A buffer whose end touches an unreadable page and whose front is watched.
//
// A read or write past the end is a crash at the place that did it; a write before the front, or
// behind what a service says it delivered, shows in the checks below.

#ifndef JWNLS_TESTS_SUPPORT_GUARDED_BUFFER_H_
#define JWNLS_TESTS_SUPPORT_GUARDED_BUFFER_H_

#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <string_view>

namespace jwnls::test {

template <typename Unit>
class GuardedBuffer {
 public:
  /// Room for buffers of up to `largest` units.
  explicit GuardedBuffer(std::size_t largest = 4096)
      : page_(static_cast<std::size_t>(sysconf(_SC_PAGESIZE))),
        bytes_((largest * sizeof(Unit) / page_ + 1) * page_),
        region_(static_cast<std::byte*>(mmap(nullptr, bytes_ + 2 * page_, PROT_READ | PROT_WRITE,
                                             MAP_PRIVATE | MAP_ANONYMOUS, -1, 0))) {
    if (region_ == MAP_FAILED || mprotect(region_, page_, PROT_NONE) != 0 ||
        mprotect(region_ + page_ + bytes_, page_, PROT_NONE) != 0) {
      std::abort();
    }
    std::memset(region_ + page_, guard, bytes_);
  }
  ~GuardedBuffer() { munmap(region_, bytes_ + 2 * page_); }
  GuardedBuffer(const GuardedBuffer&) = delete;
  GuardedBuffer& operator=(const GuardedBuffer&) = delete;

  /// Begins anew with `units` units, all of them guard units, the last one right before the
  /// unreadable page.
  Unit* reset(std::size_t units) {
    const std::size_t refilled = std::min(bytes_, std::max(units, units_) * sizeof(Unit) + watched);
    std::memset(end() - refilled, guard, refilled);
    units_ = units;
    return data();
  }
  /// Begins anew with a copy of `text`, for services that read.
  const Unit* hold(std::basic_string_view<Unit> text) {
    Unit* units = reset(text.size());
    std::copy(text.begin(), text.end(), units);
    return units;
  }

  /// The same, but the first unit comes right behind the unreadable page before the buffer.
  const Unit* hold_at_front(std::basic_string_view<Unit> text) {
    units_ = bytes_ / sizeof(Unit);
    std::copy(text.begin(), text.end(), data());
    return data();
  }

  Unit* data() const { return reinterpret_cast<Unit*>(end()) - units_; }
  std::basic_string_view<Unit> text(std::size_t length) const { return {data(), length}; }

  /// True when nothing was written before the buffer, nor into it from unit `from` on.
  bool untouched(std::size_t from) const {
    const auto* front = reinterpret_cast<const std::byte*>(data());
    const std::size_t before = std::min(watched, static_cast<std::size_t>(front - region_) - page_);
    const auto is_guard = [](std::byte byte) { return byte == std::byte{guard}; };
    return std::all_of(front - before, front, is_guard) &&
           std::all_of(front + from * sizeof(Unit), static_cast<const std::byte*>(end()), is_guard);
  }

  /// The buffer's units up to the last one that is no guard unit.
  std::basic_string_view<Unit> written() const {
    const auto all = text(units_);
    return all.substr(0, all.find_last_not_of(static_cast<Unit>(0xA5A5)) + 1);
  }

 private:
  static constexpr unsigned char guard = 0xA5;
  static constexpr std::size_t watched = 64;  // bytes before the front

  std::byte* end() const { return region_ + page_ + bytes_; }

  std::size_t page_;
  std::size_t bytes_;
  std::byte* region_;
  std::size_t units_ = 0;
};

/// The buffer of a kind of unit, one for all tests.
template <typename Unit>
GuardedBuffer<Unit>& guarded_buffer() {
  static GuardedBuffer<Unit> buffer(1 << 16);
  return buffer;
}

}  // namespace jwnls::test

#endif  // JWNLS_TESTS_SUPPORT_GUARDED_BUFFER_H_
