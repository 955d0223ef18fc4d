#include "module/numfmt/number_formatter.h"

#include <algorithm>
#include <bit>
#include <limits>
#include <string_view>

#include "module/calendar/missing_value.h"
#include "module/numfmt/plain_kinds.h"
#include "module/numfmt/width_bound_kinds.h"

namespace jwnls {
namespace {

// The character of a missing value: the complement of its byte 5. Other NaNs show as the standard
// one.
char16_t missing_character(double value, const FloatOptions* options) noexcept {
  const std::uint64_t bits =
      is_missing(value) ? std::bit_cast<std::uint64_t>(value) : missing_value_bits;
  const auto character = static_cast<std::uint8_t>(~(bits >> 40));
  if (character == '-') return u'_';
  if (character == '.' && options != nullptr && (options->flags & 1) != 0) {
    return options->missing_symbol;
  }
  return character;
}

void format_missing(double value, NumberRequest request, std::int64_t capacity,
                    const FloatOptions* options, NumberField& field) noexcept {
  const char16_t character = missing_character(value, options);
  if (character == 0) return field.refuse(Status::no_missing_symbol);
  field.body[0] = character;
  field.body_length = 1;
  if (request.kind != NumberKind::decimal_aligned) {
    request.zero_fill = false;  // a missing value is not a number of zeros
    return field.place(request, capacity);
  }
  // Where the units digit of a number with these decimals would stand.
  const std::int64_t length = std::max<std::int64_t>(request.width, 1);
  if (length > capacity) {
    return field.fill_with_stars(std::min(capacity, request.width), length, Status::does_not_fit);
  }
  const std::int64_t units_place = request.width - request.decimals - 1;
  field.blanks_before = units_place >= 0 ? units_place : length - 1;
  field.blanks_after = length - field.blanks_before - 1;
  field.length = length;
  field.whole_room = true;
}

// These texts are not localised and take no part in width, beyond needing room.
void format_infinity(bool negative, const NumberRequest& request, std::int64_t capacity,
                     NumberField& field) noexcept {
  constexpr std::u16string_view text = u"-Inf";
  const std::u16string_view shown = negative ? text : text.substr(1);
  const std::int64_t room = std::min(request.width, capacity);
  if (room < static_cast<std::int64_t>(shown.size())) {
    return field.fill_with_stars(room, room, Status::does_not_fit);
  }
  std::copy(shown.begin(), shown.end(), field.body);
  field.body_length = shown.size();
  field.length = static_cast<std::int64_t>(shown.size());
}

}  // namespace

void format_double(const LocaleRecord& record, double value, const NumberRequest& request,
                   std::int64_t capacity, const FloatOptions* options,
                   NumberField& field) noexcept {
  const bool negative = value < 0;
  const double magnitude = std::bit_cast<double>(std::bit_cast<std::uint64_t>(value) << 1 >> 1);
  if (!(magnitude <= std::numeric_limits<double>::max())) [[unlikely]] {
    if (value != value) return format_missing(value, request, capacity, options, field);
    return format_infinity(negative, request, capacity, field);
  }
  if (request.width_bound()) {
    format_width_bound(record, request, magnitude, negative, capacity, field);
  } else {
    format_plain(record, request, magnitude, negative, capacity, field);
  }
}

}  // namespace jwnls
