#include "host/zones/utc_offset.h"

#include <algorithm>
#include <cstddef>

namespace jwnls::host {
namespace {

bool is_digit(char16_t unit) noexcept { return unit >= u'0' && unit <= u'9'; }

int value_of(char16_t digit) noexcept { return digit - u'0'; }

bool begins_with_utc(std::u16string_view name) noexcept {
  const auto is_same = [](char16_t upper, char16_t unit) {
    return unit == upper || unit == upper + 0x20;
  };
  constexpr std::u16string_view utc = u"UTC";
  return std::equal(utc.begin(), utc.end(), name.begin(), name.begin() + utc.size(), is_same);
}

}  // namespace

std::optional<int> parse_utc_offset(std::u16string_view name) noexcept {
  constexpr std::size_t sign_at = 3;
  if (name.size() < sign_at + 2 || !begins_with_utc(name)) return {};
  const char16_t sign = name[sign_at];
  if (sign != u'+' && sign != u'-') return {};
  std::u16string_view rest = name.substr(sign_at + 1);

  int hours = 0;
  std::size_t hour_digits = 0;
  for (; hour_digits < 2 && !rest.empty() && is_digit(rest[0]); ++hour_digits) {
    hours = hours * 10 + value_of(rest[0]);
    rest.remove_prefix(1);
  }
  int minutes = 0;
  if (!rest.empty()) {
    const bool has_colon = rest[0] == u':';
    if (has_colon) rest.remove_prefix(1);
    if (!has_colon && hour_digits != 2) return {};
    if (rest.size() != 2 || !is_digit(rest[0]) || !is_digit(rest[1])) return {};
    minutes = value_of(rest[0]) * 10 + value_of(rest[1]);
  }
  if (hour_digits == 0 || hours > 23 || minutes > 59) return {};
  const int seconds = (hours * 60 + minutes) * 60;
  return sign == u'-' ? -seconds : seconds;
}

}  // namespace jwnls::host
