// Numbers out: from doubles, floats, integers and exact decimals.
//
// Short decimals, as nearly all values are, are laid out in one pass, the quickest way in UTF-8. In
// UTF-16 a service is quicker where it writes what the layout writes, into the caller's room; so it
// is with longer ones. What is left is digits first, of the service, of the standard library, of a
// text, and laid out afterwards.

#include <algorithm>
#include <bit>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <limits>
#include <string_view>

#include "abi/number_flags.h"
#include "abi/status.h"
#include "include/jwnls/jwnls.h"
#include "library/layouts/layout.h"
#include "library/numbers/decimal_text.h"
#include "library/numbers/lay_out_long.h"
#include "library/numbers/lay_out_short.h"
#include "library/numbers/short_decimal.h"
#include "library/numbers/shuffled_text.h"
#include "library/numbers/wide_decimal.h"
#include "library/texts/give_text.h"

namespace jwnls::library {
namespace {

bool takes_integers(const jwnls_layout& layout) {
  return layout.is(JWNLS_NUMBER) || layout.is(JWNLS_INTEGER) || layout.is(JWNLS_AMOUNT) ||
         layout.is(JWNLS_PERCENT);
}

bool takes_fractions(const jwnls_layout& layout) {
  return takes_integers(layout) && !layout.is(JWNLS_INTEGER);
}

template <typename Unit>
bool by_service(const NumberStyle& style) {
  return sizeof(Unit) == 1 ? style.by_service_8bit : style.by_service_16bit;
}

// The services count what callers here know as sizes: the same type but for the sign.
std::int64_t* counted(std::size_t* length) { return reinterpret_cast<std::int64_t*>(length); }

std::uint64_t magnitude_of(std::int64_t value) {
  const auto bits = static_cast<std::uint64_t>(value);
  return value < 0 ? 0 - bits : bits;
}

constexpr std::size_t integer_room = 32;  // the services clear what they are given

// Of that room, which no integer outgrows.
template <typename Unit>
[[gnu::always_inline]] inline int ask_service(const NumberStyle& style, std::int64_t value,
                                              Unit* out, std::size_t* length) {
  const ServiceTable& services = style.handle->services;
  constexpr std::int64_t room = integer_room;
  Status status = Status::ok;
  if constexpr (sizeof(Unit) == 1) {
    status = Status{services.format_int64_8bit(style.handle, value, 0, 1, style.service_flags, out,
                                               room, counted(length))};
  } else {
    status = Status{services.format_int64(style.handle, value, 0, 1, style.service_flags, out, room,
                                          counted(length))};
  }
  return status == Status::ok ? JWNLS_OK : JWNLS_RANGE;
}

constexpr std::size_t quick_room = 64;  // from which on the services are at their quickest
constexpr std::uint32_t quick_decimals = 16;

// What does not outgrow that room. Negative zero is the layout's matter: the service shows no sign.
template <typename Unit>
bool by_service(const NumberStyle& style, double value, std::size_t room) {
  constexpr double most = 1e15;
  const double magnitude = std::abs(value);
  const bool is_negative_zero = std::bit_cast<std::uint64_t>(value) == std::uint64_t{1} << 63;
  return by_service<Unit>(style) && room >= quick_room && magnitude < most &&
         magnitude >= style.service_from &&
         static_cast<std::uint32_t>(style.decimals) <= quick_decimals && !is_negative_zero;
}

template <typename Unit>
[[gnu::always_inline]] inline int ask_service(const NumberStyle& style, double value, Unit* out,
                                              std::size_t room, std::size_t* length) {
  const ServiceTable& services = style.handle->services;
  const std::uint32_t flags = number_flags::fixed | style.service_flags;
  const auto capacity = static_cast<std::int64_t>(room);
  Status status = Status::ok;
  if constexpr (sizeof(Unit) == 1) {
    status = Status{services.format_number_8bit(style.handle, value, 0, style.decimals, flags, out,
                                                capacity, counted(length), nullptr)};
  } else {
    status = Status{services.format_number_with_options(
        style.handle, value, 0, style.decimals, flags, out, capacity, counted(length), nullptr)};
  }
  return status == Status::ok ? JWNLS_OK : JWNLS_RANGE;
}

// ASCII digits with a fixed number of decimals, without groups or a sign.
Status service_digits(const NumberStyle& style, double magnitude, char* out, std::size_t room,
                      std::size_t* length) {
  std::int64_t count = 0;
  const Status status{style.handle->services.format_number_8bit(
      style.handle, magnitude, 0, style.decimals, number_flags::fixed, out,
      static_cast<std::int64_t>(room), &count, nullptr)};
  *length = static_cast<std::size_t>(count);
  return status;
}

template <typename Unit>
int lay_out_wide(const NumberStyle& style, const WideDecimal& number, Unit* out, std::size_t room,
                 std::size_t* length) {
  if (style.short_form != ShortForm::none && number.mantissa < short_limit &&
      number.decimals < short_digits) {
    const auto mantissa = static_cast<std::uint64_t>(number.mantissa);
    return lay_out_short(style, {mantissa, number.decimals, number.negative, false}, out, room,
                         length);
  }
  return lay_out_long(style, WideDigits(number).digits(), out, room, length);
}

// Digits with a fixed number of decimals; of the longest, which the service writes without groups.
template <typename Unit>
[[gnu::noinline]] int lay_out_fixed(const NumberStyle& style, double value, Unit* out,
                                    std::size_t room, std::size_t* length) {
  if (WideDecimal number; fixed_wide(value, static_cast<unsigned>(style.decimals), number)) {
    return lay_out_wide(style, number, out, room, length);
  }
  constexpr std::size_t most = 512;
  char text[most + digits_margin];
  std::size_t count = 0;
  if (service_digits(style, std::abs(value), text, most, &count) != Status::ok) {
    // More digits than the service writes.
    DecimalText decimal;
    decimal.exact(value);
    decimal.round(style.decimals, false);
    return lay_out_long(style, decimal.digits(), out, room, length);
  }
  const std::string_view digits(text, count);
  const auto decimals = static_cast<std::size_t>(style.decimals);
  const std::size_t integers = digits.find_last_of("0123456789", count - decimals - 1) + 1;
  return lay_out_long(
      style, {digits.substr(0, integers), digits.substr(count - decimals), 0, std::signbit(value)},
      out, room, length);
}

template <typename Unit>
[[gnu::noinline]] int write_magnitude(const NumberStyle& style, std::uint64_t magnitude,
                                      bool negative, Unit* out, std::size_t room,
                                      std::size_t* length) {
  char text[24 + digits_margin];
  char* end = std::to_chars(text, text + 20, magnitude).ptr;
  if (magnitude != 0) end = std::fill_n(end, style.shift, '0');
  return lay_out_long(style,
                      {{text, static_cast<std::size_t>(end - text)},
                       {},
                       static_cast<std::size_t>(std::max(style.decimals, 0)),
                       negative},
                      out, room, length);
}

template <typename Unit>
int write_int64(const NumberStyle& style, std::int64_t value, Unit* out, std::size_t room,
                std::size_t* length) {
  const std::uint64_t magnitude = magnitude_of(value);
  const auto decimals = static_cast<unsigned>(std::max(style.decimals, 0));
  if constexpr (sizeof(Unit) == 1) {
    if (magnitude < style.short_integers && is_shuffled(style.shuffled, decimals, room))
        [[likely]] {
      return lay_out_as_it_is(style.shuffled, magnitude * style.integer_scale, decimals, out,
                              value < 0, length);
    }
  }
  if (by_service<Unit>(style) && room >= integer_room && style.decimals <= 0 &&
      style.service_from == 0) [[likely]] {
    return ask_service(style, value, out, length);
  }
  if (magnitude < style.short_integers) [[likely]] {
    return lay_out_short(style, {magnitude * style.integer_scale, decimals, value < 0, false}, out,
                         room, length);
  }
  return write_magnitude(style, magnitude, value < 0, out, room, length);
}

// Infinities, and what is no value.
template <typename Unit>
[[gnu::noinline]] int write_special(const NumberStyle& style, double value, Unit* out,
                                    std::size_t room, std::size_t* length) {
  *length = 0;
  if (std::isnan(value)) return JWNLS_MISSING;
  const bool negative = value < 0;
  const std::basic_string_view<Unit> parts[] = {style.prefix[negative].without_blank<Unit>(true),
                                                style.infinity.text<Unit>(),
                                                style.suffix[negative].without_blank<Unit>(false)};
  for (const auto& part : parts) *length += part.size();
  if (*length > room) return JWNLS_ROOM;
  for (const auto& part : parts) out += part.copy(out, part.size());
  return JWNLS_OK;
}

template <typename Float, typename Unit>
[[gnu::noinline]] int write_shortest(const NumberStyle& style, Float value, Unit* out,
                                     std::size_t room, std::size_t* length) {
  constexpr Float exact_integers = 1 / std::numeric_limits<Float>::epsilon();
  if (std::abs(value) < exact_integers && std::trunc(value) == value && value != 0 &&
      style.shift == 0) {
    return write_int64(style, static_cast<std::int64_t>(value), out, room, length);
  }
  if constexpr (sizeof value == sizeof(double)) {
    WideDecimal wide;
    if (shortest_wide(value, wide) &&
        adjust_wide(wide, static_cast<unsigned>(style.shift), style.decimals)) {
      return lay_out_wide(style, wide, out, room, length);
    }
  }
  DecimalText decimal;
  decimal.shortest(value);
  if (style.shift != 0) decimal.shift(style.shift);
  if (style.decimals >= 0) decimal.round(style.decimals, false);
  return lay_out_long(style, decimal.digits(), out, room, length);
}

template <typename Float, typename Unit>
[[gnu::noinline]] int write_any(const jwnls_layout* layout, Float value, Unit* out,
                                std::size_t room, std::size_t* length) {
  const NumberStyle& style = layout->number.style;
  const auto wide = static_cast<double>(value);
  ShortDecimal number;
  if (style.short_form == ShortForm::fixed &&
      fixed_decimal(wide, static_cast<unsigned>(style.decimals), number)) {
    return lay_out_short(style, number, out, room, length);
  }
  *length = 0;
  if (!takes_fractions(*layout)) return JWNLS_KIND;
  if (!std::isfinite(wide)) return write_special(style, wide, out, room, length);
  // The digits of a percentage are those of the value, moved; no product of doubles is.
  if (style.decimals < 0 || style.shift != 0) {
    return write_shortest(style, value, out, room, length);
  }
  return lay_out_fixed(style, wide, out, room, length);
}

template <typename Unit>
[[gnu::noinline]] int write_many_decimals(const jwnls_layout* layout, double value, Unit* out,
                                          std::size_t room, std::size_t* length) {
  const NumberStyle& style = layout->number.style;
  ShortDecimal number;
  const auto shift = static_cast<unsigned>(style.shift);
  if (fewer_decimals(value, shift, style.decimals, number) ||
      (style.decimals >= 0 &&
       decimals_far_from_half(value, shift, static_cast<unsigned>(style.decimals), number))) {
    return lay_out_short(style, number, out, room, length);
  }
  return write_any(layout, value, out, room, length);
}

// Doubles alone: a float's few decimals are other ones than those of its double.
template <typename Unit>
[[gnu::noinline]] int write_few_decimals(const jwnls_layout* layout, double value, Unit* out,
                                         std::size_t room, std::size_t* length) {
  const NumberStyle& style = layout->number.style;
  ShortDecimal number;
  if (few_decimals(value, static_cast<unsigned>(style.shift), style.decimals, number)) [[likely]] {
    return lay_out_short(style, number, out, room, length);
  }
  return write_many_decimals(layout, value, out, room, length);
}

template <typename Float, typename Unit>
int write_float(const jwnls_layout* layout, Float value, Unit* out, std::size_t room,
                std::size_t* length) {
  const NumberStyle& style = layout->number.style;
  const auto wide = static_cast<double>(value);
  ShortDecimal number;
  if constexpr (sizeof(Unit) == 1) {
    const auto decimals = static_cast<unsigned>(style.decimals);
    if (style.short_form == ShortForm::fixed && is_shuffled(style.shuffled, decimals, room) &&
        fixed_amount(wide, decimals, number)) [[likely]] {
      return lay_out_as_it_is(style.shuffled, number.mantissa, decimals, out, number.negative,
                              length);
    }
  }
  if (by_service<Unit>(style, wide, room) && layout->is(JWNLS_NUMBER)) [[likely]] {
    return ask_service(style, wide, out, room, length);
  }
  if (style.short_form == ShortForm::fixed &&
      fixed_amount(wide, static_cast<unsigned>(style.decimals), number)) [[likely]] {
    return lay_out_short(style, number, out, room, length);
  }
  if constexpr (sizeof value == sizeof wide) {
    if (style.short_form == ShortForm::few) [[likely]] {
      return write_few_decimals(layout, value, out, room, length);
    }
  }
  return write_any(layout, value, out, room, length);
}

template <typename Unit>
int write_signed(const jwnls_layout* layout, std::int64_t value, Unit* out, std::size_t room,
                 std::size_t* length) {
  *length = 0;
  if (!takes_integers(*layout)) return JWNLS_KIND;
  return write_int64(layout->number.style, value, out, room, length);
}

template <typename Unit>
int write_unsigned(const jwnls_layout* layout, std::uint64_t value, Unit* out, std::size_t room,
                   std::size_t* length) {
  *length = 0;
  if (!takes_integers(*layout)) return JWNLS_KIND;
  const NumberStyle& style = layout->number.style;
  if (value <= static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max())) {
    return write_int64(style, static_cast<std::int64_t>(value), out, room, length);
  }
  return write_magnitude(style, value, false, out, room, length);
}

template <typename Unit>
int write_decimal(const jwnls_layout* layout, std::string_view text, Unit* out, std::size_t room,
                  std::size_t* length) {
  *length = 0;
  if (!takes_integers(*layout)) return JWNLS_KIND;
  const NumberStyle& style = layout->number.style;
  ShortDecimal number;
  if (style.short_form != ShortForm::none && decimal_of_text(text, number) &&
      adjust(number, static_cast<unsigned>(style.shift), style.decimals, style.half_even))
      [[likely]] {
    return lay_out_short(style, number, out, room, length);
  }
  DecimalText decimal;
  if (const int code = decimal.read(text); code != JWNLS_OK) return code;
  if (layout->is(JWNLS_INTEGER) && !decimal.drop_fraction()) return JWNLS_RANGE;
  if (style.shift != 0) decimal.shift(style.shift);
  if (style.decimals >= 0) decimal.round(style.decimals, style.half_even);
  return lay_out_long(style, decimal.digits(), out, room, length);
}

// With decimals that the layout does not have, or with more digits.
template <typename Unit>
[[gnu::noinline]] int write_any_scaled(const jwnls_layout* layout, std::int64_t value,
                                       std::int32_t scale, Unit* out, std::size_t room,
                                       std::size_t* length) {
  const NumberStyle& style = layout->number.style;
  ShortDecimal number{magnitude_of(value), static_cast<unsigned>(scale), value < 0};
  if (style.short_form != ShortForm::none && number.mantissa < short_limit &&
      number.decimals < short_digits &&
      adjust(number, static_cast<unsigned>(style.shift), style.decimals, style.half_even)) {
    return lay_out_short(style, number, out, room, length);
  }
  char text[48];
  char* end = std::to_chars(text, text + 24, value).ptr;
  *end++ = 'E';
  end = std::to_chars(end, text + sizeof text, -std::int64_t{scale}).ptr;
  return write_decimal<Unit>(layout, {text, static_cast<std::size_t>(end - text)}, out, room,
                             length);
}

template <typename Unit>
int write_scaled(const jwnls_layout* layout, std::int64_t value, std::int32_t scale, Unit* out,
                 std::size_t room, std::size_t* length) {
  if constexpr (sizeof(Unit) == 1) {
    const ShuffledText& texts = layout->number.style.shuffled;
    const std::uint64_t magnitude = magnitude_of(value);
    if (is_shuffled_as_it_is(texts, magnitude, scale, room)) [[likely]] {
      return lay_out_as_it_is(texts, magnitude, static_cast<unsigned>(scale), out, value < 0,
                              length);
    }
  }
  return write_any_scaled(layout, value, scale, out, room, length);
}

}  // namespace
}  // namespace jwnls::library

using jwnls::library::write_decimal;
using jwnls::library::write_float;
using jwnls::library::write_scaled;
using jwnls::library::write_signed;
using jwnls::library::write_unsigned;

extern "C" {

int jwnls_write_number(const jwnls_layout* layout, double value, char* out, size_t room,
                       size_t* length) {
  return write_float(layout, value, out, room, length);
}
int jwnls_write_number_utf16(const jwnls_layout* layout, double value, char16_t* out, size_t room,
                             size_t* length) {
  return write_float(layout, value, out, room, length);
}
int jwnls_write_float(const jwnls_layout* layout, float value, char* out, size_t room,
                      size_t* length) {
  return write_float(layout, value, out, room, length);
}
int jwnls_write_float_utf16(const jwnls_layout* layout, float value, char16_t* out, size_t room,
                            size_t* length) {
  return write_float(layout, value, out, room, length);
}
int jwnls_write_integer(const jwnls_layout* layout, int64_t value, char* out, size_t room,
                        size_t* length) {
  return write_signed(layout, value, out, room, length);
}
int jwnls_write_integer_utf16(const jwnls_layout* layout, int64_t value, char16_t* out, size_t room,
                              size_t* length) {
  return write_signed(layout, value, out, room, length);
}
int jwnls_write_unsigned(const jwnls_layout* layout, uint64_t value, char* out, size_t room,
                         size_t* length) {
  return write_unsigned(layout, value, out, room, length);
}
int jwnls_write_unsigned_utf16(const jwnls_layout* layout, uint64_t value, char16_t* out,
                               size_t room, size_t* length) {
  return write_unsigned(layout, value, out, room, length);
}
int jwnls_write_decimal(const jwnls_layout* layout, const char* decimal, size_t decimal_length,
                        char* out, size_t room, size_t* length) {
  return write_decimal(layout, {decimal, decimal_length}, out, room, length);
}
int jwnls_write_decimal_utf16(const jwnls_layout* layout, const char* decimal,
                              size_t decimal_length, char16_t* out, size_t room, size_t* length) {
  return write_decimal(layout, {decimal, decimal_length}, out, room, length);
}
int jwnls_write_scaled(const jwnls_layout* layout, int64_t value, int32_t scale, char* out,
                       size_t room, size_t* length) {
  return write_scaled(layout, value, scale, out, room, length);
}
int jwnls_write_scaled_utf16(const jwnls_layout* layout, int64_t value, int32_t scale,
                             char16_t* out, size_t room, size_t* length) {
  return write_scaled(layout, value, scale, out, room, length);
}

}  // extern "C"
