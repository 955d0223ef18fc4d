#include "tool/moments.h"

#include <charconv>
#include <limits>

#include "tool/iso8601.h"
#include "tool/refusal.h"

namespace jwnls::tool {
namespace {

using std::chrono::floor;
using std::chrono::seconds;
using std::chrono::sys_days;
using std::chrono::sys_seconds;
using std::chrono::year_month_day;

constexpr std::int64_t most_seconds =
    std::numeric_limits<std::int64_t>::max() / 1'000'000;  // that microseconds can count

}  // namespace

Result<Moment> read_moment(std::string_view text) {
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

Result<Moment> on_the_wall(const Moment& moment, const std::string& zone) {
  if (!moment.instant) return moment;
  jwnls_zone_state state = {};
  state.size = sizeof state;
  jwnls_error error = {};
  const auto count = moment.instant->time_since_epoch();
  if (jwnls_zone_at(zone.c_str(), count.count(), &state, &error) != JWNLS_OK) return error;
  const std::chrono::local_seconds shown(count + seconds(state.offset_seconds));
  const auto day = floor<std::chrono::days>(shown);
  // Some 27,000 years either way: beyond what a year of std::chrono holds, it would be another one.
  constexpr auto most = std::chrono::days{10'000'000};
  const auto since = day.time_since_epoch();
  if (since > most || since < -most) return refusal("outside the calendar");
  return Moment{year_month_day{day}, shown - day, {}};
}

}  // namespace jwnls::tool
