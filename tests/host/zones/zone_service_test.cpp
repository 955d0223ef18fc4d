#include "host/zones/zone_service.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <ctime>
#include <fstream>
#include <string>

#include "tests/host/hosts.h"

namespace jwnls::host {
namespace {

Zone* open_zone(Host& host, std::u16string_view name) {
  ZoneService* service = host.context()->zone_service;
  return service->open(service, name.data(), static_cast<std::int64_t>(name.size()), 0);
}

void close_zone(Host& host, Zone* zone) {
  host.context()->zone_service->close(host.context()->zone_service, zone);
}

std::string abbreviation(const Zone::Snapshot& snapshot) {
  return {snapshot.abbreviation, snapshot.abbreviation + snapshot.length};
}

// The C library reads the same database by itself.
TEST(ZoneService, EveryZoneAgreesWithTheCLibrary) {
  CheckedHost host(with_modules());
  constexpr std::time_t year = 31556952;
  constexpr std::time_t moments[] = {
      -30 * year, 0,          12345678,           year * 30,           year * 30 + year / 2,
      1700000000, 1720000000, year * 70 + 100000, year * 70 + year / 2};
  for (const std::string& name : host.zone_names()) {
    Zone* zone = open_zone(host, std::u16string(name.begin(), name.end()));
    ASSERT_NE(zone, nullptr) << name;
    setenv("TZ", (":" + name).c_str(), 1);
    tzset();
    for (const std::time_t moment : moments) {
      std::tm expected = {};
      localtime_r(&moment, &expected);
      const Zone::Snapshot& snapshot = zone->at(moment);
      EXPECT_EQ(snapshot.offset_seconds, expected.tm_gmtoff) << name << " at " << moment;
      EXPECT_EQ(abbreviation(snapshot), expected.tm_zone) << name << " at " << moment;
      // The snapshot holds on to both of its ends, and not beyond them.
      for (const std::int64_t end : {snapshot.first, snapshot.last}) {
        if (end < -4 * year * 50 || end > 4 * year * 50) continue;
        const std::time_t same = end;
        localtime_r(&same, &expected);
        EXPECT_EQ(snapshot.offset_seconds, expected.tm_gmtoff) << name << " at " << end;
        EXPECT_EQ(abbreviation(snapshot), expected.tm_zone) << name << " at " << end;
        EXPECT_EQ(&zone->at(end), &snapshot);
      }
      if (snapshot.last < INT64_MAX) {
        EXPECT_NE(&zone->at(snapshot.last + 1), &snapshot);
      }
    }
    close_zone(host, zone);
  }
  unsetenv("TZ");
  tzset();
}

TEST(ZoneService, TellsWhatIsInForceNow) {
  Host host(HostConfiguration{});
  ZoneService* service = host.context()->zone_service;
  const auto check = [&](std::u16string_view name, const std::string& abbreviation,
                         std::int64_t offset_seconds) {
    Zone* zone = open_zone(host, name);
    ASSERT_NE(zone, nullptr);
    char16_t text[zone_abbreviation_capacity] = {};
    std::int64_t length = 0;
    std::int64_t offset = 0;
    EXPECT_EQ(service->zone_info(service, zone, text, &length, &offset), 0U);
    EXPECT_EQ(std::string(text, text + length), abbreviation);
    EXPECT_EQ(offset, offset_seconds);
  };
  check(u"utc", "UTC", 0);
  check(u"Asia/Kolkata", "IST", 19800);
  check(u"UTC+05:30", "+0530", 19800);
  check(u"UTC-12:00", "-12", -43200);
  for (const std::u16string_view name : {u"Europe/Atlantis", u"/etc/passwd", u"../UTC", u""}) {
    EXPECT_EQ(open_zone(host, name), nullptr);
  }
  EXPECT_EQ(service->open(service, nullptr, 3, 0), nullptr);
  EXPECT_EQ(service->open(service, u"UTC", -3, 0), nullptr);
}

TEST(ZoneService, ThreadsReadAcrossTransitions) {
  Host host(HostConfiguration{});
  Zone* zone = open_zone(host, u"Europe/Berlin");
  ASSERT_NE(zone, nullptr);
  in_threads([zone](int) {
    for (std::int64_t day = 0; day < 3650; ++day) {
      const std::int64_t moment = 946684800 + day * 86400;
      const Zone::Snapshot& snapshot = zone->at(moment);
      EXPECT_TRUE(snapshot.covers(moment));
      EXPECT_EQ(abbreviation(snapshot), snapshot.offset_seconds == 7200 ? "CEST" : "CET");
    }
  });
}

TEST(ZoneService, AFileThatIsNoZoneDoesNotOpen) {
  const Folder zones("bad_zones");
  const std::filesystem::path& folder = zones.path;
  std::filesystem::create_directories(folder / "Test");
  std::filesystem::create_directories(folder / "Etc");
  std::ofstream(folder / "tzdata.zi")
      << "# version 1999z\nZ Test/Absent 0 - X\nZ Test/Bad 0 - X\nL Etc/UTC Test/Alias\n"
      << "L Etc/UTC TEST/ALIAS\nL Etc/UTC Test/" << std::string(100, 'x') << "\n";
  std::ofstream(folder / "Test/Bad") << "TZif2 and nothing that follows";
  std::filesystem::copy_file("/usr/share/zoneinfo/Etc/UTC", folder / "Etc/UTC");
  HostConfiguration configuration;
  configuration.zone_directory = folder;
  Host host(std::move(configuration));
  EXPECT_EQ(host.zone_database_version(), "1999z");
  EXPECT_EQ(open_zone(host, u"Test/Absent"), nullptr);
  EXPECT_EQ(open_zone(host, u"Test/Bad"), nullptr);
  EXPECT_NE(open_zone(host, u"Test/Alias"), nullptr);  // by the zone that it stands for
  EXPECT_EQ(host.zone_names().size(), 5U);             // with UTC
}

}  // namespace
}  // namespace jwnls::host
