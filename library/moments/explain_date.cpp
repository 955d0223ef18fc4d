// Why a text is no date, time, datetime or period of a layout.

#include <cstring>
#include <string_view>

#include "include/jwnls/jwnls.h"
#include "library/dates/date_text.h"
#include "library/dates/day_scale.h"
#include "library/moments/moment_text.h"
#include "library/moments/reading.h"
#include "library/moments/time_reason.h"
#include "library/texts/folding.h"
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
    case Refusal::two_names:
      return "a name that has no place here";
    case Refusal::two_months:
      return "two months have this name";
    case Refusal::no_year:
      return "no number that can be the year";
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

// A text with something in front of it and behind.
class LongerText {
 public:
  LongerText(std::string_view before, std::string_view text, std::string_view behind) noexcept {
    if (before.size() + text.size() + behind.size() > sizeof bytes_) return;
    for (const std::string_view part : {before, text, behind}) {
      size_ += part.copy(bytes_ + size_, part.size());
    }
  }
  [[nodiscard]] std::string_view text() const noexcept { return {bytes_, size_}; }

 private:
  char bytes_[longest_text];
  std::size_t size_ = 0;
};

// Whether it is a date, but perhaps for its weekday.
bool is_date(const DateLayout& layout, std::string_view text) noexcept {
  const Refusal refusal = full_date(layout, text).refusal;
  return refusal == Refusal::none || refusal == Refusal::weekday;
}

// The same of the 31st of February, which has all parts of one.
bool has_all_parts(const DateLayout& layout, std::string_view text) noexcept {
  const Refusal refusal = full_date(layout, text).refusal;
  return refusal == Refusal::none || refusal == Refusal::weekday ||
         refusal == Refusal::no_such_date;
}

// What would make a date of a text of less: "the year is missing". Not of long texts, which would
// take long.
const char* missing_part(const DateLayout& layout, std::string_view text) noexcept {
  struct Part {
    char mark;  // tried of texts that have it; '\0': of all
    const char* before;
    const char* behind;
    const char* reason;
  };
  constexpr const char* no_year = "the year is missing";
  constexpr const char* no_day = "the day is missing";
  constexpr char month = '\xE6';  // 月 begins so
  constexpr char year = '\xE5';   // 年
  // A leap year, and a day of all months.
  constexpr Part parts[] = {
      {'\0', "", " 2024", no_year},   {'\0', "", "2024", no_year}, {'\0', "2024 ", "", no_year},
      {'/', "", "/2024", no_year},    {'/', "2024/", "", no_year}, {'.', "", ".2024", no_year},
      {'.', "2024. ", "", no_year},   {'-', "", "-2024", no_year}, {'-', "2024-", "", no_year},
      {month, "2024年", "", no_year}, {'\0', "1 ", "", no_day},    {'\0', "1. ", "", no_day},
      {'\0', "", " 1", no_day},       {'/', "1/", "", no_day},     {'.', "1.", "", no_day},
      {'-', "1-", "", no_day},        {'-', "", "-1", no_day},     {year, "", "1日", no_day}};
  constexpr std::size_t longest = 48;
  if (text.size() > longest) return nullptr;
  for (const Part& part : parts) {
    if (part.mark != '\0' && text.find(part.mark) == text.npos) continue;
    if (has_all_parts(layout, LongerText(part.before, text, part.behind).text())) {
      return part.reason;
    }
  }
  return nullptr;
}

// The order in which a text of three numbers would be a date: "order=mdy"; null: none.
const char* order_that_fits(const DateLayout& layout, std::string_view text) noexcept {
  char folded[longest_text];
  const auto size = fold_text(text, folded, sizeof folded);
  if (!size || layout.order == order_ymd) return nullptr;
  const Numbers numbers({folded, *size});
  if (numbers.count != 3 || numbers.number[0].digits() > 2) return nullptr;
  // With the first two in each other's place.
  const auto [first, second, third] = numbers.number;
  const std::string_view all(folded, *size);
  const auto digits = [all](const Numbers::Number& number) {
    return all.substr(number.begin, number.digits());
  };
  const LongerText turned(digits(second), all.substr(first.end, second.begin - first.end),
                          digits(first));
  const LongerText whole(all.substr(0, first.begin), turned.text(), all.substr(second.end));
  if (!is_date(layout, whole.text())) return nullptr;
  return layout.order == order_dmy ? "order=mdy" : "order=dmy";
}

void tell_no_such_date(const jwnls_layout& layout, std::string_view text, Message& message) {
  message << "no such date in the calendar";
  if (const char* order = order_that_fits(*layout.dates, text)) {
    message << "; " << order << " reads one";
  }
}

void tell_order(const jwnls_layout& layout, Message& message) {
  message << layout.locale->name << " writes the year first: say order=dmy or order=mdy";
}

// Of a text that begins at a place.
void tell_date(const jwnls_layout& layout, std::string_view text, const DateRead& read,
               std::size_t begin, Message& message) {
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
    case Refusal::no_such_date:
      tell_no_such_date(layout, text, message);
      return;
    case Refusal::no_date:
    case Refusal::no_month:
      if (const char* reason = missing_part(*layout.dates, text)) {
        message.at(begin + text.size()) << reason;
      } else {
        message << (read.refusal == Refusal::no_month ? "no month" : "nothing in it is a date");
      }
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
      if (read.refusal == Refusal::unknown_word && layout.dates->calendar != nullptr) {
        message << "; dates of the " << layout.dates->calendar << " calendar are not read";
      }
  }
}

// Where the time of a text begins behind its date; its size where there is no date, or it would
// take long to find.
std::size_t time_behind_date(const jwnls_layout& layout, std::string_view text) noexcept {
  constexpr std::size_t longest_date = 64;
  if (layout.dates->time_first || layout.dates->names->has_numbered()) return text.size();
  int tries = 6;
  for (std::size_t at = std::min(text.size(), longest_date); at > 0 && tries > 0; --at) {
    const bool is_end = at == text.size();
    const bool begins_word = !is_end && is_blank(text[at - 1]) && !is_blank(text[at]);
    const bool begins_number = !is_end && is_digit(text[at]) && is_letter(text[at - 1]);
    if (!begins_word && !begins_number && !(is_end && !is_digit(text[at - 1]))) continue;
    --tries;
    switch (
        read_moment_text(layout, LongerText("", text.substr(0, at), "00:00").text()).date.refusal) {
      case Refusal::none:
      case Refusal::no_offset:
      case Refusal::gap:
      case Refusal::overlap:
      case Refusal::range:
        return at;
      default:
        break;
    }
  }
  return text.size();
}

// The time in front of which a text's date would be; its size where there is none.
std::size_t time_at_end(const jwnls_layout& layout, std::string_view text) noexcept {
  constexpr std::size_t longest_time = 64;
  int tries = 6;
  for (std::size_t at = text.size() - std::min(text.size() - 1, longest_time);
       at < text.size() && tries > 0; ++at) {
    if (!is_blank(text[at - 1])) continue;
    if (is_time(*layout.times, text.substr(at))) return at;
    --tries;
  }
  return text.size();
}

// Of datetimes and instants: what is wrong with one of both parts. False where neither tells.
bool tell_part(const jwnls_layout& layout, std::string_view text, const DateRead& read,
               std::size_t begin, Message& message) {
  switch (read.refusal) {
    case Refusal::no_time:
    case Refusal::no_such_time: {
      if (is_time(*layout.times, text)) {
        message.at(begin) << "no date, but a time of day";
        return true;
      }
      if (is_date(*layout.dates, text)) {
        message.at(begin + text.size()) << "no time of day";
        return true;
      }
      const std::size_t at = time_behind_date(layout, text);
      if (at == text.size()) return false;
      const std::string_view time = trimmed(text.substr(at));
      const auto time_begin = begin + static_cast<std::size_t>(time.data() - text.data());
      message.at(time_begin + tell_time(*layout.times, time, message));
      return true;
    }
    case Refusal::no_date:
    case Refusal::no_month:
    case Refusal::no_such_date: {
      std::string_view front = trimmed(text.substr(0, time_at_end(layout, text)));
      while (!front.empty() && front.back() == ',')
        front = trimmed(front.substr(0, front.size() - 1));
      if (read.refusal == Refusal::no_such_date) {
        tell_no_such_date(layout, front, message);
        message.at(begin + std::min(read.place, text.size()));
        return true;
      }
      const char* const reason = missing_part(*layout.dates, front);
      if (reason == nullptr) return false;
      message.at(begin + front.size()) << reason;
      return true;
    }
    default:
      return false;
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
  // The code is that of reading, which may see a date of three numbers in what is a name and two
  // numbers to the grammar, and refuses a text that ends in no time before its year is found to be
  // none.
  const bool is_date = layout.is(JWNLS_DATE);
  const DateRead placed =
      is_date ? full_date(*layout.dates, inner, true) : read_moment_text(layout, inner, true).date;
  const DateRead quick =
      is_date ? read_date_text(*layout.dates, inner) : read_moment_text(layout, inner).date;
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
  if (layout.is(JWNLS_TIME)) {
    message.at(begin + tell_time(*layout.times, inner, message));
  } else if (by_services(layout)) {
    message << "not read";
  } else if (layout.is(JWNLS_DATE) || !tell_part(layout, inner, read, begin, message)) {
    message.at(begin + std::min(read.place, inner.size()));
    if (const char* reason = fixed_reason(read.refusal)) {
      message << reason;
    } else {
      tell_date(layout, inner, read, begin, message);
    }
  }
  tell_sample(layout, message);
  return code;
}

}  // namespace jwnls::library
