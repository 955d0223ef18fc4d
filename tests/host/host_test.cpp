// The host with the real module, message extension and locale database.

#include "host/host.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <array>
#include <cstdlib>
#include <ctime>
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

// As modules ask: what is missing, room that is too small, zones that cannot be read.
TEST(Host, AnswersModulesWithAStatus) {
  const std::string nowhere = "/" + std::string(300, 'x');
  for (const bool reads_zones : {true, false}) {
    HostConfiguration configuration = with_modules();
    if (!reads_zones) configuration.zone_directory = nowhere;  // a name that is too long
    Host host(std::move(configuration));
    NlsContext* context = host.context();
    ResolvedLocale* locale = nullptr;
    const auto resolve = [&](const char16_t* name, std::int64_t length, ResolvedLocale** out) {
      return static_cast<Status>(context->resolve_locale(context, name, length, 0, out));
    };
    EXPECT_EQ(resolve(u"de_DE", 5, nullptr), Status::null_argument);
    EXPECT_EQ(resolve(nullptr, 5, &locale), Status::lookup_failed);
    EXPECT_EQ(resolve(u"de_DE", 5, &locale), Status::ok);
    const ResolvedLocale* const first = locale;
    EXPECT_EQ(resolve(u"de-DE", 5, &locale), Status::ok);
    EXPECT_EQ(locale, first);

    char16_t out[zone_name_capacity] = {};
    const auto normalise = [&](const char16_t* name, std::int64_t length, std::int64_t* room) {
      return static_cast<Status>(
          context->normalise_zone(context, name, length, 0, out, room, nullptr));
    };
    std::int64_t room = 3;
    EXPECT_EQ(normalise(u"asia/tokyo", 10, &room),
              reads_zones ? Status::does_not_fit : Status::lookup_failed);
    EXPECT_EQ(normalise(u"utc", 3, &room), Status::ok);
    EXPECT_EQ(room, 3);
    EXPECT_EQ(normalise(nullptr, 3, &room), Status::lookup_failed);
    EXPECT_EQ(normalise(u"utc", 0, &room), Status::lookup_failed);
    EXPECT_EQ(normalise(u"utc", 3, nullptr), Status::null_argument);
    EXPECT_EQ(context->normalise_zone(context, u"utc", 3, 0, nullptr, &room, nullptr),
              code(Status::null_argument));

    setenv("TZ", "Asia/Tokyo", 1);
    for (int second = 0; second < 2; ++second) {
      room = zone_name_capacity;
      EXPECT_EQ(context->os_zone(context, out, &room, 0),
                code(reads_zones ? Status::ok : Status::no_os_zone));
      EXPECT_EQ(room, reads_zones ? 10 : static_cast<std::int64_t>(zone_name_capacity));
      const auto now = std::time(nullptr);  // it looks again in the next second
      while (reads_zones && second == 0 && std::time(nullptr) == now) usleep(10'000);
    }
    unsetenv("TZ");
    EXPECT_EQ(context->os_zone(context, out, nullptr, 0), code(Status::null_argument));
    EXPECT_EQ(context->os_zone(context, nullptr, &room, 0), code(Status::null_argument));
  }
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
