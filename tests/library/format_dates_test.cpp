// Writing dates, times, datetimes and instants; and reading back what was written.

#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <string>
#include <vector>

#include "include/jwnls/jwnls.h"
#include "library/dates/date_text.h"
#include "library/dates/day_scale.h"
#include "library/layouts/layout.h"
#include "library/texts/failure.h"
#include "library/texts/utf8.h"
#include "tests/library/date_cases.h"

namespace jwnls::test {
namespace {

struct Written {
  int code;
  std::string text;
};

// Calls a writer with every room from none to enough; no unit behind the room is touched.
template <typename Unit, typename Call>
std::basic_string<Unit> write(Call call, int& code) {
  std::size_t length = 99;
  code = call(static_cast<Unit*>(nullptr), std::size_t{0}, &length);
  if (code != JWNLS_ROOM) {
    EXPECT_EQ(length, 0U);
    return {};
  }
  const std::size_t needed = length;
  std::vector<Unit> room(needed + 1);
  for (std::size_t size = 1; size <= needed; ++size) {
    room[size] = Unit{'#'};
    code = call(room.data(), size, &length);
    EXPECT_EQ(code, size == needed ? JWNLS_OK : JWNLS_ROOM);
    EXPECT_EQ(length, needed);
    EXPECT_EQ(room[size], Unit{'#'});
  }
  return {room.data(), needed};
}

// A case's value, by the calls of its kind, in both encodings.
Written write(const jwnls_layout* layout, const std::string& value) {
  const auto both = [&](auto narrow, auto wide, auto number) {
    Written written;
    written.text =
        write<char>([&](auto... room) { return narrow(layout, number, room...); }, written.code);
    int code = 0;
    const std::u16string units =
        write<char16_t>([&](auto... room) { return wide(layout, number, room...); }, code);
    EXPECT_EQ(code, written.code);
    std::string bytes(3 * units.size(), '\0');
    bytes.resize(library::to_utf8(units, bytes.data(), bytes.size()));
    EXPECT_EQ(bytes, written.text);
    return written;
  };
  switch (jwnls_layout_kind(layout)) {
    case JWNLS_DATE:
      return both(jwnls_write_date, jwnls_write_date_utf16,
                  static_cast<std::int32_t>(days_of_iso(value)));
    case JWNLS_TIME:
      return both(jwnls_write_time, jwnls_write_time_utf16, microseconds_of_iso(value));
    default: {
      const std::size_t time = value.find('T');
      // 29 February of 4000 is the day before 1 March to std::chrono as well.
      return both(
          jwnls_write_datetime, jwnls_write_datetime_utf16,
          days_of_iso(value) * day_microseconds + microseconds_of_iso(value.substr(time + 1)));
    }
  }
}

TEST(FormatDates, AnswerTheTable) {
  int written_rows = 0;
  for (const DateCase& row : date_cases()) {
    if (row.direction != "write") continue;
    SCOPED_TRACE(row.locale + " " + row.kind + " " + row.options + ": " + row.input);
    ++written_rows;
    const Layout layout =
        open_layout(row.locale, jwnls_kind_of_name(row.kind.c_str()), row.options);
    const Written written = write(layout.get(), row.input);
    EXPECT_EQ(written.code == JWNLS_RANGE ? "range" : written.text, row.answer);
  }
  EXPECT_GT(written_rows, 15);
}

TEST(FormatDates, RefuseWhatHasNoText) {
  const Layout date = open_layout("de_DE", JWNLS_DATE, "");
  const Layout time = open_layout("de_DE", JWNLS_TIME, "");
  const Layout instant = open_layout("de_DE", JWNLS_INSTANT, "zone=Europe/Berlin");
  std::array<char, 60> text;
  std::size_t length = 1;
  for (const std::int32_t days : {INT32_MIN, -141'715, 2'932'897, INT32_MAX}) {
    EXPECT_EQ(jwnls_write_date(date.get(), days, text.data(), text.size(), &length), JWNLS_RANGE);
  }
  for (const std::int64_t value : {INT64_MIN, std::int64_t{-1}, day_microseconds, INT64_MAX}) {
    EXPECT_EQ(jwnls_write_time(time.get(), value, text.data(), text.size(), &length), JWNLS_RANGE);
  }
  for (const std::int64_t value : {INT64_MIN, INT64_MAX}) {
    EXPECT_EQ(jwnls_write_datetime(instant.get(), value, text.data(), text.size(), &length),
              JWNLS_RANGE);
  }
  EXPECT_EQ(jwnls_write_date(time.get(), 0, text.data(), text.size(), &length), JWNLS_KIND);
  EXPECT_EQ(jwnls_write_time(date.get(), 0, text.data(), text.size(), &length), JWNLS_KIND);
  EXPECT_EQ(jwnls_write_datetime(date.get(), 0, text.data(), text.size(), &length), JWNLS_KIND);
  EXPECT_EQ(length, 0U);
}

// What the library writes by itself is what the services write.
TEST(FormatDates, WriteAsTheServicesDo) {
  for (const std::string& name : locale_names()) {
    for (const char* style : {"style=short", "style=medium", "style=long"}) {
      const Layout date = open_layout(name, JWNLS_DATE, style);
      const Layout datetime = open_layout(name, JWNLS_DATETIME, "");
      ASSERT_TRUE(date->dates->writer != nullptr && datetime->dates->writer != nullptr) << name;
      LocaleHandle* const handle = date->locale->handle;
      for (std::int32_t i = 0; i < 24; ++i) {
        const std::int32_t day = 19723 + 37 * i;
        const std::int64_t second = day * std::int64_t{86400} + i * 3667 + 5;
        std::array<char16_t, 600> ours;
        std::array<char16_t, 600> theirs;
        std::size_t size = 0;
        std::int64_t length = 0;
        const CivilDate parts = civil_from_day(day + library::days_1960_to_1970);
        ASSERT_EQ(
            handle->services.format_date(handle, parts.month, parts.day, parts.year,
                                         date->dates->date_style, theirs.data(), 600, &length),
            0U);
        jwnls_write_date_utf16(date.get(), day, ours.data(), ours.size(), &size);
        ASSERT_EQ(std::u16string(ours.data(), size),
                  std::u16string(theirs.data(), static_cast<std::size_t>(length)))
            << name << " " << style;
        const double value = static_cast<double>(second + library::days_1960_to_1970 * 86400LL);
        ASSERT_EQ(handle->services.format_datetime(handle, value, 1, theirs.data(), 600, &length),
                  0U);
        jwnls_write_datetime_utf16(datetime.get(), second * 1'000'000, ours.data(), ours.size(),
                                   &size);
        ASSERT_EQ(std::u16string(ours.data(), size),
                  std::u16string(theirs.data(), static_cast<std::size_t>(length)))
            << name;
      }
    }
  }
}

// The database of another maker may have no layout data.
TEST(FormatDates, DoWithoutLayoutData) {
  static LocaleRecord record;
  static library::Locale locale;  // its names stay as long as the process
  locale = *open_layout("de_DE", JWNLS_DATE, "")->locale;
  record = *locale.record;
  std::fill(std::begin(record.area_9), std::end(record.area_9), std::uint8_t{0});
  locale.record = &record;
  library::Options options;
  const auto layout = library::make_date_layout(locale, JWNLS_DATE, options);
  const auto read = [&](const char* text) { return library::read_date_text(*layout, text); };
  EXPECT_EQ(read("Freitag, 15. M\u00E4rz 2024").refusal, library::Refusal::none);
  EXPECT_NE(read("15. M\u00E4r 2024").refusal, library::Refusal::none);
  EXPECT_NE(read("15. J\u00E4nner 2024").refusal, library::Refusal::none);
  options.style = library::style_full;
  try {
    (void)library::make_date_layout(locale, JWNLS_DATE, options);
    FAIL();
  } catch (const library::Failure& failure) {
    EXPECT_EQ(failure.error.code, JWNLS_UNKNOWN);
  }
}

// The database of another maker may have patterns that only the services know.
TEST(FormatDates, AreLeftToTheServicesWhereOnlyTheyKnowThePattern) {
  struct Row {
    const char* locale;
    const char16_t* date;  // "%N", a month, is one of the services alone
    const char16_t* time;
    const char16_t* datetime;  // null: as it is
    int kind, style;
    const char* written;
  };
  constexpr const char16_t* own_time = u"%H:%M:%S";
  const Row rows[] = {
      {"de_DE", u"%N/%Y", own_time, nullptr, JWNLS_DATE, library::style_short, "03/2024"},
      {"de_DE", u"%N/%Y", own_time, u"%N/%Y, %H:%M:%S", JWNLS_DATETIME, library::style_short,
       "03/2024, 14:30:05"},
      {"de_DE", u"%N/%Y", own_time, u"%H:%M:%S %N/%Y", JWNLS_DATETIME, library::style_short,
       "14:30:05 03/2024"},
      {"de_DE", u"%N/%Y", own_time, u"%H:%M:%S %N", JWNLS_DATETIME, library::style_medium,
       "14:30:05 03"},
      {"ff_Adlm", u"%N/%Y", own_time, nullptr, JWNLS_DATE, library::style_short, "03/2024"},
      {"de_DE", u"%N/%Y", own_time, u"%N %H", JWNLS_DATETIME, library::style_short, nullptr},
  };
  const auto set = [](TextEntry& entry, std::u16string_view text) {
    entry = {};
    entry.length = static_cast<std::int64_t>(text.size());
    std::copy(text.begin(), text.end(), entry.units);
  };
  for (const Row& row : rows) {
    library::Locale locale = *open_layout(row.locale, JWNLS_DATE, "")->locale;
    LocaleRecord record = *locale.record;
    LocaleHandle handle = *locale.handle;  // only for its services
    std::fill(std::begin(record.area_9), std::end(record.area_9), std::uint8_t{0});
    set(record.date_patterns[0], row.date);
    set(record.time_pattern, row.time);
    if (row.datetime != nullptr) set(record.datetime_pattern, row.datetime);
    handle.record = &record;
    locale.record = &record;
    locale.handle = &handle;
    jwnls_layout layout;
    layout.kind = row.kind;
    layout.locale = &locale;
    layout.options.style = static_cast<std::uint8_t>(row.style);
    try {
      layout.dates = library::make_date_layout(locale, row.kind, layout.options);
    } catch (const library::Failure& failure) {
      EXPECT_EQ(failure.error.code, JWNLS_UNKNOWN);
      EXPECT_EQ(row.written, nullptr);
      continue;
    }
    ASSERT_NE(row.written, nullptr);
    EXPECT_EQ(layout.dates->writer, nullptr);
    const Written written =
        write(&layout, row.kind == JWNLS_DATE ? "2024-03-15" : "2024-03-15T14:30:05");
    EXPECT_EQ(written.text, row.written);
  }
}

// What a layout writes it reads, to the same value; other layouts of the locale do not matter.
TEST(FormatDates, AreReadBack) {
  for (const char* locale :
       {"af",    "am",      "ar_EG", "bg_BG", "bn",         "bo",    "bs",    "ca",    "cgg",
        "cs_CZ", "cy",      "de_AT", "dz",    "el_GR",      "en_GB", "en_US", "es_ES", "eu",
        "fa_IR", "ff_Adlm", "fi_FI", "fr_FR", "gd",         "he_IL", "hi_IN", "hr_HR", "hu_HU",
        "hy",    "ja_JP",   "ka",    "kkj",   "ko_KR",      "ky",    "lt_LT", "luo",   "lv_LV",
        "mr",    "mt",      "my",    "nl_NL", "nmg",        "nnh",   "pl_PL", "pt_BR", "rm",
        "ru_RU", "sr_Latn", "sv_SE", "ta",    "th_TH",      "tr_TR", "uk_UA", "ur",    "uz",
        "vi_VN", "wo",      "yo",    "zh_CN", "zh_Hant_TW", "zu"}) {
    for (const char* style : {"style=short", "style=medium", "style=long"}) {
      const Layout date = open_layout(locale, JWNLS_DATE, style);
      const Layout datetime = open_layout(locale, JWNLS_DATETIME, style);
      for (std::int32_t day = 19723; day < 19723 + 366; day += 1) {
        std::array<char, 600> text;
        std::size_t length = 0;
        std::int32_t days = 0;
        ASSERT_EQ(jwnls_write_date(date.get(), day, text.data(), text.size(), &length), JWNLS_OK);
        ASSERT_EQ(jwnls_read_date(date.get(), text.data(), length, &days, nullptr), JWNLS_OK)
            << locale << " " << style << " " << std::string(text.data(), length);
        ASSERT_EQ(days, day) << locale << " " << std::string(text.data(), length);
        if (day % 5 != 0) continue;
        const std::int64_t moment =
            day * day_microseconds + day % 1440 * 61'000'000LL % day_microseconds;
        std::int64_t read = 0;
        ASSERT_EQ(jwnls_write_datetime(datetime.get(), moment, text.data(), text.size(), &length),
                  JWNLS_OK);
        ASSERT_EQ(jwnls_read_datetime(datetime.get(), text.data(), length, &read, nullptr),
                  JWNLS_OK)
            << locale << " " << style << " " << std::string(text.data(), length);
        ASSERT_EQ(read, moment) << locale << " " << std::string(text.data(), length);
      }
    }
  }
}

}  // namespace
}  // namespace jwnls::test
