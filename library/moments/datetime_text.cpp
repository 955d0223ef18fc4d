// Datetimes and instants: a date, a joint and a time of day, maybe with an offset from UTC.

#include <algorithm>
#include <cstdint>
#include <optional>

#include "include/jwnls/jwnls.h"
#include "library/dates/date_text.h"
#include "library/dates/day_scale.h"
#include "library/dates/plain_date.h"
#include "library/moments/date_tries.h"
#include "library/moments/moment_shape.h"
#include "library/moments/moment_text.h"
#include "library/moments/utc_offset.h"
#include "library/texts/folding.h"
#include "library/texts/utf8.h"

namespace jwnls::library {
namespace {

// What a clock on the wall shows, and how far it is from UTC if the text says so.
struct Clock {
  DateRead date;
  std::int64_t microseconds = 0;  // from 1970
  bool has_offset = false;
  std::int32_t offset_seconds = 0;  // east of UTC
};

// A date without what joins it to its time: blanks, commas, "T" behind a digit, joining words.
std::string_view without_joint(const DateLayout& layout, std::string_view text) noexcept {
  constexpr int most_cuts = 6;  // of commas and words: nobody writes more
  for (int cuts = 0;; ++cuts) {
    text = trimmed(text);
    if (cuts == most_cuts) return text;
    if (text.empty()) return text;
    if (text.back() == ',') {
      text.remove_suffix(1);
      continue;
    }
    const auto joint =
        std::find_if(layout.joints.begin(), layout.joints.end(), [text](const Joint& each) {
          return !each.mark.empty() && text.size() > each.mark.size() && ends_in(text, each.mark);
        });
    if (joint != layout.joints.end()) {
      text.remove_suffix(joint->mark.size());
      continue;
    }
    const bool is_t = (text.back() == 'T' || text.back() == 't') && text.size() > 1 &&
                      is_digit(text[text.size() - 2]);
    if (is_t) return text.substr(0, text.size() - 1);
    if (!is_letter(text.back()) && text.back() != '\'') return text;  // no word ends so
    char folded[40];
    bool cut = false;
    for (const std::string& word : layout.joining_words) {
      // The word as it is written may take more bytes than its folded form.
      for (std::size_t size = word.size(); size <= 2 * word.size() && size < text.size(); ++size) {
        const std::string_view end = text.substr(text.size() - size);
        const auto bytes = fold_text(end, folded, sizeof folded);
        if (bytes && std::string_view(folded, *bytes) == word &&
            !is_letter(text[text.size() - size - 1])) {
          text.remove_suffix(size);
          cut = true;
          break;
        }
      }
    }
    if (!cut) return text;
  }
}

std::string_view without_leading_joint(const DateLayout& layout, std::string_view text) noexcept {
  text = trimmed(text);
  while (!text.empty() && text.front() == ',') text = trimmed(text.substr(1));
  for (const Joint& joint : layout.joints) {
    if (joint.time_first && !joint.mark.empty() &&
        text.substr(0, joint.mark.size()) == joint.mark) {
      return trimmed(text.substr(joint.mark.size()));
    }
  }
  return text;
}

std::int64_t moment_of(const CivilDate& date, std::int64_t time) noexcept {
  const std::int64_t days = since_1970(day_from_civil(date));
  return days * seconds_per_day * microseconds_per_second + time;
}

bool refuse(Clock& clock, Refusal refusal, std::size_t place) noexcept {
  clock.date.refusal = refusal;
  clock.date.place = place;
  return false;
}

bool put_together(const DateRead& date, std::int64_t time, Clock& clock) noexcept {
  clock.date = date;
  clock.microseconds = moment_of(date.date, time);
  return true;
}

// Reads `text` with its date before `at` and its time from there on, or the other way round. The
// refusal that goes farthest is kept.
bool read_at(const jwnls_layout& layout, std::string_view text, std::size_t at, DateTries& tries,
             Clock& clock) noexcept {
  const DateLayout& dates = *layout.dates;
  if (!dates.time_first || text.find(':') > at) {
    const bool is_first = clock.date.refusal == Refusal::no_time;
    const bool is_hopeless = tries.is_hopeless_before(at);
    if (is_hopeless && !is_first) return false;
    const std::string_view front = without_joint(dates, text.substr(0, at));
    DateRead date;
    date.refusal = Refusal::no_date;
    if (!is_hopeless) date = tries.read(dates, front);
    if (date.refusal == Refusal::none) {
      if (const auto time = read_time_text(*layout.times, trimmed(text.substr(at)))) {
        return put_together(date, *time, clock);
      }
      return refuse(clock, Refusal::no_such_time, at);
    }
    if (is_first) {
      clock.date = tries.placed(dates, front, date);
      if (clock.date.refusal == Refusal::blank) clock.date.refusal = Refusal::no_date;
    }
    return false;
  }
  const DateRead date = tries.read(dates, without_leading_joint(dates, text.substr(at)));
  if (date.refusal != Refusal::none) return false;
  const auto time = read_time_text(*layout.times, trimmed(text.substr(0, at)));
  return time && put_together(date, *time, clock);
}

// Where the time of a text with a ":" begins, if it is not in front of the date: at its hour, or at
// a word before it that says which half of the day it is.
bool read_before_colon(const jwnls_layout& layout, std::string_view text, std::size_t colon,
                       DateTries& tries, Clock& clock) noexcept {
  std::size_t at = colon;
  while (at > 0 && is_digit(text[at - 1])) --at;
  if (at == colon) return false;  // it stands before the time, as in Nepali
  const std::string_view front = trimmed(text.substr(0, at));
  for (const std::string& half : layout.dates->day_halves) {
    if (!half.empty() && front.size() > half.size() &&
        front.substr(front.size() - half.size()) == half) {
      at = static_cast<std::size_t>(front.data() - text.data()) + front.size() - half.size();
    }
  }
  constexpr int most_places = 8;
  for (int places = 0; places < most_places; ++places) {
    if (at == 0) return false;
    if (read_at(layout, text, at, tries, clock)) return true;
    // Behind a date there is no other place for the time.
    if (is_digit(text[at - 1]) || clock.date.refusal == Refusal::no_such_time) return false;
    do {
      --at;
    } while (at > 0 && !is_digit(text[at - 1]) &&
             (is_blank(text[at]) || text[at] == ',' || !is_blank(text[at - 1])));
  }
  return false;
}

// At every blank: the one place where both parts read. Two places with two values are refused.
bool read_at_blanks(const jwnls_layout& layout, std::string_view text, DateTries& tries,
                    Clock& clock) noexcept {
  constexpr int most_places = 12;
  int places = 0;
  bool found = false;
  for (std::size_t at = 1; at < text.size() && places < most_places; ++at) {
    if (!is_blank(text[at - 1]) || is_blank(text[at])) continue;
    ++places;
    Clock here;
    here.date.refusal = clock.date.refusal;
    if (!read_at(layout, text, at, tries, here)) {
      if (!found && here.date.refusal == Refusal::no_such_time) clock.date = here.date;
      continue;
    }
    if (found && here.microseconds != clock.microseconds) {
      return refuse(clock, Refusal::two_places, at);  // unreachable: no half of a day in dates
    }
    clock = here;
    found = true;
  }
  return found;
}

// What is known of a text after a quick look.
enum class Look : std::uint8_t { read, refused, unknown };

Look look_at_date(const jwnls_layout& layout, std::string_view text, std::int64_t seconds,
                  Clock& clock) noexcept {
  DateRead& date = clock.date;
  if (!read_plain_date(*layout.dates, text, date)) date = quick_date(*layout.dates, text);
  switch (date.refusal) {
    case Refusal::none:
      clock.microseconds = moment_of(date.date, seconds * microseconds_per_second);
      return Look::read;
    case Refusal::no_such_date:
    case Refusal::years:
    case Refusal::weekday:
    case Refusal::year_last:
    case Refusal::short_year:
      return Look::refused;
    default:
      date = {};
      return Look::unknown;
  }
}

// A time in front of its date, as some styles have it.
Look look_for_leading_time(const jwnls_layout& layout, std::string_view text,
                           Clock& clock) noexcept {
  const std::string_view between = layout.dates->joint.between;
  const std::size_t size = text[5] == ':' ? 8 : 5;
  const QuickTime time = layout.times->at_end(text.substr(0, size));
  const std::string_view date = text.substr(size);
  if (time.look != QuickTime::Look::read || time.begin != 0 || !date.starts_with(between)) {
    return Look::unknown;
  }
  return look_at_date(layout, date.substr(between.size()), time.seconds, clock);
}

// The date in front of a time, without what the locale joins them by, a blank or a "T"; empty where
// there is none of these.
std::string_view date_before_joint(const DateLayout& layout, std::string_view text) noexcept {
  for (const std::string& joint : layout.quick_joints) {
    if (text.size() > joint.size() && ends_in(text, joint)) {
      return text.substr(0, text.size() - joint.size());
    }
  }
  const bool is_t = text.size() > 1 && text.back() == 'T' && is_digit(text[text.size() - 2]);
  return is_t ? text.substr(0, text.size() - 1) : std::string_view();
}

// The commonest of all: a date, a joint, and a time as every locale or this one writes it.
Look look_for_plain_time(const jwnls_layout& layout, std::string_view text, Clock& clock) noexcept {
  if (text.size() < 12) return Look::unknown;
  if (layout.dates->joint.time_first) return look_for_leading_time(layout, text, clock);
  const QuickTime time = layout.times->at_end(text);
  if (time.look == QuickTime::Look::none) return Look::unknown;
  const std::string_view date = date_before_joint(*layout.dates, text.substr(0, time.begin));
  if (date.empty()) return Look::unknown;
  const Look look = look_at_date(layout, date, time.seconds, clock);
  if (look == Look::read && time.look == QuickTime::Look::no_such_time) {  // "14:65"
    clock.date.refusal = Refusal::no_such_time;
    clock.date.place = time.begin;
  }
  return look;
}

// At the joint that the locale writes.
bool read_at_joint(const jwnls_layout& layout, std::string_view text, Clock& clock) noexcept {
  const DateLayout& dates = *layout.dates;
  const std::string& between = dates.joint.between;
  if (dates.joint.mark.empty() || dates.joint.time_first) return false;
  if (text.size() <= between.size()) return false;
  std::size_t at = text.size() - between.size();
  while (at > 0 && (text[at] != between.front() || text.substr(at, between.size()) != between)) {
    --at;
  }
  if (at == 0) return false;
  const DateRead date = quick_date(dates, text.substr(0, at));
  if (date.refusal != Refusal::none) return false;
  const auto time = read_time_text(*layout.times, text.substr(at + between.size()));
  return time && put_together(date, *time, clock);
}

// Without what some style writes before and behind it all: "lúc", "बजे".
std::string_view without_ends(const DateLayout& layout, std::string_view text) noexcept {
  for (const Joint& joint : layout.joints) {
    const std::string_view before = trimmed(joint.before);
    const std::string_view behind = trimmed(joint.behind);
    if (!before.empty() && text.substr(0, before.size()) == before) {
      text = trimmed(text.substr(before.size()));
    }
    if (!behind.empty() && text.size() > behind.size() &&
        text.substr(text.size() - behind.size()) == behind) {
      text = trimmed(text.substr(0, text.size() - behind.size()));
    }
  }
  return text;
}

// Wherever the date and the time of a text may part.
[[gnu::noinline]] Clock search_clock(const jwnls_layout& layout, std::string_view text,
                                     DateTries& tries) noexcept {
  Clock clock;
  clock.date.refusal = Refusal::no_time;
  const NumberRuns numbers(text);
  const bool is_known = tries.begin(*layout.dates, text, numbers);
  if (is_known && !tries.with_place() &&
      is_no_moment(*layout.dates, *layout.times, text, numbers)) {
    return clock;
  }
  const std::size_t colon = text.find(':');
  const bool read =
      read_at_joint(layout, text, clock) ||
      (colon != text.npos && !layout.dates->time_first &&
       read_before_colon(layout, text, colon, tries, clock)) ||
      (clock.date.refusal != Refusal::no_such_time && read_at_blanks(layout, text, tries, clock)) ||
      (layout.dates->time_first && colon != text.npos &&
       read_before_colon(layout, text, colon, tries, clock));
  if (!read && clock.date.refusal == Refusal::none) clock.date.refusal = Refusal::no_time;
  return clock;
}

Clock read_clock(const jwnls_layout& layout, std::string_view text, DateTries& tries) noexcept {
  Clock clock;
  std::int32_t offset_seconds = 0;
  if (layout.dates->has_ends) text = without_ends(*layout.dates, text);
  const bool has_offset = cut_offset(text, offset_seconds);
  if (!has_offset || look_for_plain_time(layout, text, clock) == Look::unknown) {
    clock = search_clock(layout, text, tries);
  }
  clock.has_offset = has_offset;
  clock.offset_seconds = offset_seconds;
  return clock;
}

Clock read_clock_in_any_digits(const jwnls_layout& layout, std::string_view text,
                               bool with_place) noexcept {
  DateTries tries(with_place);
  Clock clock = read_clock(layout, text, tries);
  if (clock.date.refusal == Refusal::none || tries.folds_nothing()) return clock;
  char folded[longest_text];
  const auto size = fold_digits(text, folded, sizeof folded);
  if (!size) return clock;
  const std::string_view plain = trimmed({folded, *size});
  if (plain == text) return clock;
  if (plain.empty()) {
    Clock blank;
    blank.date.refusal = Refusal::blank;
    return blank;
  }
  if (look_for_plain_time(layout, plain, clock) != Look::unknown) return clock;
  return read_clock(layout, plain, tries);
}

// Whether nothing at the end of a text, where its time would be, can be one, or an offset.
bool has_no_time(const jwnls_layout& layout, std::string_view text) noexcept {
  return !layout.dates->time_first && !layout.dates->has_ends &&
         layout.times->shape.is_wrong_end(text.back());
}

constexpr std::int64_t floored(std::int64_t value, std::int64_t divisor) noexcept {
  return value / divisor - (value % divisor < 0 ? 1 : 0);
}

// The moment at which the zone's clocks show a time.
Refusal to_utc(const jwnls_layout& layout, std::int64_t& microseconds) noexcept {
  if (layout.zone == nullptr) return Refusal::no_offset;
  const std::int64_t seconds = floored(microseconds, microseconds_per_second);
  const std::int64_t fraction = microseconds - seconds * microseconds_per_second;
  const Zone::Moments moments = layout.zone->moments_of(seconds);
  if (moments.count == 0) return Refusal::gap;
  if (moments.count == 2 && layout.options.overlap == overlap_refuse) return Refusal::overlap;
  const bool second = moments.count == 2 && layout.options.overlap == overlap_second;
  microseconds = (second ? moments.second : moments.first) * microseconds_per_second + fraction;
  return Refusal::none;
}

}  // namespace

MomentRead read_moment_text(const jwnls_layout& layout, std::string_view text,
                            bool with_place) noexcept {
  constexpr std::size_t longest_moment = 300;  // more than any has; every blank may cost a try
  MomentRead read;
  if (text.size() > longest_moment) {
    read.date.refusal = is_blank_text(text) ? Refusal::blank : Refusal::too_long;
    return read;
  }
  if (!with_place && has_no_time(layout, text)) {
    read.date.refusal = Refusal::no_time;
    return read;
  }
  const bool is_instant = layout.is(JWNLS_INSTANT);
  Clock clock;
  const bool is_plain = look_for_plain_time(layout, text, clock) != Look::unknown;
  if (!is_plain) {
    const auto is_idle = [](char each) {
      return !is_digit(each) && is_ascii(each) && each != '\0';
    };
    if (!with_place && std::all_of(text.begin(), text.end(), is_idle)) {
      read.date.refusal = Refusal::no_time;
      return read;
    }
    clock = read_clock_in_any_digits(layout, text, with_place);
  }
  read.date = clock.date;
  read.microseconds = clock.microseconds;
  if (read.date.refusal != Refusal::none || (is_plain && !is_instant)) return read;
  if (clock.has_offset) {
    if (!is_instant && layout.zone == nullptr) {
      read.date.refusal = Refusal::offset;
      read.date.place = text.size();
      return read;
    }
    read.microseconds -= clock.offset_seconds * microseconds_per_second;
    if (!is_instant) {
      const std::int64_t moment = floored(read.microseconds, microseconds_per_second);
      read.microseconds += layout.zone->offset_at(moment) * microseconds_per_second;
    }
  } else if (is_instant) {
    read.date.refusal = to_utc(layout, read.microseconds);
    read.date.place = text.size();
  }
  const std::int64_t days = floored(read.microseconds, seconds_per_day * microseconds_per_second);
  if (read.date.refusal == Refusal::none && !calendar_day(days)) {
    read.date.refusal = Refusal::range;
  }
  return read;
}

}  // namespace jwnls::library
