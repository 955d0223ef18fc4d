// Why a text is no date, time, datetime or period of a layout.

#include <cstring>
#include <string_view>

#include "include/jwnls/jwnls.h"
#include "library/dates/date_text.h"
#include "library/dates/day_scale.h"
#include "library/moments/moment_text.h"
#include "library/moments/reading.h"
#include "library/texts/message.h"

namespace jwnls::library {
namespace {

constexpr const char* weekdays[] = {"Sunday",   "Monday", "Tuesday", "Wednesday",
                                    "Thursday", "Friday", "Saturday"};

// Reasons that are the same whatever the text and the layout; null for the others.
const char* fixed_reason(Refusal refusal) {
  switch (refusal) {
    case Refusal::too_long:
      return "longer than any value";
    case Refusal::not_utf8:
      return "not valid UTF-8";
    case Refusal::too_many:
      return "more than three numbers";
    case Refusal::marks:
      return "the marks between the numbers are not those of a date";
    case Refusal::digits:
      return "a day has one digit or two, a year four or two";
    case Refusal::no_month:
      return "no month";
    case Refusal::two_names:
      return "a name that has no place here";
    case Refusal::two_months:
      return "two months have this name";
    case Refusal::no_year:
      return "no number that can be the year";
    case Refusal::no_such_date:
      return "no such date in the calendar";
    case Refusal::no_time:
      return "no time of day";
    case Refusal::no_such_time:
      return "the time of day is not read";
    case Refusal::offset:
      return "has an offset: say zone=... or read it as an instant";
    case Refusal::no_offset:
      return "has no offset: say zone=...";
    case Refusal::gap:
      return "the clocks of the zone skip this time";
    case Refusal::overlap:
      return "the clocks of the zone show this time twice: say overlap=first or overlap=second";
    case Refusal::two_places:                           // unreachable: as
      return "date and time could part in two places";  // unreachable: read_at_blanks() says
    case Refusal::range:
      return "outside 1582-01-01 to 9999-12-31";
    default:
      return nullptr;
  }
}

void tell_order(const jwnls_layout& layout, Message& message) {
  message << layout.locale->name << " writes the year first: say order=dmy or order=mdy";
}

void tell_date(const jwnls_layout& layout, std::string_view text, const DateRead& read,
               Message& message) {
  const std::size_t place = std::min(read.place, text.size());
  switch (read.refusal) {
    case Refusal::weekday:
      message << "is a " << weekdays[read.told - 1];
      return;
    case Refusal::years:
      message << "the year " << std::int64_t{read.told} << " is outside the calendar";
      if (layout.dates->calendar != nullptr) {
        message << "; is it one of the " << layout.dates->calendar
                << " calendar? only the Gregorian is read";
      }
      return;
    case Refusal::year_last:
      tell_order(layout, message);
      return;
    case Refusal::short_year:
      message << "a year of two digits";
      if (layout.dates->calendar != nullptr) {
        message << " may be one of the " << layout.dates->calendar << " calendar";
      } else {
        message << " is not read here";
      }
      return;
    case Refusal::no_date:
      message << "nothing in it is a date";
      return;
    default:
      if (place == 0) {
        message << "no " << jwnls_kind_name(layout.kind) << " begins so in " << layout.locale->name;
      } else if (place < text.size()) {
        message.quoted(text.substr(0, place)) << " fits, ";
        message.quoted(text.substr(place)) << " does not";
      } else {
        message << "ends too early";
      }
  }
}

// The Ides of March of 2024, at half past two, as the layout writes it: ROOM never happens.
void tell_sample(const jwnls_layout& layout, Message& message) {
  constexpr std::int32_t day = 19797;
  constexpr std::int64_t time = 52205 * microseconds_per_second;
  char text[600];
  std::size_t length = 0;
  int code = JWNLS_KIND;
  if (layout.is(JWNLS_DATE)) {
    code = jwnls_write_date(&layout, day, text, sizeof text, &length);
  } else if (layout.is(JWNLS_TIME)) {
    code = jwnls_write_time(&layout, time, text, sizeof text, &length);
  } else {
    const std::int64_t moment = day * seconds_per_day * microseconds_per_second + time;
    code = jwnls_write_datetime(&layout, moment, text, sizeof text, &length);
  }
  if (layout.is(JWNLS_PERIOD)) {
    message << "; " << layout.locale->name << " writes 'Q1, 2024', 'Mar-2024' or '3/2024'";
  } else if (code == JWNLS_OK) {
    (message << "; " << layout.locale->name << " writes ").quoted({text, length});
  }
}

bool by_services(const jwnls_layout& layout) {
  return layout.dates == nullptr || layout.options.loose != 0 || layout.options.pattern != 0;
}

// What reading gives, with a place where the library reads by itself.
struct Diagnosis {
  int code;
  DateRead read;
};

Diagnosis diagnosis(const jwnls_layout& layout, std::string_view text, std::string_view inner) {
  if (is_missing_text(layout, inner)) return {JWNLS_MISSING, {}};
  if (by_services(layout)) {
    std::int32_t days = 0;
    std::int64_t microseconds = 0;
    const bool is_day = layout.is(JWNLS_DATE) || layout.is(JWNLS_PERIOD);
    const auto read = layout.is(JWNLS_TIME) ? jwnls_read_time : jwnls_read_datetime;
    return {is_day ? jwnls_read_date(&layout, text.data(), text.size(), &days, nullptr)
                   : read(&layout, text.data(), text.size(), &microseconds, nullptr),
            {}};
  }
  if (layout.is(JWNLS_DATE)) {
    const DateRead read = full_date(*layout.dates, inner, true);
    return {code_of(read.refusal), read};
  }
  // A text that ends in no time is refused before its year is found to be none: that is said then.
  const DateRead placed = read_moment_text(layout, inner, true).date;
  const DateRead quick = read_moment_text(layout, inner).date;
  const int code = code_of(quick.refusal);
  return {code, code == code_of(placed.refusal) ? placed : quick};
}

}  // namespace

int explain_date(const jwnls_layout& layout, std::string_view text, jwnls_error* error) noexcept {
  if (text.size() > longest_text) {
    Message message(error, JWNLS_UNREAD);
    message.quoted(text) << ": more than " << std::int64_t{longest_text} << " bytes";
    return JWNLS_UNREAD;
  }
  const std::string_view inner = trimmed(text);
  const auto [code, read] = diagnosis(layout, text, inner);
  Message message(error, code);
  if (code == JWNLS_OK) return code;
  if (code == JWNLS_MISSING) {
    message << "a blank text: no value";
    return code;
  }
  const auto begin = static_cast<std::size_t>(inner.data() - text.data());
  message << jwnls_kind_name(layout.kind) << " ";
  message.quoted(inner) << ": ";
  if (by_services(layout)) {
    message << "not read";
  } else {
    message.at(begin + std::min(read.place, inner.size()));
    if (const char* reason = fixed_reason(read.refusal)) {
      message << reason;
    } else {
      tell_date(layout, inner, read, message);
    }
  }
  tell_sample(layout, message);
  return code;
}

}  // namespace jwnls::library
