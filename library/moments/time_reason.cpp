#include "library/moments/time_reason.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <optional>

#include "library/dates/date_parts.h"
#include "library/dates/date_text.h"
#include "library/locale_data/date_characters.h"
#include "library/moments/moment_text.h"
#include "library/texts/folding.h"

namespace jwnls::library {
namespace {

// Beyond, no time begins or ends; of longer texts little is tried, which may take long.
constexpr std::size_t farthest = 64;

// Whether a number or a word ends at a place.
constexpr bool ends_part(std::string_view text, std::size_t at) noexcept {
  const auto class_of = [](char byte) { return is_digit(byte) ? 0 : is_letter(byte) ? 1 : 2; };
  const bool is_inside = (static_cast<unsigned char>(text[at]) & 0xC0) == 0x80;
  return !is_inside && !is_blank(text[at - 1]) &&
         (class_of(text[at - 1]) != class_of(text[at]) || !is_ascii(text[at]));
}

// The longest beginning that is a time.
std::size_t beginning_of(const TimeLayout& layout, std::string_view text) noexcept {
  int tries = 12;
  for (std::size_t end = std::min(text.size() - 1, farthest); end > 0 && tries > 0; --end) {
    if (!ends_part(text, end)) continue;
    if (is_time(layout, text.substr(0, end))) return end;
    --tries;
  }
  return 0;
}

// A text's numbers, in any digits, and where they stand in it.
class FoundNumbers {
 public:
  explicit FoundNumbers(std::string_view text) noexcept {
    const auto size = fold_text(text, folded_, sizeof folded_, places_);
    is_utf8_ = size.has_value();
    numbers_ = Numbers({folded_, size.value_or(0)});
  }
  [[nodiscard]] bool is_utf8() const noexcept { return is_utf8_; }
  [[nodiscard]] std::size_t count() const noexcept { return numbers_.count; }
  [[nodiscard]] const Numbers::Number& number(std::size_t i) const noexcept {
    return numbers_.number[i];
  }
  [[nodiscard]] std::size_t begin(std::size_t i) const noexcept {
    return places_[numbers_.number[i].begin];
  }
  [[nodiscard]] std::size_t end(std::size_t i) const noexcept {
    return places_[numbers_.number[i].end];
  }
  // The one byte between a number and the next; '\0' for more or none.
  [[nodiscard]] char mark_behind(std::size_t i) const noexcept {
    const std::size_t at = numbers_.number[i].end;
    return numbers_.number[i + 1].begin == at + 1 ? folded_[at] : '\0';
  }

 private:
  static constexpr std::size_t room = 3 * longest_text;

  char folded_[room] = {};
  std::uint16_t places_[room + 1] = {};
  Numbers numbers_;
  bool is_utf8_ = false;
};

// Hours, minutes and seconds that there are not; the number's index.
std::optional<std::size_t> tell_number(const FoundNumbers& numbers, std::string_view text,
                                       char separator, Message& message) noexcept {
  constexpr const char* names[] = {"hour ", "minute ", "second "};
  for (std::size_t i = 0; i < std::min<std::size_t>(numbers.count(), 3); ++i) {
    const Numbers::Number& number = numbers.number(i);
    if (i > 0) {
      const char mark = numbers.mark_behind(i - 1);
      if (mark != ':' && mark != '.' && mark != separator) return std::nullopt;
    }
    if (number.digits() <= 2 && number.value < (i == 0 ? 24 : 60)) continue;
    message << names[i];
    if (number.digits() <= 2) {
      message << std::int64_t{number.value};
    } else {
      message.quoted(text.substr(numbers.begin(i), numbers.end(i) - numbers.begin(i)), 30);
    }
    message << " is none";
    return i;
  }
  return std::nullopt;
}

// Whether some hour between two texts makes them a time.
bool is_around_hour(const TimeLayout& layout, std::string_view before,
                    std::string_view behind) noexcept {
  char whole[longest_text];
  if (before.size() + 1 + behind.size() > sizeof whole) return false;
  std::memcpy(whole, before.data(), before.size());
  behind.copy(whole + before.size() + 1, behind.size());
  // One of them goes with every part of the day.
  for (const char hour : {'1', '5', '9'}) {
    whole[before.size()] = hour;
    if (is_time(layout, {whole, before.size() + 1 + behind.size()})) return true;
  }
  return false;
}

void tell_fitting(std::string_view text, std::size_t place, Message& message) noexcept {
  message.quoted(text.substr(0, place), 30) << " fits, ";
  message.quoted(text.substr(place), 30) << " does not";
}

// "Z", "+02:00"
bool is_offset(std::string_view rest) noexcept {
  rest = trimmed(rest);
  return rest == "Z" || rest == "z" ||
         (rest.size() > 1 && (rest[0] == '+' || rest[0] == '-') && is_digit(rest[1]));
}

// A date, say, in front of a time.
std::size_t time_behind(const TimeLayout& layout, std::string_view text,
                        const FoundNumbers& numbers) noexcept {
  for (std::size_t i = 1; i < std::min<std::size_t>(numbers.count(), 3); ++i) {
    const std::size_t at = numbers.begin(i);
    if (text.size() - at > farthest || !is_blank(text[at - 1])) continue;
    if (is_time(layout, text.substr(at))) return at;
  }
  // Behind the third number Numbers does not look.
  int tries = 6;
  const std::size_t first = std::max(numbers.end(numbers.count() > 3 ? 2 : 0),
                                     text.size() - std::min(text.size(), farthest));
  for (std::size_t at = text.size(); numbers.count() > 3 && --at > first && tries > 0;) {
    if (!is_blank(text[at - 1])) continue;
    if (is_time(layout, text.substr(at))) return at;
    --tries;
  }
  return 0;
}

}  // namespace

bool is_time(const TimeLayout& layout, std::string_view text) noexcept {
  return read_time_text(layout, trimmed(text)).has_value();
}

std::size_t tell_time(const TimeLayout& layout, std::string_view text, Message& message) noexcept {
  const FoundNumbers numbers(text);
  if (!numbers.is_utf8()) {
    message << "not valid UTF-8";
    return 0;
  }
  if (numbers.count() == 0) {
    message << "nothing in it is a time of day";
    return 0;
  }
  if (const std::size_t at = time_behind(layout, text, numbers); at > 0) {
    message.quoted(text.substr(at), 30) << " is a time of day, what stands before it is no part "
                                           "of one; the kind datetime reads a date, too";
    return 0;
  }
  const std::string_view before = text.substr(0, numbers.begin(0));
  const bool is_short = text.size() <= farthest;
  if (!before.empty() && (!is_short || !is_around_hour(layout, before, ":00"))) {
    message << "no time of day begins so";
    return 0;
  }
  if (const auto index = tell_number(numbers, text, layout.separator, message)) {
    return numbers.begin(*index);
  }
  const std::size_t hour_end = numbers.end(0);
  const std::string_view behind = text.substr(hour_end);
  if (is_short && is_around_hour(layout, before, behind)) {
    message << "hour " << std::int64_t{numbers.number(0).value}
            << " does not go with the words beside it";
    return numbers.begin(0);
  }
  if (const std::size_t end = beginning_of(layout, text); end > 0) {
    const std::string_view rest = text.substr(end);
    tell_fitting(text, end, message);
    if (is_offset(rest)) message << ": a time of day has no offset";
    return end;
  }
  constexpr std::string_view minutes(":00");
  char with_minutes[longest_text + minutes.size()];
  if (is_short && numbers.count() == 1) {
    const std::string_view rest = behind.substr(behind.starts_with(':') ? 1 : 0);
    std::size_t size = minutes.copy(with_minutes, minutes.size());
    size += rest.copy(with_minutes + size, rest.size());
    if (is_around_hour(layout, before, {with_minutes, size})) {
      message << "the minutes are missing";
      return hour_end;
    }
  }
  tell_fitting(text, hour_end, message);
  return hour_end;
}

}  // namespace jwnls::library
