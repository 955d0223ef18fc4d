// Numbers out: from doubles, floats, integers and exact decimals.
//
// Where a service writes what the layout writes, it does so into the caller's room. Everything else
// is digits first, laid out afterwards.

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
#include "library/numbers/lay_out.h"
#include "library/texts/give_text.h"

namespace jwnls::library {
namespace {

constexpr std::size_t quick_room = 64;    // from which on the services are at their quickest
constexpr std::size_t integer_room = 32;  // of which they clear whatever they are given
constexpr double quick_magnitude = 1e15;
constexpr std::uint32_t quick_decimals = 16;

bool takes_integers(const jwnls_layout& layout) {
  return layout.is(JWNLS_NUMBER) || layout.is(JWNLS_INTEGER) || layout.is(JWNLS_AMOUNT) ||
         layout.is(JWNLS_PERCENT);
}

bool takes_fractions(const jwnls_layout& layout) {
  return takes_integers(layout) && !layout.is(JWNLS_INTEGER);
}

template <typename Unit>
bool is_direct(const NumberStyle& style) {
  return sizeof(Unit) == 1 ? style.direct_8bit : style.direct_16bit;
}

// The services count what callers here know as sizes: the same type but for the sign.
std::int64_t* counted(std::size_t* length) { return reinterpret_cast<std::int64_t*>(length); }

template <typename Unit>
[[gnu::always_inline]] inline Status ask_service(const NumberStyle& style, double value,
                                                 std::uint32_t flags, Unit* out, std::size_t room,
                                                 std::size_t* length) {
  const ServiceTable& services = style.handle->services;
  const auto capacity = static_cast<std::int64_t>(room);
  if constexpr (sizeof(Unit) == 1) {
    return Status{services.format_number_8bit(style.handle, value, 0, style.decimals, flags, out,
                                              capacity, counted(length), nullptr)};
  } else {
    return Status{services.format_number_with_options(style.handle, value, 0, style.decimals, flags,
                                                      out, capacity, counted(length), nullptr)};
  }
}

template <typename Unit>
[[gnu::always_inline]] inline Status ask_service(const NumberStyle& style, std::int64_t value,
                                                 Unit* out, std::size_t* length) {
  const ServiceTable& services = style.handle->services;
  constexpr std::int64_t capacity = integer_room;
  if constexpr (sizeof(Unit) == 1) {
    return Status{services.format_int64_8bit(style.handle, value, 0, 1, style.service_flags, out,
                                             capacity, counted(length))};
  } else {
    return Status{services.format_int64(style.handle, value, 0, 1, style.service_flags, out,
                                        capacity, counted(length))};
  }
}

// Digits with a fixed number of decimals, which the service writes without groups.
template <typename Unit>
[[gnu::noinline]] int lay_out_fixed(const NumberStyle& style, double value, Unit* out,
                                    std::size_t room, std::size_t* length) {
  char text[512];
  std::size_t count = 0;
  if (ask_service(style, std::abs(value), number_flags::fixed, text, sizeof text, &count) !=
      Status::ok) {
    // More digits than the service writes.
    DecimalText decimal;
    decimal.exact(value);
    decimal.round(style.decimals, false);
    return lay_out(style, decimal.digits(), out, room, length);
  }
  const std::string_view digits(text, count);
  const auto decimals = static_cast<std::size_t>(style.decimals);
  const std::size_t integers = std::min(digits.find_first_not_of("0123456789"), count);
  return lay_out(
      style, {digits.substr(0, integers), digits.substr(count - decimals), 0, std::signbit(value)},
      out, room, length);
}

template <typename Unit>
[[gnu::noinline]] int write_magnitude(const NumberStyle& style, std::uint64_t magnitude,
                                      bool negative, Unit* out, std::size_t room,
                                      std::size_t* length) {
  char text[24];
  char* end = std::to_chars(text, text + 20, magnitude).ptr;
  if (magnitude != 0) end = std::fill_n(end, style.shift, '0');
  return lay_out(style,
                 {{text, static_cast<std::size_t>(end - text)},
                  {},
                  static_cast<std::size_t>(std::max(style.decimals, 0)),
                  negative},
                 out, room, length);
}

template <typename Unit>
int write_int64(const NumberStyle& style, std::int64_t value, Unit* out, std::size_t room,
                std::size_t* length) {
  if (room >= integer_room && is_direct<Unit>(style) && style.service_affixes &&
      style.decimals <= 0 && style.direct_from == 0) [[likely]] {
    // No integer outgrows that room, so that the service does not fail.
    return ask_service(style, value, out, length) == Status::ok ? JWNLS_OK : JWNLS_RANGE;
  }
  const std::uint64_t magnitude =
      value < 0 ? 0 - static_cast<std::uint64_t>(value) : static_cast<std::uint64_t>(value);
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

// What a value has no more than six decimals of, as most do: a division of two exact operands
// rounds as reading does, and fifteen digits are the shortest that give their double back.
template <typename Unit>
bool write_few_decimals(const NumberStyle& style, double value, Unit* out, std::size_t room,
                        std::size_t* length, int& code) {
  constexpr double scale = 1e6;
  constexpr double most = 1e15;
  const double scaled = std::abs(value) * scale;
  if (!(scaled < most)) return false;
  auto mantissa = static_cast<std::uint64_t>(scaled + 0.5);
  if (static_cast<double>(mantissa) / scale != std::abs(value)) return false;
  auto decimals = static_cast<std::size_t>(6 - style.shift);
  const auto wanted = static_cast<std::size_t>(style.decimals < 0 ? 0 : style.decimals);
  if (style.decimals >= 0) {
    std::uint64_t unit = 1;
    for (; decimals > wanted; --decimals) unit *= 10;
    mantissa = (mantissa + unit / 2) / unit;  // halves away from zero
  } else {
    for (; decimals != 0 && mantissa % 10 == 0; --decimals) mantissa /= 10;
  }
  char text[32] = {'0', '0', '0', '0', '0', '0', '0', '0'};
  constexpr std::size_t lead = 8;  // zeros for a mantissa with fewer digits than decimals
  const char* const end = std::to_chars(text + lead, text + sizeof text, mantissa).ptr;
  const char* const point = end - decimals;
  const char* const first = std::min<const char*>(text + lead, point - 1);
  code = lay_out(style,
                 {{first, static_cast<std::size_t>(point - first)},
                  {point, decimals},
                  wanted > decimals ? wanted - decimals : 0,
                  std::signbit(value)},
                 out, room, length);
  return true;
}

template <typename Float, typename Unit>
[[gnu::noinline]] int write_shortest(const NumberStyle& style, Float value, Unit* out,
                                     std::size_t room, std::size_t* length) {
  const auto wide = static_cast<double>(value);
  constexpr double exact_integers = 1 / static_cast<double>(std::numeric_limits<Float>::epsilon());
  if (std::abs(wide) < exact_integers && std::trunc(wide) == wide && wide != 0 &&
      style.shift == 0) {
    return write_int64(style, static_cast<std::int64_t>(wide), out, room, length);
  }
  if constexpr (sizeof(Float) == sizeof(double)) {
    int code = JWNLS_OK;
    if (write_few_decimals(style, value, out, room, length, code)) return code;
  }
  DecimalText decimal;
  decimal.shortest(value);
  if (style.shift != 0) decimal.shift(style.shift);
  if (style.decimals >= 0) decimal.round(style.decimals, false);
  return lay_out(style, decimal.digits(), out, room, length);
}

template <typename Float, typename Unit>
[[gnu::noinline]] int write_any(const NumberStyle& style, Float value, Unit* out, std::size_t room,
                                std::size_t* length) {
  const auto wide = static_cast<double>(value);
  if (!std::isfinite(wide)) return write_special(style, wide, out, room, length);
  // The digits of a percentage are those of the value, moved; no product of doubles is.
  if (style.decimals < 0 || style.shift != 0) {
    return write_shortest(style, value, out, room, length);
  }
  return lay_out_fixed(style, wide, out, room, length);
}

// Digits by the service, the affixes around them.
template <typename Unit>
int write_between_affixes(const NumberStyle& style, double value, Unit* out, std::size_t room,
                          std::size_t* length) {
  const bool negative = std::signbit(value);
  const auto prefix = style.prefix[negative].text<Unit>();
  const auto suffix = style.suffix[negative].text<Unit>();
  const std::uint32_t flags = number_flags::fixed | style.service_flags;
  Unit scratch[quick_room];
  const bool has_room = room >= quick_room + prefix.size();
  Unit* const digits = has_room ? out + prefix.size() : scratch;
  std::size_t count = 0;
  if (ask_service(style, std::abs(value), flags, digits, quick_room, &count) != Status::ok) {
    return JWNLS_RANGE;  // such a number does not outgrow that room
  }
  *length = prefix.size() + count + suffix.size();
  if (*length > room) return JWNLS_ROOM;
  prefix.copy(out, prefix.size());  // and nothing of the digits behind it
  Unit* const at = out + prefix.size();
  if (!has_room) std::copy_n(scratch, count, at);
  put_affix(suffix, room - prefix.size() - count, at + count);
  return JWNLS_OK;
}

template <typename Unit>
bool is_quick(const NumberStyle& style, double magnitude) {
  return is_direct<Unit>(style) && magnitude < quick_magnitude && magnitude >= style.direct_from &&
         static_cast<std::uint32_t>(style.decimals) <= quick_decimals;
}

template <typename Float, typename Unit>
[[gnu::noinline]] int write_with_affixes(const jwnls_layout* layout, Float value, Unit* out,
                                         std::size_t room, std::size_t* length) {
  if (!takes_fractions(*layout)) {
    *length = 0;
    return JWNLS_KIND;
  }
  const NumberStyle& style = layout->number.style;
  const auto wide = static_cast<double>(value);
  return is_quick<Unit>(style, std::abs(wide))
             ? write_between_affixes(style, wide, out, room, length)
             : write_any(style, value, out, room, length);
}

template <typename Float, typename Unit>
int write_float(const jwnls_layout* layout, Float value, Unit* out, std::size_t room,
                std::size_t* length) {
  const NumberStyle& style = layout->number.style;
  if (!layout->is(JWNLS_NUMBER) || !style.service_affixes) [[unlikely]] {
    return write_with_affixes(layout, value, out, room, length);
  }
  const auto wide = static_cast<double>(value);
  // Negative zero is the layout's matter: the service shows no sign of it.
  const bool is_negative_zero = std::bit_cast<std::uint64_t>(wide) == std::uint64_t{1} << 63;
  if (room >= quick_room && is_quick<Unit>(style, std::abs(wide)) && !is_negative_zero) [[likely]] {
    // Such a number does not outgrow that room, so that the service does not fail.
    const std::uint32_t flags = number_flags::fixed | style.service_flags;
    return ask_service(style, wide, flags, out, room, length) == Status::ok ? JWNLS_OK
                                                                            : JWNLS_RANGE;
  }
  return write_any(style, value, out, room, length);
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
  DecimalText decimal;
  if (const int code = decimal.read(text); code != JWNLS_OK) return code;
  if (layout->is(JWNLS_INTEGER) && !decimal.drop_fraction()) return JWNLS_RANGE;
  if (style.shift != 0) decimal.shift(style.shift);
  if (style.decimals >= 0) decimal.round(style.decimals, style.half_even);
  return lay_out(style, decimal.digits(), out, room, length);
}

}  // namespace
}  // namespace jwnls::library

using jwnls::library::write_decimal;
using jwnls::library::write_float;
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

}  // extern "C"
