#include "client/locale.h"

#include <gtest/gtest.h>

#include <atomic>
#include <thread>
#include <vector>

#include "abi/locale_handle.h"
#include "real_host.h"

namespace jwnls::client {
namespace {

using namespace std::chrono_literals;
using std::chrono::sys_days;
using std::chrono::year;

constexpr auto noon = sys_days{year{2024} / 7 / 1} + 12h;

TEST(Locale, IsFoundByTheNamesThatPeopleWrite) {
  const auto check = [&](const char* asked, const char* name, bool exact) {
    const auto match = real_host().match(asked);
    ASSERT_TRUE(match) << match.error().message;
    EXPECT_EQ(match->name, name) << asked;
    EXPECT_EQ(match->exact, exact) << asked;
    const auto locale = real_host().locale(asked, "UTC");
    ASSERT_TRUE(locale) << locale.error().message;
    EXPECT_EQ(locale->name(), name);
  };
  check("de-DE", "de_DE", true);
  check("C.UTF-8", "en_US_POSIX", true);
  check("german", "de", false);
}

TEST(Locale, RefusesNamesThatAreNone) {
  const auto check = [&](const char* name, const char* zone, const char* message) {
    const auto locale = real_host().locale(name, zone);
    ASSERT_FALSE(locale) << name << zone;
    EXPECT_EQ(locale.error().message, message);
    EXPECT_EQ(locale.error().status, Status::lookup_failed);
  };
  check("tlh_AA", "UTC", "locale 'tlh_AA': unknown");
  check("de_DE", "Mars/Phobos", "time zone 'Mars/Phobos': unknown");
  check("de_DE", "\xFF", "time zone '\\xFF': unknown");
  check("de_DE", (std::string(79, 'x') + "ä").c_str(),
        ("time zone '" + std::string(79, 'x') + "...': unknown").c_str());
  EXPECT_FALSE(real_host().match("\xFF"));
}

TEST(Locale, SharesItsHandleUnlessAskedNotTo) {
  const Host& host = real_host();
  const Locale shared = *host.locale("sv_SE", "Europe/Stockholm");
  EXPECT_EQ(shared.handle(), host.locale("sv-SE", "europe/stockholm")->handle());
  EXPECT_NE(shared.handle(), host.locale("sv_SE", "UTC")->handle());
  EXPECT_NE(host.locale("sv_SE", "Asia/Kolkata")->handle(),
            host.locale("sv_SE", "Asia/Calcutta")->handle());
  EXPECT_NE(shared.handle(), host.private_locale("sv_SE", "Europe/Stockholm")->handle());
}

TEST(Locale, ChangesTheZoneOfAPrivateHandleOnly) {
  Locale own = *real_host().private_locale("de_DE", "UTC");
  const Locale copy = own;
  ASSERT_TRUE(own.set_time_zone("asia/tokyo"));
  EXPECT_EQ(own.time_zone()->name, "Asia/Tokyo");
  EXPECT_EQ(own.time_zone()->abbreviation, "JST");
  EXPECT_EQ(own.time_zone()->offset_from_utc, 9h);
  EXPECT_EQ(copy.format_datetime(noon), "01.07.2024, 21:00:00");

  const auto unknown = own.set_time_zone("Mars/Phobos");
  ASSERT_FALSE(unknown);
  EXPECT_EQ(unknown.error().message, "time zone 'Mars/Phobos': unknown");
  EXPECT_EQ(own.time_zone()->name, "Asia/Tokyo");

  Locale shared = *real_host().locale("de_DE", "UTC");
  const auto refused = shared.set_time_zone("Asia/Tokyo");
  ASSERT_FALSE(refused);
  EXPECT_EQ(refused.error().status, Status::not_possible);
  EXPECT_EQ(shared.in_time_zone("Asia/Tokyo")->format_datetime(noon), "01.07.2024, 21:00:00");
  EXPECT_EQ(shared.format_datetime(noon), "01.07.2024, 12:00:00");
}

TEST(Locale, OutlivesItsHost) {
  const auto locale = [] {
    HostOptions options;
    options.extension_path = {JWNLS_BUILD_DIR};
    const Host host = *Host::open(std::move(options));
    return *host.private_locale("fr_FR", "UTC");
  }();
  EXPECT_EQ(locale.format_datetime(noon), "1 juil. 2024, 12:00:00");
}

TEST(Locale, GivesItsConventions) {
  const Conventions german = real_host().locale("de_DE", "UTC")->conventions();
  EXPECT_EQ(german.full_quarters[3], "4. Quartal");
  EXPECT_EQ(german.grouping, "3");
  EXPECT_EQ(real_host().locale("ff_Adlm", "UTC")->conventions().full_months[0],
            "𞤅𞤭𞥅𞤤𞤮");
}

TEST(Locale, ReadsRecordsWhoseLengthsLie) {
  auto record =
      std::make_unique<LocaleRecord>(*real_host().locale("de_DE", "UTC")->handle()->record);
  record->full_weekdays[0].length = 1'000'000;
  record->date_patterns[1].length = -7;
  record->grouping_length = 61;
  record->currency_symbol_length = ~0ULL;
  record->decimal_symbol = 0;
  const Conventions read = conventions_of(*record);
  EXPECT_EQ(read.full_weekdays[0].substr(0, 7), "Sonntag");
  EXPECT_EQ(read.date_patterns[1], "");
  EXPECT_EQ(read.decimal_symbol, "");
  EXPECT_GE(read.currency_symbol.size(), 128U);
}

TEST(Locale, IsUsedByThreadsWhileItsZoneChanges) {
  Locale own = *real_host().private_locale("de_DE", "UTC");
  std::atomic<bool> done = false;
  std::vector<std::thread> readers(3);
  for (std::thread& reader : readers) {
    reader = std::thread([&own, &done] {
      while (!done) {
        const auto text = own.format_datetime(noon);
        ASSERT_TRUE(text == "01.07.2024, 12:00:00" || text == "01.07.2024, 21:00:00");
        ASSERT_TRUE(own.time_zone());
      }
    });
  }
  for (int i = 0; i < 500; ++i) {
    ASSERT_TRUE(own.set_time_zone(i % 2 == 0 ? "Asia/Tokyo" : "UTC"));
  }
  done = true;
  for (auto& reader : readers) reader.join();
}

}  // namespace
}  // namespace jwnls::client
