#include "module/read_dates/input_directives.h"

#include <cstddef>

namespace jwnls {
namespace {

using Parts = DateTimeParts;

constexpr NameList no_list = {};
constexpr NameList full_months = {offsetof(LocaleRecord, full_months), 12};
constexpr NameList short_months = {offsetof(LocaleRecord, short_months), 12};
constexpr NameList full_weekdays = {offsetof(LocaleRecord, full_weekdays), 7};
constexpr NameList short_weekdays = {offsetof(LocaleRecord, short_weekdays), 7};
constexpr NameList full_quarters = {offsetof(LocaleRecord, full_quarters), 4};
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
bool afternoon_adds_12(Parts& parts) {
  if (parts.designator == after_noon_designator) parts.hour += 12;
  return parts.hour <= 23;
}
template <std::int32_t numbering>
bool number_week(Parts& parts) {
  parts.week += numbering;
  return true;
}

constexpr InputDirective number(char16_t letter, Reader reader, NumberField field, PartsField kept,
                                Adjustment* adjust = nullptr) {
  const bool pair = reader == Reader::free && field.width == 2;
  return {letter, pair ? Reader::one_or_two_digits : reader, field, field, kept, adjust, {}};
}
constexpr InputDirective name(char16_t letter, NameList first, NameList second, PartsField kept,
                              Adjustment* adjust = nullptr) {
  return {letter, Reader::name, {}, {}, kept, adjust, {first, second}};
}
constexpr InputDirective zone(char16_t letter, Reader reader) {
  return {letter, reader, {}, {}, nullptr, nullptr, {}};
}

constexpr InputDirective strict_rows[] = {
    number(u'Y', Reader::year, year_field, &Parts::year),
    number(u'y', Reader::year, year_field, &Parts::year),
    number(u'm', Reader::padded, month_field, &Parts::month),
    number(u'O', Reader::free, month_field, &Parts::month),
    number(u'o', Reader::free, month_field, &Parts::month),
    number(u'd', Reader::padded, day_field, &Parts::day),
    number(u'E', Reader::free, day_field, &Parts::day),
    number(u'e', Reader::free, day_field, &Parts::day),
    name(u'B', full_months, no_list, &Parts::month),
    name(u'C', full_months, no_list, &Parts::month),
    name(u'b', short_months, no_list, &Parts::month),
    name(u'A', full_weekdays, no_list, nullptr),
    name(u'F', full_weekdays, no_list, nullptr),
    name(u'a', full_weekdays, no_list, nullptr),
    number(u'u', Reader::fixed, weekday_from_1, nullptr),
    number(u'w', Reader::fixed, weekday_from_0, nullptr),
    number(u'H', Reader::hour, hour_field, &Parts::hour),
    number(u'I', Reader::padded, {2, 1, 12}, &Parts::hour, hour_12_is_0),
    {u'k', Reader::padded, hour_field, hour_24_field, &Parts::hour, hour_24_is_0, {}},
    number(u'l', Reader::padded, {2, 0, 11}, &Parts::hour),
    number(u'M', Reader::padded, sixty_field, &Parts::minute),
    number(u'S', Reader::padded, sixty_field, &Parts::second),
    number(u's', Reader::padded, millisecond_field, &Parts::millisecond),
    name(u'p', designators, no_list, &Parts::designator, afternoon_adds_12),
    zone(u'Z', Reader::zone_name),
    zone(u'z', Reader::zone_offset),
};

constexpr InputDirective lenient_rows[] = {
    number(u'Y', Reader::year, year_field, &Parts::year),
    number(u'y', Reader::year, year_field, &Parts::year),
    number(u'G', Reader::year, year_field, &Parts::year),
    number(u'm', Reader::free, month_field, &Parts::month),
    number(u'O', Reader::free, month_field, &Parts::month),
    number(u'o', Reader::free, month_field, &Parts::month),
    number(u'd', Reader::free, day_field, &Parts::day),
    number(u'E', Reader::free, day_field, &Parts::day),
    number(u'e', Reader::free, day_field, &Parts::day),
    name(u'B', full_months, short_months, &Parts::month),
    name(u'C', full_months, short_months, &Parts::month),
    name(u'b', full_months, short_months, &Parts::month),
    name(u'A', full_weekdays, short_weekdays, nullptr),
    name(u'F', full_weekdays, short_weekdays, nullptr),
    name(u'a', full_weekdays, short_weekdays, nullptr),
    name(u'f', full_weekdays, short_weekdays, nullptr),
    name(u'Q', full_quarters, short_quarters, &Parts::quarter),
    name(u'q', full_quarters, short_quarters, &Parts::quarter),
    number(u'U', Reader::free, week_field, &Parts::week, number_week<100>),
    number(u'V', Reader::free, week_field, &Parts::week, number_week<200>),
    number(u'W', Reader::free, week_field, &Parts::week, number_week<300>),
    number(u'H', Reader::hour, hour_field, &Parts::hour),
    number(u'I', Reader::free, hour_field, &Parts::hour),
    number(u'k', Reader::free, hour_24_field, &Parts::hour, hour_24_is_0),
    number(u'l', Reader::free, hour_24_field, &Parts::hour, hour_0_is_12),
    number(u'M', Reader::free, sixty_field, &Parts::minute),
    number(u'S', Reader::free, sixty_field, &Parts::second),
    number(u's', Reader::free, millisecond_field, &Parts::millisecond),
    number(u'u', Reader::free, weekday_from_1, nullptr),
    number(u'w', Reader::free, weekday_from_0, nullptr),
    name(u'p', designators, no_list, &Parts::designator),
    zone(u'Z', Reader::zone_name),
    zone(u'z', Reader::zone_offset),
};

template <std::size_t count>
constexpr DirectiveTable by_letter(const InputDirective (&rows)[count]) {
  DirectiveTable table{};
  for (const InputDirective& row : rows) {
    table[static_cast<std::size_t>(row.letter - first_directive_letter)] = row;
  }
  return table;
}

static_assert(offsetof(LocaleRecord, after_noon) ==
                  offsetof(LocaleRecord, before_noon) + sizeof(TextEntry),
              "the designators are a list of two");

}  // namespace

constinit const DirectiveTable strict_directives = by_letter(strict_rows);
constinit const DirectiveTable lenient_directives = by_letter(lenient_rows);

}  // namespace jwnls
