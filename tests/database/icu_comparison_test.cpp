// Over all locales: what the module writes from the database's records is what ICU itself writes,
// after the replacements that records make so that a text can be typed and read back.

#include <gtest/gtest.h>
#include <unicode/ucal.h>
#include <unicode/udat.h>

#include <algorithm>
#include <memory>
#include <set>
#include <string>

#include "host/locale_names.h"
#include "module/calendar/date_services.h"
#include "tests/database/loaded_extension.h"

namespace jwnls::test {
namespace {

using IcuFormat = icu::LocalUDateFormatPointer;

struct Moment {
  std::int32_t year, month, day;
  std::int32_t seconds;  // of the day
};

// Every month, every weekday, one- and two-digit days and hours, noon and midnight, leap days, both
// ends of what both calendars know.
constexpr Moment moments[] = {
    {2024, 1, 1, 0},      {2024, 2, 29, 43199},  {2024, 3, 15, 43200},  {2023, 4, 30, 46805},
    {2022, 5, 7, 86399},  {2021, 6, 9, 3661},    {2020, 7, 4, 35999},   {1999, 8, 31, 36000},
    {1969, 9, 12, 50709}, {1900, 10, 3, 75600},  {1752, 11, 23, 32767}, {2000, 12, 31, 61200},
    {1582, 1, 10, 12345}, {1582, 10, 10, 23456}, {3999, 12, 8, 80000},
};

constexpr double milliseconds_per_day = 86'400'000;

// The value of a moment in ICU's count, and in the services': days since 1 January 1960.
std::int32_t day_of(const Moment& moment) {
  return day_from_civil({moment.year, moment.month, moment.day});
}
double icu_value(const Moment& moment) {
  constexpr std::int32_t days_to_1970 = 3653;
  return (day_of(moment) - days_to_1970) * milliseconds_per_day + moment.seconds * 1000.0;
}
double datetime_value(const Moment& moment) { return day_of(moment) * 86'400.0 + moment.seconds; }

// ---- ICU's text, with the replacements made.

// A pattern whose fields `replace` rewrites; quoted literals stay.
template <typename Replace>
std::u16string with_fields(std::u16string_view pattern, Replace replace) {
  std::u16string result;
  bool quoted = false;
  for (std::size_t i = 0; i < pattern.size();) {
    if (pattern[i] == u'\'') quoted = !quoted;
    const bool letter = (pattern[i] | 0x20) >= u'a' && (pattern[i] | 0x20) <= u'z';
    if (quoted || !letter) {
      result += pattern[i++];
      continue;
    }
    const std::size_t end = std::min(pattern.find_first_not_of(pattern[i], i), pattern.size());
    result += replace(std::u16string(pattern.substr(i, end - i)));
    i = end;
  }
  return result;
}

// Years have four digits; where the month comes first, it and the day have two.
std::u16string numeric_date(std::u16string_view pattern) {
  const bool month_first = pattern.find(u'M') < pattern.find(u'd');
  return with_fields(pattern, [month_first](std::u16string field) {
    if (field == u"yy") return std::u16string(u"y");
    if (month_first && (field == u"M" || field == u"d")) field += field;
    return field;
  });
}

// The parts of the day (B) are its halves (a). Minutes and seconds have two digits, as everywhere
// but in Yoruba.
std::u16string clock(std::u16string_view pattern) {
  return with_fields(pattern, [](std::u16string field) {
    if (field == u"B") return std::u16string(u"a");
    if (field == u"m" || field == u"s") field += field;
    return field;
  });
}

std::u16string as_typed(std::u16string_view text) {
  std::u16string result;
  for (const char16_t unit : text) {
    if (unit == u'\u00A0' || unit == u'\u202F' || unit == u'\u2009') {
      result += u' ';
    } else if (unit != u'\u200E' && unit != u'\u200F' && unit != u'\u061C') {
      result += unit;
    }
  }
  return result.substr(0, result.find_last_not_of(u' ') + 1);
}

class IcuLocale {
 public:
  explicit IcuLocale(std::string_view name)
      : name_(std::string(name) + "@calendar=gregorian;numbers=latn") {}

  // A format whose calendar knows no Julian dates, as the module's does not.
  IcuFormat format(UDateFormatStyle date, UDateFormatStyle time,
                   std::u16string (*replace)(std::u16string_view)) const {
    UErrorCode error = U_ZERO_ERROR;
    IcuFormat format(udat_open(time, date, name_.c_str(), u"UTC", 3, nullptr, 0, &error));
    const icu::LocalUCalendarPointer calendar(
        ucal_clone(udat_getCalendar(format.getAlias()), &error));
    ucal_setGregorianChange(calendar.getAlias(), -1e15, &error);
    udat_setCalendar(format.getAlias(), calendar.getAlias());

    std::u16string pattern(256, u'\0');
    pattern.resize(static_cast<std::size_t>(
        udat_toPattern(format.getAlias(), false, pattern.data(), 256, &error)));
    pattern = replace(pattern);
    udat_applyPattern(format.getAlias(), false, pattern.data(),
                      static_cast<int32_t>(pattern.size()));
    EXPECT_TRUE(U_SUCCESS(error)) << u_errorName(error);
    return format;
  }

 private:
  std::string name_;
};

std::u16string icu_text(const IcuFormat& format, const Moment& moment) {
  char16_t text[512];
  UErrorCode error = U_ZERO_ERROR;
  const int32_t length =
      udat_format(format.getAlias(), icu_value(moment), text, 512, nullptr, &error);
  EXPECT_TRUE(U_SUCCESS(error)) << u_errorName(error);
  return as_typed({text, static_cast<std::size_t>(length)});
}

// ---- The module's text.

class ModuleLocale {
 public:
  ModuleLocale(FakeHost& host, LocaleRecord& record) {
    handle_.context = &host.context;
    handle_.record = &record;
  }

  std::u16string date(const Moment& moment, std::uint32_t style) {
    return text(format_date<char16_t>(&handle_, moment.month, moment.day, moment.year, style, out_,
                                      room, &length_));
  }
  std::u16string time(const Moment& moment) {
    return text(format_time<char16_t>(&handle_, datetime_value(moment), 0, out_, room, &length_));
  }
  std::u16string datetime(const Moment& moment, std::uint32_t style) {
    return text(
        format_datetime<char16_t>(&handle_, datetime_value(moment), style, out_, room, &length_));
  }

 private:
  std::u16string text(std::uint32_t status) const {
    EXPECT_EQ(status, 0u);
    return {out_, static_cast<std::size_t>(length_)};
  }

  LocaleHandle handle_ = {};
  static constexpr std::int64_t room = 512;
  char16_t out_[room];
  std::int64_t length_ = 0;
};

TEST(IcuComparison, EveryLocaleWritesWhatIcuWrites) {
  const Database database;
  FakeHost host;
  host.recording = false;
  const auto as_it_is = [](std::u16string_view pattern) { return std::u16string(pattern); };
  for (const host::LocaleRow& row : host::available_locales()) {
    SCOPED_TRACE(row.name);
    const auto record = database.record(row.name);
    ModuleLocale module(host, *record);
    const IcuLocale icu(row.name);
    // Records know one set of digits: Hawaiian "15/iii/2024" is "15/3/2024" here.
    const bool has_roman_months = row.name.starts_with("haw");
    const IcuFormat short_date = icu.format(UDAT_SHORT, UDAT_NONE, numeric_date);
    const IcuFormat medium_date = icu.format(UDAT_MEDIUM, UDAT_NONE, as_it_is);
    const IcuFormat long_date = icu.format(UDAT_LONG, UDAT_NONE, as_it_is);
    const IcuFormat time = icu.format(UDAT_NONE, UDAT_MEDIUM, clock);
    const IcuFormat datetime = icu.format(UDAT_MEDIUM, UDAT_MEDIUM, clock);
    for (const Moment& moment : moments) {
      EXPECT_EQ(module.date(moment, 0) == icu_text(short_date, moment), !has_roman_months);
      EXPECT_EQ(module.date(moment, 1), icu_text(medium_date, moment));
      EXPECT_EQ(module.date(moment, 2), icu_text(long_date, moment));
      EXPECT_EQ(module.time(moment), icu_text(time, moment));
      EXPECT_EQ(module.datetime(moment, 0), icu_text(time, moment));
      EXPECT_EQ(module.datetime(moment, 1), icu_text(datetime, moment));
    }
  }
}

// The names that no pattern shows.
TEST(IcuComparison, EveryLocaleHasIcusNames) {
  const Database database;
  for (const host::LocaleRow& row : host::available_locales()) {
    SCOPED_TRACE(row.name);
    const auto record = database.record(row.name);
    UErrorCode error = U_ZERO_ERROR;
    const IcuFormat format(udat_open(
        UDAT_NONE, UDAT_LONG, (std::string(row.name) + "@calendar=gregorian;numbers=latn").c_str(),
        u"UTC", 3, nullptr, 0, &error));
    const auto expect_names = [&](const TextEntry* list, int count, UDateFormatSymbolType type,
                                  int first) {
      for (int i = 0; i < count; ++i) {
        char16_t name[128];
        const int32_t length =
            udat_getSymbols(format.getAlias(), type, first + i, name, 128, &error);
        // A name's own trailing blank stays in the record.
        EXPECT_EQ(as_typed(text_of(list[i])), as_typed({name, static_cast<std::size_t>(length)}));
      }
    };
    expect_names(record->full_weekdays, 7, UDAT_WEEKDAYS, 1);
    expect_names(record->short_weekdays, 7, UDAT_SHORT_WEEKDAYS, 1);
    expect_names(record->full_months, 12, UDAT_MONTHS, 0);
    expect_names(record->short_months, 12, UDAT_SHORT_MONTHS, 0);
    expect_names(record->full_quarters, 4, UDAT_QUARTERS, 0);
    expect_names(record->short_quarters, 4, UDAT_SHORT_QUARTERS, 0);
    EXPECT_TRUE(U_SUCCESS(error)) << u_errorName(error);
  }
}

}  // namespace
}  // namespace jwnls::test
