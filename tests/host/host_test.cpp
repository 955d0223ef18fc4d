// The host with the real module, message extension and locale database.

#include "host/host.h"

#include <gtest/gtest.h>

#include <array>
#include <atomic>
#include <cstdlib>
#include <filesystem>
#include <set>
#include <string>
#include <thread>
#include <vector>

#include "module/record/status.h"

namespace jwnls::host {
namespace {

namespace fs = std::filesystem;

// What a host wrote, and a configuration that finds the modules of this build and checks pools.
struct Listener {
  std::vector<std::pair<std::uint32_t, std::string>> messages;

  HostConfiguration configuration() {
    HostConfiguration configuration;
    configuration.extension_path = {JWNLS_BUILD_DIR};
    configuration.check_pools = true;
    configuration.journal = [this](std::uint32_t level, std::u16string_view message) {
      messages.emplace_back(level, std::string(message.begin(), message.end()));
    };
    return configuration;
  }
};

using Messages = std::vector<std::pair<std::uint32_t, std::string>>;

std::u16string long_date(LocaleHandle* handle) {
  std::array<char16_t, 100> text = {};
  std::int64_t length = 0;
  EXPECT_EQ(handle->services.format_date(handle, 3, 15, 2024, 2, text.data(), text.size(), &length),
            0U);
  return {text.data(), static_cast<std::size_t>(length)};
}

std::string zone_abbreviation(LocaleHandle* handle) {
  ZoneService* service = handle->context->zone_service;
  char16_t text[zone_abbreviation_capacity] = {};
  std::int64_t length = 0;
  std::int64_t offset = 0;
  Zone* zone = std::atomic_ref(handle->zone).load();  // another thread may change it
  EXPECT_EQ(service->zone_info(service, zone, text, &length, &offset), 0U);
  return {text, text + length};
}

TEST(Host, MakesHandlesOfRealLocalesAndZones) {
  const struct {
    std::u16string_view locale;
    std::u16string_view zone;
    std::u16string_view date;
    std::string abbreviation;
  } cases[] = {
      {u"en_US", u"UTC", u"March 15, 2024", "UTC"},
      {u"de_DE.UTF-8", u"asia/kolkata", u"15. M\u00E4rz 2024", "IST"},
      {u"fr-FR", u" Africa/Algiers ", u"15 mars 2024", "CET"},
      {u"ja", u"Japan", u"2024\u5E743\u670815\u65E5", "JST"},
      {u"german", u"UTC+05:30", u"15. M\u00E4rz 2024", "+0530"},
  };
  Listener listener;
  {
    Host host(listener.configuration());
    for (const auto& row : cases) {
      std::uint32_t status = 1;
      LocaleHandle* handle = host.create_handle(row.locale, row.zone, false, &status);
      ASSERT_NE(handle, nullptr) << std::hex << status << ' ' << host.last_load_error();
      EXPECT_EQ(status, 0U);
      EXPECT_EQ(long_date(handle), row.date);
      EXPECT_EQ(zone_abbreviation(handle), row.abbreviation);
    }
  }
  EXPECT_EQ(listener.messages, Messages());  // no fault, and nothing left when the host had ended
}

TEST(Host, SharesAHandleAmongSpellingsButNotAmongAliasesOfAZone) {
  Listener listener;
  {
    Host host(listener.configuration());
    const auto create = [&](std::u16string_view locale, std::u16string_view zone,
                            bool is_private = false) {
      return host.create_handle(locale, zone, is_private, nullptr);
    };
    LocaleHandle* handle = create(u"de_DE", u"Asia/Kolkata");
    ASSERT_NE(handle, nullptr);
    EXPECT_EQ(create(u"de-DE", u"ASIA/kolkata"), handle);
    EXPECT_EQ(create(u"de_DE@euro", u" Asia/Kolkata "), handle);
    EXPECT_NE(create(u"de_DE", u"Asia/Calcutta"), handle);
    EXPECT_NE(create(u"de_AT", u"Asia/Kolkata"), handle);
    LocaleHandle* own = create(u"de_DE", u"Asia/Kolkata", true);
    EXPECT_NE(own, handle);
    EXPECT_EQ(create(u"de_DE", u"Asia/Kolkata"), handle);
    host.destroy_handle(own);
    host.destroy_handle(nullptr);
  }
  EXPECT_EQ(listener.messages, Messages());
}

TEST(Host, RefusesUnknownNames) {
  Listener listener;
  {
    Host host(listener.configuration());
    for (const auto& [locale, zone] : std::vector<std::pair<std::u16string, std::u16string>>{
             {u"xx_YY", u"UTC"},
             {u"", u"UTC"},
             {std::u16string(5000, u'x'), u"UTC"},
             {u"de_DE", u"Europe/Atlantis"},
             {u"de_DE", u"   "},
             {u"de_DE", u"/etc/localtime"},
             {u"de_DE", std::u16string(5000, u'x')},
         }) {
      for (const bool is_private : {false, true}) {
        std::uint32_t status = 0;
        EXPECT_EQ(host.create_handle(locale, zone, is_private, &status), nullptr);
        EXPECT_EQ(status, code(Status::lookup_failed));
      }
    }
  }
  EXPECT_EQ(listener.messages, Messages());
}

TEST(Host, TakesTheSystemsZoneOrWarnsAndTakesTheDefault) {
  const struct {
    const char* tz;
    std::set<std::string> abbreviations;
    Messages messages;
  } cases[] = {
      {"Asia/Tokyo", {"JST"}, {}},
      {"EST5EDT,M3.2.0,M11.1.0",
       {"EST", "EDT"},
       {{journal_warning,
         "Invalid OS TIMEZONE value is detected. Use default TIMEZONE value instead"}}},
  };
  for (const auto& row : cases) {
    setenv("TZ", row.tz, 1);
    Listener listener;
    {
      Host host(listener.configuration());
      LocaleHandle* handle = host.create_handle(u"en_US", {}, false, nullptr);
      ASSERT_NE(handle, nullptr);
      EXPECT_EQ(row.abbreviations.count(zone_abbreviation(handle)), 1U);
    }
    EXPECT_EQ(listener.messages, row.messages);
  }
  unsetenv("TZ");
}

TEST(Host, SaysWhichExtensionIsMissing) {
  const fs::path folder = testing::TempDir() + "jwnls_partial";
  fs::remove_all(folder);
  fs::create_directories(folder);
  for (const char* name : {"jwnlsloc", "jwemsg", "jwnlsldb"}) {
    Listener listener;
    {
      HostConfiguration configuration = listener.configuration();
      configuration.extension_path = {folder};
      Host host(std::move(configuration));
      const std::string expected = "cannot find " + std::string(name) + ".so in " + folder.string();
      std::string error;
      EXPECT_EQ(host.factory(&error), nullptr);
      EXPECT_EQ(error, expected);
      EXPECT_EQ(host.create_handle(u"de_DE", u"UTC", false, nullptr), nullptr);
      EXPECT_EQ(host.last_load_error(), expected);
      // The next try finds it, once it is there.
      const std::string file = std::string(name) + ".so";
      fs::create_symlink(fs::path(JWNLS_BUILD_DIR) / file, folder / file);
      EXPECT_EQ(host.factory(nullptr) != nullptr, name == std::string_view("jwnlsldb"));
    }
    EXPECT_EQ(listener.messages, Messages());
  }
  fs::remove_all(folder);
}

TEST(Host, AForgottenPrivateHandleIsReportedAndFreed) {
  Listener listener;
  {
    Host host(listener.configuration());
    ASSERT_NE(host.create_handle(u"de_DE", u"UTC", true, nullptr), nullptr);
  }
  std::set<std::string> faults;
  for (const auto& [level, message] : listener.messages) {
    EXPECT_EQ(level, journal_fault);
    faults.insert(message);
  }
  EXPECT_EQ(faults.count("lock 'jwnls Locale JWZ lock' never destroyed"), 1U);
  EXPECT_EQ(faults.count("track 'jwnls Locale JWETZ track' never destroyed"), 1U);
  EXPECT_EQ(faults.count("pool 'jwnls NLS context pool': block of 896 bytes never freed"), 1U);
}

// Several hosts at once, each with threads that make the same and different handles, use them, and
// change the zones of their own.
TEST(Host, ThreadsAndHostsDoNotDisturbEachOther) {
  constexpr std::array<std::u16string_view, 6> locales = {u"de_DE", u"en_US", u"fr_FR",
                                                          u"ja_JP", u"ar_EG", u"german"};
  constexpr std::array<std::u16string_view, 4> zones = {u"Europe/Berlin", u"UTC+05:30",
                                                        u"america/new_york", u""};
  Listener listeners[2];
  {
    Host hosts[2] = {Host(listeners[0].configuration()), Host(listeners[1].configuration())};
    std::vector<std::thread> threads(6);
    for (std::size_t number = 0; number < threads.size(); ++number) {
      threads[number] = std::thread([&host = hosts[number % 2], &locales, &zones, number] {
        for (std::size_t round = 0; round < 60; ++round) {
          const std::u16string_view locale = locales[(round + number) % locales.size()];
          const std::u16string_view zone = zones[round % zones.size()];
          const bool is_private = round % 5 == 0;
          LocaleHandle* handle = host.create_handle(locale, zone, is_private, nullptr);
          ASSERT_NE(handle, nullptr) << host.last_load_error();
          EXPECT_EQ(handle->context, host.context());
          EXPECT_FALSE(long_date(handle).empty());
          EXPECT_FALSE(zone_abbreviation(handle).empty());
          EXPECT_EQ(handle->services.set_time_zone(handle, u"asia/tokyo", 10), 0U);
          if (is_private) {
            EXPECT_EQ(zone_abbreviation(handle), "JST");
            host.destroy_handle(handle);
          }
        }
      });
    }
    for (std::thread& thread : threads) thread.join();
    for (Host& host : hosts) EXPECT_EQ(host.faults(), std::vector<std::string>());
  }
  for (const Listener& listener : listeners) EXPECT_EQ(listener.messages, Messages());
}

}  // namespace
}  // namespace jwnls::host
