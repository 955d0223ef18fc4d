// The host with the real module, message extension and locale database.

#include "host/host.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdlib>
#include <filesystem>
#include <set>
#include <string>

#include "abi/status.h"
#include "host/objects/message_outlet.h"
#include "tests/host/hosts.h"

namespace jwnls::host {
namespace {

namespace fs = std::filesystem;

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
  EXPECT_EQ(service->zone_info(service, handle->zone, text, &length, &offset), 0U);
  return {text, text + length};
}

TEST(Host, MakesHandlesOfRealLocalesAndZonesAndNoOthers) {
  Messages messages;
  {
    CheckedHost host(with_modules(&messages));
    const auto makes = [&](std::u16string_view locale, std::u16string_view zone,
                           std::u16string_view date, const std::string& abbreviation) {
      std::uint32_t status = 1;
      LocaleHandle* handle = host.create_handle(locale, zone, false, &status);
      ASSERT_NE(handle, nullptr) << std::hex << status;
      EXPECT_EQ(status, 0U);
      EXPECT_EQ(long_date(handle), date);
      EXPECT_EQ(zone_abbreviation(handle), abbreviation);
    };
    makes(u"en_US", u"UTC", u"March 15, 2024", "UTC");
    makes(u"de_DE.UTF-8", u"asia/kolkata", u"15. M\u00E4rz 2024", "IST");
    makes(u"fr-FR", u" Africa/Algiers ", u"15 mars 2024", "CET");
    makes(u"german", u"UTC+05:30", u"15. M\u00E4rz 2024", "+0530");
    const auto refuses = [&](std::u16string_view locale, std::u16string_view zone) {
      for (const bool is_private : {false, true}) {
        std::uint32_t status = 0;
        EXPECT_EQ(host.create_handle(locale, zone, is_private, &status), nullptr);
        EXPECT_EQ(status, code(Status::lookup_failed));
      }
    };
    const std::u16string long_name(5000, u'x');
    refuses(u"xx_YY", u"UTC");
    refuses(u"", u"UTC");
    refuses(long_name, u"UTC");
    refuses(u"de_DE", u"   ");
    refuses(u"de_DE", u"/etc/localtime");
    refuses(u"de_DE", long_name);
    host.destroy_handle(nullptr);
  }
  EXPECT_EQ(messages, Messages());
}

TEST(Host, TakesTheSystemsZoneOrWarnsAndTakesTheDefault) {
  const auto check = [&](const char* tz, const std::set<std::string>& abbreviations,
                         const Messages& expected) {
    setenv("TZ", tz, 1);
    Messages messages;
    {
      CheckedHost host(with_modules(&messages));
      LocaleHandle* handle = host.create_handle(u"en_US", {}, false, nullptr);
      ASSERT_NE(handle, nullptr);
      EXPECT_EQ(abbreviations.count(zone_abbreviation(handle)), 1U);
    }
    EXPECT_EQ(messages, expected);
  };
  check("Asia/Tokyo", {"JST"}, {});
  check("EST5EDT,M3.2.0,M11.1.0", {"EST", "EDT"},
        {{journal_warning,
          "Invalid OS TIMEZONE value is detected. Use default TIMEZONE value instead"}});
  unsetenv("TZ");
}

TEST(Host, AJournalFunctionMayUseHandlesAndCauseMessages) {
  setenv("TZ", "no zone", 1);
  int messages = 0;
  std::u16string date;
  Host* used = nullptr;
  LocaleHandle* german = nullptr;
  HostConfiguration configuration = with_modules();
  configuration.journal = [&](std::uint32_t, std::u16string_view) {
    ++messages;
    date = long_date(german);
    used->create_handle(u"fr_FR", {}, false, nullptr);  // whose message is dropped
  };
  {
    CheckedHost host(std::move(configuration));
    used = &host;
    german = host.create_handle(u"de_DE", u"UTC", false, nullptr);
    ASSERT_NE(german, nullptr);
    EXPECT_NE(host.create_handle(u"en_US", {}, false, nullptr), nullptr);
    EXPECT_EQ(date, u"15. M\u00E4rz 2024");
    EXPECT_EQ(messages, 1);
  }
  unsetenv("TZ");
}

TEST(Host, AnErrorGoesToItsFunctionAndWhatThatThrowsNoFurther) {
  std::uint64_t sum = 0;
  MessageOutlet outlet({}, [&](std::uint32_t severity, std::uint32_t status) {
    sum += 100 * severity + status;
    throw sum;
  });
  for (int i = 0; i < 2; ++i) outlet.report(3, 7);
  EXPECT_EQ(sum, 2 * 307U);
}

TEST(Host, SaysWhichExtensionIsMissing) {
  const Folder partial("partial");
  const fs::path& folder = partial.path;
  for (const char* name : {"jwnlsloc", "jwemsg", "jwnlsldb"}) {
    Messages messages;
    {
      HostConfiguration configuration = with_modules(&messages);
      configuration.extension_path = {folder};
      CheckedHost host(std::move(configuration));
      const std::string expected = "cannot find " + std::string(name) + ".so in " + folder.string();
      std::string error;
      EXPECT_EQ(host.factory(&error), nullptr);
      EXPECT_EQ(error, expected);
      error.clear();
      EXPECT_EQ(host.create_handle(u"de_DE", u"UTC", false, nullptr, &error), nullptr);
      EXPECT_EQ(error, expected);
      // The next try finds it, once it is there.
      const std::string file = std::string(name) + ".so";
      fs::create_symlink(fs::path(JWNLS_BUILD_DIR) / file, folder / file);
      EXPECT_EQ(host.factory(nullptr) != nullptr, name == std::string_view("jwnlsldb"));
      if (name != std::string_view("jwnlsldb")) continue;
      // What failed before is no reason of what fails now.
      EXPECT_EQ(host.create_handle(u"de_DE", u"No/Zone", false, nullptr, &error), nullptr);
      EXPECT_EQ(error, "");
    }
    EXPECT_EQ(messages, Messages());
  }
}

}  // namespace
}  // namespace jwnls::host
