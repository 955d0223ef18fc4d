#include "library/zones/posix_zone.h"

#include <algorithm>
#include <chrono>
#include <optional>
#include <utility>

#include "include/jwnls/jwnls.h"

namespace jwnls::library {
namespace {

constexpr std::int64_t day_seconds = 86'400;
// The Gregorian calendar repeats itself after so many, weekdays too.
constexpr std::int64_t cycle_seconds = 146'097 * day_seconds;

// When a change comes, every year.
struct Change {
  enum Kind : std::uint8_t { day_of_year, day_without_leap_day, weekday_of_month };
  Kind kind = day_of_year;
  int day = 0;  // of the first two kinds
  int month = 1;
  int week = 1;
  int weekday = 0;
  std::int32_t time = 2 * 3600;  // seconds from the day's midnight

  // Seconds from 1970 on the clock that shows the time before the change.
  [[nodiscard]] std::int64_t clock(int year) const {
    using namespace std::chrono;
    sys_days found = std::chrono::year(year) / January / 1;
    if (kind == weekday_of_month) {
      const year_month in_month = std::chrono::year(year) / month;
      const auto day_name = std::chrono::weekday(static_cast<unsigned>(weekday));
      found = week == 5 ? sys_days(in_month / day_name[last])
                        : sys_days(in_month / day_name[static_cast<unsigned>(week)]);
    } else {
      constexpr int first_of_march = 60;  // of days that count from 1 and pass over 29 February
      found += days(kind == day_of_year                                          ? day
                    : day >= first_of_march && std::chrono::year(year).is_leap() ? day
                                                                                 : day - 1);
    }
    return found.time_since_epoch().count() * day_seconds + time;
  }
};

struct Clocks {
  std::string abbreviation;
  std::int32_t offset = 0;  // east of UTC
};

struct Rule {
  Clocks standard;
  Clocks summer;
  bool has_summer = false;
  Change begin;
  Change end;
};

class RuleReader {
 public:
  explicit RuleReader(std::string_view text) : text_(text) {}

  std::optional<Rule> read() {
    Rule rule;
    std::int32_t west = 0;
    if (!name(rule.standard.abbreviation) || !time(24, west)) return std::nullopt;
    rule.standard.offset = -west;
    if (text_.empty()) return rule;
    rule.has_summer = true;
    if (!name(rule.summer.abbreviation)) return std::nullopt;
    west -= 3600;
    if (!text_.starts_with(',') && !time(24, west)) return std::nullopt;
    rule.summer.offset = -west;
    if (!change(rule.begin) || !change(rule.end) || !text_.empty()) return std::nullopt;
    return rule;
  }

 private:
  static bool is_letter(char c) { return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z'); }
  static bool is_digit(char c) { return c >= '0' && c <= '9'; }
  static bool is_quotable(char c) { return is_letter(c) || is_digit(c) || c == '+' || c == '-'; }

  bool take(char c) {
    if (!text_.starts_with(c)) return false;
    text_.remove_prefix(1);
    return true;
  }

  bool name(std::string& out) {
    const bool is_quoted = take('<');
    const auto* const end =
        std::find_if_not(text_.begin(), text_.end(), is_quoted ? is_quotable : is_letter);
    out.assign(text_.begin(), end);
    text_.remove_prefix(out.size());
    return out.size() >= 3 && (!is_quoted || take('>'));
  }

  // Up to three digits that are at most `most`.
  bool number(int most, int& out) {
    std::size_t digits = 0;
    out = 0;
    for (; digits < 3 && !text_.empty() && is_digit(text_[0]); ++digits) {
      out = out * 10 + (text_[0] - '0');
      text_.remove_prefix(1);
    }
    return digits > 0 && out <= most;
  }

  bool time(int most_hours, std::int32_t& seconds) {
    const bool is_negative = take('-');
    if (!is_negative) take('+');
    int hours = 0;
    int minutes = 0;
    int rest = 0;
    if (!number(most_hours, hours)) return false;
    if (take(':') && (!number(59, minutes) || (take(':') && !number(59, rest)))) return false;
    seconds = (hours * 60 + minutes) * 60 + rest;
    if (is_negative) seconds = -seconds;
    return true;
  }

  bool change(Change& out) {
    if (!take(',')) return false;
    bool is_read = false;
    if (take('M')) {
      out.kind = Change::weekday_of_month;
      is_read = number(12, out.month) && out.month > 0 && take('.') && number(5, out.week) &&
                out.week > 0 && take('.') && number(6, out.weekday);
    } else if (take('J')) {
      out.kind = Change::day_without_leap_day;
      is_read = number(365, out.day) && out.day > 0;
    } else {
      is_read = number(365, out.day);
    }
    return is_read && (!take('/') || time(167, out.time));
  }

  std::string_view text_;
};

class PosixZone final : public Zone {
 public:
  PosixZone(std::string name, Rule rule) : Zone(std::move(name)), rule_(std::move(rule)) {}

  [[nodiscard]] std::int32_t offset_at(std::int64_t moment) const noexcept override {
    return clocks_at(moment).offset;
  }
  [[nodiscard]] std::string_view abbreviation_at(std::int64_t moment) const noexcept override {
    return clocks_at(moment).abbreviation;
  }

  [[nodiscard]] Moments moments_of(std::int64_t clock) const noexcept override {
    constexpr std::int64_t farthest = INT64_MAX - 8 * day_seconds;
    clock = std::clamp(clock, -farthest, farthest);
    const std::int64_t by_standard = clock - rule_.standard.offset;
    if (!rule_.has_summer) return {1, by_standard, 0};
    const std::int64_t by_summer = clock - rule_.summer.offset;
    const bool in_standard = !is_summer(by_standard);
    const bool in_summer = is_summer(by_summer);
    if (in_standard && in_summer && by_standard != by_summer) {
      return {2, std::min(by_standard, by_summer), std::max(by_standard, by_summer)};
    }
    if (in_standard) return {1, by_standard, 0};
    if (in_summer) return {1, by_summer, 0};
    // A gap: by the clocks before it, then by those behind it.
    return {0, std::max(by_standard, by_summer), std::min(by_standard, by_summer)};
  }

 private:
  [[nodiscard]] const Clocks& clocks_at(std::int64_t moment) const noexcept {
    return is_summer(moment) ? rule_.summer : rule_.standard;
  }

  // The latest change decides. Those of the years around are looked at, too: a time of a change can
  // be a week away from its day. Where an end and the next beginning fall together, summer goes on.
  [[nodiscard]] bool is_summer(std::int64_t moment) const noexcept {
    if (!rule_.has_summer) return false;
    std::int64_t in_cycle = moment % cycle_seconds;
    if (in_cycle < 0) in_cycle += cycle_seconds;
    const auto date = std::chrono::floor<std::chrono::days>(
        std::chrono::sys_seconds(std::chrono::seconds(in_cycle)));
    const int year = static_cast<int>(std::chrono::year_month_day(date).year());
    std::int64_t latest = INT64_MIN;
    bool summer = false;
    for (int each = year - 1; each <= year + 1; ++each) {
      const std::int64_t begin = rule_.begin.clock(each) - rule_.standard.offset;
      const std::int64_t end = rule_.end.clock(each) - rule_.summer.offset;
      if (end <= in_cycle && end > latest) {
        latest = end;
        summer = false;
      }
      if (begin <= in_cycle && begin >= latest) {
        latest = begin;
        summer = true;
      }
    }
    return summer;
  }

  const Rule rule_;
};

}  // namespace

std::shared_ptr<const Zone> posix_zone(std::string_view rule) {
  constexpr std::size_t longest = sizeof(jwnls_zone_state::name) - 1;
  if (rule.size() > longest) return nullptr;
  std::optional<Rule> read = RuleReader(rule).read();
  if (!read) return nullptr;
  std::string name(rule);
  const bool is_utc = rule.starts_with('U') && read->standard.abbreviation == "UTC";
  if (is_utc) name = "<UTC>" + name.substr(3);
  if (name.size() > longest) return nullptr;
  return std::make_shared<PosixZone>(std::move(name), *std::move(read));
}

std::shared_ptr<const Zone> fixed_zone(std::string name, std::string abbreviation,
                                       std::int32_t offset) {
  return std::make_shared<PosixZone>(std::move(name),
                                     Rule{{std::move(abbreviation), offset}, {}, false, {}, {}});
}

}  // namespace jwnls::library
