// What the services read by themselves: dates and datetimes of pattern= and loose, and periods.

#include <cmath>
#include <cstring>

#include "include/jwnls/jwnls.h"
#include "library/dates/date_text.h"
#include "library/dates/day_scale.h"
#include "library/dates/service_call.h"
#include "library/moments/moment_text.h"
#include "library/texts/folding.h"

namespace jwnls::library {
namespace {

// A period whose year has two digits, with four: the service's own window is one for the process.
std::string_view with_whole_year(std::string_view text, std::int32_t cutoff, char* out) noexcept {
  std::size_t begin = text.size();
  while (begin > 0 && is_digit(text[begin - 1])) --begin;
  if (text.size() - begin != 2 || begin == 0 || is_letter(text[begin - 1])) return text;
  const std::int32_t short_year = (text[begin] - '0') * 10 + (text[begin + 1] - '0');
  std::int32_t year = cutoff - cutoff % 100 + short_year;
  if (year < cutoff) year += 100;
  std::memcpy(out, text.data(), begin);
  for (std::size_t digit = 4; digit-- > 0; year /= 10) {
    out[begin + digit] = static_cast<char>('0' + year % 10);
  }
  return {out, begin + 4};
}

std::optional<double> value_of(const jwnls_layout& layout, std::string_view text) noexcept {
  const Locale& locale = *layout.locale;
  const ServiceTable& services = locale.handle->services;
  if (layout.is(JWNLS_PERIOD)) {
    char room[longest_text + 2];
    const std::string_view whole = with_whole_year(text, layout.options.year_cutoff, room);
    return read_by_service(locale, services.read_period_8bit, services.read_period, lenient_mode,
                           whole);
  }
  const std::uint32_t mode = static_cast<std::uint32_t>(layout.options.pattern) | lenient_mode |
                             (layout.is(JWNLS_DATE) ? 0 : datetime_mode);
  return read_by_service(locale, services.read_date_8bit, services.read_date, mode, text);
}

}  // namespace

std::optional<std::int64_t> read_loosely(const jwnls_layout& layout,
                                         std::string_view text) noexcept {
  auto value = value_of(layout, text);
  if (!value) {
    char folded[longest_text];
    const auto size = fold_digits(text, folded, sizeof folded);
    if (size) value = value_of(layout, trimmed({folded, *size}));
  }
  if (!value) return std::nullopt;
  if (layout.is(JWNLS_DATE) || layout.is(JWNLS_PERIOD)) {
    return since_1970(static_cast<std::int32_t>(*value));
  }
  const double days = std::floor(*value / seconds_per_day);
  const double seconds = *value - days * seconds_per_day;
  const std::int64_t day = since_1970(static_cast<std::int32_t>(days));
  return (day * seconds_per_day + static_cast<std::int64_t>(seconds)) * microseconds_per_second;
}

}  // namespace jwnls::library
