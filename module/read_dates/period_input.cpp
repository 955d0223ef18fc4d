// Period input: slots 33 and 84. Labels of months, weeks and quarters.
//
//   period  = month | week | quarter                                       by the table of labels
//   month   = "Month" n ", " year | name "-" year | n "/" year
//   week    = "Week" n " " year | "W" n ", " year                          the second is ISO's
//   quarter = "Quarter" n " " year | "Qtr" n " " year | "Q" n ", " year

#include "abi/missing_value.h"
#include "module/calendar/civil.h"
#include "module/host_calls/year_cutoff.h"
#include "module/read_dates/date_services.h"
#include "module/read_dates/input_text.h"
#include "module/read_dates/pattern_walker.h"

namespace jwnls {
namespace {

// The first of a month, its two-digit year placed by the host's option, which is read for no other
// year. False when there is no such month.
bool make_first(std::int32_t month, std::int32_t year, CivilDate& first) {
  const bool two_digits = year >= 0 && year <= 99;
  const std::int32_t cutoff = two_digits ? year_cutoff_option() : default_year_cutoff;
  return make_date(month, 1, year, cutoff, first);
}

double first_of(std::int32_t month, std::int32_t year) {
  CivilDate first;
  return make_first(month, year, first) ? day_from_civil(first) : missing_value();
}

/// The first day of the period that the parts name; missing when there is none.
using FirstDay = double(const DateTimeParts&);

double first_of_month(const DateTimeParts& parts) { return first_of(parts.month, parts.year); }

// A quarter's number is read as a month.
double first_of_quarter(const DateTimeParts& parts) {
  if (parts.month > 4) return missing_value();
  return first_of(3 * parts.month - 2, parts.year);
}

struct YearDays {
  std::int32_t first;
  std::int32_t end;  // 1 January of the next year
};

// The days of the year, its century put in where it has two digits; false when out of range.
bool days_of_year(std::int32_t year, YearDays& days) {
  CivilDate new_year;
  if (!make_first(1, year, new_year)) return false;
  days.first = day_from_civil(new_year);
  days.end = days.first + (is_leap_year(new_year.year) ? 366 : 365);
  return true;
}

// Weeks begin on Sunday, week 1 with the year's first; what comes before it is week 0.
double first_of_week(const DateTimeParts& parts) {
  YearDays year;
  if (!days_of_year(parts.year, year)) return missing_value();
  const std::int32_t week = parts.week % 100;
  const std::int32_t days_to_sunday = (8 - weekday_from_day(year.first)) % 7;
  if (week == 0) return days_to_sunday > 0 ? year.first : missing_value();
  const std::int32_t sunday = year.first + days_to_sunday + 7 * (week - 1);
  return sunday < year.end ? sunday : missing_value();
}

// The Monday of the week that holds 4 January, for the year that begins on `new_year`.
std::int32_t first_iso_monday(std::int32_t new_year) {
  const std::int32_t fourth = new_year + 3;
  return fourth - (weekday_from_day(fourth) + 5) % 7;
}

double first_of_iso_week(const DateTimeParts& parts) {
  YearDays year;
  if (!days_of_year(parts.year, year)) return missing_value();
  const std::int32_t monday = first_iso_monday(year.first) + 7 * (parts.week % 100 - 1);
  const bool in_year = parts.week % 100 > 0 && monday < first_iso_monday(year.end);
  return in_year && monday >= first_day ? monday : missing_value();
}

struct PeriodLabel {
  std::u16string_view pattern;
  FirstDay* first_day;
};

constexpr PeriodLabel labels[] = {
    {u"Month%o, %Y", first_of_month}, {u"Week%U %Y", first_of_week},
    {u"W%V, %Y", first_of_iso_week},  {u"Quarter%o %Y", first_of_quarter},
    {u"Qtr%o %Y", first_of_quarter},  {u"Q%o, %Y", first_of_quarter},
    {u"%b-%Y", first_of_month},       {u"%o/%Y", first_of_month},
};

// The first label that reads the whole text decides.
template <typename Unit>
double read_label(LocaleHandle* handle, const InputText<Unit>& text) noexcept {
  for (const PeriodLabel& label : labels) {
    TextCursor<Unit> input = text.cursor();
    DateTimeParts parts;
    if (walk_pattern_in<Dialect::lenient>(handle, input, label.pattern, parts, ShortYear::kept) &&
        input.at_end()) {
      return label.first_day(parts);
    }
  }
  return missing_value();
}

}  // namespace

template <typename Unit>
std::uint32_t read_period(LocaleHandle* handle, const Unit* text, std::int64_t length,
                          std::uint32_t /*mode*/, double* value, std::uint64_t* consumed) noexcept {
  const InputText<Unit> whole = InputText<Unit>(text, length).without_trailing_blanks();
  const double first = read_label(handle, whole);
  if (is_missing(first)) return deliver_no_match(value, consumed);
  return deliver(first, whole.length, value, consumed);
}

template std::uint32_t read_period(LocaleHandle*, const char16_t*, std::int64_t, std::uint32_t,
                                   double*, std::uint64_t*) noexcept;
template std::uint32_t read_period(LocaleHandle*, const char*, std::int64_t, std::uint32_t, double*,
                                   std::uint64_t*) noexcept;

}  // namespace jwnls
