#include "tool/iso8601.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>

#include "tool/iso_writer.h"

namespace jwnls::tool {
namespace {

// A compact form for comparison: "2024-3-15 52205s +60m", absent parts as "-".
std::string shown(std::string_view text) {
  // What stands behind the text is no part of it.
  const std::string longer = std::string(text) + "59:59";
  const auto value = read_iso8601(std::string_view(longer).substr(0, text.size()));
  if (!value) return value.message();
  std::ostringstream out;
  if (value->date) {
    out << static_cast<int>(value->date->year()) << '-' << unsigned{value->date->month()} << '-'
        << unsigned{value->date->day()};
  } else {
    out << '-';
  }
  value->time ? out << ' ' << value->time->count() << 's' : out << " -";
  value->offset ? out << ' ' << value->offset->count() << 'm' : out << " -";
  return out.str();
}

TEST(Iso8601, ReadsDatesTimesAndBoth) {
  const auto check = [&](const char* text, const char* value) {
    EXPECT_EQ(shown(text), value) << text;
  };
  check("2024-03-15", "2024-3-15 - -");
  check("20240315", "2024-3-15 - -");
  check("12345-12-31", "12345-12-31 - -");
  check("14:30", "- 52200s -");
  check("14:30:05", "- 52205s -");
  check("14:30:05,5Z", "- 52205s 0m");
  check("t143005", "- 52205s -");
  check("T14:30:05.25", "- 52205s -");
  check("23:59:59", "- 86399s -");
  check("2024-03-15T14:30", "2024-3-15 52200s -");
  check("2024-03-15t14:30:05z", "2024-3-15 52205s 0m");
  check("20240315T143005Z", "2024-3-15 52205s 0m");
  check("2024-03-15T14:30:05+01:00", "2024-3-15 52205s 60m");
  check("2024-03-15T14:30:05-0330", "2024-3-15 52205s -210m");
  check("2024-03-15 14:30:05 +05", "2024-3-15 52205s 300m");
}

TEST(Iso8601, SaysWhatIsWrong) {
  for (const char* text :
       {"tomorrow", "03/15/2024", "2024/03/15", "15.03.2024", "123-01-01", "2024", "143005", "T",
        "-2024-03-15", "\u0662\u0660\u0662\u0664-03-15"}) {
    EXPECT_EQ(shown(text), "neither a date (YYYY-MM-DD) nor a time (HH:MM:SS)") << text;
  }
  const auto check = [&](const char* text, const char* reason) {
    EXPECT_EQ(shown(text), reason) << text;
  };
  check("", "no value");
  check("T1", "a two-digit hour is missing");
  check("2024-3-15", "a two-digit month is missing");
  check("2024-13-01", "month 13 is not 01 to 12");
  check("2024-00-01", "month 00 is not 01 to 12");
  check("2024-03", "\"-\" is missing after the month");
  check("2024-03-", "a two-digit day is missing");
  check("2024-03-32", "day 32 is not 01 to 31");
  check("2024-02-30", "there is no day 30 in month 02 of 2024");
  check("1900-02-29", "there is no day 29 in month 02 of 1900");
  check("2024-03-15x", "text is left after the date");
  check("2024-03-15T24:00", "hour 24 is not 00 to 23");
  check("14:60", "minute 60 is not 00 to 59");
  check("14:30:60", "second 60 is not 00 to 59");
  check("14:30:", "a two-digit second is missing");
  check("14:30:05 Uhr", "text is left after the time");
  check("14:30:05Z0", "text is left after the time");
  check("14:30:05.", "digits are missing after the decimal point");
  check("2024-03-15T14:30+1", "a two-digit offset hour is missing");
  check("2024-03-15T14:30+01:60", "offset minute 60 is not 00 to 59");
}

TEST(Iso8601, WritesFractionsWhereThereAreSome) {
  EXPECT_EQ(iso_text(Microseconds(52'205'000'000)), "14:30:05");
  EXPECT_EQ(iso_text(Microseconds(52'205'250'000)), "14:30:05.25");
  EXPECT_EQ(iso_text(Microseconds(1)), "00:00:00.000001");
  EXPECT_EQ(iso_text(std::chrono::local_time<Microseconds>(Microseconds(-1))),
            "1969-12-31T23:59:59.999999");
  constexpr std::int64_t day = 86'400'000'000;
  for (const auto& [moment, text] : {std::pair(std::int64_t{0}, "1970-01-01T00:00:00"),
                                     {-day, "1969-12-31T00:00:00"},
                                     {-1, "1969-12-31T23:59:59.999999"}}) {
    char out[iso_room];
    EXPECT_EQ(std::string(out, write_iso_datetime(out, moment)), text);
  }
}

}  // namespace
}  // namespace jwnls::tool
