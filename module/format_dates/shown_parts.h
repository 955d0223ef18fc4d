// What a date, or a datetime, shows of itself: numbers, year and weekday.

#ifndef JWNLS_MODULE_FORMAT_DATES_SHOWN_PARTS_H_
#define JWNLS_MODULE_FORMAT_DATES_SHOWN_PARTS_H_

#include <array>
#include <cstdint>
#include <cstring>

#include "module/calendar/civil.h"
#include "module/calendar/datetime_value.h"
#include "module/format_dates/output_directives.h"

namespace jwnls {

namespace pattern_format {

/// The four ways to show each hour of the day.
inline constexpr auto hour_forms = [] {
  std::array<std::array<std::uint8_t, 4>, 24> forms{};
  for (std::uint8_t h = 0; h < 24; ++h) {
    const auto afternoon = static_cast<std::uint8_t>(h > 12 ? h - 12 : h);
    forms[h][hour_0_to_23] = h;
    forms[h][hour_1_to_12] = h == 0 ? 12 : afternoon;
    forms[h][hour_1_to_24] = h == 0 ? 24 : h;
    forms[h][hour_0_to_12] = afternoon;
  }
  return forms;
}();

}  // namespace pattern_format

/// The parts of one value, made for one call.
class ShownParts {
 public:
  /// A date of the calendar; it has no clock.
  explicit ShownParts(CivilDate date) noexcept { set_date(date); }

  /// A datetime value in range. Its date is split when it is first asked for.
  explicit ShownParts(double datetime) noexcept : has_clock_(true) {
    using namespace pattern_format;
    const auto [datetime_day, seconds] = split_datetime(datetime);
    day_ = datetime_day;
    const auto& hours = hour_forms[seconds / 3600];
    std::memcpy(numbers_, hours.data(), sizeof hours);
    numbers_[minute] = static_cast<std::uint8_t>(seconds % 3600 / 60);
    numbers_[second] = static_cast<std::uint8_t>(seconds % 60);
  }

  bool has_clock() const noexcept { return has_clock_; }

  /// Splits the date now, for a pattern that will show it: asking is then free.
  void split_date() noexcept {
    if (!has_date_) set_date(civil_from_day(day_));
  }

  std::uint32_t number(pattern_format::Number which) noexcept {
    if (which >= pattern_format::first_of_date) split_date();
    return numbers_[which];
  }

  std::uint32_t year() noexcept {
    split_date();
    return static_cast<std::uint32_t>(date_.year);
  }

  /// 0 (Sunday) to 6 (Saturday).
  std::uint32_t weekday() const noexcept {
    return weekday_index(has_clock_ ? static_cast<std::uint32_t>(day_ - march_day_zero)
                                    : days_since_march(date_));
  }

 private:
  void set_date(CivilDate date) noexcept {
    date_ = date;
    numbers_[pattern_format::day] = static_cast<std::uint8_t>(date.day);
    numbers_[pattern_format::month] = static_cast<std::uint8_t>(date.month);
    has_date_ = true;
  }

  std::int32_t day_ = 0;  // of a datetime
  CivilDate date_{};
  std::uint8_t numbers_[pattern_format::number_count] = {};
  bool has_date_ = false;
  bool has_clock_ = false;
};

}  // namespace jwnls

#endif  // JWNLS_MODULE_FORMAT_DATES_SHOWN_PARTS_H_
