#include "host/zones/os_zone.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <optional>
#include <string>

#include "tests/host/hosts.h"

namespace jwnls::host {
namespace {

namespace fs = std::filesystem;

TEST(OsZone, IsWhatTheSystemSaysFirst) {
  const ZoneNames names({});
  const Folder folder("os_zone");
  const fs::path& zones = names.directory();
  fs::create_symlink(zones / "Asia/Calcutta", folder.path / "alias_link");
  fs::create_symlink("alias_link", folder.path / "link_to_link");
  fs::create_symlink("endless_link", folder.path / "endless_link");
  fs::create_symlink("zoneinfo/right/Asia/Tokyo", folder.path / "leap_second_link");
  fs::create_symlink("/nonexistent/zoneinfo/posix/Asia/Tokyo", folder.path / "posix_link");
  fs::copy(fs::canonical(zones / "Asia/Tokyo"), folder.path / "copy");
  std::ofstream(folder.path / "name_file") << "  america/new_york # where we are\nEurope/Berlin\n";
  std::ofstream(folder.path / "rule_file") << "EST5EDT,M3.2.0,M11.1.0\n";
  std::ofstream(folder.path / "offset_file") << "UTC+5\n";
  fs::copy(folder.path / "copy", folder.path / "other_bytes");
  std::fstream(folder.path / "other_bytes", std::ios::in | std::ios::out).seekp(5) << 'x';

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
  check(unset, "endless_link", "offset_file", Status::no_os_zone, "");
  check(unset, "other_bytes", "absent", Status::no_os_zone, "");
  check(unset, "rule_file", "rule_file", Status::no_os_zone, "");
  // TZ may name the link itself.
  ZoneNameText out = {};
  const fs::path link = folder.path / "alias_link";
  for (const char* mark : {"", ":"}) {
    const std::string tz = mark + link.string();
    EXPECT_EQ(find_os_zone(names, {tz, link, ""}, out), Status::ok);
    EXPECT_EQ(std::string(out.units, out.units + out.length), "Asia/Calcutta");
  }
}

}  // namespace
}  // namespace jwnls::host
