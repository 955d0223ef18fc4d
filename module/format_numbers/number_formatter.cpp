#include "module/format_numbers/number_formatter.h"

#include <algorithm>
#include <bit>
#include <limits>
#include <string_view>

#include "abi/missing_value.h"
#include "module/format_numbers/plain_kinds.h"
#include "module/format_numbers/width_bound_kinds.h"
#include "module/placement/delivery.h"
#include "module/text/bounded_writer.h"

namespace jwnls {
namespace {

// The character of a missing value: the complement of its byte 5. Other NaNs show as the standard
// one.
std::uint8_t missing_code(double value) noexcept {
  const std::uint64_t bits =
      is_missing(value) ? std::bit_cast<std::uint64_t>(value) : missing_value_bits;
  return static_cast<std::uint8_t>(~(bits >> 40));
}

void place_missing(double value, const FloatOptions* options, NumberRequest request,
                   std::int64_t capacity, NumberPlacement& placement, ShortBody& body) noexcept {
  const std::uint8_t code = missing_code(value);
  body.units[0] = code == '-' ? u'_' : char16_t{code};
  if (code == '.' && options != nullptr && (options->flags & 1) != 0) {
    body.units[0] = options->missing_symbol;
    if (options->missing_symbol == 0) return placement.refuse(Status::no_missing_symbol);
  }
  placement.body_length = 1;
  if (request.kind != NumberKind::decimal_aligned) {
    request.zero_fill = false;  // a missing value is not a number of zeros
    return placement.place(request, capacity);
  }
  // Where the units digit of a number with these decimals would stand.
  const std::int64_t length = std::max<std::int64_t>(request.width, 1);
  if (length > capacity) {
    return placement.fill_with_stars(std::min(capacity, request.width), length,
                                     Status::does_not_fit);
  }
  const std::int64_t units_place = request.width - request.decimals - 1;
  placement.blanks_before = units_place >= 0 ? units_place : length - 1;
  placement.blanks_after = length - placement.blanks_before - 1;
  placement.length = length;
  placement.whole_room = true;
}

// These texts are not localised and take no part in width, beyond needing room.
void place_infinity(bool negative, const NumberRequest& request, std::int64_t capacity,
                    NumberPlacement& placement, ShortBody& body) noexcept {
  constexpr std::u16string_view text = u"-Inf";
  const std::u16string_view shown = negative ? text : text.substr(1);
  const auto needed = static_cast<std::int64_t>(shown.size());
  const std::int64_t room = std::min(request.width, capacity);
  if (room < needed) return placement.fill_with_stars(room, room, Status::does_not_fit);
  std::copy(shown.begin(), shown.end(), body.units);
  placement.body_length = needed;
  placement.length = needed;
}

}  // namespace

template <typename Unit>
Status format_double(const LocaleRecord& record, double value, const NumberRequest& request,
                     const FloatOptions* options, Unit* out, std::int64_t capacity,
                     std::int64_t* length) noexcept {
  const bool negative = value < 0;
  const double magnitude = std::bit_cast<double>(std::bit_cast<std::uint64_t>(value) << 1 >> 1);
  const bool finite = magnitude <= std::numeric_limits<double>::max();
  if (finite && !request.width_bound()) [[likely]] {
    return format_plain(record, request, magnitude, negative, out, capacity, length);
  }
  NumberPlacement placement;
  ShortBody body;
  if (finite) {
    format_width_bound(record, request, magnitude, negative, capacity, placement, body);
  } else if (value != value) {
    place_missing(value, options, request, capacity, placement, body);
  } else {
    place_infinity(negative, request, capacity, placement, body);
  }
  // Not as a whole block: behind the body lies what the stack held before.
  const auto write_body = [&](char16_t* to) {
    copy_text(to, body.units, static_cast<std::size_t>(placement.body_length) * sizeof(char16_t));
  };
  if constexpr (sizeof(Unit) == 1) {
    return deliver_encoded(placement, write_body, out, capacity, length);
  } else {
    return deliver(placement, write_body, out, capacity, length);
  }
}

template <typename Unit>
std::uint32_t format_number_here(LocaleHandle* handle, double value, std::int32_t width,
                                 std::int32_t decimals, std::uint32_t flags, Unit* out,
                                 std::int64_t capacity, std::int64_t* length) noexcept {
  return code(format_double(*handle->record, value, number_request(width, decimals, flags), nullptr,
                            out, std::max<std::int64_t>(capacity, 0), length));
}

template std::uint32_t format_number_here(LocaleHandle*, double, std::int32_t, std::int32_t,
                                          std::uint32_t, char16_t*, std::int64_t,
                                          std::int64_t*) noexcept;
template std::uint32_t format_number_here(LocaleHandle*, double, std::int32_t, std::int32_t,
                                          std::uint32_t, char*, std::int64_t,
                                          std::int64_t*) noexcept;

template Status format_double(const LocaleRecord&, double, const NumberRequest&,
                              const FloatOptions*, char16_t*, std::int64_t, std::int64_t*) noexcept;
template Status format_double(const LocaleRecord&, double, const NumberRequest&,
                              const FloatOptions*, char*, std::int64_t, std::int64_t*) noexcept;

}  // namespace jwnls
