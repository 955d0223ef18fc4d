// Over all locales: what the module writes from the database's records is what ICU itself writes,
// after the replacements that records make so that a text can be typed and read back.

#include <gtest/gtest.h>
#include <unicode/ucal.h>
#include <unicode/udat.h>

#include <algorithm>
#include <memory>
#include <set>
#include <string>

#include "host/locales/locale_names.h"
#include "module/frame/service_table.h"
#include "tests/extensions/loaded_extension.h"
#include "tests/support/formatting_call.h"

namespace jwnls::test {
namespace {

using IcuFormat = icu::LocalUDateFormatPointer;

// Every month, every weekday, one- and two-digit days and hours, noon and midnight, leap days, both
// ends of what both calendars know.
constexpr Instant moments[] = {
    {2024, 1, 1},
    {2024, 2, 29, 11, 59, 59},
    {2024, 3, 15, 12},
    {2023, 4, 30, 13, 0, 5},
    {2022, 5, 7, 23, 59, 59},
    {2021, 6, 9, 1, 1, 1},
    {2020, 7, 4, 9, 59, 59},
    {1999, 8, 31, 10},
    {1969, 9, 12, 14, 5, 9},
    {1900, 10, 3, 21},
    {1752, 11, 23, 9, 6, 7},
    {2000, 12, 31, 17},
    {1582, 1, 10, 3, 25, 45},
    {1582, 10, 10, 6, 30, 56},
    {3999, 12, 8, 22, 13, 20},
};

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

IcuFormat open_format(std::string_view locale, UDateFormatStyle date, UDateFormatStyle time) {
  UErrorCode error = U_ZERO_ERROR;
  const std::string name = std::string(locale) + "@calendar=gregorian;numbers=latn";
  IcuFormat format(udat_open(time, date, name.c_str(), u"UTC", 3, nullptr, 0, &error));
  EXPECT_TRUE(U_SUCCESS(error)) << u_errorName(error);
  return format;
}

// A format whose pattern is replaced and whose calendar knows no Julian dates, as the module's does
// not.
IcuFormat icu_format(std::string_view locale, UDateFormatStyle date, UDateFormatStyle time,
                     std::u16string (*replace)(std::u16string_view)) {
  UErrorCode error = U_ZERO_ERROR;
  IcuFormat format = open_format(locale, date, time);
  const icu::LocalUCalendarPointer calendar(
      ucal_clone(udat_getCalendar(format.getAlias()), &error));
  ucal_setGregorianChange(calendar.getAlias(), -1e15, &error);
  udat_setCalendar(format.getAlias(), calendar.getAlias());
  char16_t units[256];
  const int32_t length = udat_toPattern(format.getAlias(), false, units, 256, &error);
  const std::u16string pattern = replace({units, static_cast<std::size_t>(length)});
  udat_applyPattern(format.getAlias(), false, pattern.data(), static_cast<int32_t>(pattern.size()));
  EXPECT_TRUE(U_SUCCESS(error)) << u_errorName(error);
  return format;
}

// Milliseconds from 1970.
double icu_value(const Instant& moment) {
  return (seconds_of(moment) - seconds_of({1970, 1, 1})) * 1000;
}

std::u16string icu_text(const IcuFormat& format, const Instant& moment) {
  char16_t text[512];
  UErrorCode error = U_ZERO_ERROR;
  const int32_t length =
      udat_format(format.getAlias(), icu_value(moment), text, 512, nullptr, &error);
  EXPECT_TRUE(U_SUCCESS(error)) << u_errorName(error);
  return as_typed({text, static_cast<std::size_t>(length)});
}

std::u16string module_text(LocaleHandle& handle, Service service, const Instant& moment,
                           std::uint32_t style) {
  char16_t text[512];
  std::int64_t length = 0;
  EXPECT_EQ(call(&handle, service, moment, style, text, std::int64_t{std::size(text)}, &length),
            0u);
  return {text, static_cast<std::size_t>(length)};
}

TEST(IcuComparison, EveryLocaleWritesWhatIcuWrites) {
  const Database database;
  FakeHost host;
  host.recording = false;
  LocaleHandle handle = {};
  handle.services = services;
  handle.context = &host.context;
  const auto as_it_is = [](std::u16string_view pattern) { return std::u16string(pattern); };
  for (const host::LocaleRow& row : host::available_locales()) {
    SCOPED_TRACE(row.name);
    const auto record = database.record(row.name);
    handle.record = record.get();
    // Records know one set of digits: Hawaiian "15/iii/2024" is "15/3/2024" here.
    const bool has_roman_months = row.name.starts_with("haw");
    const IcuFormat short_date = icu_format(row.name, UDAT_SHORT, UDAT_NONE, numeric_date);
    const IcuFormat medium_date = icu_format(row.name, UDAT_MEDIUM, UDAT_NONE, as_it_is);
    const IcuFormat long_date = icu_format(row.name, UDAT_LONG, UDAT_NONE, as_it_is);
    const IcuFormat time = icu_format(row.name, UDAT_NONE, UDAT_MEDIUM, clock);
    const IcuFormat datetime = icu_format(row.name, UDAT_MEDIUM, UDAT_MEDIUM, clock);
    for (const Instant& moment : moments) {
      const auto text = [&](Service service, std::uint32_t style) {
        return module_text(handle, service, moment, style);
      };
      EXPECT_EQ(text(Service::date, 0) == icu_text(short_date, moment), !has_roman_months);
      EXPECT_EQ(text(Service::date, 1), icu_text(medium_date, moment));
      EXPECT_EQ(text(Service::date, 2), icu_text(long_date, moment));
      EXPECT_EQ(text(Service::time, 0), icu_text(time, moment));
      EXPECT_EQ(text(Service::datetime, 0), icu_text(time, moment));
      EXPECT_EQ(text(Service::datetime, 1), icu_text(datetime, moment));
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
    const IcuFormat format = open_format(row.name, UDAT_LONG, UDAT_NONE);
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
