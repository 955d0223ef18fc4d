// The seed of tests that draw random numbers.

#ifndef JWNLS_TESTS_SUPPORT_SEED_H_
#define JWNLS_TESTS_SUPPORT_SEED_H_

#include <gtest/gtest.h>

#include <cstdint>
#include <cstdlib>
#include <iostream>

namespace jwnls::test {

/// JWNLS_TEST_SEED, or 1 where it is not set: the same numbers in every run. A test that fails
/// prints it.
inline std::uint64_t run_seed() {
  struct Printer : testing::EmptyTestEventListener {
    explicit Printer(std::uint64_t value) : seed(value) {}
    void OnTestEnd(const testing::TestInfo& test) override {
      if (test.result()->Failed()) std::cout << "JWNLS_TEST_SEED=" << seed << std::endl;
    }
    const std::uint64_t seed;
  };
  static const std::uint64_t seed = [] {
    const char* const given = std::getenv("JWNLS_TEST_SEED");
    const std::uint64_t value = given != nullptr ? std::strtoull(given, nullptr, 10) : 1;
    testing::UnitTest::GetInstance()->listeners().Append(new Printer(value));
    return value;
  }();
  return seed;
}

/// The seed of a generator: the run's, with a number that tells generators apart.
inline std::uint64_t test_seed(std::uint64_t own) { return run_seed() * 0x9E3779B97F4A7C15 ^ own; }

}  // namespace jwnls::test

#endif  // JWNLS_TESTS_SUPPORT_SEED_H_
