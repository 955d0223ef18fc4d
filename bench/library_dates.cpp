#include "bench/library_dates.h"

#include <unicode/udat.h>

#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "bench/contest.h"
#include "include/jwnls/jwnls.h"
#include "library/layouts/layout.h"
#include "library/texts/utf8.h"
#include "module/calendar/civil.h"

namespace jwnls::bench {
namespace {

constexpr std::int32_t days_1960_to_1970 = 3653;
constexpr std::uint32_t recognition = 0x4;
constexpr std::uint32_t datetime_value = 0x200;

// A layout, values of some ninety years, and their texts in it.
struct Column {
  jwnls_layout* layout = nullptr;
  std::vector<std::int32_t> days;
  std::vector<std::int64_t> microseconds;
  std::vector<std::string> texts;
  std::vector<std::u16string> units;

  [[nodiscard]] LocaleHandle* handle() const { return layout->locale->handle; }
};
using SharedColumn = std::shared_ptr<const Column>;

SharedColumn make_column(const char* locale, int kind, const char* options) {
  auto column = std::make_shared<Column>();
  jwnls_error error;
  if (jwnls_open(locale, kind, options, &column->layout, &error) != JWNLS_OK) return nullptr;
  std::uint64_t random = 20240315;
  for (std::size_t i = 0; i < value_count; ++i) {
    random = random * 6364136223846793005 + 1442695040888963407;
    const auto day = static_cast<std::int32_t>((random >> 33) % 32000) - 3000;
    const auto second = static_cast<std::int64_t>((random >> 20) % 86400);
    column->days.push_back(day);
    column->microseconds.push_back((std::int64_t{day} * 86400 + second) * 1'000'000);
    std::array<char, 600> text;
    std::size_t length = 0;
    if (kind == JWNLS_DATE) {
      jwnls_write_date(column->layout, day, text.data(), text.size(), &length);
    } else {
      jwnls_write_datetime(column->layout, column->microseconds.back(), text.data(), text.size(),
                           &length);
    }
    column->texts.emplace_back(text.data(), length);
    std::u16string units(length, u'\0');
    units.resize(library::to_utf16(column->texts.back(), units.data(), length).value_or(0));
    column->units.push_back(units);
  }
  return column;
}

// Enters a contestant that does one call for each value; `call(i)` gives false when it fails.
template <typename Call>
void contestant(const char* task, Side side, const char* name, Call call) {
  enter(task, side, name, [=](benchmark::State& state) mutable {
    for (std::size_t i = 0; i < value_count; ++i) {
      if (!call(i)) return state.SkipWithError("fails");
    }
    walk(state, [&](std::size_t i) { benchmark::DoNotOptimize(call(i)); });
  });
}

// Our time is to be at most 1.25 times the service's and 3 ns: 1.4 of the shortest text's.
void write_dates(const char* task, const char* locale, const char* options) {
  declare({task, 1.4, 0});
  const SharedColumn column = make_column(locale, JWNLS_DATE, options);
  if (column == nullptr) return;
  contestant(task, Side::ours, "UTF-8", [column](std::size_t i) {
    std::array<char, 100> text;
    std::size_t length = 0;
    return jwnls_write_date(column->layout, column->days[i], text.data(), text.size(), &length) ==
           JWNLS_OK;
  });
  auto dates = std::make_shared<std::vector<CivilDate>>();
  for (const std::int32_t day : column->days) {
    dates->push_back(civil_from_day(day + days_1960_to_1970));
  }
  contestant(task, Side::peer, "service", [column, dates](std::size_t i) {
    std::array<char, 100> text;
    std::int64_t length = 0;
    const CivilDate& date = (*dates)[i];
    LocaleHandle* const handle = column->handle();
    return handle->services.format_date_8bit(handle, date.month, date.day, date.year,
                                             column->layout->dates->date_style, text.data(),
                                             text.size(), &length) == 0;
  });
}

struct CloseFormat {
  void operator()(UDateFormat* format) const { udat_close(format); }
};

void icu_reader(const char* task, const char* name, const SharedColumn& column, const char* locale,
                UDateFormatStyle style, UDateFormatStyle time_style, bool lenient) {
  UErrorCode error = U_ZERO_ERROR;
  const std::shared_ptr<UDateFormat> format(
      udat_open(time_style, style, locale, u"UTC", -1, nullptr, 0, &error), CloseFormat());
  if (U_FAILURE(error)) return;
  udat_setLenient(format.get(), static_cast<UBool>(lenient));
  // ICU does not take plain blanks for its no-break ones.
  std::int32_t end = 0;
  udat_parse(format.get(), column->units[0].data(),
             static_cast<std::int32_t>(column->units[0].size()), &end, &error);
  if (U_FAILURE(error)) return;
  contestant(task, lenient ? Side::reference : Side::icu, name, [=](std::size_t i) {
    UErrorCode status = U_ZERO_ERROR;
    const std::u16string& text = column->units[i];
    std::int32_t position = 0;
    udat_parse(format.get(), text.data(), static_cast<std::int32_t>(text.size()), &position,
               &status);
    return U_SUCCESS(status);
  });
}

// Reading against the service's recognition of the same texts.
void read_values(const char* task, double target, const char* locale, int kind, const char* options,
                 UDateFormatStyle style) {
  declare({task, target, 0.1});
  const SharedColumn column = make_column(locale, kind, options);
  if (column == nullptr) return;
  const bool is_date = kind == JWNLS_DATE;
  contestant(task, Side::ours, "UTF-8", [column, is_date](std::size_t i) {
    const std::string& text = column->texts[i];
    std::int32_t days = 0;
    std::int64_t microseconds = 0;
    std::uint8_t facts = 0;
    if (is_date) {
      return jwnls_read_date(column->layout, text.data(), text.size(), &days, &facts) == JWNLS_OK &&
             days == column->days[i];
    }
    return jwnls_read_datetime(column->layout, text.data(), text.size(), &microseconds, &facts) ==
               JWNLS_OK &&
           microseconds == column->microseconds[i];
  });
  contestant(task, Side::peer, "service", [column, is_date](std::size_t i) {
    const std::string& text = column->texts[i];
    double value = 0;
    std::uint64_t consumed = 0;
    LocaleHandle* const handle = column->handle();
    return handle->services.read_date_8bit(
               handle, text.data(), static_cast<std::int64_t>(text.size()),
               recognition | (is_date ? 0 : datetime_value), &value, &consumed) == 0;
  });
  const UDateFormatStyle time = is_date ? UDAT_NONE : UDAT_MEDIUM;
  icu_reader(task, "ICU strict", column, locale, style, time, false);
  icu_reader(task, "ICU lenient", column, locale, style, time, true);
}

}  // namespace

void enter_library_dates() {
  write_dates("library: write 04.09.2018", "de_DE", "style=short");
  write_dates("library: write 4 wrzesnia 2018", "pl_PL", "style=long");
  read_values("library: read 04.09.2018", 0.8, "de_DE", JWNLS_DATE, "", UDAT_MEDIUM);
  read_values("library: read 4. September 2018", 0.8, "de_DE", JWNLS_DATE, "style=long", UDAT_LONG);
  read_values("library: read 4 wrzesnia 2018", 0.8, "pl_PL", JWNLS_DATE, "style=long", UDAT_LONG);
  read_values("library: read 4 wrz 2018", 0.8, "pl_PL", JWNLS_DATE, "", UDAT_MEDIUM);
  read_values("library: read 4 sentyabrya 2018 g.", 0.8, "ru_RU", JWNLS_DATE, "style=long",
              UDAT_LONG);
  read_values("library: read 2018 nen 9 gatsu 4 nichi", 0.8, "ja_JP", JWNLS_DATE, "style=long",
              UDAT_LONG);
  read_values("library: read Sep 4, 2018, 2:30:05 PM", 1.0, "en_US", JWNLS_DATETIME, "",
              UDAT_MEDIUM);
  read_values("library: read 04.09.2018, 14:30:05", 1.0, "de_DE", JWNLS_DATETIME, "", UDAT_MEDIUM);
}

}  // namespace jwnls::bench
