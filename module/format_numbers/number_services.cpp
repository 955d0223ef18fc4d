#include "module/format_numbers/number_services.h"

#include <algorithm>
#include <cmath>

#include "abi/number_flags.h"
#include "abi/status.h"
#include "module/format_numbers/fieldless_number.h"
#include "module/format_numbers/number_formatter.h"
#include "module/format_numbers/number_request.h"
#include "module/format_numbers/quick_best_fit.h"
#include "module/host_calls/host_formatter.h"
#include "module/placement/delivery.h"
#include "module/placement/groups_of_three.h"
#include "module/placement/symbols.h"

namespace jwnls {
namespace {

// Apart, so that the call without options ends in a jump on every other way.
[[gnu::noinline]] std::uint32_t format_by_host(LocaleHandle* handle, double value,
                                               std::int32_t width, std::int32_t decimals,
                                               std::uint32_t flags, char16_t* out,
                                               std::int64_t capacity,
                                               std::int64_t* length) noexcept {
  return call_host_formatter(host_formatting(), handle, value, width, decimals, flags, out,
                             capacity, length, nullptr);
}

// Has the host write UTF-16 and converts what it wrote, unit by unit, as long as units fit whole.
std::uint32_t convert_from_host(const HostFormatting* host, LocaleHandle* handle, double value,
                                std::int32_t width, std::int32_t decimals, std::uint32_t flags,
                                char* out, std::int64_t capacity, std::int64_t* length,
                                const FloatOptions* options) noexcept {
  constexpr std::int64_t local_capacity = 1024;
  char16_t units[local_capacity];
  std::int64_t produced = 0;
  const std::int64_t room = std::min(capacity, local_capacity);
  // A host may report the length that it needs and leave the units unwritten.
  std::fill_n(units, room, u'*');
  std::uint32_t status = call_host_formatter(host, handle, value, width, decimals, flags, units,
                                             room, &produced, options);
  const std::int64_t written = std::clamp<std::int64_t>(produced, 0, room);
  EncodingWriter writer(out, capacity);
  writer.append(units, written);
  if (writer.full() && status == code(Status::ok)) status = code(Status::does_not_fit);
  if (length != nullptr) *length = writer.written();
  return status;
}

// The module's own formatter, from the quick ways to the general one.
template <typename Unit>
[[gnu::always_inline]] inline std::uint32_t format_here(LocaleHandle* handle, double value,
                                                        std::int32_t width, std::int32_t decimals,
                                                        std::uint32_t flags, Unit* out,
                                                        std::int64_t capacity, std::int64_t* length,
                                                        const FloatOptions* options) noexcept {
  using namespace number_flags;
  using namespace fieldless_number;
  if (options != nullptr && std::isnan(value)) [[unlikely]] {  // they are about missing values
    return format_with_options(handle, value, width, decimals, flags, out, capacity, length,
                               options);
  }
  const auto quick = [&](auto* way) {
    return way(handle, value, width, decimals, flags, out, capacity, length);
  };
  const bool grouped = (flags & group) != 0;
  const std::uint32_t kind = flags & ~group;
  if (width == 0 && capacity >= room &&
      static_cast<std::uint32_t>(decimals) <= most_decimals_asked &&
      (!grouped || groups_by_three(*handle->record))) [[likely]] {
    if (kind == fixed || kind == integer_first) {
      const LocaleRecord& record = *handle->record;
      if (is_amount(value, decimals) && Symbols<Unit>{record}.narrow(grouped)) [[likely]] {
        return grouped ? write_amount<true>(record, value, decimals, out, length)
                       : write_amount<false>(record, value, decimals, out, length);
      }
      return grouped ? quick(format<DecimalForm::fixed, true, Unit>)
                     : quick(format<DecimalForm::fixed, false, Unit>);
    }
    if (kind == 0 || kind == general || kind == general_capital) {
      return grouped ? quick(format<DecimalForm::general, true, Unit>)
                     : quick(format<DecimalForm::general, false, Unit>);
    }
    if (kind == exponent_small || kind == exponent_capital) {
      return quick(format<DecimalForm::exponent, false, Unit>);
    }
  }
  if ((flags == best_fit || (decimals == best_fit_decimals && flags == 0)) && width >= 1 &&
      width <= quick_best_fit::widest_field && capacity >= width + quick_best_fit::overhang) {
    return quick(quick_best_fit::format<Unit>);
  }
  return quick(format_any_number<Unit>);
}

}  // namespace

std::uint32_t format_number_with_options(LocaleHandle* handle, double value, std::int32_t width,
                                         std::int32_t decimals, std::uint32_t flags, char16_t* out,
                                         std::int64_t capacity, std::int64_t* length,
                                         const FloatOptions* options) noexcept {
  if (const HostFormatting* host = host_formatting()) [[unlikely]] {
    return call_host_formatter(host, handle, value, width, decimals, flags, out, capacity, length,
                               options);
  }
  return format_here(handle, value, width, decimals, flags, out, capacity, length, options);
}

std::uint32_t format_number(LocaleHandle* handle, double value, std::int32_t width,
                            std::int32_t decimals, std::uint32_t flags, char16_t* out,
                            std::int64_t capacity, std::int64_t* length) noexcept {
  if (host_formatting() != nullptr) [[unlikely]] {
    return format_by_host(handle, value, width, decimals, flags, out, capacity, length);
  }
  return format_here(handle, value, width, decimals, flags, out, capacity, length, nullptr);
}

std::uint32_t format_number_8bit(LocaleHandle* handle, double value, std::int32_t width,
                                 std::int32_t decimals, std::uint32_t flags, char* out,
                                 std::int64_t capacity, std::int64_t* length,
                                 const FloatOptions* options) noexcept {
  if (const HostFormatting* host = host_formatting()) [[unlikely]] {
    return convert_from_host(host, handle, value, width, decimals, flags, out,
                             std::max<std::int64_t>(capacity, 0), length, options);
  }
  return format_here(handle, value, width, decimals, flags, out, capacity, length, options);
}

}  // namespace jwnls
