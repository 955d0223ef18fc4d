#include "tool/iso_writer.h"

#include <array>
#include <charconv>
#include <chrono>
#include <cstring>

namespace jwnls::tool {
namespace {

// "00" to "99", one behind the other.
constexpr auto digit_pairs = [] {
  std::array<char, 200> pairs = {};
  for (unsigned i = 0; i < 100; ++i) {
    pairs[2 * i] = static_cast<char>('0' + i / 10);
    pairs[2 * i + 1] = static_cast<char>('0' + i % 10);
  }
  return pairs;
}();

char* write_pair(char* out, unsigned value) {
  std::memcpy(out, &digit_pairs[std::size_t{2} * value], 2);
  return out + 2;
}

char* write_year(char* out, int year) {
  if (year >= 0 && year <= 9999) {
    out = write_pair(out, static_cast<unsigned>(year) / 100);
    return write_pair(out, static_cast<unsigned>(year) % 100);
  }
  constexpr std::size_t year_room = 8;
  return std::to_chars(out, out + year_room, year).ptr;
}

constexpr std::int64_t second = 1'000'000;
constexpr std::int64_t day = 86'400 * second;

}  // namespace

char* write_iso_date(char* out, std::int32_t days) noexcept {
  const std::chrono::year_month_day date{std::chrono::sys_days{std::chrono::days{days}}};
  out = write_year(out, static_cast<int>(date.year()));
  *out++ = '-';
  out = write_pair(out, unsigned{date.month()});
  *out++ = '-';
  return write_pair(out, unsigned{date.day()});
}

char* write_iso_time(char* out, std::int64_t microseconds) noexcept {
  const auto seconds = static_cast<unsigned>(microseconds / second);
  auto fraction = static_cast<unsigned>(microseconds % second);
  out = write_pair(out, seconds / 3600);
  *out++ = ':';
  out = write_pair(out, seconds / 60 % 60);
  *out++ = ':';
  out = write_pair(out, seconds % 60);
  if (fraction == 0) return out;
  *out++ = '.';
  for (unsigned place = second / 10; fraction != 0; place /= 10) {
    *out++ = static_cast<char>('0' + fraction / place);
    fraction %= place;
  }
  return out;
}

char* write_iso_datetime(char* out, std::int64_t microseconds) noexcept {
  std::int64_t days = microseconds / day;
  if (microseconds % day < 0) --days;
  out = write_iso_date(out, static_cast<std::int32_t>(days));
  *out++ = 'T';
  return write_iso_time(out, microseconds - days * day);
}

}  // namespace jwnls::tool
