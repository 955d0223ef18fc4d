#include "module/read_dates/input_directives.h"

#include <cstddef>

namespace jwnls {
namespace {

using Parts = DateTimeParts;

constexpr NameList no_list = {};
constexpr NameList months = {offsetof(LocaleRecord, full_months), 12};
constexpr NameList short_months = {offsetof(LocaleRecord, short_months), 12};
constexpr NameList weekdays = {offsetof(LocaleRecord, full_weekdays), 7};
constexpr NameList short_weekdays = {offsetof(LocaleRecord, short_weekdays), 7};
constexpr NameList quarters = {offsetof(LocaleRecord, full_quarters), 4};
constexpr NameList short_quarters = {offsetof(LocaleRecord, short_quarters), 4};
constexpr NameList designators = {offsetof(LocaleRecord, before_noon), 2};

constexpr NumberField month_field = {2, 1, 12};
constexpr NumberField day_field = {2, 1, 31};
constexpr NumberField hour_field = {2, 0, 23};
constexpr NumberField hour_24_field = {2, 0, 24};
constexpr NumberField sixty_field = {2, 0, 59};
constexpr NumberField millisecond_field = {3, 0, 999};
constexpr NumberField week_field = {2, 0, 53};
constexpr NumberField weekday_from_1 = {1, 1, 7};
constexpr NumberField weekday_from_0 = {1, 0, 6};

bool hour_12_is_0(Parts& parts) {
  if (parts.hour == 12) parts.hour = 0;
  return true;
}
bool hour_24_is_0(Parts& parts) {
  if (parts.hour == 24) parts.hour = 0;
  return true;
}
bool hour_0_is_12(Parts& parts) {
  if (parts.hour == 0 || parts.hour == 24) parts.hour = 12;
  return true;
}
// The strict designator moves the hour that was read before it; one that comes after is not moved.
bool adds_12(Parts& parts) {
  if (parts.designator == after_noon_designator) parts.hour += 12;
  return parts.hour <= 23;
}
template <std::int32_t numbering>
bool number_week(Parts& parts) {
  parts.week += numbering;
  return true;
}

// What a dialect makes of a letter: one column of the table.
struct Column {
  Reader reader = Reader::none;
  NumberField number = {};
  NumberField sharp_number = {};
  Adjustment* adjust = nullptr;
  NameList lists[2] = {};
};

constexpr Column unknown = {};
constexpr Column year = {Reader::year, year_field, year_field, nullptr, {}};
constexpr Column fixed(NumberField field) { return {Reader::fixed, field, field, nullptr, {}}; }
constexpr Column padded(NumberField field, Adjustment* adjust = nullptr) {
  return {Reader::padded, field, field, adjust, {}};
}
// Only with '#' an hour of 24 can be read.
constexpr Column padded_k = {Reader::padded, hour_field, hour_24_field, hour_24_is_0, {}};
constexpr Column free(NumberField field, Adjustment* adjust = nullptr) {
  const Reader reader = field.width == 2 ? Reader::one_or_two_digits : Reader::free;
  return {reader, field, field, adjust, {}};
}
constexpr Column hour = {Reader::hour, hour_field, hour_field, nullptr, {}};
constexpr Column name(NameList list, Adjustment* adjust = nullptr) {
  return {Reader::name, {}, {}, adjust, {list, no_list}};
}
constexpr Column name(NameList first, NameList second) {
  return {Reader::name, {}, {}, nullptr, {first, second}};
}
constexpr Column zone_name = {Reader::zone_name, {}, {}, nullptr, {}};
constexpr Column zone_offset = {Reader::zone_offset, {}, {}, nullptr, {}};

struct Row {
  char16_t letter;
  PartsField field;
  Column strict;
  Column lenient;
};

// clang-format off
constexpr Row rows[] = {
    //    kept in              strict dialect                  lenient dialect
    {u'Y', &Parts::year,        year,                           year},
    {u'y', &Parts::year,        year,                           year},
    {u'G', &Parts::year,        unknown,                        year},
    {u'm', &Parts::month,       padded(month_field),            free(month_field)},
    {u'O', &Parts::month,       free(month_field),              free(month_field)},
    {u'o', &Parts::month,       free(month_field),              free(month_field)},
    {u'B', &Parts::month,       name(months),                   name(months, short_months)},
    {u'C', &Parts::month,       name(months),                   name(months, short_months)},
    {u'b', &Parts::month,       name(short_months),             name(months, short_months)},
    {u'd', &Parts::day,         padded(day_field),              free(day_field)},
    {u'E', &Parts::day,         free(day_field),                free(day_field)},
    {u'e', &Parts::day,         free(day_field),                free(day_field)},
    {u'Q', &Parts::quarter,     unknown,                        name(quarters, short_quarters)},
    {u'q', &Parts::quarter,     unknown,                        name(quarters, short_quarters)},
    {u'U', &Parts::week,        unknown,                        free(week_field, number_week<100>)},
    {u'V', &Parts::week,        unknown,                        free(week_field, number_week<200>)},
    {u'W', &Parts::week,        unknown,                        free(week_field, number_week<300>)},
    {u'A', &Parts::not_kept,    name(weekdays),                 name(weekdays, short_weekdays)},
    {u'F', &Parts::not_kept,    name(weekdays),                 name(weekdays, short_weekdays)},
    {u'a', &Parts::not_kept,    name(weekdays),                 name(weekdays, short_weekdays)},
    {u'f', &Parts::not_kept,    unknown,                        name(weekdays, short_weekdays)},
    {u'u', &Parts::not_kept,    fixed(weekday_from_1),          free(weekday_from_1)},
    {u'w', &Parts::not_kept,    fixed(weekday_from_0),          free(weekday_from_0)},
    {u'H', &Parts::hour,        hour,                           hour},
    {u'I', &Parts::hour,        padded({2, 1, 12}, hour_12_is_0), free(hour_field)},
    {u'k', &Parts::hour,        padded_k,                       free(hour_24_field, hour_24_is_0)},
    {u'l', &Parts::hour,        padded({2, 0, 11}),             free(hour_24_field, hour_0_is_12)},
    {u'M', &Parts::minute,      padded(sixty_field),            free(sixty_field)},
    {u'S', &Parts::second,      padded(sixty_field),            free(sixty_field)},
    {u's', &Parts::millisecond, padded(millisecond_field),      free(millisecond_field)},
    {u'p', &Parts::designator,  name(designators, adds_12),     name(designators, no_list)},
    {u'Z', &Parts::not_kept,    zone_name,                      zone_name},
    {u'z', &Parts::not_kept,    zone_offset,                    zone_offset},
};
// clang-format on

constexpr DirectiveTable by_letter(Column Row::*dialect) {
  DirectiveTable table{};
  for (const Row& row : rows) {
    const Column& column = row.*dialect;
    table[static_cast<std::size_t>(row.letter - first_directive_letter)] = {
        column.reader, column.number, column.sharp_number,
        row.field,     column.adjust, {column.lists[0], column.lists[1]}};
  }
  return table;
}

static_assert(offsetof(LocaleRecord, after_noon) ==
                  offsetof(LocaleRecord, before_noon) + sizeof(TextEntry),
              "the designators are a list of two");

}  // namespace

constinit const DirectiveTable strict_directives = by_letter(&Row::strict);
constinit const DirectiveTable lenient_directives = by_letter(&Row::lenient);

}  // namespace jwnls
