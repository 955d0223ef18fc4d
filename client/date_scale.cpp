#include "client/date_scale.h"

#include <cmath>
#include <cstdint>

namespace jwnls::client {
namespace {

using std::chrono::days;
using std::chrono::local_days;
using std::chrono::year;
using std::chrono::year_month_day;

constexpr auto epoch = local_days{year{1960} / 1 / 1};
constexpr auto first_day = local_days{year{1582} / 1 / 1};
constexpr auto last_day = local_days{year{20000} / 12 / 31};

// The leap days that std::chrono counts and this calendar does not have.
constexpr local_days absent_days[] = {
    local_days{year{4000} / 2 / 29}, local_days{year{8000} / 2 / 29},
    local_days{year{12000} / 2 / 29}, local_days{year{16000} / 2 / 29},
    local_days{year{20000} / 2 / 29}};

}  // namespace

std::optional<DateValue> date_value(year_month_day date) noexcept {
  if (!date.ok()) return std::nullopt;
  const auto day = local_days{date};
  if (day < first_day || day > last_day) return std::nullopt;
  auto value = day - epoch;
  for (const auto absent : absent_days) {
    if (day == absent) return std::nullopt;
    if (day > absent) value -= days{1};
  }
  return DateValue{static_cast<double>(value.count())};
}

std::optional<year_month_day> civil_date(DateValue value) noexcept {
  const bool in_range =
      value.days >= first_date_value.days && value.days < end_date_value.days;  // false for a NaN
  if (!in_range) return std::nullopt;
  auto day = epoch + days{static_cast<std::int32_t>(std::floor(value.days))};
  for (const auto absent : absent_days) {  // in order: each one passed moves the rest by a day
    if (day >= absent) day += days{1};
  }
  return year_month_day{day};
}

std::optional<DatetimeValue> datetime_value(std::chrono::local_seconds time) noexcept {
  // Bounded before the split, so that no day count outgrows std::chrono's calendar types.
  if (time < first_day || time >= last_day + days{1}) return std::nullopt;
  const auto day = std::chrono::floor<days>(time);
  const auto date = date_value(year_month_day{day});
  if (!date) return std::nullopt;
  return DatetimeValue{date->days * 86'400 + static_cast<double>((time - day).count())};
}

std::optional<std::chrono::local_seconds> civil_time(DatetimeValue value) noexcept {
  const bool in_range =
      value.seconds >= first_datetime_value.seconds && value.seconds < end_datetime_value.seconds;
  if (!in_range) return std::nullopt;
  const double whole_seconds = std::floor(value.seconds);
  const double whole_days = std::floor(whole_seconds / 86'400);
  const auto date = civil_date(DateValue{whole_days});
  if (!date) return std::nullopt;
  const auto of_day = static_cast<std::int64_t>(whole_seconds - whole_days * 86'400);
  return local_days{*date} + std::chrono::seconds{of_day};
}

}  // namespace jwnls::client
