// What the tests of the host share.

#ifndef JWNLS_TESTS_HOST_HOSTS_H_
#define JWNLS_TESTS_HOST_HOSTS_H_

#include <gtest/gtest.h>

#include <filesystem>
#include <functional>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "host/host.h"
#include "tests/support/object_checks.h"

namespace jwnls::host {

using Messages = std::vector<std::pair<std::uint32_t, std::string>>;

/// A configuration that finds the modules of this build; with `journal`, what is written to the
/// host's journals goes there.
inline HostConfiguration with_modules(Messages* journal = nullptr) {
  HostConfiguration configuration;
  configuration.extension_path = {JWNLS_BUILD_DIR};
  if (journal != nullptr) {
    configuration.journal = [journal](std::uint32_t level, std::u16string_view message) {
      journal->emplace_back(level, std::string(message.begin(), message.end()));
    };
  }
  return configuration;
}

/// A host that watches what is done with its blocks and objects. When it ends, every fault fails
/// the test, or goes to `faults`.
class CheckedHost : private test::ObjectChecks, public Host {
 public:
  explicit CheckedHost(HostConfiguration configuration, std::vector<std::string>* faults = nullptr)
      : ObjectChecks(faults), Host(std::move(configuration)) {
    watch(kernel(), context());
  }
  using ObjectChecks::faults;
};

constexpr int thread_count = 4;

inline void in_threads(const std::function<void(int)>& work) {
  std::vector<std::thread> threads;
  threads.reserve(thread_count);
  for (int number = 0; number < thread_count; ++number) threads.emplace_back(work, number);
  for (std::thread& thread : threads) thread.join();
}

/// A folder that goes when it is not needed any more.
struct Folder {
  std::filesystem::path path;

  explicit Folder(const std::string& name) : path(testing::TempDir() + "jwnls_" + name) {
    std::filesystem::remove_all(path);
    std::filesystem::create_directories(path);
  }
  ~Folder() { std::filesystem::remove_all(path); }
  Folder(const Folder&) = delete;
  Folder& operator=(const Folder&) = delete;
};

}  // namespace jwnls::host

#endif  // JWNLS_TESTS_HOST_HOSTS_H_
