// Over all locales and the days of a leap year: what the services write is read back to the same
// value, in both encodings.

#include <gtest/gtest.h>

#include <array>
#include <set>
#include <string_view>

#include "host/locale_names.h"
#include "module/calendar/date_services.h"
#include "module/dtparse/date_input_services.h"
#include "tests/database/loaded_extension.h"

namespace jwnls::test {
namespace {

using Names = std::set<std::string_view>;

enum class Dialect { strict, lenient };

// These write the designator before the hour. The strict dialect adds its twelve hours to the hour
// that has been read, which is none yet, so afternoons come out as mornings; the lenient one reads
// them.
const Names designator_first = {
    "as",      "as_IN",      "brx",        "brx_IN",      "ee",         "ee_GH",      "ko",
    "ko_KP",   "ko_KR",      "ks_Deva",    "ks_Deva_IN",  "ta",         "ta_IN",      "ta_MY",
    "ta_SG",   "yue",        "yue_Hant",   "yue_Hant_HK", "zh_Hans_HK", "zh_Hans_MO", "zh_Hans_SG",
    "zh_Hant", "zh_Hant_HK", "zh_Hant_MO", "zh_Hant_TW"};

/// One locale's services in one encoding.
template <typename Unit>
class Services {
 public:
  Services(FakeHost& host, LocaleRecord& record) {
    handle_.context = &host.context;
    handle_.record = &record;
  }

  bool reads_time(std::int32_t day, std::int32_t second, Dialect dialect) {
    format_time<Unit>(&handle_, day * 86'400.0 + second, 0, out_, room, &length_);
    // Leniently by recognition, strictly by the pattern that wrote the text.
    return reads(read_time<Unit>, dialect == Dialect::lenient ? 4 : 2, second);
  }

 private:
  bool reads(ReadDate<Unit>* read, std::uint32_t mode, double expected) {
    double value = 0;
    std::uint64_t consumed = 0;
    return read(&handle_, out_, length_, mode, &value, &consumed) == 0 && value == expected &&
           consumed == static_cast<std::uint64_t>(length_);
  }

  LocaleHandle handle_ = {};
  static constexpr std::int64_t room = 512;
  Unit out_[room];
  std::int64_t length_ = 0;
};

template <typename Unit>
bool reads_every_time(FakeHost& host, LocaleRecord& record, Dialect dialect) {
  Services<Unit> services(host, record);
  // The first and last second of hours where clocks turn, then seconds in every hour.
  constexpr std::array turns = {0, 59, 3'599, 3'600, 43'199, 43'200, 46'799, 46'800, 86'399};
  for (std::size_t n = 0; n < 366; ++n) {
    const auto day = day_from_civil({2024, 1, 1}) + static_cast<std::int32_t>(n);
    const auto second = n < turns.size() ? turns[n] : static_cast<std::int32_t>(n * 7919 % 86'400);
    if (!services.reads_time(day, second, dialect)) return false;
  }
  return true;
}

/// The locales that fail to read a text of theirs in either encoding.
template <typename Reads16, typename Reads8>
Names unreadable(Reads16 reads_16, Reads8 reads_8, Dialect dialect) {
  const Database database;
  FakeHost host;
  host.recording = false;
  Names names;
  for (const host::LocaleRow& row : host::available_locales()) {
    const auto record = database.record(row.name);
    const bool reads = reads_16(host, *record, dialect);
    EXPECT_EQ(reads_8(host, *record, dialect), reads) << row.name << ": the encodings differ";
    if (!reads) names.insert(row.name);
  }
  return names;
}

TEST(RoundTrip, TimesAreReadBack) {
  const auto names = [](Dialect dialect) {
    return unreadable(reads_every_time<char16_t>, reads_every_time<char>, dialect);
  };
  EXPECT_EQ(names(Dialect::lenient), Names{});
  EXPECT_EQ(names(Dialect::strict), designator_first);
}

}  // namespace
}  // namespace jwnls::test
