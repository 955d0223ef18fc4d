#include "client/host.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "real_host.h"

namespace jwnls::client {
namespace {

namespace fs = std::filesystem;

// A folder of its own, gone with the test.
class TemporaryFolder {
 public:
  TemporaryFolder() {
    std::string name = (fs::temp_directory_path() / "jwnls-XXXXXX").string();
    path_ = mkdtemp(name.data());
  }
  ~TemporaryFolder() {
    std::error_code ignored;
    fs::remove_all(path_, ignored);
  }
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;
  [[nodiscard]] const fs::path& path() const { return path_; }

 private:
  fs::path path_;
};

Result<Host> open_with(const fs::path& folder) {
  HostOptions options;
  options.extension_path = {folder};
  return Host::open(std::move(options));
}

TEST(Host, SaysWhichModuleCannotBeLoadedAndWhere) {
  const TemporaryFolder folder;
  const auto absent = open_with(folder.path());
  ASSERT_FALSE(absent);
  EXPECT_NE(absent.error().message.find("jwnlsloc"), std::string::npos) << absent.error().message;
  EXPECT_NE(absent.error().message.find(folder.path()), std::string::npos);

  std::ofstream(folder.path() / "jwnlsloc.so") << "no shared object";
  const auto broken = open_with(folder.path());
  ASSERT_FALSE(broken);
  EXPECT_NE(broken.error().message.find("jwnlsloc.so"), std::string::npos)
      << broken.error().message;
}

TEST(Host, SaysWhichExtensionIsMissing) {
  const TemporaryFolder folder;
  const fs::path build = JWNLS_BUILD_DIR;
  fs::create_symlink(build / "jwnlsloc.so", folder.path() / "jwnlsloc.so");
  fs::create_symlink(build / "jwemsg.so", folder.path() / "jwemsg.so");
  const auto host = open_with(folder.path());
  ASSERT_FALSE(host);
  EXPECT_NE(host.error().message.find("jwnlsldb"), std::string::npos) << host.error().message;
}

TEST(Host, SearchesTheFoldersOfTheEnvironmentFirst) {
  ASSERT_EQ(setenv("JWNLS_EXTENSION_PATH", "/first::/second:", 1), 0);
  const auto folders = default_extension_path();
  ASSERT_EQ(unsetenv("JWNLS_EXTENSION_PATH"), 0);
  ASSERT_EQ(folders.size(), 4U);
  EXPECT_EQ(folders[0], "/first");
  EXPECT_EQ(folders[1], "/second");
  EXPECT_EQ(folders[3], folders[2].parent_path() / "lib" / "jwnls");
}

TEST(Host, ListsLocalesAndZones) {
  const auto locales = real_host().locales();
  EXPECT_GT(locales.size(), 700U);
  const auto german = std::find_if(locales.begin(), locales.end(),
                                   [](const LocaleInfo& info) { return info.name == "de_DE"; });
  ASSERT_NE(german, locales.end());
  EXPECT_EQ(german->english_name, "German (Germany)");
  EXPECT_EQ(german->own_name, "Deutsch (Deutschland)");
  for (const LocaleInfo& info : locales) {
    const auto match = real_host().match(info.name);
    ASSERT_TRUE(match) << info.name;
    EXPECT_EQ(match->name, info.name);
    EXPECT_TRUE(match->exact) << info.name;
  }

  const auto& zones = real_host().time_zones();
  EXPECT_GT(zones.size(), 400U);
  EXPECT_TRUE(std::is_sorted(zones.begin(), zones.end()));
  for (const std::string& zone : zones) EXPECT_TRUE(real_host().time_zone(zone)) << zone;
  EXPECT_EQ(real_host().time_zone("Asia/Kolkata")->abbreviation, "IST");
  EXPECT_EQ(real_host().time_zone("UTC-03:30")->offset_from_utc, -std::chrono::minutes{210});
}

}  // namespace
}  // namespace jwnls::client
