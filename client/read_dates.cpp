// Dates, times of day, datetimes and periods read from text, through the UTF-16 services.

#include <algorithm>
#include <cstdint>
#include <optional>
#include <string>

#include "abi/locale_handle.h"
#include "abi/reading_modes.h"
#include "client/fitting_part.h"
#include "client/locale.h"
#include "client/locale_state.h"
#include "client/text_input.h"
#include "client/unread_text.h"

namespace jwnls::client {
namespace {

std::uint32_t mode_of(const DateReading& reading) {
  return static_cast<std::uint32_t>(reading.pattern) |
         (reading.strict ? 0 : reading_modes::lenient);
}

std::uint32_t mode_of(const TimeReading& reading) {
  using namespace reading_modes;
  if (reading.pattern == 1) return time_pattern_1;
  if (reading.strict) return time_pattern_2;
  return reading.pattern == 2 ? time_pattern_2_lenient : time_recognition;
}

Result<void> check_pattern(int pattern, int last) {
  if (pattern >= 0 && pattern <= last) return {};
  return failure(Status::not_possible,
                 "pattern " + std::to_string(pattern) + ": not 0 to " + std::to_string(last));
}

// A mistake that a text may hold though each of its fields can be read: were the digits of a field
// others, the text would be a date.
struct Mistake {
  std::size_t digits;  // of the field
  int least;           // its value
  int most;
  std::u16string_view mended;
  const char* reason;
};
constexpr Mistake mistakes[] = {
    {2, 29, 31, u"28", "no such date in the calendar"},
    {4, 0, 1581, u"1999", "years before 1582 are not in the calendar"},
    {5, 10000, 20000, u"1999", "years of five digits are not read"},
};

bool is_digit(char16_t unit) { return unit >= u'0' && unit <= u'9'; }

// One service, told how to read.
class Reader {
 public:
  Reader(LocaleHandle* handle, ReadDate<char16_t>* service, std::uint32_t mode)
      : handle_(handle), service_(service), mode_(mode) {}

  /// The value of a text that is read whole; single patterns leave what follows them.
  [[nodiscard]] std::optional<double> value(std::u16string_view text) const {
    double value = 0;
    std::uint64_t consumed = 0;
    const Status status{service_(handle_, text.data(), static_cast<std::int64_t>(text.size()),
                                 mode_, &value, &consumed)};
    const std::u16string_view rest = text.substr(std::min<std::size_t>(consumed, text.size()));
    if (status != Status::ok || rest.find_first_not_of(u' ') != rest.npos) return std::nullopt;
    return value;
  }

  [[nodiscard]] const char* mistake_in(std::u16string_view text) const {
    for (std::size_t at = 0; at < text.size();) {
      std::size_t end = at;
      int number = 0;
      for (; end < text.size() && is_digit(text[end]) && end - at <= 5; ++end) {
        number = number * 10 + (text[end] - u'0');
      }
      for (const Mistake& mistake : mistakes) {
        if (end - at != mistake.digits || number < mistake.least || number > mistake.most) continue;
        std::u16string mended(text);
        mended.replace(at, mistake.digits, mistake.mended);
        if (value(mended)) return mistake.reason;
      }
      at = std::max(end, at + 1);
    }
    return nullptr;
  }

  /// The bytes of a text that can be the begin of one that is read.
  [[nodiscard]] std::size_t fitting_bytes(const TextInput& text, const Endings& endings) const {
    return text.bytes_of(fitting_part(text.units(), endings, [this](std::u16string_view attempt) {
      return value(attempt).has_value();
    }));
  }

 private:
  LocaleHandle* handle_;
  ReadDate<char16_t>* service_;
  std::uint32_t mode_;
};

// Reads as the services do and, unless strictly, what people mean by the text: as it stands first,
// since names hold digits of their script, too.
Result<double> read(const Reader& reader, const char* kind, std::string_view text, bool strict,
                    const Locale& locale, SampleEndings& samples) {
  const auto input = TextInput::of(text);
  if (!input) return unread(kind, text, Status::no_match, "not valid UTF-8");
  if (const auto value = reader.value(input->units())) return *value;
  const auto meant = strict ? std::nullopt : input->with(meaning_in_date);
  if (meant) {
    if (const auto value = reader.value(meant->units())) return *value;
  }
  if (const char* mistake = reader.mistake_in((meant ? *meant : *input).units())) {
    return unread(kind, text, Status::no_match, mistake, text.size());
  }
  const Endings& endings = samples.of(locale);
  std::size_t fitting_bytes = reader.fitting_bytes(*input, endings);
  if (meant) fitting_bytes = std::max(fitting_bytes, reader.fitting_bytes(*meant, endings));
  return unread_behind(kind, text, locale.name(), Status::no_match, fitting_bytes);
}

// The letter of the first directive from `at` on, which moves behind it; 0 at the end.
char16_t next_directive(std::u16string_view pattern, std::size_t& at) {
  at = pattern.find(u'%', std::min(at, pattern.size()));
  if (at != pattern.npos) at = pattern.find_first_not_of(u"%#0?", at);
  return at < pattern.size() ? pattern[at++] : u'\0';
}

// Whether a pattern has its 12-hour clock's designator in front of the hour. The strict dialect
// then adds the afternoon's twelve hours to an hour that is still to come, and loses them.
bool designator_leads(std::u16string_view pattern) {
  for (std::size_t at = 0;;) {
    const char16_t letter = next_directive(pattern, at);
    if (letter == u'p') return true;
    if (letter == 0 || std::u16string_view(u"HIkl").find(letter) != pattern.npos) return false;
  }
}

Result<void> check_strict(const TextEntry& pattern, const Locale& locale) {
  if (!designator_leads(text_of(pattern))) return {};
  return failure(Status::not_possible, locale.name() +
                                           " writes AM or PM before the hour: its times are not "
                                           "read strictly");
}

}  // namespace

Result<void> check(const DateReading& reading) { return check_pattern(reading.pattern, 3); }

Result<void> check(const TimeReading& reading) { return check_pattern(reading.pattern, 2); }

Result<std::chrono::year_month_day> Locale::read_date(std::string_view text,
                                                      const DateReading& reading) const {
  if (const auto usable = check(reading); !usable) return tl::unexpected<Error>(usable.error());
  const Reader reader(handle(), handle()->services.read_date, mode_of(reading));
  return read(reader, "date", text, reading.strict, *this, state_->date_endings)
      .map([](double days) {
        return civil_date(DateValue{days}).value_or(std::chrono::year_month_day{});
      });
}

Result<std::chrono::seconds> Locale::read_time(std::string_view text,
                                               const TimeReading& reading) const {
  if (const auto usable = check(reading); !usable) return tl::unexpected<Error>(usable.error());
  const Reader reader(handle(), handle()->services.read_time, mode_of(reading));
  const bool strict = reading.strict || reading.pattern == 1;
  if (strict) {
    const auto& pattern =
        reading.pattern == 1 ? record().datetime_pattern : record().style_0_pattern;
    const auto usable = check_strict(pattern, *this);
    if (!usable) return tl::unexpected<Error>(usable.error());
  }
  return read(reader, "time", text, strict, *this, state_->time_endings).map([](double seconds) {
    return std::chrono::seconds{static_cast<std::int64_t>(seconds)};
  });
}

Result<std::chrono::local_seconds> Locale::read_datetime(std::string_view text,
                                                         const DateReading& reading) const {
  if (const auto usable = check(reading); !usable) return tl::unexpected<Error>(usable.error());
  if (reading.strict) {
    const auto usable = check_strict(record().datetime_pattern, *this);
    if (!usable) return tl::unexpected<Error>(usable.error());
  }
  const Reader reader(handle(), handle()->services.read_date,
                      mode_of(reading) | reading_modes::datetime);
  return read(reader, "datetime", text, reading.strict, *this, state_->datetime_endings)
      .map([](double seconds) {
        return civil_time(DatetimeValue{seconds}).value_or(std::chrono::local_seconds{});
      });
}

Result<std::chrono::year_month_day> Locale::read_period(std::string_view text) const {
  const Reader reader(handle(), handle()->services.read_period, reading_modes::lenient);
  return read(reader, "period", text, false, *this, state_->period_endings).map([](double days) {
    return civil_date(DateValue{days}).value_or(std::chrono::year_month_day{});
  });
}

}  // namespace jwnls::client
