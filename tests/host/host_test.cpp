// The host with the real module, message extension and locale database.

#include "host/host.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdlib>
#include <filesystem>
#include <set>
#include <string>

#include "module/record/status.h"
#include "tests/host/hosts.h"

namespace jwnls::host {
namespace {

namespace fs = std::filesystem;
using namespace std::string_literals;

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
  Messages messages;
  {
    Host host(checking(&messages));
    for (const auto& row : cases) {
      std::uint32_t status = 1;
      LocaleHandle* handle = host.create_handle(row.locale, row.zone, false, &status);
      ASSERT_NE(handle, nullptr) << std::hex << status << ' ' << host.last_load_error();
      EXPECT_EQ(status, 0U);
      EXPECT_EQ(long_date(handle), row.date);
      EXPECT_EQ(zone_abbreviation(handle), row.abbreviation);
    }
    for (const auto& [locale, zone] : {std::pair(u"xx_YY"s, u"UTC"s),
                                       {u""s, u"UTC"s},
                                       {std::u16string(5000, u'x'), u"UTC"s},
                                       {u"de_DE"s, u"   "s},
                                       {u"de_DE"s, u"/etc/localtime"s},
                                       {u"de_DE"s, std::u16string(5000, u'x')}}) {
      for (const bool is_private : {false, true}) {
        std::uint32_t status = 0;
        EXPECT_EQ(host.create_handle(locale, zone, is_private, &status), nullptr);
        EXPECT_EQ(status, code(Status::lookup_failed));
      }
    }
    host.destroy_handle(nullptr);
  }
  EXPECT_EQ(messages, Messages());  // no fault, and nothing left when the host had ended
}

TEST(Host, TakesTheSystemsZoneOrWarnsAndTakesTheDefault) {
  const auto check = [&](const char* tz, const std::set<std::string>& abbreviations,
                         const Messages& expected) {
    setenv("TZ", tz, 1);
    Messages messages;
    {
      Host host(checking(&messages));
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

TEST(Host, SaysWhichExtensionIsMissing) {
  const Folder partial("partial");
  const fs::path& folder = partial.path;
  for (const char* name : {"jwnlsloc", "jwemsg", "jwnlsldb"}) {
    Messages messages;
    {
      HostConfiguration configuration = checking(&messages);
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
    EXPECT_EQ(messages, Messages());
  }
}

}  // namespace
}  // namespace jwnls::host
