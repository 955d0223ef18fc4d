// What a host sees before it has a handle: the library file, its four exports and the factory.

#include <array>
#include <bit>
#include <cstdio>
#include <cstring>
#include <set>
#include <sstream>

#include "tests/support/module_fixture.h"

namespace jwnls::test {
namespace {

using FactoryTest = ModuleTest;

std::string output_of(const std::string& command) {
  std::string output;
  FILE* pipe = popen(command.c_str(), "r");
  for (int c = 0; pipe != nullptr && (c = std::fgetc(pipe)) != EOF;) {
    output += static_cast<char>(c);
  }
  EXPECT_EQ(pipe == nullptr ? -1 : pclose(pipe), 0) << command;
  return output;
}

TEST(Library, ExportsFourNamesAndNeedsOnlyRunTimeLibraries) {
  std::istringstream symbols(output_of("nm -D --defined-only " JWNLS_BUILD_DIR "/jwnlsloc.so"));
  std::set<std::string> names;
  for (std::string address, kind, name; symbols >> address >> kind >> name;) names.insert(name);
  EXPECT_EQ(names, (std::set<std::string>{"jwextent", "jwextver", "jwnlsloc", "jwvercn1"}));

  std::istringstream dynamic(output_of("readelf -d " JWNLS_BUILD_DIR "/jwnlsloc.so"));
  for (std::string line; std::getline(dynamic, line);) {
    if (line.find("(NEEDED)") == std::string::npos) continue;
    const std::string library = line.substr(line.find('[') + 1);
    const std::string stem = library.substr(0, library.find_first_of(".-"));
    static const std::set<std::string> run_time = {"libc",     "libm",    "ld",       "libstdc++",
                                                   "libgcc_s", "libasan", "libubsan", "libtsan"};
    EXPECT_TRUE(run_time.contains(stem)) << line;
  }
}

TEST(Library, ReportsItsInterfaceVersion) {
  std::int64_t major = 0, minor = 0;
  EXPECT_EQ(loaded_module().jwextver(nullptr, &major, &minor), 0u);
  EXPECT_EQ(std::pair(major, minor), std::pair(std::int64_t{6}, std::int64_t{1}));
}

TEST(Library, DescribesItsBuild) {
  std::array<std::uint64_t, 28> words;
  words.fill(0xA5A5A5A5A5A5A5A5);
  loaded_module().jwvercn1(&words[1]);
  EXPECT_EQ(words[0], words[27]) << "208 bytes, no more";
  const auto text = [&](std::size_t word) {
    return std::string(std::bit_cast<const char*>(words[1 + word]));
  };
  const auto padded = [](std::string start) { return start.append(65 - start.size(), ' '); };
  const std::map<std::size_t, std::string> fixed = {
      {2, ""},        {4, "jwnls"},
      {6, "jwext"},   {8, ""},
      {9, "version"}, {10, "::"},
      {11, ""},       {12, padded("QRX_VERSION_HOTFIX_NUMBER=")},
      {13, ""},       {14, padded("VERCON_IMAGE_DESCRIPTION=")}};
  for (const auto& [word, expected] : fixed) EXPECT_EQ(text(word), expected) << word;
  for (const auto fact : std::initializer_list<std::size_t>{0, 1, 5, 7, 15, 16})
    EXPECT_NE(text(fact), "") << fact;
  EXPECT_GT(words[1 + 3], 1'600'000'000u) << "build time in seconds";
  for (std::size_t word = 17; word < 26; ++word) EXPECT_EQ(words[1 + word], 0u) << word;
}

TEST_F(FactoryTest, LiesInAPoolOfItsOwn) {
  std::uint64_t words[12];
  static_assert(sizeof words == sizeof(Factory));
  std::memcpy(words, factory, sizeof words);
  EXPECT_EQ(std::memcmp(words, "nevo\0\0\0\0", 8), 0);
  for (const int zero : {1, 2, 7, 8}) EXPECT_EQ(words[zero], 0u) << zero;
  EXPECT_EQ(factory->kernel, &host.kernel);
  EXPECT_EQ(host.pools.back().blocks.at(factory), 96u);
  EXPECT_EQ(factory->pool, &host.pools.back());

  std::int64_t a = 0, b = 0, c = 0;
  EXPECT_EQ(factory->version_a(factory, &a, &b, &c), 0u);
  EXPECT_EQ((std::array{a, b, c}), (std::array<std::int64_t, 3>{6, 1, 1}));
  EXPECT_EQ(factory->version_b(factory, &a, &b, &c), 0u);
  EXPECT_EQ((std::array{a, b, c}), (std::array<std::int64_t, 3>{6, 0, 0}));

  EXPECT_EQ(factory->destroy(nullptr), 0u);
  Factory without_pool = *factory;
  without_pool.pool = nullptr;
  EXPECT_EQ(factory->destroy(&without_pool), 0u);
}

TEST_F(FactoryTest, ReportsOnlyAnAllocationThatFails) {
  const std::vector<std::string> created = {"kernel.create_pool standard sink jwnlsloc pool",
                                            "allocate jwnlsloc pool 96 80000000"};
  const std::vector<std::string> owned = host.live();
  for (const int failing : {1, 2}) {
    for (ErrorSink* sink :
         {static_cast<ErrorSink*>(&host.errors), static_cast<ErrorSink*>(nullptr)}) {
      host.forget_failures();
      host.failing_call = failing;
      host.calls.clear();
      host.reports.clear();
      EXPECT_EQ(loaded_module().jwnlsloc(&host.kernel, sink), nullptr);
      EXPECT_EQ(host.reports, failing == 2 && sink != nullptr
                                  ? std::vector<std::string>{"error 4 803fc002"}
                                  : std::vector<std::string>{});
      EXPECT_EQ(host.live(), owned);
      if (failing == 2 && sink != nullptr) {
        EXPECT_EQ(std::vector(host.calls.begin(), host.calls.begin() + 2), created);
      }
    }
  }
}

}  // namespace
}  // namespace jwnls::test
