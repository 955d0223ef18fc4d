// Over all locales and the days of a leap year: what the services write is read back to the same
// value, in both encodings.

#include <gtest/gtest.h>

#include <array>
#include <set>
#include <string_view>

#include "abi/reading_modes.h"
#include "host/locales/locale_names.h"
#include "module/calendar/civil.h"
#include "module/format_dates/date_services.h"
#include "module/read_dates/date_services.h"
#include "tests/extensions/loaded_extension.h"

namespace jwnls::test {
namespace {

using Names = std::set<std::string_view>;

// These write the designator before the hour. The strict dialect adds its twelve hours to the hour
// that has been read, which is none yet, so afternoons come out as mornings; the lenient one reads
// them.
const Names designator_first = {
    "as",      "as_IN",      "brx",        "brx_IN",      "ee",         "ee_GH",      "ko",
    "ko_KP",   "ko_KR",      "ks_Deva",    "ks_Deva_IN",  "ta",         "ta_IN",      "ta_MY",
    "ta_SG",   "yue",        "yue_Hant",   "yue_Hant_HK", "zh_Hans_HK", "zh_Hans_MO", "zh_Hans_SG",
    "zh_Hant", "zh_Hant_HK", "zh_Hant_MO", "zh_Hant_TW"};

// A month name of these begins a later one (Cornish "Me" and "Met"), and the first name that fits
// is read: among the abbreviated names of the medium date, among the full names of the long one.
const Names medium_date_unread = {"bo",     "bo_CN", "bo_IN", "cv",  "cv_RU",  "dua",
                                  "dua_CM", "dz",    "dz_BT", "ewo", "ewo_CM", "kw",
                                  "kw_GB",  "lu",    "lu_CD", "nmg", "nmg_CM"};
const Names long_date_unread = {
    "bez",    "bez_TZ", "cgg",    "cgg_UG", "cv",     "cv_RU",  "dav",    "dav_KE", "ebu",
    "ebu_KE", "ewo",    "ewo_CM", "kam",    "kam_KE", "kde",    "kde_TZ", "ki",     "ki_KE",
    "ksf",    "ksf_CM", "kw",     "kw_GB",  "ln",     "ln_AO",  "ln_CD",  "ln_CF",  "ln_CG",
    "luo",    "luo_KE", "mgh",    "mgh_MZ", "nmg",    "nmg_CM", "nyn",    "nyn_UG", "rof",
    "rof_TZ", "saq",    "saq_KE", "sbp",    "sbp_TZ", "yrl",    "yrl_BR", "yrl_CO", "yrl_VE"};

enum class Dialect { strict, lenient };

/// One locale's services in one encoding.
template <typename Unit>
class Services {
 public:
  Services(FakeHost& host, LocaleRecord& record) {
    handle_.context = &host.context;
    handle_.record = &record;
  }

  bool reads_date(std::uint32_t style, std::int32_t day, Dialect dialect) {
    const CivilDate date = civil_from_day(day);
    format_date<Unit>(&handle_, date.month, date.day, date.year, style, out_, room, &length_);
    // Leniently by recognition, strictly by the pattern that wrote the text. So with times.
    return reads(read_date<Unit>, dialect == Dialect::lenient ? 4 : style + 1, day);
  }

  bool reads_time(std::int32_t day, std::int32_t second, Dialect dialect) {
    format_time<Unit>(&handle_, day * 86'400.0 + second, 0, out_, room, &length_);
    return reads(read_time<Unit>, dialect == Dialect::lenient ? 4 : 2, second);
  }

  bool reads_datetime(std::int32_t day, std::int32_t second, Dialect dialect) {
    const double value = day * 86'400.0 + second;
    format_datetime<Unit>(&handle_, value, 1, out_, room, &length_);
    return reads(read_date<Unit>,
                 dialect == Dialect::lenient ? reading_modes::lenient | reading_modes::datetime
                                             : reading_modes::datetime,
                 value);
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

/// The locales that do not read every text of a kind that they write. `reads` is given the
/// services, a day, a second of it and the dialect.
template <typename Reads>
Names unread(Dialect dialect, Reads reads) {
  const Database database;
  FakeHost host;
  host.recording = false;
  Names names;
  for (const host::LocaleRow& row : host::available_locales()) {
    const auto record = database.record(row.name);
    Services<char16_t> services(host, *record);
    Services<char> services_8bit(host, *record);
    // The first and last second of hours where clocks turn, then seconds in every hour.
    constexpr std::array turns = {0, 59, 3'599, 3'600, 43'199, 43'200, 46'799, 46'800, 86'399};
    for (std::size_t n = 0; n < 366; ++n) {
      const auto day = day_from_civil({2024, 1, 1}) + static_cast<std::int32_t>(n);
      const auto second =
          n < turns.size() ? turns[n] : static_cast<std::int32_t>(n * 7919 % 86'400);
      const bool is_read = reads(services, day, second, dialect);
      EXPECT_EQ(reads(services_8bit, day, second, dialect), is_read)
          << row.name << ", day " << n << ": the encodings differ";
      if (!is_read) names.insert(row.name);
    }
  }
  return names;
}

Names both(Names names, const Names& others) {
  names.insert(others.begin(), others.end());
  return names;
}

TEST(RoundTrip, DatesAreReadBack) {
  const Names unread_styles[] = {{}, medium_date_unread, long_date_unread};
  for (std::uint32_t style = 0; style < 3; ++style) {
    for (const Dialect dialect : {Dialect::lenient, Dialect::strict}) {
      const auto reads = [style](auto& services, auto day, auto /*second*/, Dialect in) {
        return services.reads_date(style, day, in);
      };
      EXPECT_EQ(unread(dialect, reads), unread_styles[style]) << "style " << style;
    }
  }
}

TEST(RoundTrip, TimesAreReadBack) {
  const auto reads = [](auto& services, auto day, auto second, Dialect dialect) {
    return services.reads_time(day, second, dialect);
  };
  EXPECT_EQ(unread(Dialect::lenient, reads), Names{});
  EXPECT_EQ(unread(Dialect::strict, reads), designator_first);
}

TEST(RoundTrip, DatetimesAreReadBack) {
  const auto reads = [](auto& services, auto day, auto second, Dialect dialect) {
    return services.reads_datetime(day, second, dialect);
  };
  EXPECT_EQ(unread(Dialect::lenient, reads), medium_date_unread);
  EXPECT_EQ(unread(Dialect::strict, reads), both(medium_date_unread, designator_first));
}

}  // namespace
}  // namespace jwnls::test
