#include "client/host.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>

#include "real_host.h"

namespace jwnls::client {
namespace {

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
