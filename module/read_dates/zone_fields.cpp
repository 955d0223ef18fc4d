#include "module/read_dates/zone_fields.h"

#include <string_view>

#include "module/host_calls/time_zone.h"
#include "module/read_dates/number_fields.h"
#include "module/text/same_text.h"

namespace jwnls {
namespace {

// A token longer than this is no zone's name and is not looked up.
constexpr std::size_t longest_zone_token = 256;  // units

// Stands for the handle's own zone.
constexpr std::u16string_view current_zone_name = u"XST";

// The units up to and including the next blank, or to the end; empty when they are too many.
template <typename Unit>
std::u16string_view read_token(TextCursor<Unit>& input,
                               char16_t (&units)[longest_zone_token]) noexcept {
  std::size_t length = 0;
  while (!input.at_end()) {
    if (length == longest_zone_token) return {};
    units[length++] = input.next();
    if (units[length - 1] == u' ') break;
  }
  return {units, length};
}

// The minutes of the strict dialect: two units, of which blanks before the digits use up theirs;
// nothing more counts as 0, one digit may stand before something else.
template <typename Unit>
bool read_strict_minutes(TextCursor<Unit>& input, std::int32_t& minutes) noexcept {
  minutes = 0;
  if (input.at_end()) return true;
  std::uint32_t width = 2;
  for (; width > 0 && input.at(' '); --width) input.step();
  return read_digits(input, width, minutes) && minutes <= 59;
}

}  // namespace

template <typename Unit>
bool read_zone_name(LocaleHandle* handle, TextCursor<Unit>& input, DateTimeParts& parts) noexcept {
  TextCursor<Unit> ahead = input;
  ahead.skip_blanks();
  char16_t units[longest_zone_token];
  const std::u16string_view token = read_token(ahead, units);
  parts.zone = nullptr;
  if (same_text_nocase(token, current_zone_name)) {
    parts.zone = current_zone(handle);
  } else if (!token.empty()) {
    parts.zone = look_up_zone(handle, token.data(), static_cast<std::int64_t>(token.size()));
  }
  if (parts.zone == nullptr) return false;
  input = ahead;
  return true;
}

template <typename Unit>
bool read_zone_offset(TextCursor<Unit>& input, Dialect dialect, DateTimeParts& parts) noexcept {
  const bool strict = dialect == Dialect::strict;
  input.skip_blanks();
  // Deliberate: "Z" is no sign.
  const bool west = !input.skip('+') && input.skip('-');
  std::int32_t hours = 0;
  if (!read_fixed(input, {2, 0, 12}, hours)) return false;
  input.skip_blanks();
  input.skip(':');
  std::int32_t minutes = 0;
  const bool read =
      strict ? read_strict_minutes(input, minutes) : read_fixed(input, {2, 0, 59}, minutes);
  const std::int32_t offset = (hours * 60 + (read ? minutes : 0)) * (strict ? 60 : 1);
  parts.zone_offset = west ? -offset : offset;
  return read;
}

template bool read_zone_name(LocaleHandle*, TextCursor<char16_t>&, DateTimeParts&) noexcept;
template bool read_zone_name(LocaleHandle*, TextCursor<char>&, DateTimeParts&) noexcept;
template bool read_zone_offset(TextCursor<char16_t>&, Dialect, DateTimeParts&) noexcept;
template bool read_zone_offset(TextCursor<char>&, Dialect, DateTimeParts&) noexcept;

}  // namespace jwnls
