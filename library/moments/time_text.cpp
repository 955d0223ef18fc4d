// Times of day.

#include <cstring>

#include "library/dates/date_text.h"
#include "library/dates/day_scale.h"
#include "library/dates/service_call.h"
#include "library/locale_data/date_characters.h"
#include "library/locale_data/number_runs.h"
#include "library/moments/moment_text.h"
#include "library/texts/folding.h"

namespace jwnls::library {
namespace {

constexpr std::uint32_t time_recognition = 0x4;

// A fraction behind the seconds: "14:30:05.25", "14.30.05,25", also in front of a designator.
struct Fraction {
  std::size_t begin;  // of its mark
  std::size_t end;    // equal: there is none
  std::int64_t microseconds;
};

constexpr std::size_t end_of_digits(std::string_view text, std::size_t at) noexcept {
  while (at < text.size() && is_digit(text[at])) ++at;
  return at;
}

Fraction find_fraction(std::string_view text) noexcept {
  for (std::size_t at = 0; at < text.size(); ++at) {
    if (!is_digit(text[at])) continue;
    const std::size_t hour = end_of_digits(text, at);
    if (hour + 6 >= text.size() || (text[hour] != ':' && text[hour] != '.')) break;
    const std::size_t minute = end_of_digits(text, hour + 1);
    if (minute != hour + 3 || minute >= text.size() || text[minute] != text[hour]) break;
    const std::size_t second = end_of_digits(text, minute + 1);
    if (second != minute + 3 || second >= text.size()) break;
    if (text[second] != ',' && (text[second] != '.' || text[hour] == '.')) break;
    const std::size_t end = end_of_digits(text, second + 1);
    std::int64_t microseconds = 0;
    for (std::size_t i = 0; i < 6; ++i) {
      const std::size_t digit = second + 1 + i;
      microseconds = microseconds * 10 + (digit < end ? text[digit] - '0' : 0);
    }
    return end > second + 1 ? Fraction{second, end, microseconds} : Fraction{0, 0, 0};
  }
  return {0, 0, 0};
}

std::optional<std::int64_t> seconds_of(const Locale& locale, std::string_view text) noexcept {
  const ServiceTable& services = locale.handle->services;
  const auto value =
      read_by_service(locale, services.read_time_8bit, services.read_time, time_recognition, text);
  // The hour 24 would be the midnight of another day.
  if (!value || *value >= seconds_per_day) return std::nullopt;
  return static_cast<std::int64_t>(*value);
}

std::optional<std::int64_t> read_as_it_stands(const TimeLayout& layout,
                                              std::string_view text) noexcept {
  if (text.empty()) return std::nullopt;
  Fraction fraction = {0, 0, 0};
  char without[longest_text];
  std::string_view whole = text;
  NumberRuns numbers(text);
  if (numbers.count > TimeShape::most_numbers) fraction = find_fraction(text);
  if (fraction.end > fraction.begin) {
    const std::size_t rest = text.size() - fraction.end;
    std::memcpy(without, text.data(), fraction.begin);
    if (rest > 0) std::memcpy(without + fraction.begin, text.data() + fraction.end, rest);
    whole = {without, fraction.begin + rest};
    numbers = NumberRuns(whole);
  }
  if (layout.shape.is_hopeless(whole, numbers)) return std::nullopt;
  const auto seconds = seconds_of(*layout.locale, whole);
  if (!seconds) return std::nullopt;
  return *seconds * microseconds_per_second + fraction.microseconds;
}

}  // namespace

std::optional<std::int64_t> read_time_text(const TimeLayout& layout,
                                           std::string_view text) noexcept {
  if (text.empty()) return std::nullopt;
  const QuickTime quick = layout.at_end(text);
  if (quick.look != QuickTime::Look::none && quick.begin == 0) {
    if (quick.look == QuickTime::Look::no_such_time) return std::nullopt;
    return quick.seconds * microseconds_per_second;
  }
  if (layout.shape.is_wrong_end(text.back())) return std::nullopt;
  if (const auto value = read_as_it_stands(layout, text)) return value;
  // Digits and blanks that people write and the service does not know.
  char folded[longest_text];
  const auto size = fold_digits(text, folded, sizeof folded);
  return size ? read_as_it_stands(layout, trimmed({folded, *size})) : std::nullopt;
}

}  // namespace jwnls::library
