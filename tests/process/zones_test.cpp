// Time zones through the library: what names give, what the system says, what goes wrong and works
// the next time.

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <string>
#include <system_error>
#include <vector>

#include "include/jwnls/jwnls.h"
#include "library/process/process.h"
#include "library/texts/failure.h"
#include "library/zones/posix_zone.h"
#include "library/zones/zone_database.h"
#include "tests/library/opened_layout.h"

namespace jwnls::library {
namespace {

namespace fs = std::filesystem;

constexpr std::int64_t summer = 1'720'000'000;  // 2024-07-03
constexpr std::int64_t winter = 1'705'000'000;  // 2024-01-11

std::string told(const char* zone, std::int64_t moment) {
  jwnls_zone_state state = {};
  state.size = sizeof state;
  jwnls_error error;
  const int code = jwnls_zone_at(zone, moment, &state, &error);
  if (code != JWNLS_OK) return std::to_string(code) + " " + error.text;
  return std::string(state.name) + " " + state.abbreviation + " " +
         std::to_string(state.offset_seconds);
}

// Sets a variable, or with null removes it, until the end of the block.
class Environment {
 public:
  Environment(const char* name, const char* value) : name_(name) {
    value != nullptr ? setenv(name, value, 1) : unsetenv(name);
  }
  ~Environment() { unsetenv(name_); }
  Environment(const Environment&) = delete;
  Environment& operator=(const Environment&) = delete;

 private:
  const char* name_;
};

struct ZoneCase {
  const char* zone;
  std::int64_t moment;
  const char* told;
};

TEST(Zones, AreOpenedByNamesOffsetsAndRules) {
  const ZoneCase cases[] = {
      {"Europe/Berlin", summer, "Europe/Berlin CEST 7200"},
      {"europe/BERLIN", winter, "Europe/Berlin CET 3600"},
      {"Asia/Calcutta", winter, "Asia/Calcutta IST 19800"},
      {"EST5EDT", summer, "EST5EDT EDT -14400"},
      {"utc", summer, "UTC UTC 0"},
      {"UTC+05:30", summer, "UTC+05:30 +0530 19800"},
      {"utc-330", summer, "5 time zone 'utc-330': unknown"},
      {"utc-3", summer, "UTC-03:00 -0300 -10800"},
      {"JST-9", summer, "JST-9 JST 32400"},
      {"<+03>-3", summer, "<+03>-3 +03 10800"},
      {"GRNLNDST3GRNLNDDT,M10.3.0/00:00:00,M2.4.0/00:00:00", summer,
       "GRNLNDST3GRNLNDDT,M10.3.0/00:00:00,M2.4.0/00:00:00 GRNLNDST -10800"},
      {"CET-1CEST", summer, "5 time zone 'CET-1CEST': unknown"},  // when is it summer?
      {"CET-1CEST,M3.5.0", summer, "5 time zone 'CET-1CEST,M3.5.0': unknown"},
      {"CET-1CEST,M3.6.0,M10.5.0", summer, "5 time zone 'CET-1CEST,M3.6.0,M10.5.0': unknown"},
      {"CE-1", summer, "5 time zone 'CE-1': unknown"},
      {"CET-25", summer, "5 time zone 'CET-25': unknown"},
      {"Europe/Atlantis", summer, "5 time zone 'Europe/Atlantis': unknown"},
      {"/etc/localtime", summer, "5 time zone '/etc/localtime': unknown"},
      {"../UTC", summer, "5 time zone '../UTC': unknown"},
      {"\x1B[31m\u202Ex\u0085", summer, "5 time zone '\\x1B[31m\\u202Ex\\u0085': unknown"},
  };
  for (const ZoneCase& each : cases) EXPECT_EQ(told(each.zone, each.moment), each.told);
}

TEST(Zones, TheSystemsIsWhatTzSays) {
  const ZoneCase cases[] = {
      {"Europe/Berlin", summer, "Europe/Berlin CEST 7200"},
      {":Asia/Tokyo", summer, "Asia/Tokyo JST 32400"},
      {"CET-1CEST,M3.5.0,M10.5.0/3", summer, "CET-1CEST,M3.5.0,M10.5.0/3 CEST 7200"},
      {"JST-9", summer, "JST-9 JST 32400"},
      {"<+03>-3", summer, "<+03>-3 +03 10800"},
      {"", summer, "UTC UTC 0"},
      {"UTC+5", summer, "<UTC>+5 UTC -18000"},  // west; the zone of this name is east
      {"UTCX5", summer, "UTCX5 UTCX -18000"},
      {"UTC0", summer, "UTC UTC 0"},
      {":JST-9", summer,
       "5 TZ=':JST-9': no time zone, and no rule such as CET-1CEST,M3.5.0,M10.5.0/3"},
      {"No\x07where", summer,
       "5 TZ='No\\x07where': no time zone, and no rule such as CET-1CEST,M3.5.0,M10.5.0/3"},
  };
  for (const ZoneCase& each : cases) {
    const Environment tz("TZ", each.zone);
    EXPECT_EQ(told(nullptr, each.moment), each.told) << each.zone;
    EXPECT_EQ(told("", each.moment), each.told) << each.zone;
  }
  // Without TZ: what the system's files say, and UTC where there are none.
  ZoneDatabase database("");
  EXPECT_EQ(database.open_system({{}, "/no/localtime", "/no/timezone"})->name(), "UTC");
  const auto open_strange = [&] { (void)database.open_system({{}, "/etc/passwd", "/dev/null"}); };
  jwnls_error error;
  EXPECT_EQ(guarded(&error, open_strange), JWNLS_LOAD);
  EXPECT_STREQ(error.text, "/etc/passwd: no time zone of the database in '/usr/share/zoneinfo'");
  const auto fail_strangely = [] { throw std::system_error(EMFILE, std::generic_category()); };
  EXPECT_EQ(guarded(&error, fail_strangely), JWNLS_LOAD);
  EXPECT_STREQ(error.text, "the system refused what was asked of it");

  const Environment tz("TZ", "JST-9");
  const auto layout = test::open_layout("de_DE", JWNLS_DATETIME, "zone=system");
  char text[64];
  std::size_t length = 0;
  ASSERT_EQ(jwnls_describe(layout.get(), text, sizeof text, &length), JWNLS_OK);
  EXPECT_EQ(std::string(text, length), "de_DE datetime zone=JST-9");
}

// Every rule, as the C library reads it: offsets and abbreviations of 70 years.
TEST(Zones, RulesAgreeWithTheCLibrary) {
  for (const char* rule :
       {"CET-1CEST,M3.5.0,M10.5.0/3", "EST5EDT,M3.2.0,M11.1.0", "<-03>3<-02>,M3.5.0/-2,M10.5.0/-1",
        "<+1030>-10:30<+11>-11,M10.1.0,M4.1.0", "IST-2IDT,M3.4.4/26,M10.5.0",
        "<-04>4<-03>,J60,J300", "AAA3BBB,59/1,300/23:59:59", "NZST-12NZDT,M9.5.0,M4.1.0/3", "JST-9",
        "<+0545>-5:45", "IST-1GMT0,M10.5.0,M3.5.0/1"}) {
    const auto zone = posix_zone(rule);
    ASSERT_NE(zone, nullptr) << rule;
    const Environment tz("TZ", rule);
    tzset();
    for (std::int64_t moment = 0; moment < 70LL * 366 * 86'400; moment += 7'193) {
      std::tm parts = {};
      const std::time_t time = moment;
      localtime_r(&time, &parts);
      ASSERT_EQ(zone->offset_at(moment), parts.tm_gmtoff) << rule << " at " << moment;
      ASSERT_EQ(zone->abbreviation_at(moment), parts.tm_zone) << rule << " at " << moment;
    }
  }
}

TEST(Zones, NumbersOfRulesHaveBounds) {
  for (const char* rule : {"AAA3BBB,M1.1.0,M12.5.6/167", "AAA3BBB,0,365/-167:59:59",
                           "AAA24:59:59BBB-24,J1,J365", "<A-1>3<+B2>,J1,J2", "ABC+3"}) {
    EXPECT_NE(posix_zone(rule), nullptr) << rule;
  }
  for (const char* rule : {"AAA3BBB,M0.1.0,J1",
                           "AAA3BBB,M13.1.0,J1",
                           "AAA3BBB,M1.0.0,J1",
                           "AAA3BBB,M1.6.0,J1",
                           "AAA3BBB,M1.1.7,J1",
                           "AAA3BBB,M1.1.,J1",
                           "AAA3BBB,J0,J1",
                           "AAA3BBB,J366,J1",
                           "AAA3BBB,366,J1",
                           "AAA3BBB,J1/168,J2",
                           "AAA3BBB,J1/1:60,J2",
                           "AAA3BBB,J1/1:00:60,J2",
                           "AAA25",
                           "AAA-",
                           "AAA3:",
                           "AA3",
                           "<AAA3",
                           "<A.A>3",
                           "AAA3BBB,J1",
                           "AAA3BBB,J1,J2,"}) {
    EXPECT_EQ(posix_zone(rule), nullptr) << rule;
  }
}

TEST(Zones, ARuleAndTheDatabaseGiveTheSameMoments) {
  for (const auto& [name, rule] : {std::pair("Europe/Berlin", "CET-1CEST,M3.5.0,M10.5.0/3"),
                                   std::pair("Pacific/Auckland", "NZST-12NZDT,M9.5.0,M4.1.0/3"),
                                   std::pair("Asia/Tokyo", "JST-9")}) {
    const auto zone = open_zone(name);
    const auto by_rule = posix_zone(rule);
    for (std::int64_t clock = 1'230'768'000; clock < 4'000'000'000; clock += 5'381) {
      const Zone::Moments a = zone->moments_of(clock);
      const Zone::Moments b = by_rule->moments_of(clock);
      ASSERT_TRUE(a.count == b.count && a.first == b.first && a.second == b.second)
          << name << " at " << clock << ": " << a.count << ' ' << a.first << ' ' << a.second
          << ", not " << b.count << ' ' << b.first << ' ' << b.second;
    }
  }
}

// Takes every descriptor that the process may have.
class NoDescriptors {
 public:
  NoDescriptors() {
    rlimit limit = {};
    getrlimit(RLIMIT_NOFILE, &limit);
    before_ = limit;
    limit.rlim_cur = 0;
    setrlimit(RLIMIT_NOFILE, &limit);
  }
  ~NoDescriptors() { setrlimit(RLIMIT_NOFILE, &before_); }
  NoDescriptors(const NoDescriptors&) = delete;
  NoDescriptors& operator=(const NoDescriptors&) = delete;

 private:
  rlimit before_;
};

int count_zone(void* count, const char*) {
  ++*static_cast<int*>(count);
  return 0;
}

int zone_count() {
  int count = 0;
  const int code = jwnls_zones(count_zone, &count);
  return code == JWNLS_OK ? count : -code;
}

TEST(Zones, WhatCannotBeReadJustNowIsReadTheNextTime) {
  ASSERT_EQ(jwnls_configure("zone-folder", "", nullptr), JWNLS_OK);  // reads the names anew
  {
    const NoDescriptors none;
    EXPECT_EQ(zone_count(), -JWNLS_LOAD);
    EXPECT_EQ(told("America/Lima", summer),
              "6 time zone 'America/Lima': cannot be read just now: Too many open files");
  }
  EXPECT_GT(zone_count(), 400);
  {
    const NoDescriptors none;
    errno = 7;
    EXPECT_EQ(told("America/Lima", summer),
              "6 time zone 'America/Lima': cannot be read just now: Too many open files");
    EXPECT_EQ(errno, 7);
    EXPECT_EQ(told("UTC", summer), "UTC UTC 0");
    jwnls_error error;
    EXPECT_EQ(jwnls_reload_zones(&error), JWNLS_LOAD) << error.text;
  }
  EXPECT_EQ(told("America/Lima", summer), "America/Lima -05 -18000");
}

// Layouts keep the release that they were opened with; later ones get the new one.
TEST(Zones, ANewReleaseIsSeenWhenItIsAskedFor) {
  const fs::path folder = fs::path(testing::TempDir()) / "jwnls_release";
  fs::remove_all(folder);
  fs::create_directories(folder);
  const auto release = [&](const char* version, const char* zone) {
    std::ofstream(folder / "tzdata.zi") << "# version " << version << "\nZ Test/Zone 0 - X\n";
    fs::create_directories(folder / "Test");
    fs::copy_file(fs::path("/usr/share/zoneinfo") / zone, folder / "Test/New");
    fs::rename(folder / "Test/New", folder / "Test/Zone");
  };
  const auto version = [] {
    char text[16];
    std::size_t length = 0;
    EXPECT_EQ(jwnls_zones_version(text, sizeof text, &length), JWNLS_OK);
    return std::string(text, length);
  };
  release("2024a", "Asia/Tokyo");
  ASSERT_EQ(jwnls_configure("zone-folder", folder.c_str(), nullptr), JWNLS_OK);
  EXPECT_EQ(told("test/zone", winter), "Test/Zone JST 32400");
  const auto before = open_zone("Test/Zone");
  release("2024b", "Europe/Berlin");
  EXPECT_EQ(told("Test/Zone", winter), "Test/Zone JST 32400");
  EXPECT_EQ(version(), "2024a");
  ASSERT_EQ(jwnls_reload_zones(nullptr), JWNLS_OK);
  EXPECT_EQ(told("Test/Zone", winter), "Test/Zone CET 3600");
  EXPECT_EQ(version(), "2024b");
  EXPECT_EQ(before->offset_at(winter), 32'400);
  EXPECT_EQ(zone_count(), 2);  // and UTC

  // A damaged file, and one that is missing.
  std::ofstream(folder / "Test/Zone") << "TZif but no more";
  ASSERT_EQ(jwnls_reload_zones(nullptr), JWNLS_OK);
  for (int i = 0; i < 100; ++i) EXPECT_EQ(told("Test/Zone", winter)[0], '6');
  fs::remove(folder / "Test/Zone");
  EXPECT_EQ(told("Test/Zone", winter),
            "6 time zone 'Test/Zone': no such zone can be read in '" + folder.string() + "'");
  release("2024c", "Asia/Tokyo");
  EXPECT_EQ(told("Test/Zone", winter), "Test/Zone JST 32400");
  fs::remove_all(folder);
  ASSERT_EQ(jwnls_configure("zone-folder", "", nullptr), JWNLS_OK);
}

TEST(Zones, ARelativeFolderIsRefusedOrPassedOver) {
  jwnls_error error;
  EXPECT_EQ(jwnls_configure("zone-folder", "zoneinfo", &error), JWNLS_UNKNOWN);
  EXPECT_STREQ(error.text, "setting 'zone-folder' 'zoneinfo': the folder is not absolute");
  EXPECT_EQ(jwnls_configure("module-path", "/a:b", &error), JWNLS_UNKNOWN);
  EXPECT_EQ(jwnls_configure("colour", "red", &error), JWNLS_UNKNOWN);
  const Environment folder("TZDIR", "zoneinfo");
  ASSERT_EQ(jwnls_configure("zone-folder", "", nullptr), JWNLS_OK);
  EXPECT_GT(zone_count(), 400);
  EXPECT_EQ(told("Europe/Berlin", winter), "Europe/Berlin CET 3600");
}

std::size_t resident_bytes() {
  std::size_t pages = 0;
  std::size_t resident = 0;
  std::ifstream("/proc/self/statm") >> pages >> resident;
  return resident * static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
}

TEST(Zones, PairsOfLocaleAndZoneDoNotStay) {
  std::vector<std::string> zones;
  jwnls_zones(
      [](void* all, const char* zone) {
        static_cast<std::vector<std::string>*>(all)->emplace_back(zone);
        return 0;
      },
      &zones);
  std::vector<std::string> locales;
  jwnls_locales(
      [](void* all, const jwnls_locale_info* locale) {
        auto& names = *static_cast<std::vector<std::string>*>(all);
        names.emplace_back(locale->name);
        return names.size() < 80 ? 0 : 1;
      },
      &locales);
  test::open_layout("en_US", JWNLS_DATETIME);
  const std::size_t before = resident_bytes();
  int pairs = 0;
  for (const std::string& locale : locales) {
    for (const std::string& zone : zones) {
      pairs += test::open_layout(locale, JWNLS_DATETIME, "zone=" + zone) != nullptr;
    }
  }
  EXPECT_GE(pairs, 40'000);
  const double megabytes = static_cast<double>(resident_bytes() - before) / 1e6;
  RecordProperty("megabytes", std::to_string(megabytes));
#if !defined(JWNLS_SANITIZED)
  EXPECT_LT(megabytes, 40);
#endif
}

}  // namespace
}  // namespace jwnls::library
