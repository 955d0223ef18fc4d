#include "host/zones/zone_names.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <fstream>
#include <string>

#include "host/zones/os_zone.h"
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
  check(u"Utc+5:45", "UTC+05:45");
  check(u"UTC-0930", "UTC-09:30");
  check(u"UTC-0", "UTC");
  const auto refuse = [&names](auto... refused) {
    for (const std::u16string_view name : {std::u16string_view(refused)...}) {
      EXPECT_EQ(normal(names, name), "refused") << fs::path(std::u16string(name));
    }
  };
  // Offsets are hours and minutes below 24 hours, of UTC alone.
  refuse(u"UTC+24:00", u"UTC+5:60", u"UTC+5:3", u"UTC+530", u"UTC+05:30:00", u"UTC+", u"UTC+:30",
         u"UTC +5", u"GMT+5");
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

TEST(OsZone, IsWhatTheSystemSaysFirst) {
  const ZoneNames names({});
  const Folder folder("os_zone");
  const fs::path& zones = names.directory();
  fs::create_symlink(zones / "Asia/Calcutta", folder.path / "alias_link");
  fs::create_symlink("alias_link", folder.path / "link_to_link");
  fs::create_symlink("zoneinfo/right/Asia/Tokyo", folder.path / "leap_second_link");
  fs::create_symlink("/nonexistent/zoneinfo/posix/Asia/Tokyo", folder.path / "posix_link");
  fs::copy(fs::canonical(zones / "Asia/Tokyo"), folder.path / "copy");
  std::ofstream(folder.path / "name_file") << "  america/new_york # where we are\nEurope/Berlin\n";
  std::ofstream(folder.path / "rule_file") << "EST5EDT,M3.2.0,M11.1.0\n";

  const std::optional<std::string> unset;
  const auto check = [&](const std::optional<std::string>& tz, const char* local_time,
                         const char* zone_name, Status status, std::string_view name) {
    SCOPED_TRACE(testing::Message()
                 << (tz ? tz->c_str() : "(unset)") << ", " << local_time << ", " << zone_name);
    ZoneNameText out = {};
    EXPECT_EQ(find_os_zone(names, {tz, folder.path / local_time, folder.path / zone_name}, out),
              status);
    if (status == Status::ok) {
      EXPECT_EQ(std::string(out.units, out.units + out.length), name);
    }
  };
  check("Europe/Berlin", "alias_link", "name_file", Status::ok, "Europe/Berlin");
  check(":europe/berlin", "", "", Status::ok, "Europe/Berlin");
  check("/usr/share/zoneinfo/Europe/Berlin", "", "", Status::ok, "Europe/Berlin");
  check("posix/Europe/Berlin", "", "", Status::ok, "Europe/Berlin");
  check("UTC0", "alias_link", "", Status::ok, "UTC");
  check("", "alias_link", "", Status::ok, "UTC");
  check("EST5EDT", "", "", Status::ok, "EST5EDT");
  // What TZ says counts, even when it is of no use.
  check("CET-1CEST,M3.5.0,M10.5.0/3", "alias_link", "name_file", Status::lookup_failed, "");
  check("UTC+5", "alias_link", "", Status::lookup_failed, "");
  check("right/Europe/Berlin", "alias_link", "", Status::lookup_failed, "");
  check("Europe/Atlantis", "alias_link", "", Status::lookup_failed, "");
  check(unset, "alias_link", "name_file", Status::ok, "Asia/Calcutta");
  check(unset, "link_to_link", "name_file", Status::ok, "Asia/Calcutta");
  check(unset, "posix_link", "name_file", Status::ok, "Asia/Tokyo");
  check(unset, "leap_second_link", "name_file", Status::ok, "America/New_York");
  check(unset, "copy", "name_file", Status::ok, "America/New_York");
  check(unset, "copy", "rule_file", Status::ok, "Asia/Tokyo");
  check(unset, "copy", "absent", Status::ok, "Asia/Tokyo");
  check(unset, "absent", "absent", Status::no_os_zone, "");
  check(unset, "rule_file", "rule_file", Status::no_os_zone, "");
  // TZ may name the link itself.
  ZoneNameText out = {};
  const fs::path link = folder.path / "alias_link";
  std::string tz = ":";
  tz += link.string();
  EXPECT_EQ(find_os_zone(names, {tz, link, ""}, out), Status::ok);
  EXPECT_EQ(std::string(out.units, out.units + out.length), "Asia/Calcutta");
}

}  // namespace
}  // namespace jwnls::host
