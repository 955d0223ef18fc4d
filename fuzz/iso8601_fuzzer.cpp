// Fuzzes the program's ISO 8601: texts that are put together from parts, and any other.
//
// A text of parts reads as the parts say, and is refused when one of them is outside its field. Any
// text that is read is written as one that reads the same. Nothing beside the text is read.

#include <array>
#include <chrono>
#include <cstdio>
#include <cstring>
#include <memory>
#include <string>
#include <string_view>

#include "fuzz/input.h"
#include "tool/iso8601.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace jwnls::test {
namespace {

using tool::IsoValue;

bool equal(const IsoValue& one, const IsoValue& other) {
  return one.date == other.date && one.time == other.time && one.offset == other.offset;
}

// From an allocation of its own, so that a look beside it shows.
Result<IsoValue> read(std::string_view text) {
  const auto copy = std::make_unique<char[]>(text.size());
  text.copy(copy.get(), text.size());
  return tool::read_iso8601({copy.get(), text.size()});
}

template <typename... Numbers>
std::string printed(const char* format, Numbers... numbers) {
  std::array<char, 64> text;
  std::snprintf(text.data(), text.size(), format, numbers...);
  return text.data();
}

constexpr bool is_leap(int year) { return year % 4 == 0 && (year % 100 != 0 || year % 400 == 0); }

// Every second of what may stand in two digits is outside its field at some place.
void check_parts(Input& input) {
  constexpr int lengths[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
  const std::uint8_t choices = input.byte();
  const bool basic = (choices & 1) != 0;
  const int year = input.number<std::uint16_t>() % (basic ? 10000 : 40000);
  const auto part = [&input](int below) { return input.byte() % below; };
  const int month = part(15), day = part(34);
  const int hour = part(26), minute = part(62), second = part(62);
  const int offset_hour = part(26), offset_minute = part(62);
  std::string text = basic ? printed("%04d%02d%02d", year, month, day)
                           : printed("%04d-%02d-%02d", year, month, day);
  bool right = month >= 1 && month <= 12 && day >= 1 && year <= 32767;
  right = right && day <= lengths[month - 1] + (month == 2 && is_leap(year) ? 1 : 0);
  IsoValue expected;
  if (right) {
    expected.date = std::chrono::year(year) / month / day;
  }
  if ((choices & 2) != 0) {
    right = right && hour < 24 && minute < 60 && second < 60;
    text += "Tt "[choices % 3] +
            printed((choices & 4) != 0 ? "%02d%02d%02d" : "%02d:%02d:%02d", hour, minute, second);
    if ((choices & 8) != 0) text += printed((choices & 4) != 0 ? ",%d" : ".%d", year);
    expected.time = std::chrono::seconds((hour * 60 + minute) * 60 + second);
    if ((choices & 16) != 0) {
      right = right && offset_hour < 24 && offset_minute < 60;
      text += (choices & 64) != 0 ? " " : "";
      text += (choices & 32) != 0 ? '-' : '+';
      text += printed((choices & 128) != 0 ? "%02d%02d" : "%02d:%02d", offset_hour, offset_minute);
      const auto minutes = std::chrono::minutes(offset_hour * 60 + offset_minute);
      expected.offset = (choices & 32) != 0 ? -minutes : minutes;
    }
  }
  const auto value = read(text);
  require(bool(value) == right, "a text of parts that is read, or is not");
  require(!value || equal(*value, expected), "a text of parts that reads as another");
}

void check_any(std::string_view text) {
  const auto value = read(text);
  if (!value) return require(value.message()[0] != 0, "a refusal without a reason");
  require(value->date || value->time, "a value of nothing");
  require(!value->offset || value->time, "an offset of no time");
  std::string again;
  if (value->date && value->time) {
    again = tool::iso_text(std::chrono::local_days(*value->date) + Microseconds(*value->time));
  } else if (value->time) {
    again = tool::iso_text(Microseconds(*value->time));
  } else {
    again = printed("%04d-%02u-%02u", static_cast<int>(value->date->year()),
                    static_cast<unsigned>(value->date->month()),
                    static_cast<unsigned>(value->date->day()));
  }
  if (value->offset) {
    const long minutes = value->offset->count();
    again += printed(minutes < 0 ? "-%02ld%02ld" : "+%02ld%02ld", std::labs(minutes) / 60,
                     std::labs(minutes) % 60);
  }
  const auto same = read(again);
  require(same && equal(*same, *value), "what was read is written as another");
}

}  // namespace
}  // namespace jwnls::test

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace jwnls::test;
  Input input(data, size);
  check_parts(input);
  check_any({reinterpret_cast<const char*>(data), size});
  return 0;
}
