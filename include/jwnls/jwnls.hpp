// jwnls.hpp - the C++ face of jwnls.h: header-only, C++17 and later.
//
//   jwnls::Layout amounts("de_DE", jwnls::Kind::number, "decimals=2");   // throws jwnls::Error
//   double value = amounts.read_number("1.234.567,89").value().value;    // throws when it is not
//   read std::string text = amounts.write(1234.5).value();                    // "1.234,50"
//
// A Layout is a handle on an immutable layout: copies share it, and any number of threads may use
// it. Whoever wants neither exceptions nor messages asks the Result for its code, or calls the
// functions of jwnls.h with layout.get().
#ifndef JWNLS_JWNLS_HPP_
#define JWNLS_JWNLS_HPP_

#include <chrono>
#include <cstdint>
#include <limits>
#include <memory>
#include <optional>
#include <ratio>
#include <stdexcept>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

#include "jwnls/jwnls.h"

#if defined(__has_include)
#if __has_include(<version>)
#include <version>
#endif
#endif
#if defined(__cpp_lib_format)
#include <format>
#endif

namespace jwnls {

enum class Kind {
  number = JWNLS_NUMBER,
  date = JWNLS_DATE,
  datetime = JWNLS_DATETIME,
  time = JWNLS_TIME,
  integer = JWNLS_INTEGER,
  amount = JWNLS_AMOUNT,
  percent = JWNLS_PERCENT,
  instant = JWNLS_INSTANT,
  period = JWNLS_PERIOD
};

/// The codes of jwnls.h.
enum class Code {
  ok = JWNLS_OK,
  unread = JWNLS_UNREAD,
  range = JWNLS_RANGE,
  missing = JWNLS_MISSING,
  room = JWNLS_ROOM,
  unknown = JWNLS_UNKNOWN,
  load = JWNLS_LOAD,
  memory = JWNLS_MEMORY,
  kind = JWNLS_KIND
};

/// What .value() and the constructor of Layout throw.
class Error : public std::runtime_error {
 public:
  explicit Error(const jwnls_error& error)
      : std::runtime_error(error.text), code_(static_cast<Code>(error.code)), at_(error.at) {}
  [[nodiscard]] Code code() const noexcept { return code_; }
  /// The bytes of the text that fit.
  [[nodiscard]] std::size_t at() const noexcept { return at_; }

 private:
  Code code_;
  std::size_t at_;
};

/// A value, or why there is none.
template <typename T>
class [[nodiscard]] Result {
 public:
  Result(T value) : value_(std::move(value)) {}                 // NOLINT: a value is a result
  Result(const jwnls_error& error) noexcept : error_(error) {}  // NOLINT: so is an error

  [[nodiscard]] Code code() const noexcept { return static_cast<Code>(error_.code); }
  [[nodiscard]] bool has_value() const noexcept { return value_.has_value(); }
  explicit operator bool() const noexcept { return has_value(); }
  /// Why there is no value: one line.
  [[nodiscard]] const char* message() const noexcept { return error_.text; }
  [[nodiscard]] std::size_t at() const noexcept { return error_.at; }

  /// The value; throws an Error that carries the message where there is none.
  [[nodiscard]] const T& value() const& { return check(), *value_; }
  [[nodiscard]] T&& value() && { return check(), *std::move(value_); }
  [[nodiscard]] T value_or(T other) const { return has_value() ? *value_ : std::move(other); }
  /// Undefined where there is none.
  const T& operator*() const noexcept { return *value_; }
  const T* operator->() const noexcept { return &*value_; }

 private:
  void check() const {
    if (!has_value()) throw Error(error_);
  }

  std::optional<T> value_;
  jwnls_error error_ = {};
};

/// What was read, and what is known of it: see JWNLS_TWO_WAYS and JWNLS_DECIDES.
template <typename T>
struct Reading {
  T value;
  bool two_ways = false;
  bool decides = false;
};

/// A number exactly, as "-1234567.89"; of amounts with the ISO code of the currency.
struct Decimal {
  std::string digits;
  std::string currency;
};

/// Days since 1970-01-01, and the time since its midnight on the clock on the wall.
using Days = std::chrono::duration<std::int32_t, std::ratio<86400>>;
using Microseconds = std::chrono::duration<std::int64_t, std::micro>;
/// A moment on the time line.
using Instant = std::chrono::time_point<std::chrono::system_clock, Microseconds>;

namespace detail {

template <typename T>
constexpr bool is_character =
    std::is_same_v<T, char> || std::is_same_v<T, wchar_t> || std::is_same_v<T, char16_t> ||
    std::is_same_v<T, char32_t> || std::is_same_v<T, bool>;
/// Integers that count something; they never pass through double.
template <typename T>
using EnableInteger = std::enable_if_t<std::is_integral_v<T> && !is_character<T>, int>;

/// Microseconds of any duration, those that do not fit brought to the nearest that do: the library
/// refuses them as out of range.
template <typename Rep, typename Period>
std::int64_t microseconds(std::chrono::duration<Rep, Period> time) {
  using Seconds = std::chrono::duration<long double>;
  constexpr long double most = 9.2e12L;  // seconds that 63 bits of microseconds hold
  const long double seconds = std::chrono::duration_cast<Seconds>(time).count();
  if (!(seconds < most)) return std::numeric_limits<std::int64_t>::max();
  if (seconds < -most) return std::numeric_limits<std::int64_t>::min();
  const auto rounded = std::chrono::duration_cast<Microseconds>(time);
  return rounded.count() - (rounded > time ? 1 : 0);
}

}  // namespace detail

template <typename Value>
class Shown;

class Layout {
 public:
  /// Opens a layout; throws an Error that names what is unknown. Arguments as jwnls_open().
  Layout(const std::string& locale, Kind kind, const std::string& options = {})
      : Layout(open(locale, kind, options).value()) {}

  /// The same without exceptions.
  static Result<Layout> open(const std::string& locale, Kind kind,
                             const std::string& options = {}) {
    jwnls_layout* layout = nullptr;
    jwnls_error error = {};
    jwnls_open(locale.c_str(), static_cast<int>(kind), options.c_str(), &layout, &error);
    return owned(layout, error);
  }

  /// From what describe() gave.
  static Result<Layout> open_described(const std::string& description) {
    jwnls_layout* layout = nullptr;
    jwnls_error error = {};
    jwnls_open_described(description.c_str(), &layout, &error);
    return owned(layout, error);
  }

  [[nodiscard]] const jwnls_layout* get() const noexcept { return layout_.get(); }
  [[nodiscard]] std::string describe() const {
    return text([this](char* out, std::size_t room, std::size_t* length) {
             return jwnls_describe(get(), out, room, length);
           })
        .value();
  }
  [[nodiscard]] std::string locale() const { return jwnls_layout_locale(get()); }
  [[nodiscard]] Kind kind() const noexcept { return static_cast<Kind>(jwnls_layout_kind(get())); }
  [[nodiscard]] std::string currency() const { return jwnls_layout_currency(get()); }

  // ---- Reading. A blank text is the code `missing`.

  [[nodiscard]] Result<Reading<double>> read_number(std::string_view text) const {
    return read<double>(text, jwnls_read_number);
  }

  template <typename Integer = std::int64_t, detail::EnableInteger<Integer> = 0>
  [[nodiscard]] Result<Reading<Integer>> read_integer(std::string_view text) const {
    using Wide = std::conditional_t<std::is_signed_v<Integer>, std::int64_t, std::uint64_t>;
    Result<Reading<Wide>> wide = [&] {
      if constexpr (std::is_signed_v<Integer>) {
        return read<Wide>(text, jwnls_read_integer);
      } else {
        return read<Wide>(text, jwnls_read_unsigned);
      }
    }();
    if (!wide) return failure<Reading<Integer>>(wide);
    if (wide->value < std::numeric_limits<Integer>::min() ||
        wide->value > std::numeric_limits<Integer>::max()) {
      return out_of_range<Reading<Integer>>(text);
    }
    return Reading<Integer>{static_cast<Integer>(wide->value), wide->two_ways, wide->decides};
  }

  [[nodiscard]] Result<Reading<Decimal>> read_decimal(std::string_view text) const {
    char digits[2100];  // more than any text gives, its exponent written out
    char currency[4] = {};
    std::size_t length = 0;
    std::uint8_t facts = 0;
    const int code = jwnls_read_decimal(get(), text.data(), text.size(), digits, sizeof digits,
                                        &length, currency, &facts);
    if (code != JWNLS_OK) return explained<Reading<Decimal>>(text, code);
    return reading(Decimal{std::string(digits, length), currency}, facts);
  }

  [[nodiscard]] Result<Reading<Days>> read_date(std::string_view text) const {
    return counted<Days>(read<std::int32_t>(text, jwnls_read_date));
  }
  [[nodiscard]] Result<Reading<Microseconds>> read_datetime(std::string_view text) const {
    return counted<Microseconds>(read<std::int64_t>(text, jwnls_read_datetime));
  }
  [[nodiscard]] Result<Reading<Instant>> read_instant(std::string_view text) const {
    const auto time = read_datetime(text);
    if (!time) return failure<Reading<Instant>>(time);
    return Reading<Instant>{Instant(time->value), time->two_ways, time->decides};
  }
  [[nodiscard]] Result<Reading<Microseconds>> read_time(std::string_view text) const {
    return counted<Microseconds>(read<std::int64_t>(text, jwnls_read_time));
  }

  // ---- Writing.

  [[nodiscard]] Result<std::string> write(double value) const { return written(value); }
  [[nodiscard]] Result<std::string> write(float value) const { return written(value); }
  template <typename Integer, detail::EnableInteger<Integer> = 0>
  [[nodiscard]] Result<std::string> write(Integer value) const {
    return written(value);
  }
  [[nodiscard]] Result<std::string> write(Days date) const { return written(date); }
  /// A datetime (or a time, by a layout of that kind) on the wall.
  template <typename Rep, typename Period>
  [[nodiscard]] Result<std::string> write(std::chrono::duration<Rep, Period> time) const {
    return written(time);
  }
  template <typename Duration>
  [[nodiscard]] Result<std::string> write(
      std::chrono::time_point<std::chrono::system_clock, Duration> instant) const {
    return written(instant);
  }
  [[nodiscard]] Result<std::string> write_decimal(std::string_view decimal) const {
    return text([this, decimal](char* out, std::size_t room, std::size_t* length) {
      return jwnls_write_decimal(get(), decimal.data(), decimal.size(), out, room, length);
    });
  }
  /// value / 10^scale, exactly: 123456 and 2 as "1234.56", such as an amount counted in cents.
  [[nodiscard]] Result<std::string> write_scaled(std::int64_t value, std::int32_t scale) const {
    return text([this, value, scale](char* out, std::size_t room, std::size_t* length) {
      return jwnls_write_scaled(get(), value, scale, out, room, length);
    });
  }

#if defined(__cpp_lib_chrono) && __cpp_lib_chrono >= 201907L
  [[nodiscard]] Result<std::string> write(std::chrono::year_month_day date) const {
    return date.ok() ? write(Days(std::chrono::sys_days(date).time_since_epoch()))
                     : out_of_range<std::string>({});
  }
  template <typename Duration>
  [[nodiscard]] Result<std::string> write(std::chrono::local_time<Duration> time) const {
    return write(time.time_since_epoch());
  }
#endif

  /// Writes to an output iterator and gives the one behind the text; throws an Error.
  template <typename Iterator, typename Value>
  Iterator format_to(Iterator out, const Value& value) const {
    char stack[256];
    std::size_t length = 0;
    const int code = write_to(value, stack, sizeof stack, &length);
    if (code == JWNLS_OK) return copy(std::string_view(stack, length), out);
    return copy(written(value).value(), out);
  }

  /// The value as this layout writes it, for std::format and {fmt}: format("{:>12}", shown(1.5)).
  template <typename Value>
  [[nodiscard]] Shown<Value> shown(Value value) const {
    return Shown<Value>(*this, value);
  }

 private:
  template <typename Value>
  friend class Shown;

  explicit Layout(std::shared_ptr<const jwnls_layout> layout) : layout_(std::move(layout)) {}

  static Result<Layout> owned(jwnls_layout* layout, const jwnls_error& error) {
    if (layout == nullptr) return error;
    return Layout(std::shared_ptr<const jwnls_layout>(
        layout, [](const jwnls_layout* each) { jwnls_close(const_cast<jwnls_layout*>(each)); }));
  }

  template <typename T>
  static Reading<T> reading(T value, std::uint8_t facts) {
    return {std::move(value), (facts & JWNLS_TWO_WAYS) != 0, (facts & JWNLS_DECIDES) != 0};
  }

  template <typename T, typename Read>
  Result<Reading<T>> read(std::string_view text, Read read_text) const {
    T value = {};
    std::uint8_t facts = 0;
    const int code = read_text(get(), text.data(), text.size(), &value, &facts);
    if (code != JWNLS_OK) return explained<Reading<T>>(text, code);
    return reading(value, facts);
  }

  template <typename T, typename Count>
  static Result<Reading<T>> counted(const Result<Reading<Count>>& count) {
    if (!count) return failure<Reading<T>>(count);
    return Reading<T>{T(count->value), count->two_ways, count->decides};
  }

  template <typename T>
  Result<T> explained(std::string_view text, int code) const {
    jwnls_error error = {};
    jwnls_explain(get(), text.data(), text.size(), &error);
    if (error.text[0] == '\0') return coded<T>(code);
    error.code = code;
    return error;
  }

  template <typename T>
  static Result<T> coded(int code) {
    jwnls_error error = {};
    error.code = code;
    std::string_view(jwnls_code_text(code)).copy(error.text, sizeof error.text - 1);
    return error;
  }

  template <typename T>
  static Result<T> out_of_range(std::string_view) {
    return coded<T>(JWNLS_RANGE);
  }

  template <typename T, typename Other>
  static Result<T> failure(const Result<Other>& other) {
    jwnls_error error = {};
    error.code = static_cast<int>(other.code());
    error.at = other.at();
    std::string_view(other.message()).copy(error.text, sizeof error.text - 1);
    return error;
  }

  // The text that a function writes, in as much room as it takes.
  template <typename Write>
  static Result<std::string> text(Write write_text) {
    char stack[256];
    std::size_t length = 0;
    int code = write_text(stack, sizeof stack, &length);
    if (code == JWNLS_OK) return std::string(stack, length);
    if (code != JWNLS_ROOM) return coded<std::string>(code);
    std::string room(length, '\0');
    code = write_text(room.data(), room.size(), &length);
    if (code != JWNLS_OK) return coded<std::string>(code);
    room.resize(length);
    return room;
  }

  template <typename Value>
  Result<std::string> written(const Value& value) const {
    return text([this, &value](char* out, std::size_t room, std::size_t* length) {
      return write_to(value, out, room, length);
    });
  }

  int write_to(double value, char* out, std::size_t room, std::size_t* length) const {
    return jwnls_write_number(get(), value, out, room, length);
  }
  int write_to(float value, char* out, std::size_t room, std::size_t* length) const {
    return jwnls_write_float(get(), value, out, room, length);
  }
  template <typename Integer, detail::EnableInteger<Integer> = 0>
  int write_to(Integer value, char* out, std::size_t room, std::size_t* length) const {
    if constexpr (std::is_signed_v<Integer>) {
      return jwnls_write_integer(get(), value, out, room, length);
    } else {
      return jwnls_write_unsigned(get(), value, out, room, length);
    }
  }
  int write_to(Days date, char* out, std::size_t room, std::size_t* length) const {
    return jwnls_write_date(get(), date.count(), out, room, length);
  }
  template <typename Rep, typename Period>
  int write_to(std::chrono::duration<Rep, Period> time, char* out, std::size_t room,
               std::size_t* length) const {
    const std::int64_t count = detail::microseconds(time);
    return kind() == Kind::time ? jwnls_write_time(get(), count, out, room, length)
                                : jwnls_write_datetime(get(), count, out, room, length);
  }
  template <typename Duration>
  int write_to(std::chrono::time_point<std::chrono::system_clock, Duration> instant, char* out,
               std::size_t room, std::size_t* length) const {
    return jwnls_write_datetime(get(), detail::microseconds(instant.time_since_epoch()), out, room,
                                length);
  }

  template <typename Iterator>
  static Iterator copy(std::string_view text, Iterator out) {
    for (const char byte : text) *out++ = byte;
    return out;
  }

  std::shared_ptr<const jwnls_layout> layout_;
};

/// A value on its way into a formatted text; the layout must outlive it.
template <typename Value>
class Shown {
 public:
  Shown(const Layout& layout, Value value) : layout_(&layout), value_(value) {}
  [[nodiscard]] std::string text() const { return layout_->written(value_).value(); }

 private:
  const Layout* layout_;
  Value value_;
};

/// Every locale's name, sorted.
template <typename Visit>
Code each_locale(Visit visit) {
  return static_cast<Code>(jwnls_locales(
      [](void* context, const jwnls_locale_info* locale) {
        (*static_cast<Visit*>(context))(*locale);
        return 0;
      },
      &visit));
}

}  // namespace jwnls

// Width, fill and alignment as of a string: "{:>12}".
#if defined(__cpp_lib_format)
template <typename Value>
struct std::formatter<jwnls::Shown<Value>> : std::formatter<std::string_view> {
  template <typename Context>
  auto format(const jwnls::Shown<Value>& shown, Context& context) const {
    return std::formatter<std::string_view>::format(shown.text(), context);
  }
};
#endif
#if defined(FMT_VERSION)  // <fmt/format.h> was included first
template <typename Value>
struct fmt::formatter<jwnls::Shown<Value>> : fmt::formatter<std::string_view> {
  template <typename Context>
  auto format(const jwnls::Shown<Value>& shown, Context& context) const {
    return fmt::formatter<std::string_view>::format(shown.text(), context);
  }
};
#endif

#endif  // JWNLS_JWNLS_HPP_
