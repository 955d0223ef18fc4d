// Dates, times and instants as people give them to `format`, and what the clocks of a zone show.

#ifndef JWNLS_TOOL_MOMENTS_H_
#define JWNLS_TOOL_MOMENTS_H_

#include <chrono>
#include <optional>
#include <string>
#include <string_view>

#include "jwnls/jwnls.hpp"

namespace jwnls::tool {

/// A date and a time of day on the wall, or an instant; what is absent was not said.
struct Moment {
  std::optional<std::chrono::year_month_day> date;
  std::optional<std::chrono::seconds> time;
  std::optional<std::chrono::sys_seconds> instant;
};

/// Reads "now", "@SECONDS" since 1970, and what iso8601.h reads. The error is the reason.
[[nodiscard]] Result<Moment> read_moment(std::string_view text);

/// What the clocks of a zone (empty: the system's) show at an instant; others as they are.
[[nodiscard]] Result<Moment> on_the_wall(const Moment& moment, const std::string& zone);

}  // namespace jwnls::tool

#endif  // JWNLS_TOOL_MOMENTS_H_
