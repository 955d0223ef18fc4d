// Fuzzes time zones: names of the database, offsets, and rules as TZ has them.
//
// A rule of parts is the C library's zone of that rule, second by second; whatever zone is opened,
// its clocks lead back to the moment that they show, and its own name opens it again. A name is the
// one of the database's list that it is in any letter case, an offset the one that its parts say.

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <map>
#include <string>
#include <string_view>

#include "fuzz/input.h"
#include "host/zones/utc_offset.h"
#include "host/zones/zone_names.h"
#include "include/jwnls/jwnls.h"
#include "library/zones/posix_zone.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace jwnls::test {
namespace {

template <typename... Values>
std::string printed(const char* format, Values... values) {
  std::array<char, 128> text;
  std::snprintf(text.data(), text.size(), format, values...);
  return text.data();
}

// Some moment from 1972 to 2500.
std::int64_t moment_of(Input& input) {
  return 63'072'000 + static_cast<std::int64_t>(input.number<std::uint64_t>() % 16'660'000'000);
}

void check_moments(const library::Zone& zone, std::int64_t moment) {
  const auto offset = zone.offset_at(moment);
  const auto moments = zone.moments_of(moment + offset);
  require(moments.count == 1 || moments.count == 2, "a time that was shown and is none");
  require(moments.first == moment || (moments.count == 2 && moments.second == moment),
          "a time whose moment is another");
}

// The C library takes years one by one: changes stay away from their ends.
std::string change_of(Input& input, int first_month) {
  const int month = first_month + input.byte() % 4;
  std::string text;
  switch (input.byte() % 4) {
    case 0:
      text = printed(",J%d", month * 30 + input.byte() % 28);
      break;
    case 1:
      text = printed(",%d", month * 30 + input.byte() % 28);
      break;
    default:
      text = printed(",M%d.%d.%d", month, 1 + input.byte() % 5, input.byte() % 7);
  }
  const std::uint8_t time = input.byte();
  if (time % 2 == 0) text += printed("/%d", time % 24);
  if (time % 4 == 0) text += printed(":%02d:%02d", input.byte() % 60, input.byte() % 60);
  return text;
}

void check_rule(Input& input) {
  const std::uint8_t choices = input.byte();
  std::string rule =
      printed("AAA%s%d:%02d", (choices & 1) != 0 ? "-" : "", input.byte() % 13, input.byte() % 60);
  if ((choices & 2) != 0) {
    rule += "BBB";
    if ((choices & 4) != 0) rule += printed((choices & 8) != 0 ? "-%d" : "%d", input.byte() % 13);
    const bool south = (choices & 16) != 0;
    rule += change_of(input, south ? 7 : 2);
    rule += change_of(input, south ? 2 : 7);
  }
  const auto zone = library::posix_zone(rule);
  require(zone != nullptr, "a rule that is none");
  setenv("TZ", rule.c_str(), 1);
  tzset();
  for (int i = 0; i < 4; ++i) {
    const std::time_t moment = moment_of(input);
    std::tm clock;
    localtime_r(&moment, &clock);
    require(clock.tm_gmtoff == zone->offset_at(moment) &&
                zone->abbreviation_at(moment) == clock.tm_zone,
            "a rule whose clocks are others");
    check_moments(*zone, moment);
  }
}

void check_any_rule(std::string_view text, Input& input) {
  const auto zone = library::posix_zone(text);
  if (zone == nullptr) return;
  const std::string name = zone->name();
  const auto again = library::posix_zone(name);
  require(again != nullptr && again->name() == name, "a rule whose name is none");
  for (int i = 0; i < 4; ++i) {
    const std::int64_t moment = input.number<std::int64_t>() >> (i * 8);
    if (std::abs(moment >> 1) > INT64_MAX / 4) continue;
    check_moments(*zone, moment);
    require(zone->offset_at(moment) == again->offset_at(moment), "a rule whose name is another");
    // The calendar begins again after four hundred years.
    require(zone->offset_at(moment) == zone->offset_at(moment % 12'622'780'800),
            "a rule that does not come again");
  }
}

void check_offset(Input& input) {
  const std::uint8_t choices = input.byte();
  const int hours = input.byte() % 30, minutes = input.byte() % 70;
  const bool colon = (choices & 4) != 0;
  const std::string text =
      printed(colon ? "%s%c%d:%02d" : "%s%c%02d%02d", (choices & 1) != 0 ? "UTC" : "utC",
              "+-"[choices >> 1 & 1], hours, minutes);
  const auto seconds = host::parse_utc_offset(std::u16string(text.begin(), text.end()));
  require(seconds.has_value() == (hours < 24 && minutes < 60), "an offset that is none");
  const int magnitude = (hours * 60 + minutes) * 60;
  require(!seconds || *seconds == ((choices & 2) != 0 ? -magnitude : magnitude), "another offset");
}

std::string lower(std::string text) {
  for (char& each : text) {
    if (each >= 'A' && each <= 'Z') each = static_cast<char>(each | 0x20);
  }
  return text;
}

const host::ZoneNames& zone_names() {
  static const host::ZoneNames names("");
  return names;
}

// A name of the list, changed or not.
std::string name_of(Input& input) {
  const auto& names = zone_names().names();
  std::string name = names[input.number<std::uint16_t>() % names.size()];
  for (int changes = input.byte() % 6; changes > 0; --changes) {
    const std::uint8_t choice = input.byte();
    if (choice < 0xF0) {
      char& each = name[choice % name.size()];
      if ((each | 0x20) >= 'a' && (each | 0x20) <= 'z') each = static_cast<char>(each ^ 0x20);
    } else {
      name[input.byte() % name.size()] = static_cast<char>(input.byte() & 0x7F);
    }
  }
  return name;
}

void check_name(const std::string& name, std::int64_t moment) {
  static const auto by_lower = [] {
    std::map<std::string, std::string> map;
    for (const std::string& each : zone_names().names()) map.emplace(lower(each), each);
    return map;
  }();
  const auto* const found = zone_names().find(std::u16string(name.begin(), name.end()));
  const auto expected = by_lower.find(lower(name));
  require((found != nullptr) == (expected != by_lower.end()), "a zone that there is, or is not");
  require(found == nullptr || found->name == expected->second, "another zone");

  if (name.find('\0') != std::string::npos) return;
  jwnls_zone_state state = {};
  state.size = sizeof state;
  jwnls_error error = {};
  const int code = jwnls_zone_at(name.c_str(), moment, &state, &error);
  require(code == JWNLS_OK || code == JWNLS_UNKNOWN, "an undocumented code");
  require(code == JWNLS_OK || error.text[0] != '\0', "a refusal without a reason");
  require(code == JWNLS_OK || found == nullptr, "a zone that cannot be opened");
  if (code != JWNLS_OK || name.empty()) return;
  require(found == nullptr || found->name == state.name, "a zone of another name");
  jwnls_zone_state again = {};
  again.size = sizeof again;
  require(jwnls_zone_at(state.name, moment, &again, nullptr) == JWNLS_OK &&
              std::string_view(again.name) == state.name &&
              std::string_view(again.abbreviation) == state.abbreviation &&
              again.offset_seconds == state.offset_seconds,
          "a zone whose name is another's");
}

}  // namespace
}  // namespace jwnls::test

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace jwnls::test;
  Input input(data, size);
  switch (input.byte() % 4) {
    case 0:
      check_rule(input);
      break;
    case 1:
      check_offset(input);
      check_name(name_of(input), moment_of(input));
      break;
    default: {
      const std::string text(reinterpret_cast<const char*>(data) + (size > 0 ? 1 : 0),
                             size > 0 ? size - 1 : 0);
      check_any_rule(text, input);
      const auto ascii = [](char each) { return static_cast<unsigned char>(each) < 0x80; };
      if (std::all_of(text.begin(), text.end(), ascii)) check_name(text, moment_of(input));
    }
  }
  return 0;
}
