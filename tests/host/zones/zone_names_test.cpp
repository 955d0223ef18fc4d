#include "host/zones/zone_names.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <string>

#include "tests/host/hosts.h"

namespace jwnls::host {
namespace {

namespace fs = std::filesystem;
using namespace std::string_view_literals;

std::u16string wide(std::string_view text) { return {text.begin(), text.end()}; }

std::string normal(const ZoneNames& names, std::u16string_view name) {
  ZoneNameText out = {};
  if (names.normalise(name, out) != Status::ok) return "refused";
  return {out.units, out.units + out.length};
}

TEST(ZoneNames, AreReadAsPeopleWriteThem) {
  const ZoneNames names({});
  const auto check = [&](std::u16string_view name, std::string_view expected) {
    EXPECT_EQ(normal(names, name), expected) << fs::path(std::u16string(name));
  };
  check(u"Europe/Berlin", "Europe/Berlin");
  check(u"eUROPE/bERLIN", "Europe/Berlin");
  check(u"  america/argentina/comodrivadavia\t", "America/Argentina/ComodRivadavia");
  check(u"us/eastern", "US/Eastern");  // an alias stays that alias
  check(u"\u00A0w-su ", "W-SU");
  check(u"utc", "UTC");
  check(u"est5edt", "EST5EDT");  // a zone of that name, not a rule
  check(u"etc/gmt+5", "Etc/GMT+5");
  check(u"UTC+05:30", "UTC+05:30");
  check(u" utc-5 ", "UTC-05:00");
  check(u"UTC-0", "UTC");
  const auto refuse = [&names](auto... refused) {
    for (const std::u16string_view name : {std::u16string_view(refused)...}) {
      EXPECT_EQ(normal(names, name), "refused") << fs::path(std::u16string(name));
    }
  };
  refuse(u"", u"   ", u"Europe", u"Europe/", u"Europe/Atlantis", u"Europe / Berlin", u"UTC\0"sv,
         u"EST5EDT,M3.2.0,M11.1.0", u"<+03>-3", u"Europe/Berl\u0131n", u"\uFF35TC",
         u"Europe/Berlin and very much more than any name can have");
  // Files of the database that are no zones of its own.
  refuse(u"posix/Europe/Berlin", u"right/Europe/Berlin", u"/usr/share/zoneinfo/Europe/Berlin",
         u"Europe/../Europe/Berlin", u"../zoneinfo/UTC", u"localtime", u"posixrules", u"Factory",
         u"tzdata.zi");
}

TEST(ZoneNames, EveryNameIsFoundInAnyCase) {
  const ZoneNames names({});
  EXPECT_GT(names.names().size(), 400U);
  EXPECT_TRUE(std::is_sorted(names.names().begin(), names.names().end()));
  EXPECT_FALSE(names.version().empty());
  for (const std::string& name : names.names()) {
    std::string upper = name;
    std::string lower = name;
    std::transform(name.begin(), name.end(), upper.begin(), ::toupper);
    std::transform(name.begin(), name.end(), lower.begin(), ::tolower);
    EXPECT_EQ(normal(names, wide(upper)), name);
    EXPECT_EQ(normal(names, wide(lower)), name);
    EXPECT_TRUE(fs::exists(names.directory() / name)) << name;
  }
}

// Without its list, a database is read from its folder, and gives the same names.
TEST(ZoneNames, TheFolderGivesTheNamesThatTheListGives) {
  const ZoneNames listed({});
  const Folder folder("zones");
  for (const auto& item : fs::directory_iterator(listed.directory())) {
    if (item.path().filename() == "tzdata.zi") continue;
    fs::copy(item.path(), folder.path / item.path().filename(), fs::copy_options::recursive);
  }
  EXPECT_EQ(ZoneNames(folder.path).names(), listed.names());
}

TEST(ZoneNames, UtcNeedsNoDatabase) {
  const ZoneNames names("/nonexistent");
  EXPECT_EQ(names.names(), std::vector<std::string>{"UTC"});
  EXPECT_EQ(names.version(), "");
  EXPECT_EQ(normal(names, u"utc"), "UTC");
  EXPECT_EQ(normal(names, u"UTC+3"), "UTC+03:00");
  EXPECT_EQ(normal(names, u"Europe/Berlin"), "refused");
}

}  // namespace
}  // namespace jwnls::host
