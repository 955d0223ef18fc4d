#include "host/loading/extension_loader.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <sys/resource.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>
#include <thread>

#include "host/host.h"
#include "host/loading/load_failure.h"
#include "tests/host/loading/extensions/sample_extension.h"

namespace jwnls::host {
namespace {

std::unique_ptr<SampleObject> load_sample(Host& host, std::u16string_view name = u"jwtest_good") {
  Kernel* kernel = host.kernel();
  const auto length = static_cast<std::int64_t>(name.size());
  return std::unique_ptr<SampleObject>(
      static_cast<SampleObject*>(kernel->load_extension(kernel, name.data(), length, 0)));
}

HostConfiguration with_path(std::vector<std::filesystem::path> folders) {
  HostConfiguration configuration;
  configuration.extension_path = std::move(folders);
  return configuration;
}

TEST(ExtensionLoader, OpensTheLibraryOnceAndMakesANewObjectEachTime) {
  Host host(with_path({"/nonexistent", JWNLS_BUILD_DIR}));
  const auto first = load_sample(host);
  const auto second = load_sample(host);
  ASSERT_TRUE(first && second);
  EXPECT_EQ(first->number, 1);
  EXPECT_EQ(second->number, 2);
  EXPECT_EQ(first->library_kernel, host.kernel());
}

std::uint32_t linked_version(Kernel* /*kernel*/, std::int64_t* major, std::int64_t* minor) {
  *major = 6;
  *minor = 1;
  return 0;
}

void* make_linked(Kernel* kernel, ErrorSink* /*errors*/) { return new SampleObject{kernel, -1}; }

TEST(ExtensionLoader, SeeksInTheFoldersThenAmongTheLinkedThenInTheLastFolders) {
  const LinkedModule linked = {"jwtest_good", linked_version, nullptr, make_linked};
  const LinkedModule other = {"jwother", linked_version, nullptr, make_linked};
  const std::vector<std::filesystem::path> nowhere = {"/nonexistent"};
  const std::vector<std::filesystem::path> built = {JWNLS_BUILD_DIR};
  const struct {
    std::vector<std::filesystem::path> folders;
    std::vector<LinkedModule> linked;
    std::vector<std::filesystem::path> last_folders;
    int number;  // of the object: 1 from the file, -1 from what is linked in
  } cases[] = {
      {built, {linked}, {}, 1},
      {nowhere, {other, linked}, built, -1},
      {nowhere, {other}, built, 1},
  };
  for (const auto& row : cases) {
    HostConfiguration configuration = with_path(row.folders);
    configuration.linked_modules = row.linked;
    configuration.last_extension_path = row.last_folders;
    Host host(std::move(configuration));
    const auto object = load_sample(host);
    ASSERT_TRUE(object);
    EXPECT_EQ(object->number, row.number);
  }
}

TEST(ExtensionLoader, FoldersStayThoseOfTheHostsBeginning) {
  const auto before = std::filesystem::current_path();
  std::filesystem::current_path(JWNLS_BUILD_DIR);
  Host host(with_path({""}));
  std::filesystem::current_path(before);
  EXPECT_EQ(load_sample(host), nullptr);  // no folder
  std::filesystem::current_path(JWNLS_BUILD_DIR);
  Host other(with_path({"."}));
  std::filesystem::current_path("/");
  EXPECT_NE(load_sample(other), nullptr);
  std::filesystem::current_path(before);
}

TEST(ExtensionLoader, HostsOfOneProcessDoNotShareALibrarysVariables) {
  Host first(with_path({JWNLS_BUILD_DIR}));
  const auto of_first = load_sample(first);
  for (int round = 0; round < 3; ++round) {
    Host second(with_path({JWNLS_BUILD_DIR}));
    Host third(with_path({JWNLS_BUILD_DIR}));
    for (Host* host : {&second, &third}) {
      const auto object = load_sample(*host);
      ASSERT_TRUE(object);
      EXPECT_EQ(object->number, 1);
      EXPECT_EQ(object->library_kernel, host->kernel());
    }
  }
  const auto again = load_sample(first);
  ASSERT_TRUE(of_first && again);
  EXPECT_EQ(again->number, 2);
  EXPECT_EQ(again->library_kernel, first.kernel());
}

TEST(ExtensionLoader, SaysWhyThereIsNoCopy) {
  Host first(with_path({JWNLS_BUILD_DIR}));
  Host second(with_path({JWNLS_BUILD_DIR}));
  ASSERT_NE(load_sample(first), nullptr);
  const std::string file = JWNLS_BUILD_DIR "/jwtest_good.so";
  rlimit usual = {};
  ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &usual), 0);
  const rlimit small = {100, usual.rlim_max};
  const auto before = std::signal(SIGXFSZ, SIG_IGN);
  setenv("TMPDIR", "no folder", 1);
  {
    const LoadFailure failure;
    setrlimit(RLIMIT_FSIZE, &small);
    EXPECT_EQ(load_sample(second), nullptr);
    setrlimit(RLIMIT_FSIZE, &usual);
    const std::string expected = "cannot load " + file +
                                 ": no copy of its own for this host: in memory: File too large; "
                                 "in /tmp: File too large; in ";
    EXPECT_EQ(failure.reason().substr(0, expected.size()), expected);
  }
  unsetenv("TMPDIR");
  (void)std::signal(SIGXFSZ, before);
  // Somebody holds the file's lock for a moment.
  const int held = ::open(file.c_str(), O_RDONLY | O_CLOEXEC);
  ASSERT_EQ(flock(held, LOCK_EX), 0);
  std::thread holder([held] {
    std::this_thread::sleep_for(std::chrono::milliseconds(20));
    close(held);
  });
  EXPECT_NE(load_sample(second), nullptr);
  holder.join();
}

TEST(ExtensionLoader, SaysWhatFailedWhereAndWhy) {
  const std::filesystem::path broken_folder = testing::TempDir() + "jwnls_broken_extension";
  std::filesystem::create_directories(broken_folder);
  std::ofstream(broken_folder / "jwbroken.so") << "no library";

  const std::string folder = JWNLS_BUILD_DIR;
  Host host(with_path({broken_folder, folder}));
  const auto check = [&](std::u16string_view name, const std::string& error) {
    const LoadFailure failure;
    EXPECT_EQ(load_sample(host, name), nullptr);
    EXPECT_EQ(failure.reason().substr(0, error.size()), error);
  };
  check(u"jwtest_old", folder + "/jwtest_old.so: has interface version 5.9, not 6.1");
  check(u"jwtest_silent", folder + "/jwtest_silent.so: its factory made no object");
  check(u"jwtest_nameless", folder + "/jwtest_nameless.so: does not export \"jwtest_nameless\"");
  check(u"jwabsent", "cannot find jwabsent.so in " + broken_folder.string() + ", " + folder);
  check(u"jwbroken", "cannot load " + broken_folder.string() + "/jwbroken.so: ");
  check(u"../jwtest_good", "the name of an extension has 1 to 64 letters");
  check(u"jwtest_good\u0130", "the name of an extension has 1 to 64 letters");
  // A failure leaves nothing behind that the next load would trip over.
  EXPECT_NE(load_sample(host), nullptr);

  Host pathless(HostConfiguration{});
  std::string error;
  EXPECT_EQ(pathless.factory(&error), nullptr);
  EXPECT_EQ(error, "cannot find jwnlsloc.so in the extension path, which is empty");
}

}  // namespace
}  // namespace jwnls::host
