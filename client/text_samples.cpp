#include "client/text_samples.h"

#include <string>

namespace jwnls::client {
namespace {

// Digits that go on with whatever may stand in front of them: 1999 ends as any year from 1582 on
// can, 10 as any month, day, hour or minute.
constexpr auto sample_year = std::chrono::year{1999};
constexpr auto sample_day = std::chrono::day{10};
constexpr std::chrono::seconds sample_times[] = {
    std::chrono::hours{10} + std::chrono::minutes{10} + std::chrono::seconds{10},
    std::chrono::hours{22} + std::chrono::minutes{10} + std::chrono::seconds{10}};
constexpr std::u16string_view common_dates[] = {u"10/10/1999", u"10-10-1999", u"10.10.1999",
                                                u"1999/10/10", u"1999-10-10", u"1999.10.10"};

void add(Endings& endings, const Result<std::u16string>& text) {
  if (text) endings.add(*text);
}

using MonthNames = const TextEntry (&)[12];

void add_months(Endings& endings, MonthNames names, std::u16string_view behind) {
  for (const TextEntry& name : names) endings.add(std::u16string(text_of(name)).append(behind));
}

}  // namespace

void add_date_samples(const Locale& locale, Endings& endings) {
  for (const auto text : common_dates) endings.add(text);
  add_months(endings, locale.record().full_months, u" 10 1999");
  add_months(endings, locale.record().short_months, u" 10 1999");
  for (const auto style : {DateStyle::short_numeric, DateStyle::medium, DateStyle::long_form}) {
    for (unsigned month = 1; month <= 12; ++month) {
      add(endings, locale.format_date<std::u16string>(
                       sample_year / std::chrono::month{month} / sample_day, style));
    }
  }
}

void add_time_samples(const Locale& locale, Endings& endings) {
  endings.add(u"10:10:10");
  constexpr auto day = std::chrono::local_days{sample_year / 1 / sample_day};
  for (const auto time : sample_times) {
    for (const auto style : {DatetimeStyle::time_only, DatetimeStyle::date_and_time}) {
      add(endings, locale.format_datetime<std::u16string>(day + time, style));
    }
  }
}

void add_datetime_samples(const Locale& locale, Endings& endings) {
  add_date_samples(locale, endings);
  add_time_samples(locale, endings);
  for (unsigned month = 1; month <= 12; ++month) {
    const std::chrono::local_days day{sample_year / std::chrono::month{month} / sample_day};
    add(endings, locale.format_datetime<std::u16string>(day + sample_times[0]));
  }
}

void add_period_samples(const Locale& locale, Endings& endings) {
  for (const auto text : {u"Month1, 1999", u"Week1 1999", u"W1, 1999", u"Quarter1 1999",
                          u"Qtr1 1999", u"Q1, 1999", u"10/1999"}) {
    endings.add(text);
  }
  add_months(endings, locale.record().full_months, u"-1999");
  add_months(endings, locale.record().short_months, u"-1999");
}

}  // namespace jwnls::client
