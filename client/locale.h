// A locale with a time zone: formats and reads dates, times of day, datetimes and numbers the way
// the locale does.

#ifndef JWNLS_CLIENT_LOCALE_H_
#define JWNLS_CLIENT_LOCALE_H_

#include <chrono>
#include <concepts>
#include <cstdint>
#include <limits>
#include <memory>
#include <string>
#include <string_view>
#include <type_traits>

#include "abi/locale_handle.h"
#include "abi/locale_record.h"
#include "client/conventions.h"
#include "client/date_scale.h"
#include "client/number_format.h"
#include "client/reading_options.h"
#include "client/result.h"

namespace jwnls::host {
class Host;
}  // namespace jwnls::host

namespace jwnls::client {

/// What a formatted text comes as: UTF-8 in a std::string, or UTF-16 in a std::u16string.
template <typename T>
concept TextString = std::same_as<T, std::string> || std::same_as<T, std::u16string>;

/// A time zone as it stands at this moment.
struct TimeZone {
  std::string name;          // "Europe/Berlin"
  std::string abbreviation;  // "CET"; "+03" where people use no letters
  std::chrono::seconds offset_from_utc{};
};

/// Made by Host::locale(). Copies share one handle, which lives as long as any of them. Any thread
/// may call anything at any time.
///
/// Every format function gives the text as UTF-8, or with <std::u16string> as UTF-16. Those for
/// dates and times fail with out_of_range for a value outside 1582 to 20000 (see
/// client/date_scale.h for the calendar) or missing_value for a missing one; those for numbers with
/// not_possible for a format that check() refuses.
class Locale {
 public:
  /// The canonical name: "de_DE".
  [[nodiscard]] std::string name() const;

  /// The current time zone.
  [[nodiscard]] Result<TimeZone> time_zone() const;

  /// The same locale with another time zone; this one stays as it is.
  [[nodiscard]] Result<Locale> in_time_zone(std::string_view zone) const;

  /// Changes the time zone of this locale and of its copies; threads that format meanwhile see
  /// either zone. Only for a Host::private_locale(), as others may share the handle (not_possible);
  /// lookup_failed for an unknown zone, and the locale keeps the one it has.
  Result<void> set_time_zone(std::string_view zone);

  /// The wall-clock time of an instant in the current time zone.
  [[nodiscard]] Result<std::chrono::local_seconds> local_time(
      std::chrono::sys_seconds instant) const;

  // ---- Dates.

  template <TextString String = std::string>
  [[nodiscard]] Result<String> format_date(std::chrono::year_month_day date,
                                           DateStyle style = DateStyle::medium) const;
  template <TextString String = std::string>
  [[nodiscard]] Result<String> format_date(DateValue value,
                                           DateStyle style = DateStyle::medium) const;

  // ---- Times of day. Fractions of a second are dropped.

  /// From a time since midnight, 0 to below 24 hours.
  template <TextString String = std::string>
  [[nodiscard]] Result<String> format_time(std::chrono::seconds since_midnight) const;
  template <TextString String = std::string, typename Duration>
  [[nodiscard]] Result<String> format_time(const std::chrono::hh_mm_ss<Duration>& time) const {
    return format_time<String>(std::chrono::floor<std::chrono::seconds>(time.to_duration()));
  }
  /// From a datetime value, of which the time of day is shown.
  template <TextString String = std::string>
  [[nodiscard]] Result<String> format_time(DatetimeValue value) const;

  // ---- Datetimes. Fractions of a second are dropped.

  /// From a wall-clock time, shown as it stands.
  template <TextString String = std::string>
  [[nodiscard]] Result<String> format_datetime(
      std::chrono::local_seconds time, DatetimeStyle style = DatetimeStyle::date_and_time) const;
  template <TextString String = std::string, typename Duration>
  [[nodiscard]] Result<String> format_datetime(
      std::chrono::local_time<Duration> time,
      DatetimeStyle style = DatetimeStyle::date_and_time) const {
    return format_datetime<String>(std::chrono::floor<std::chrono::seconds>(time), style);
  }
  /// From an instant, shown as the wall clock of the current time zone shows it.
  template <TextString String = std::string>
  [[nodiscard]] Result<String> format_datetime(
      std::chrono::sys_seconds instant, DatetimeStyle style = DatetimeStyle::date_and_time) const;
  template <TextString String = std::string, typename Duration>
  [[nodiscard]] Result<String> format_datetime(
      std::chrono::sys_time<Duration> instant,
      DatetimeStyle style = DatetimeStyle::date_and_time) const {
    return format_datetime<String>(std::chrono::floor<std::chrono::seconds>(instant), style);
  }
  template <TextString String = std::string>
  [[nodiscard]] Result<String> format_datetime(
      DatetimeValue value, DatetimeStyle style = DatetimeStyle::date_and_time) const;

  // ---- Numbers. What may be asked for: client/number_format.h. Missing values show their
  // character, another NaN that of the standard one, infinities "Inf" and "-Inf"; all of them
  // stand alone, without a currency symbol or a percent sign.

  /// Digits are exact, halves are rounded away from zero. Fails with not_possible for a number of
  /// more than 350 digits, with does_not_fit where nothing of it fits a kind bound to a width.
  /// `note`, where not null, gets ok, or what the text had to do without: decimals_dropped (a
  /// decimal-aligned number) or grouping_failed.
  template <TextString String = std::string>
  [[nodiscard]] Result<String> format_number(double value, const NumberFormat& format = {},
                                             Status* note = nullptr) const;

  /// Integers of any type. In hexadecimal and octal a negative one is its two's complement of 64
  /// bits. Fails with not_possible where a sign is asked for above 2^63 - 1.
  template <TextString String = std::string, std::integral Integer>
  [[nodiscard]] Result<String> format_integer(Integer value,
                                              const IntegerFormat& format = {}) const {
    if constexpr (std::is_signed_v<Integer>) {
      return format_signed<String>(value, format);
    } else {
      return format_unsigned<String>(value, format);
    }
  }

  /// A grouped number with the locale's currency symbol in front: "€1.234,50". Fails as
  /// format_number() does.
  template <TextString String = std::string>
  [[nodiscard]] Result<String> format_currency(double value,
                                               const CurrencyFormat& format = {}) const;

  /// A hundredfold with "%" behind it: 0.125 gives "12.5%". Fails as format_number() does, and with
  /// out_of_range where the hundredfold is beyond a double.
  template <TextString String = std::string>
  [[nodiscard]] Result<String> format_percent(double value, const PercentFormat& format = {}) const;

  // ---- Reading. Texts are UTF-8 and read whole; blanks around them do not matter. A text that is
  // not read is an error that tells why, and which part of it fits (Error::fitting_bytes):
  // no_match, of numbers invalid_number, and not_possible for a choice that check() refuses. To
  // find out what of a date fits takes some 30 microseconds, to read one a fraction of one.

  [[nodiscard]] Result<std::chrono::year_month_day> read_date(
      std::string_view text, const DateReading& reading = {}) const;

  /// The time since midnight.
  [[nodiscard]] Result<std::chrono::seconds> read_time(std::string_view text,
                                                       const TimeReading& reading = {}) const;

  /// The wall-clock time; a date alone is its midnight. A time zone that a pattern asks for is read
  /// and not applied.
  [[nodiscard]] Result<std::chrono::local_seconds> read_datetime(
      std::string_view text, const DateReading& reading = {}) const;

  /// The first day of a month, week or quarter: "Month3, 2024", "Mar-2024", "3/2024"; "Week9 2024"
  /// (weeks from Sunday on, the year's first Sunday begins week 1), "W9, 2024" (weeks of ISO 8601);
  /// "Quarter1 2024", "Qtr1 2024", "Q1, 2024"; in any case, with the locale's own month names.
  /// Years of two digits are placed in the hundred from the host's option JW_NAME_YEARCUTOFF on, by
  /// default 1950.
  [[nodiscard]] Result<std::chrono::year_month_day> read_period(std::string_view text) const;

  /// A number: "1.234,5", "-0,5e3". "." and a blank text are the standard missing value, ".A" to
  /// ".Z" and "._" the special ones (client/missing_value.h). Of more than 150 digits the others
  /// count as zeros. Fails with out_of_range beyond the doubles.
  [[nodiscard]] Result<double> read_number(std::string_view text,
                                           const NumberReading& reading = {}) const;

  /// An integer, of any type: read_integer<std::uint32_t>("1.234"). Fails with integer_overflow
  /// beyond the type. `note`, where not null, gets ok, or does_not_fit when a fraction other than
  /// zero was dropped.
  template <std::integral Integer = std::int64_t>
  [[nodiscard]] Result<Integer> read_integer(std::string_view text,
                                             const IntegerReading& reading = {},
                                             Status* note = nullptr) const {
    using Limits = std::numeric_limits<Integer>;
    const auto narrowed = [](auto wide) { return static_cast<Integer>(wide); };
    if constexpr (std::is_signed_v<Integer>) {
      return read_signed(text, reading, Limits::min(), Limits::max(), note).map(narrowed);
    } else {
      return read_unsigned(text, reading, Limits::max(), note).map(narrowed);
    }
  }

  // ---- What the locale is made of.

  /// Names, patterns and symbols, as UTF-8.
  [[nodiscard]] Conventions conventions() const;

  /// The record itself: read-only, valid as long as the locale.
  [[nodiscard]] const LocaleRecord& record() const noexcept;

  /// The handle itself, for the services that this class does not wrap; owned by the locale.
  [[nodiscard]] LocaleHandle* handle() const noexcept;

 private:
  friend class Host;
  struct State;
  enum class Sharing { shared, own };

  explicit Locale(std::shared_ptr<State> state) : state_(std::move(state)) {}
  static Result<Locale> open(std::shared_ptr<host::Host> host, std::string_view name,
                             std::string_view zone, Sharing sharing);

  template <TextString String>
  [[nodiscard]] Result<String> format_signed(std::int64_t value, const IntegerFormat& format) const;
  template <TextString String>
  [[nodiscard]] Result<String> format_unsigned(std::uint64_t value,
                                               const IntegerFormat& format) const;

  [[nodiscard]] Result<std::int64_t> read_signed(std::string_view text,
                                                 const IntegerReading& reading, std::int64_t least,
                                                 std::int64_t most, Status* note) const;
  [[nodiscard]] Result<std::uint64_t> read_unsigned(std::string_view text,
                                                    const IntegerReading& reading,
                                                    std::uint64_t most, Status* note) const;

  std::shared_ptr<State> state_;
};

}  // namespace jwnls::client

#endif  // JWNLS_CLIENT_LOCALE_H_
