#include "bench/date_reading.h"

#if defined(__GNUC__) && !defined(__clang__)
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wmaybe-uninitialized"  // g++ 12 suspects a variable in there
#include <date/date.h>
#pragma GCC diagnostic pop
#else
#include <date/date.h>
#endif
#include <locale.h>
#include <unicode/udat.h>

#include <array>
#include <cstdint>
#include <ctime>
#include <limits>
#include <memory>
#include <random>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "abi/reading_modes.h"
#include "bench/contest.h"
#include "bench/handles.h"

namespace jwnls::bench {
namespace {

constexpr double unread = std::numeric_limits<double>::quiet_NaN();
constexpr date::sys_days day_zero = date::year(1960) / 1 / 1;

// A text in the two forms that contestants take it in, and what it must be read as.
struct WrittenText {
  std::string_view utf8;  // a zero follows
  std::u16string_view utf16;
  double value;  // days or seconds since the start of 1960, or seconds since midnight
};

// The texts of a task, one behind the other.
class Texts {
 public:
  Texts() {
    utf8_.reserve(value_count * longest);
    utf16_.reserve(value_count * longest);
    texts_.reserve(value_count);
  }
  void add(std::string_view ascii, double value) {
    const std::size_t start = utf16_.size();
    utf8_.append(ascii).push_back('\0');
    utf16_.append(ascii.begin(), ascii.end()).push_back(u'\0');
    texts_.push_back(
        {{utf8_.data() + start, ascii.size()}, {utf16_.data() + start, ascii.size()}, value});
  }
  const WrittenText& operator[](std::size_t index) const { return texts_[index]; }

 private:
  static constexpr std::size_t longest = 40;
  std::string utf8_;
  std::u16string utf16_;
  std::vector<WrittenText> texts_;
};

// A random moment from 1960 to 2099.
class Moments {
 public:
  std::tm next() {
    const std::time_t seconds = seconds_(random_);
    std::tm moment;
    gmtime_r(&seconds, &moment);
    return moment;
  }
  std::size_t below(std::size_t bound) { return random_() % bound; }

 private:
  std::mt19937_64 random_{20240315};
  std::uniform_int_distribution<std::int64_t> seconds_{-315619200, 4102444799};
};

// What a value counts.
double days_of(const std::tm& tm) {
  const date::sys_days day = date::year(tm.tm_year + 1900) / (tm.tm_mon + 1) / tm.tm_mday;
  return static_cast<double>((day - day_zero).count());
}
double clock_of(const std::tm& tm) { return (tm.tm_hour * 60 + tm.tm_min) * 60 + tm.tm_sec; }
double seconds_of(const std::tm& tm) { return days_of(tm) * 86400 + clock_of(tm); }

std::string written(const std::tm& moment, const char* pattern) {
  std::array<char, 64> text;
  return {text.data(), std::strftime(text.data(), text.size(), pattern, &moment)};
}

// Texts by a pattern of strftime in the C locale, whose names are English.
template <typename ValueOf>
std::shared_ptr<const Texts> texts_by(const char* pattern, ValueOf value_of) {
  auto texts = std::make_shared<Texts>();
  Moments moments;
  for (std::size_t i = 0; i < value_count; ++i) {
    const std::tm moment = moments.next();
    texts->add(written(moment, pattern), value_of(moment));
  }
  return texts;
}

// A contestant. `make` gives its reader, double(const WrittenText&), which keeps what it needs
// between texts; before the first timing it has to read every text right.
template <typename MakeReader>
void contestant(const char* task, Side side, const char* name,
                const std::shared_ptr<const Texts>& texts, MakeReader make) {
  enter(task, side, name, [=, checked = false](benchmark::State& state) mutable {
    auto read = make();
    for (std::size_t i = 0; i < value_count && !checked; ++i) {
      const WrittenText& text = (*texts)[i];
      if (read(text) == text.value) continue;
      state.SkipWithError(("does not read " + std::string(text.utf8)).c_str());
      return;
    }
    checked = true;
    walk(state, [&](std::size_t i) { benchmark::DoNotOptimize(read((*texts)[i])); });
  });
}

// Both encodings of one of our services.
void ours(const char* task, const std::shared_ptr<const Texts>& texts, LocaleHandle* handle,
          ReadDate<char16_t>* utf16, ReadDate<char>* utf8, std::uint32_t mode) {
  const auto reader = [=](auto service, auto text_of_unit) {
    return [=] {
      return [=](const WrittenText& written) {
        const auto text = written.*text_of_unit;
        double value = unread;
        std::uint64_t consumed = 0;
        service(handle, text.data(), static_cast<std::int64_t>(text.size()), mode, &value,
                &consumed);
        return consumed == text.size() ? value : unread;
      };
    };
  };
  contestant(task, Side::ours, "UTF-16", texts, reader(utf16, &WrittenText::utf16));
  contestant(task, Side::ours, "UTF-8", texts, reader(utf8, &WrittenText::utf8));
}

// strptime_l in a locale of the C library, patterns tried in order. Without that locale nothing is
// read right and the contest is not run.
class CLibraryReader {
 public:
  CLibraryReader(const char* locale, std::vector<const char*> patterns,
                 double (*value_of)(const std::tm&))
      : locale_(newlocale(LC_ALL_MASK, locale, nullptr)),
        patterns_(std::move(patterns)),
        value_of_(value_of) {}

  double operator()(const WrittenText& text) const {
    if (locale_ == nullptr) return unread;
    std::tm tm = {};
    for (const char* pattern : patterns_) {
      const char* end = strptime_l(text.utf8.data(), pattern, &tm, locale_.get());
      if (end != nullptr && *end == '\0') return value_of_(tm);
    }
    return unread;
  }

 private:
  struct Free {
    void operator()(locale_t locale) const { freelocale(locale); }
  };
  std::unique_ptr<std::remove_pointer_t<locale_t>, Free> locale_;
  std::vector<const char*> patterns_;
  double (*value_of_)(const std::tm&);
};

void c_library(const char* task, const std::shared_ptr<const Texts>& texts, const char* locale,
               const std::vector<const char*>& patterns, double (*value_of)(const std::tm&)) {
  contestant(task, Side::peer, "strptime_l", texts,
             [=] { return CLibraryReader(locale, patterns, value_of); });
}

// date::from_stream, what date::parse calls, from one stream that is given text after text.
template <typename Time>
void date_library(const char* task, const std::shared_ptr<const Texts>& texts, const char* pattern,
                  Time zero) {
  contestant(task, Side::peer, "date", texts, [=] {
    return [=, stream = std::istringstream()](const WrittenText& text) mutable {
      stream.clear();
      stream.str(std::string(text.utf8));
      Time time = zero;
      date::from_stream(stream, pattern, time);
      return stream.fail() ? unread : static_cast<double>((time - zero).count());
    };
  });
}

// ICU with its formatters opened once, tried in order.
class IcuReader {
 public:
  IcuReader(const char* locale, const std::vector<const char16_t*>& patterns,
            double units_per_millisecond, double zero)
      : scale_(units_per_millisecond), zero_(zero) {
    UErrorCode error = U_ZERO_ERROR;
    for (const char16_t* pattern : patterns) {
      UDateFormat* format =
          udat_open(UDAT_PATTERN, UDAT_PATTERN, locale, u"UTC", -1, pattern, -1, &error);
      if (U_FAILURE(error)) return;
      udat_setLenient(format, false);
      formats_.emplace_back(format);
    }
  }

  double operator()(const WrittenText& text) const {
    const auto length = static_cast<std::int32_t>(text.utf16.size());
    for (const auto& format : formats_) {
      UErrorCode error = U_ZERO_ERROR;
      std::int32_t position = 0;
      const UDate read = udat_parse(format.get(), text.utf16.data(), length, &position, &error);
      if (U_SUCCESS(error) && position == length) return read * scale_ + zero_;
    }
    return unread;
  }

 private:
  struct Close {
    void operator()(UDateFormat* format) const { udat_close(format); }
  };
  std::vector<std::unique_ptr<UDateFormat, Close>> formats_;
  double scale_;
  double zero_;
};

void icu(const char* task, const std::shared_ptr<const Texts>& texts, const char* locale,
         const std::vector<const char16_t*>& patterns, double units_per_millisecond, double zero) {
  contestant(task, Side::icu, "ICU", texts,
             [=] { return IcuReader(locale, patterns, units_per_millisecond, zero); });
}

constexpr double days_per_millisecond = 1.0 / 86400000;
constexpr double seconds_per_millisecond = 1.0 / 1000;
constexpr double days_1960_to_1970 = 3653;

// The lenient dialect, which is as free with blanks, case and digits as strptime is.
constexpr std::uint32_t lenient = reading_modes::lenient;
constexpr std::uint32_t date_pattern_3 = 0x3;
constexpr std::uint32_t datetime_value = reading_modes::datetime;
constexpr std::uint32_t recognition = 0x4;

void known_date() {
  const char* task = "read 15 March 2024";
  declare({task, 0.06, 0.015});
  const auto texts = texts_by("%-d %B %Y", days_of);
  LocaleHandle* handle = handle_of(u"en_GB");
  ours(task, texts, handle, handle->services.read_date, handle->services.read_date_8bit,
       lenient | date_pattern_3);
  c_library(task, texts, "en_GB.UTF-8", {"%d %B %Y"}, days_of);
  date_library(task, texts, "%d %B %Y", day_zero);
  icu(task, texts, "en_GB", {u"d MMMM y"}, days_per_millisecond, days_1960_to_1970);
}

void time_of_day() {
  const char* task = "read 14:30:15";
  declare({task, 0.85, 0});
  const auto texts = texts_by("%H:%M:%S", clock_of);
  LocaleHandle* handle = handle_of(u"en_GB");
  ours(task, texts, handle, handle->services.read_time, handle->services.read_time_8bit,
       recognition);
  c_library(task, texts, "en_GB.UTF-8", {"%H:%M:%S"}, clock_of);
  date_library(task, texts, "%H:%M:%S", std::chrono::seconds(0));
  icu(task, texts, "en_GB", {u"HH:mm:ss"}, seconds_per_millisecond, 0);
}

void datetime() {
  const char* task = "read 15 March 2024, 14:30:15";
  declare({task, 0.09, 0.013});
  const auto texts = texts_by("%-d %B %Y, %H:%M:%S", seconds_of);
  LocaleHandle* handle = handle_of(u"en_GB");
  set_pattern(handle->record->datetime_pattern, u"%E %B %Y, %H:%M:%S");
  ours(task, texts, handle, handle->services.read_date, handle->services.read_date_8bit,
       lenient | datetime_value | date_pattern_3);
  c_library(task, texts, "en_GB.UTF-8", {"%d %B %Y, %H:%M:%S"}, seconds_of);
  date_library(task, texts, "%d %B %Y, %H:%M:%S", date::sys_seconds(day_zero));
  icu(task, texts, "en_GB", {u"d MMMM y, HH:mm:ss"}, seconds_per_millisecond,
      days_1960_to_1970 * 86400);
}

// The twenty candidates of a locale that writes the month first, in order: how a text is written in
// each, and each as the peers write it.
struct Layout {
  const char* writing;
  const char* reading;
  const char16_t* icu;
};
constexpr Layout layouts[] = {
    {"%m/%d/%Y", "%m/%d/%Y", u"MM/dd/y"},        {"%b %-d, %Y", "%b %d, %Y", u"MMM d, y"},
    {"%B %-d, %Y", "%B %d, %Y", u"MMMM d, y"},   {"%m/%d/%Y", "%m/%d/%Y", u"MM/dd/y"},
    {"%m-%d-%Y", "%m-%d-%Y", u"MM-dd-y"},        {"%m.%d.%Y", "%m.%d.%Y", u"MM.dd.y"},
    {"%Y/%m/%d", "%Y/%m/%d", u"y/MM/dd"},        {"%Y-%m-%d", "%Y-%m-%d", u"y-MM-dd"},
    {"%Y.%m.%d", "%Y.%m.%d", u"y.MM.dd"},        {"%Y/%b/%d", "%Y/%b/%d", u"y/MMM/dd"},
    {"%Y-%b-%d", "%Y-%b-%d", u"y-MMM-dd"},       {"%Y.%b.%d", "%Y.%b.%d", u"y.MMM.dd"},
    {"%b %-d %Y", "%b %d%Y", u"MMM d y"},        {"%b/%d/%Y", "%b/%d/%Y", u"MMM/dd/y"},
    {"%b.%d.%Y", "%b.%d.%Y", u"MMM.dd.y"},       {"%b-%d-%Y", "%b-%d-%Y", u"MMM-dd-y"},
    {"%a,%b%d,%Y", "%a,%b%d,%Y", u"EEE,MMMd,y"}, {"%d.%m.%Y", "%d.%m.%Y", u"dd.MM.y"},
    {"%d-%m-%Y", "%d-%m-%Y", u"dd-MM-y"},        {"%d/%m/%Y", "%d/%m/%Y", u"dd/MM/y"}};

void recognised_date() {
  const char* task = "recognise a date";
  declare({task, 0.10, 0.012});
  auto texts = std::make_shared<Texts>();
  Moments moments;
  for (std::size_t i = 0; i < value_count; ++i) {
    const Layout& layout = layouts[moments.below(std::size(layouts))];
    std::tm moment = moments.next();
    // Where the day comes first it is one that no month-first layout takes.
    if (layout.writing[1] == 'd' && moment.tm_mday <= 12) moment.tm_mday += 12;
    texts->add(written(moment, layout.writing), days_of(moment));
  }
  std::vector<const char*> patterns;
  std::vector<const char16_t*> icu_patterns;
  for (const Layout& layout : layouts) {
    patterns.push_back(layout.reading);
    icu_patterns.push_back(layout.icu);
  }
  LocaleHandle* handle = handle_of(u"en_US");
  ours(task, texts, handle, handle->services.read_date, handle->services.read_date_8bit,
       recognition);
  c_library(task, texts, "en_US.UTF-8", patterns, days_of);
  icu(task, texts, "en_US", icu_patterns, days_per_millisecond, days_1960_to_1970);
}

}  // namespace

void enter_date_reading() {
  known_date();
  time_of_day();
  datetime();
  recognised_date();
}

}  // namespace jwnls::bench
