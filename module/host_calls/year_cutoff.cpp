#include "module/host_calls/year_cutoff.h"

#include <algorithm>
#include <limits>
#include <string_view>

#include "module/calendar/civil.h"
#include "module/host_calls/kernel_handle.h"

namespace jwnls {
namespace {

constexpr std::u16string_view option_name = u"JW_NAME_YEARCUTOFF";
static_assert(option_name.size() == 18);

}  // namespace

std::int32_t year_cutoff_option() noexcept {
  std::int64_t value = default_year_cutoff;
  std::int64_t size = sizeof value;
  // The status says nothing that the slot does not: it keeps the default unless it is filled.
  if (Kernel* kernel = kernel_handle(); kernel != nullptr) {
    (void)kernel->read_option(kernel, option_name.data(),
                              static_cast<std::int64_t>(option_name.size()), integer_option, &value,
                              &size);
  }
  using Cutoff = std::numeric_limits<std::int32_t>;
  return static_cast<std::int32_t>(std::clamp<std::int64_t>(value, Cutoff::min(), Cutoff::max()));
}

}  // namespace jwnls
