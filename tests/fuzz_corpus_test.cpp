// Runs the fuzzer that is linked in, whose checks abort, over its corpus: every file as it is, and
// with a few bytes changed, of the run's seed.

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <vector>

#include "tests/support/seed.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

// From an allocation of just the input's size, so that a sanitizer sees every byte too many.
void run(const std::vector<char>& input, const char* how) {
  const std::vector<std::uint8_t> bytes(input.begin(), input.end());
  SCOPED_TRACE(how);
  ASSERT_EQ(LLVMFuzzerTestOneInput(bytes.data(), bytes.size()), 0);
}

std::vector<std::filesystem::path> corpus() {
  std::vector<std::filesystem::path> files;
  for (const auto& file : std::filesystem::directory_iterator(JWNLS_CORPUS)) {
    files.push_back(file.path());
  }
  std::sort(files.begin(), files.end());
  return files;
}

TEST(FuzzCorpus, FindsNothing) {
  const auto files = corpus();
  ASSERT_FALSE(files.empty());
  std::mt19937_64 random(jwnls::test::test_seed(0));
  // An input that ends the process leaves no other line.
  std::cout << files.size() << " inputs, JWNLS_TEST_SEED=" << jwnls::test::run_seed() << std::endl;
  for (const auto& file : files) {
    std::ifstream stream(file, std::ios::binary);
    std::vector<char> input(std::istreambuf_iterator<char>(stream), {});
    run(input, file.c_str());
    for (int changes = 0; changes < 3 && !input.empty(); ++changes) {
      input[random() % input.size()] = static_cast<char>(random());
      run(input, file.c_str());
    }
  }
}

}  // namespace
