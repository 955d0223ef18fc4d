#include "tool/plain_values.h"

#include <charconv>
#include <chrono>
#include <limits>
#include <optional>

#include "tool/iso8601.h"
#include "tool/refusal.h"
#include "tool/terminal_text.h"

namespace jwnls::tool {
namespace {

using std::chrono::floor;
using std::chrono::seconds;
using std::chrono::sys_days;
using std::chrono::sys_seconds;
using std::chrono::year_month_day;

// A date and a time of day on the wall, or a moment; what is absent was not said.
struct Moment {
  std::optional<year_month_day> date;
  std::optional<seconds> time;
  std::optional<sys_seconds> instant;
};

constexpr std::int64_t most_seconds =
    std::numeric_limits<std::int64_t>::max() / 1'000'000;  // that microseconds can count

Result<Moment> moment_of(std::string_view text) {
  if (text == "now") {
    return Moment{{}, {}, floor<seconds>(std::chrono::system_clock::now())};
  }
  if (text.starts_with('@')) {
    std::int64_t count = 0;
    const char* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data() + 1, end, count);
    if (error != std::errc() || stop != end || count > most_seconds || count < -most_seconds) {
      return refusal("no seconds since 1970 (as @1710513000)");
    }
    return Moment{{}, {}, sys_seconds(seconds(count))};
  }
  const auto iso = read_iso8601(text);
  if (!iso) return refusal(iso.message());
  if (!iso->offset) return Moment{iso->date, iso->time, {}};
  if (!iso->date) return refusal("a time with an offset needs its date");
  return Moment{{}, {}, sys_days{*iso->date} + *iso->time - *iso->offset};
}

// What the clocks of a zone show.
Result<Moment> on_the_wall(const Moment& moment, const std::string& zone) {
  if (!moment.instant) return moment;
  jwnls_zone_state state = {};
  state.size = sizeof state;
  jwnls_error error = {};
  const auto count = moment.instant->time_since_epoch();
  if (jwnls_zone_at(zone.c_str(), count.count(), &state, &error) != JWNLS_OK) return error;
  const std::chrono::local_seconds shown(count + seconds(state.offset_seconds));
  const auto day = floor<std::chrono::days>(shown);
  return Moment{year_month_day{day}, shown - day, {}};
}

Days days_of(year_month_day date) {
  return Days(static_cast<std::int32_t>(sys_days(date).time_since_epoch().count()));
}

Result<std::string> write_moment(const Layout& layout, std::string_view text,
                                 const std::string& zone) {
  auto moment = moment_of(text);
  if (!moment) return refusal(moment.message());
  if (layout.kind() == Kind::instant) {
    if (!moment->instant)
      return refusal("no instant: \"Z\" or an offset such as +01:00 is missing");
    return layout.write(*moment->instant);
  }
  moment = on_the_wall(*moment, zone);
  if (!moment) return refusal(moment.message());
  if (layout.kind() == Kind::time) {
    if (!moment->time) return refusal("a date without a time of day");
    return layout.write(*moment->time);
  }
  if (!moment->date) return refusal("a time without a date");
  if (layout.kind() == Kind::date) return layout.write(days_of(*moment->date));
  // A date alone is its midnight.
  return layout.write(std::chrono::days{days_of(*moment->date).count()} +
                      moment->time.value_or(seconds{0}));
}

bool is_number(Kind kind) {
  return kind == Kind::number || kind == Kind::integer || kind == Kind::amount ||
         kind == Kind::percent;
}

// What the codes of writing say of a plain value.
const char* reason_of(Kind kind, Code code) {
  if (code == Code::unread && is_number(kind)) return "not a number (as 1234.5)";
  if (code != Code::range) return nullptr;
  if (kind == Kind::integer) return "no integer, or of too many digits";
  return is_number(kind) ? "of too many digits" : "outside the calendar";
}

template <typename Value>
PlainValue plain(const Reading<Value>& reading, std::string text) {
  return {std::move(text), {}, reading.two_ways, reading.decides};
}

// Reads by a function of the layout; `text_of` makes the plain value of what it gives.
template <typename Reading, typename TextOf>
Result<PlainValue> read_by(const Result<Reading>& reading, TextOf text_of) {
  if (reading) return plain(*reading, text_of(reading->value));
  if (reading.code() == Code::missing) return PlainValue{};
  return refusal(reading.message());
}

std::string date_text(Days date) {
  return iso_text(year_month_day{sys_days{std::chrono::days{date.count()}}});
}

}  // namespace

Result<PlainValue> read_plain(const Layout& layout, std::string_view text) {
  switch (layout.kind()) {
    case Kind::date:
    case Kind::period:
      return read_by(layout.read_date(text), date_text);
    case Kind::time:
      return read_by(layout.read_time(text), [](Microseconds time) { return iso_text(time); });
    case Kind::datetime:
      return read_by(layout.read_datetime(text), [](Microseconds time) {
        return iso_text(std::chrono::local_time<Microseconds>(time));
      });
    case Kind::instant:
      return read_by(layout.read_instant(text), [](Instant instant) {
        return iso_text(std::chrono::local_time<Microseconds>(instant.time_since_epoch())) + "Z";
      });
    default: {
      const auto reading = layout.read_decimal(text);
      auto value = read_by(reading, [](const Decimal& decimal) { return decimal.digits; });
      if (!reading) return value;
      PlainValue amount = *std::move(value);
      amount.currency = reading->value.currency;
      return amount;
    }
  }
}

Result<std::string> write_plain(const Layout& layout, std::string_view value,
                                const std::string& zone) {
  if (value.empty()) return std::string();
  const Kind kind = layout.kind();
  auto text = is_number(kind) ? layout.write_decimal(value) : write_moment(layout, value, zone);
  if (text) return text;
  const char* const reason = reason_of(kind, text.code());
  return refusal(in_quotes(value) + ": " + (reason != nullptr ? reason : text.message()));
}

}  // namespace jwnls::tool
