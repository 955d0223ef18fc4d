#include "module/host_calls/year_cutoff.h"

#include <algorithm>
#include <limits>
#include <string_view>

#include "module/calendar/civil.h"
#include "module/host_calls/kernel_handle.h"
#include "module/host_calls/typed_calls.h"

namespace jwnls {
namespace {

constexpr std::u16string_view option_name = u"JW_NAME_YEARCUTOFF";
static_assert(option_name.size() == 18);

}  // namespace

std::int32_t year_cutoff_option() noexcept {
  const std::int64_t value =
      host_calls::read_option(kernel_handle(), option_name, default_year_cutoff);
  using Cutoff = std::numeric_limits<std::int32_t>;
  return static_cast<std::int32_t>(std::clamp<std::int64_t>(value, Cutoff::min(), Cutoff::max()));
}

}  // namespace jwnls
