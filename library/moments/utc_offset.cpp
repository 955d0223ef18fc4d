#include "library/moments/utc_offset.h"

#include <cstddef>

#include "library/dates/date_text.h"
#include "library/locale_data/date_characters.h"

namespace jwnls::library {
namespace {

constexpr std::int32_t two_digits(std::string_view text) noexcept {
  return is_digit(text[0]) && is_digit(text[1]) ? (text[0] - '0') * 10 + (text[1] - '0') : 99;
}

// "+01", "+0100", "+01:00" at the end, behind a time: the bytes, 0 where there is none.
std::size_t numeric_offset(std::string_view text, std::int32_t& offset_seconds) noexcept {
  for (const std::size_t size : {6U, 5U, 3U}) {
    if (text.size() <= size) continue;
    std::string_view end = text.substr(text.size() - size);
    if (end[0] != '+' && end[0] != '-') continue;
    if (size == 6 && end[3] != ':') continue;
    const std::int32_t hours = two_digits(end.substr(1));
    const std::int32_t minutes = size == 3 ? 0 : two_digits(end.substr(size - 2));
    if (hours > 18 || minutes > 59) continue;
    const std::int32_t seconds = (hours * 60 + minutes) * 60;
    offset_seconds = end[0] == '-' ? -seconds : seconds;
    return size;
  }
  return 0;
}

}  // namespace

bool cut_offset(std::string_view& text, std::int32_t& offset_seconds) noexcept {
  std::size_t size = numeric_offset(text, offset_seconds);
  if (size == 0) {
    for (const std::string_view word : {"Z", "z", "UTC", "GMT"}) {
      if (text.size() > word.size() && text.substr(text.size() - word.size()) == word) {
        size = word.size();
        offset_seconds = 0;
      }
    }
  }
  if (size == 0) return false;
  const std::string_view before = trimmed(text.substr(0, text.size() - size));
  if (before.empty() || !is_digit(before.back()) || before.find(':') == before.npos) return false;
  text = before;
  return true;
}

}  // namespace jwnls::library
