// A short deterministic run of the fuzzer that is linked in, whose checks abort.

#include <gtest/gtest.h>

#include <random>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

TEST(Fuzzer, FindsNothingInRandomInputs) {
  std::mt19937 random(40248);
  std::vector<std::uint8_t> input;
  for (int i = 0; i < 20'000; ++i) {
    input.resize(random() % 600);
    for (std::uint8_t& byte : input) byte = static_cast<std::uint8_t>(random());
    ASSERT_EQ(LLVMFuzzerTestOneInput(input.data(), input.size()), 0);
  }
}

}  // namespace
