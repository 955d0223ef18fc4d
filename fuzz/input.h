// What the fuzzers share: an input taken apart, and the check that ends a run.

#ifndef JWNLS_FUZZ_INPUT_H_
#define JWNLS_FUZZ_INPUT_H_

#include <cstdint>
#include <cstdio>
#include <cstdlib>

namespace jwnls::test {

inline void require(bool right, const char* what) {
  if (right) return;
  std::fprintf(stderr, "%s\n", what);
  std::abort();
}

/// Takes an input apart; zeros once it is used up.
class Input {
 public:
  Input(const std::uint8_t* data, std::size_t size) : next_(data), end_(data + size) {}

  bool used_up() const { return next_ == end_; }
  std::uint8_t byte() { return used_up() ? std::uint8_t{0} : *next_++; }

  template <typename Number>
  Number number() {
    std::uint64_t value = 0;
    for (std::size_t i = 0; i < sizeof(Number); ++i) value = value << 8 | byte();
    return static_cast<Number>(value);
  }

  /// A length that is right, or anything.
  std::int64_t length(std::int64_t right) {
    const std::uint8_t choice = byte();
    if (choice < 0xC0) return right;
    return choice < 0xE0 ? std::int64_t{choice} - 0xD0 : number<std::int64_t>();
  }

 private:
  const std::uint8_t* next_;
  const std::uint8_t* end_;
};

}  // namespace jwnls::test

#endif  // JWNLS_FUZZ_INPUT_H_
