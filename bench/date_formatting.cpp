#include "bench/date_formatting.h"

#include <absl/time/time.h>
#include <date/date.h>
#include <fmt/chrono.h>
#include <fmt/compile.h>
#include <locale.h>
#include <unicode/udat.h>

#include <array>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <memory>
#include <random>
#include <sstream>
#include <string>
#include <vector>

#include "bench/contest.h"
#include "bench/handles.h"

namespace jwnls::bench {
namespace {

constexpr std::int64_t seconds_1960_to_1970 = 315619200;

// One moment in every form that a contestant takes it in: splitting it is part of the task only for
// those who take seconds. strftime_l and {fmt} are given the finished tm.
struct Moment {
  std::int32_t month, day, year;
  double seconds;  // since 1 January 1960
  std::tm tm;
  absl::Time time;
  date::sys_seconds sys_seconds;
  double milliseconds;  // since 1 January 1970
};

const std::vector<Moment>& moments() {
  static const std::vector<Moment> all = [] {
    std::vector<Moment> made(value_count);
    std::mt19937_64 random(20240315);
    std::uniform_int_distribution<std::int64_t> seconds(-315619200, 4102444799);  // 1960 to 2099
    for (Moment& moment : made) {
      const std::time_t unix_seconds = seconds(random);
      gmtime_r(&unix_seconds, &moment.tm);
      moment.month = moment.tm.tm_mon + 1;
      moment.day = moment.tm.tm_mday;
      moment.year = moment.tm.tm_year + 1900;
      moment.seconds = static_cast<double>(unix_seconds + seconds_1960_to_1970);
      moment.time = absl::FromUnixSeconds(unix_seconds);
      moment.sys_seconds = date::sys_seconds(std::chrono::seconds(unix_seconds));
      moment.milliseconds = static_cast<double>(unix_seconds) * 1000.0;
    }
    return made;
  }();
  return all;
}

constexpr std::int64_t room = 96;

template <typename Unit, typename Service>
void ours(const char* task, const char* contestant, Service service) {
  enter(task, Side::ours, contestant, [service](benchmark::State& state) {
    std::array<Unit, room> text;
    std::int64_t length = 0;
    walk(state, [&](std::size_t i) {
      service(moments()[i], text.data(), &length);
      benchmark::DoNotOptimize(text.data());
      benchmark::ClobberMemory();
    });
  });
}

// strftime_l in a locale of the C library. Without that locale the contest is not run at all.
void c_library(const char* task, const char* locale_name, const char* pattern) {
  enter(task, Side::peer, "strftime_l", [=](benchmark::State& state) {
    locale_t locale = newlocale(LC_ALL_MASK, locale_name, nullptr);
    if (locale == nullptr) {
      state.SkipWithError("no such locale of the C library (scripts/bench makes it)");
      return;
    }
    std::array<char, room> text;
    walk(state, [&](std::size_t i) {
      strftime_l(text.data(), text.size(), pattern, &moments()[i].tm, locale);
      benchmark::ClobberMemory();
    });
    freelocale(locale);
  });
}

// {fmt}, English names only: with the pattern as data, and compiled into the program.
template <typename Format>
void formatted(const char* task, fmt::string_view pattern, Format compiled) {
  enter(task, Side::peer, "{fmt}", [pattern](benchmark::State& state) {
    std::array<char, room> text;
    walk(state, [&](std::size_t i) {
      fmt::vformat_to(text.data(), pattern, fmt::make_format_args(moments()[i].tm));
      benchmark::ClobberMemory();
    });
  });
  enter(task, Side::reference, "{fmt}, compiled in", [compiled](benchmark::State& state) {
    std::array<char, room> text;
    walk(state, [&](std::size_t i) {
      fmt::format_to(text.data(), compiled, moments()[i].tm);
      benchmark::ClobberMemory();
    });
  });
}

void absl_time(const char* task, const char* pattern) {
  enter(task, Side::peer, "absl", [pattern](benchmark::State& state) {
    const absl::TimeZone utc = absl::UTCTimeZone();
    walk(state, [&](std::size_t i) {
      benchmark::DoNotOptimize(absl::FormatTime(pattern, moments()[i].time, utc));
    });
  });
}

void date_library(const char* task, const char* pattern) {
  enter(task, Side::peer, "date", [pattern](benchmark::State& state) {
    std::ostringstream stream;
    walk(state, [&](std::size_t i) {
      stream.str({});
      date::to_stream(stream, pattern, moments()[i].sys_seconds);
      benchmark::ClobberMemory();
    });
  });
}

// ICU with its formatter opened once.
void icu(const char* task, const char* locale, const char16_t* pattern) {
  enter(task, Side::icu, "ICU", [=](benchmark::State& state) {
    UErrorCode error = U_ZERO_ERROR;
    UDateFormat* format =
        udat_open(UDAT_PATTERN, UDAT_PATTERN, locale, u"UTC", -1, pattern, -1, &error);
    std::array<UChar, room> text;
    walk(state, [&](std::size_t i) {
      udat_format(format, moments()[i].milliseconds, text.data(), room, nullptr, &error);
      benchmark::ClobberMemory();
    });
    if (U_FAILURE(error)) state.SkipWithError(u_errorName(error));
    udat_close(format);
  });
}

// Both encodings of a date by the handle's style 2.
void ours_date(const char* task, LocaleHandle* handle) {
  const auto enter_unit = [=](auto unit, const char* contestant, auto service) {
    using Unit = decltype(unit);
    ours<Unit>(task, contestant, [=](const Moment& m, Unit* text, std::int64_t* length) {
      service(handle, m.month, m.day, m.year, 2, text, room, length);
    });
  };
  enter_unit(char16_t{}, "UTF-16", handle->services.format_date);
  enter_unit(char{}, "UTF-8", handle->services.format_date_8bit);
}

// Both encodings of a datetime value.
void ours_value(const char* task, LocaleHandle* handle, FormatDatetime<char16_t>* utf16,
                FormatDatetime<char>* utf8) {
  const auto enter_unit = [=](auto unit, const char* contestant, auto service) {
    using Unit = decltype(unit);
    ours<Unit>(task, contestant, [=](const Moment& m, Unit* text, std::int64_t* length) {
      service(handle, m.seconds, 1, text, room, length);
    });
  };
  enter_unit(char16_t{}, "UTF-16", utf16);
  enter_unit(char{}, "UTF-8", utf8);
}

void long_date() {
  const char* task = "15 March 2024";
  declare({task, 0.55, 0.03});
  ours_date(task, handle_of(u"en_GB"));
  c_library(task, "en_GB.UTF-8", "%-d %B %Y");
  formatted(task, "{:%d %B %Y}", FMT_COMPILE("{:%d %B %Y}"));
  absl_time(task, "%d %B %Y");
  date_library(task, "%d %B %Y");
  icu(task, "en_GB", u"d MMMM y");
}

void weekday_date() {
  const char* task = "Freitag, 15. M\u00E4rz 2024";
  declare({task, 0.45, 0.03});
  LocaleHandle* handle = handle_of(u"de_DE");
  set_pattern(handle->record->date_patterns[2], u"%A, %E. %B %Y");
  ours_date(task, handle);
  c_library(task, "de_DE.UTF-8", "%A, %-d. %B %Y");
  formatted(task, "{:%A, %d. %B %Y}", FMT_COMPILE("{:%A, %d. %B %Y}"));
  absl_time(task, "%A, %d. %B %Y");
  date_library(task, "%A, %d. %B %Y");
  icu(task, "de_DE", u"EEEE, d. MMMM y");
}

void time_of_day() {
  const char* task = "14:30:15";
  declare({task, 0.60, 0.02});
  LocaleHandle* handle = handle_of(u"de_DE");
  ours_value(task, handle, handle->services.format_time, handle->services.format_time_8bit);
  c_library(task, "de_DE.UTF-8", "%H:%M:%S");
  formatted(task, "{:%H:%M:%S}", FMT_COMPILE("{:%H:%M:%S}"));
  absl_time(task, "%H:%M:%S");
  date_library(task, "%H:%M:%S");
  icu(task, "de_DE", u"HH:mm:ss");
}

void datetime() {
  const char* task = "15.03.2024, 14:30:15";
  declare({task, 0.55, 0.025});
  LocaleHandle* handle = handle_of(u"de_DE");
  ours_value(task, handle, handle->services.format_datetime, handle->services.format_datetime_8bit);
  c_library(task, "de_DE.UTF-8", "%d.%m.%Y, %H:%M:%S");
  formatted(task, "{:%d.%m.%Y, %H:%M:%S}", FMT_COMPILE("{:%d.%m.%Y, %H:%M:%S}"));
  absl_time(task, "%d.%m.%Y, %H:%M:%S");
  date_library(task, "%d.%m.%Y, %H:%M:%S");
  icu(task, "de_DE", u"dd.MM.y, HH:mm:ss");
}

}  // namespace

void enter_date_formatting() {
  long_date();
  weekday_date();
  time_of_day();
  datetime();
}

}  // namespace jwnls::bench
