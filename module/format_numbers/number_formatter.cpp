#include "module/format_numbers/number_formatter.h"

#include <algorithm>
#include <bit>
#include <cstddef>
#include <limits>

#include "module/format_numbers/missing_and_infinite.h"
#include "module/format_numbers/number_call.h"
#include "module/format_numbers/plain_kinds.h"
#include "module/format_numbers/short_number.h"
#include "module/format_numbers/width_bound_kinds.h"
#include "module/placement/delivery.h"
#include "module/text/copy_text.h"

namespace jwnls {
namespace {

template <typename Unit>
Status deliver_short(const ShortNumber& number, const Output<Unit>& output) noexcept {
  // Not as a whole block: behind the body lies what the stack held before.
  const auto write_body = [&](char16_t* to) {
    copy_text(to, number.body,
              static_cast<std::size_t>(number.placement.body_length) * sizeof(char16_t));
  };
  if constexpr (sizeof(Unit) == 1) {
    return deliver_encoded(number.placement, write_body, output);
  } else {
    return deliver(number.placement, write_body, output);
  }
}

template <typename Unit>
[[gnu::always_inline]] inline std::uint32_t format(LocaleHandle* handle, double value,
                                                   std::int32_t width, std::int32_t decimals,
                                                   std::uint32_t flags, Unit* out,
                                                   std::int64_t capacity, std::int64_t* length,
                                                   const FloatOptions* options) noexcept {
  const NumberCall<Unit> call{*handle->record, number_request(width, decimals, flags),
                              std::bit_cast<double>(std::bit_cast<std::uint64_t>(value) << 1 >> 1),
                              value < 0,
                              Output<Unit>{out, std::max<std::int64_t>(capacity, 0), length}};
  const bool finite = call.magnitude <= std::numeric_limits<double>::max();
  if (finite && !call.request.width_bound()) [[likely]] {
    return code(format_plain(call));
  }
  ShortNumber number;
  if (finite) {
    format_width_bound(call.record, call.request, call.magnitude, call.negative,
                       call.output.capacity, number);
  } else if (value != value) {
    place_missing(value, options, call.request, call.output.capacity, number);
  } else {
    place_infinity(call.negative, call.request, call.output.capacity, number);
  }
  return code(deliver_short(number, call.output));
}

}  // namespace

template <typename Unit>
std::uint32_t format_with_options(LocaleHandle* handle, double value, std::int32_t width,
                                  std::int32_t decimals, std::uint32_t flags, Unit* out,
                                  std::int64_t capacity, std::int64_t* length,
                                  const FloatOptions* options) noexcept {
  return format(handle, value, width, decimals, flags, out, capacity, length, options);
}

template <typename Unit>
std::uint32_t format_any_number(LocaleHandle* handle, double value, std::int32_t width,
                                std::int32_t decimals, std::uint32_t flags, Unit* out,
                                std::int64_t capacity, std::int64_t* length) noexcept {
  return format(handle, value, width, decimals, flags, out, capacity, length, nullptr);
}

template std::uint32_t format_with_options(LocaleHandle*, double, std::int32_t, std::int32_t,
                                           std::uint32_t, char16_t*, std::int64_t, std::int64_t*,
                                           const FloatOptions*) noexcept;
template std::uint32_t format_with_options(LocaleHandle*, double, std::int32_t, std::int32_t,
                                           std::uint32_t, char*, std::int64_t, std::int64_t*,
                                           const FloatOptions*) noexcept;
template std::uint32_t format_any_number(LocaleHandle*, double, std::int32_t, std::int32_t,
                                         std::uint32_t, char16_t*, std::int64_t,
                                         std::int64_t*) noexcept;
template std::uint32_t format_any_number(LocaleHandle*, double, std::int32_t, std::int32_t,
                                         std::uint32_t, char*, std::int64_t,
                                         std::int64_t*) noexcept;

}  // namespace jwnls
