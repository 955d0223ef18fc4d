#include "tool/iso8601.h"

#include <cstddef>

#include "tool/iso_writer.h"
#include "tool/refusal.h"

namespace jwnls::tool {
namespace {

using std::chrono::minutes;
using std::chrono::seconds;
using std::chrono::year_month_day;

constexpr bool is_digit(char c) { return c >= '0' && c <= '9'; }

// What is left of the text.
class Cursor {
 public:
  explicit Cursor(std::string_view text) : rest_(text) {}

  [[nodiscard]] bool at_end() const { return rest_.empty(); }
  [[nodiscard]] char peek() const { return rest_.empty() ? '\0' : rest_.front(); }
  [[nodiscard]] std::size_t digits_ahead() const {
    std::size_t count = 0;
    while (count < rest_.size() && is_digit(rest_[count])) ++count;
    return count;
  }
  [[nodiscard]] char after_digits() const {
    const std::size_t count = digits_ahead();
    return count < rest_.size() ? rest_[count] : '\0';
  }
  bool take(char c) {
    if (peek() != c || at_end()) return false;
    rest_.remove_prefix(1);
    return true;
  }
  bool take_any(std::string_view choice) {
    if (at_end() || choice.find(rest_.front()) == std::string_view::npos) return false;
    rest_.remove_prefix(1);
    return true;
  }
  // Reads exactly `count` digits, which must be there.
  int number(std::size_t count) {
    int value = 0;
    for (; count > 0; --count) {
      value = value * 10 + (rest_.front() - '0');
      rest_.remove_prefix(1);
    }
    return value;
  }
  void skip(std::size_t count) { rest_.remove_prefix(count); }

 private:
  std::string_view rest_;
};

// A field of two digits: its name for messages and its bounds.
struct Field {
  const char* name;
  int least;
  int most;
};
constexpr Field month_field = {"month", 1, 12};
constexpr Field day_field = {"day", 1, 31};
constexpr Field hour_field = {"hour", 0, 23};
constexpr Field minute_field = {"minute", 0, 59};
constexpr Field second_field = {"second", 0, 59};
constexpr Field offset_hour_field = {"offset hour", 0, 23};
constexpr Field offset_minute_field = {"offset minute", 0, 59};

std::string two_digits(int value) {
  return {static_cast<char>('0' + value / 10), static_cast<char>('0' + value % 10)};
}

Result<int> read_field(Cursor& input, const Field& field) {
  if (input.digits_ahead() < 2) {
    return refusal(std::string("a two-digit ") + field.name + " is missing");
  }
  const int value = input.number(2);
  if (value < field.least || value > field.most) {
    return refusal(std::string(field.name) + " " + two_digits(value) + " is not " +
                   two_digits(field.least) + " to " + two_digits(field.most));
  }
  return value;
}

Result<year_month_day> read_date(Cursor& input) {
  const std::size_t digits = input.digits_ahead();
  const bool dashed = input.after_digits() == '-' && digits != 8;
  if (dashed ? digits != 4 && digits != 5 : digits != 8) {
    return refusal("neither a date (YYYY-MM-DD) nor a time (HH:MM:SS)");
  }
  const int year = input.number(dashed ? digits : 4);
  if (dashed) input.skip(1);
  // What a year of std::chrono holds; beyond it, it would be another one.
  if (year > static_cast<int>(std::chrono::year::max())) return refusal("outside the calendar");
  const auto month = read_field(input, month_field);
  if (!month) return refusal(month.message());
  if (dashed && !input.take('-')) return refusal("\"-\" is missing after the month");
  const auto day = read_field(input, day_field);
  if (!day) return refusal(day.message());
  const year_month_day date = std::chrono::year{year} / *month / *day;
  if (!date.ok()) {
    return refusal("there is no day " + std::to_string(*day) + " in month " + two_digits(*month) +
                   " of " + std::to_string(year));
  }
  return date;
}

Result<seconds> read_time(Cursor& input) {
  const auto hour = read_field(input, hour_field);
  if (!hour) return refusal(hour.message());
  const bool colons = input.take(':');
  const auto minute = read_field(input, minute_field);
  if (!minute) return refusal(minute.message());
  int second = 0;
  if (colons ? input.take(':') : is_digit(input.peek())) {
    const auto read = read_field(input, second_field);
    if (!read) return refusal(read.message());
    second = *read;
    if (input.take_any(".,")) {
      const std::size_t digits = input.digits_ahead();
      if (digits == 0) return refusal("digits are missing after the decimal point");
      input.skip(digits);
    }
  }
  return std::chrono::hours{*hour} + minutes{*minute} + seconds{second};
}

// The offset behind a time: "Z", "+01:00", "+0100" or "+01", after at most one blank.
Result<std::optional<minutes>> read_offset(Cursor& input) {
  using Offset = std::optional<minutes>;
  if (input.at_end()) return Offset();
  input.take(' ');
  if (input.take_any("Zz")) return Offset(0);
  const bool west = input.peek() == '-';
  if (!input.take_any("+-")) return refusal("text is left after the time");
  const auto hour = read_field(input, offset_hour_field);
  if (!hour) return refusal(hour.message());
  int minute = 0;
  if (input.take(':') || is_digit(input.peek())) {
    const auto read = read_field(input, offset_minute_field);
    if (!read) return refusal(read.message());
    minute = *read;
  }
  const minutes offset = std::chrono::hours{*hour} + minutes{minute};
  return Offset(west ? -offset : offset);
}

}  // namespace

Result<IsoValue> read_iso8601(std::string_view text) {
  if (text.empty()) return refusal("no value");
  Cursor input(text);
  IsoValue value;
  const bool marked =
      (text.front() == 'T' || text.front() == 't') && text.size() > 1 && is_digit(text[1]);
  if (marked) input.skip(1);
  const bool time_alone = marked || (input.digits_ahead() == 2 && input.after_digits() == ':');
  if (!time_alone) {
    const auto date = read_date(input);
    if (!date) return refusal(date.message());
    value.date = *date;
    if (input.at_end()) return value;
    if (!input.take_any("Tt ")) return refusal("text is left after the date");
  }
  const auto time = read_time(input);
  if (!time) return refusal(time.message());
  value.time = *time;
  const auto offset = read_offset(input);
  if (!offset) return refusal(offset.message());
  value.offset = *offset;
  if (!input.at_end()) return refusal("text is left after the time");
  return value;
}

std::string iso_text(Microseconds since_midnight) {
  char text[iso_room];
  return {text, write_iso_time(text, since_midnight.count())};
}

std::string iso_text(std::chrono::local_time<Microseconds> time) {
  char text[iso_room];
  return {text, write_iso_datetime(text, time.time_since_epoch().count())};
}

}  // namespace jwnls::tool
