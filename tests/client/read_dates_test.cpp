#include <gtest/gtest.h>

#include "real_host.h"

namespace jwnls::client {
namespace {

using namespace std::chrono_literals;
using std::chrono::local_days;
using std::chrono::year;
using std::chrono::year_month_day;

const year_month_day ides = year{2024} / 3 / 15;
constexpr DateReading strict = {.strict = true};

TEST(ReadDate, TakesWhatTheLocaleWritesAndPeopleType) {
  const auto check = [&](const char* name, const char* text, const DateReading& reading = {},
                         year_month_day date = ides) {
    const auto read = locale(name).read_date(text, reading);
    EXPECT_EQ(read, date) << name << ": " << (read ? text : read.error().message);
  };
  check("de_DE", "  15.MÄRZ2024  ");  // no case, no blanks
  check("de_DE", "2024-03-15");
  check("de_DE", "03/04/2024", {}, year{2024} / 4 / 3);
  check("en_US", "03/04/2024", {}, year{2024} / 3 / 4);
  check("en_US", "3/15/60", {}, year{1960} / 3 / 15);
  check("ff_Adlm", "15 𞤐𞤦𞤮𞥅𞤴𞤮⹁ 2024");  // names beyond U+FFFF
  // Digits of the script, marks of direction, and other blanks, in lenient reading.
  check("ar_EG", "⁧١٥‏/٣‏/٢٠٢٤⁩");
  check("fa_IR", "۲۰۲۴/۰۳/۱۵");
  check("fr_FR", "15\u00A0mars\u202F2024");
  check("dz", "2024-༠༣-15");
  // Patterns by number.
  check("en_US", "03/15/2024", {true, 1});
  check("en_US", "Mar 15, 2024", {true, 2});
  check("en_US", "march 15,2024", {false, 3});
  check("en_US", "March 15, 2024", strict);
}

TEST(ReadDate, TellsHowFarATextFitsAndWhy) {
  const auto check = [&](const char* name, const std::string& text, const DateReading& reading,
                         const char* fitting, const char* reason) {
    const auto read = locale(name).read_date(text, reading);
    ASSERT_FALSE(read) << text;
    EXPECT_EQ(read.error().status, Status::no_match);
    EXPECT_EQ(text.substr(0, read.error().fitting_bytes), fitting) << text;
    EXPECT_EQ(read.error().message, "date " + in_quotes(text) + ": " + reason);
  };
  check("de_DE", "15. Mrz 2024", {}, "15. M", "'15. M' fits, 'rz 2024' does not");
  check("de_DE", "15. Mä", {}, "15. Mä", "ends too early");
  check("de_DE", "15.03.2024 Uhr", {}, "15.03.2024 ", "'15.03.2024 ' fits, 'Uhr' does not");
  check("de_DE", "15.03.2024 Uhr", {false, 1}, "15.03.2024 ", "'15.03.2024 ' fits, 'Uhr' does not");
  check("de_DE", "ides", {}, "", "no date begins so in de_DE");
  check("de_DE", " ", {}, " ", "no value");
  check("de_DE", "30.02.2024", {}, "30.02.2024", "no such date in the calendar");
  check("de_DE", "1.1.1066", {}, "1.1.1066", "years before 1582 are not in the calendar");
  check("de_DE", "1.1.12024", {}, "1.1.12024", "years of five digits are not read");
  check("de_DE", "2024-13-05", {}, "2024-1", "'2024-1' fits, '3-05' does not");
  check("de_DE", "15.3.2024", {true, 1}, "15.", "'15.' fits, '3.2024' does not");
  check("de_DE", "15.März 2024", strict, "15.", "'15.' fits, 'März 2024' does not");
  check("ar_EG", "١٥/١٣/٢٠٢٤", {}, "١٥/١", "'١٥/١' fits, '٣/٢٠٢٤' does not");
  check("ar_EG", "١٥/٣/٢٠٢٤", strict, "", "no date begins so in ar_EG");
  check("de_DE", "15.\xFF", {}, "", "not valid UTF-8");
  check("ff_Adlm", "15 𞤐𞤦𞤮𞥅𞥅", {}, "15 𞤐𞤦𞤮𞥅",
        "'15 𞤐𞤦𞤮𞥅' fits, '𞥅' does not");
  const std::string long_text(1'000'000, '7');
  EXPECT_EQ(locale("de_DE").read_date(long_text).error().fitting_bytes, 4u);
}

TEST(ReadTime, TakesPatternsAndWhatIsLeftOfThem) {
  const auto check = [&](const char* name, const char* text, const TimeReading& reading,
                         const char* outcome) {
    const auto read = locale(name).read_time(text, reading);
    EXPECT_EQ(read ? std::to_string(read->count()) : read.error().message, outcome);
  };
  check("en_US", "2:30 pm", {}, "52200");
  check("en_US", "2:30:00\u202FPM", {}, "52200");
  check("ko_KR", "오후 2:30", {}, "52200");
  check("de_DE", "15.03.2024, 14:30:05", {.pattern = 1}, "52205");
  check("de_DE", "14:30:05", {true, 2}, "52205");
  check("en_US", "2:30:00PM", {false, 2}, "52200");
  check("en_US", "2:30:00PM", {true}, "time '2:30:00PM': '2:30:00' fits, 'PM' does not");
  check("en_US", "14:30 PM", {}, "time '14:30 PM': '14:30 ' fits, 'PM' does not");
  check("de_DE", "24:30", {}, "time '24:30': '24' fits, ':30' does not");
  check("de_DE", "14:30", {true}, "time '14:30': ends too early");
  check("de_DE", "14:30", {.pattern = 3}, "pattern 3: not 0 to 2");
  // The strict dialect would read the afternoon as the morning.
  check("ko_KR", "오후 2:30:00", {true},
        "ko_KR writes AM or PM before the hour: its times are not read strictly");
}

TEST(ReadDatetime, TakesADateAndATime) {
  const auto time = local_days{ides} + 14h + 30min;
  EXPECT_EQ(locale("de_DE").read_datetime("15.03.2024, 14:30:00"), time);
  EXPECT_EQ(locale("de_DE").read_datetime("15.03.2024, 14:30:00", strict), time);
  EXPECT_EQ(locale("en_US").read_datetime("Mar 15, 2024 2:30 PM"), time);
  EXPECT_EQ(locale("en_US").read_datetime("2024-03-15T14:30"), time);
  EXPECT_EQ(locale("de_DE").read_datetime("15.03.2024 25:00").error().message,
            "datetime '15.03.2024 25:00': '15.03.2024 2' fits, '5:00' does not");
  EXPECT_EQ(locale("de_DE").read_datetime("31.04.2024 12:00").error().message,
            "datetime '31.04.2024 12:00': no such date in the calendar");
  EXPECT_EQ(locale("ko_KR").read_datetime("2024. 3. 15.", strict).error().status,
            Status::not_possible);
}

TEST(ReadPeriod, GivesTheFirstDayAndKeepsToTheYearCutoff) {
  const Locale english = locale("en_US");
  EXPECT_EQ(english.read_period("Mar-2024"), year{2024} / 3 / 1);
  EXPECT_EQ(english.read_period("W1, 2025"), year{2024} / 12 / 30);
  EXPECT_EQ(english.read_period("1/49"), year{2049} / 1 / 1);
  EXPECT_EQ(english.read_period("Q5, 2024").error().message,
            "period 'Q5, 2024': 'Q' fits, '5, 2024' does not");
  HostOptions options;
  options.extension_path = {JWNLS_BUILD_DIR};
  options.options = {{"JW_NAME_YEARCUTOFF", "1900"}};
  const auto host = Host::open(std::move(options));
  EXPECT_EQ(host->locale("en_US")->read_period("1/49"), year{1949} / 1 / 1);
}

}  // namespace
}  // namespace jwnls::client
