#include "module/format_numbers/missing_and_infinite.h"

#include <algorithm>
#include <bit>
#include <string_view>

#include "abi/missing_value.h"

namespace jwnls {
namespace {

// Other NaNs show as the standard missing value.
std::uint8_t shown_character(double value) noexcept {
  return static_cast<std::uint8_t>(is_missing(value) ? missing_character(value) : '.');
}

// Where the units digit of a number with these decimals would stand.
void align_with_units(const NumberRequest& request, std::int64_t capacity,
                      Placement& placement) noexcept {
  const std::int64_t width = request.field.width;
  const std::int64_t length = std::max<std::int64_t>(width, 1);
  if (length > capacity) {
    return placement.fill_with_stars(std::min(capacity, width), length, Status::does_not_fit);
  }
  const std::int64_t units_place = width - request.decimals - 1;
  placement.blanks_before = units_place >= 0 ? units_place : length - 1;
  placement.blanks_after = length - placement.blanks_before - 1;
  placement.length = length;
  placement.whole_room = true;
}

}  // namespace

void place_missing(double value, const FloatOptions* options, const NumberRequest& request,
                   std::int64_t capacity, ShortNumber& out) noexcept {
  const std::uint8_t character = shown_character(value);
  out.body[0] = character;
  if (character == '.' && options != nullptr && (options->flags & 1) != 0) {
    out.body[0] = options->missing_symbol;
    if (options->missing_symbol == 0) return out.placement.refuse(Status::no_missing_symbol);
  }
  out.placement.body_length = 1;
  if (request.kind == NumberKind::decimal_aligned) {
    return align_with_units(request, capacity, out.placement);
  }
  Field field = request.field;
  field.zero_fill = false;  // a missing value is not a number of zeros
  out.placement.place(field, capacity);
}

void place_infinity(bool negative, const NumberRequest& request, std::int64_t capacity,
                    ShortNumber& out) noexcept {
  constexpr std::u16string_view text = u"-Inf";
  const std::u16string_view shown = negative ? text : text.substr(1);
  const auto needed = static_cast<std::int64_t>(shown.size());
  const std::int64_t room = std::min(request.field.width, capacity);
  if (room < needed) return out.placement.fill_with_stars(room, room, Status::does_not_fit);
  std::copy(shown.begin(), shown.end(), out.body);
  out.placement.body_length = needed;
  out.placement.length = needed;
}

}  // namespace jwnls
