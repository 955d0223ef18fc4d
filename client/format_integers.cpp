// Integers, through the UTF-16 services.

#include <algorithm>
#include <limits>
#include <string>

#include "abi/locale_handle.h"
#include "abi/number_flags.h"
#include "client/locale.h"
#include "client/locale_state.h"
#include "client/unit_buffer.h"

namespace jwnls::client {
namespace {

// Any 64-bit integer with a separator between each two of its digits, or in octal, and a sign or
// prefix. The services clear all the room that they get, so it is no larger than need be.
constexpr std::int64_t usual_room = 64;
constexpr int prefix_length = 2;  // "0x"

std::uint32_t flags_of(const IntegerFormat& format) {
  using namespace integer_flags;
  const auto given = [](bool asked, std::uint32_t flag) { return asked ? flag : 0; };
  const bool hexadecimal = format.radix == Radix::hexadecimal;
  return given(hexadecimal && !format.capital, hexadecimal_small) |
         given(hexadecimal && format.capital, hexadecimal_capital) |
         given(format.radix == Radix::octal, octal) | given(format.prefix, prefix) |
         given(format.sign == SignDisplay::always, sign) |
         given(format.sign == SignDisplay::blank, blank) |
         given(format.group && format.radix == Radix::decimal, group) | given(format.left, left);
}

// Zero fill is written as minimum digits: the services' own would leave 0 an empty text, and count
// one place of a prefix.
int minimum_digits(const IntegerFormat& format, bool shows_sign) {
  if (!format.zero_fill || format.left) return format.minimum_digits;
  const int taken = (shows_sign ? 1 : 0) + (format.prefix ? prefix_length : 0);
  return std::max(format.minimum_digits, format.width - taken);
}

template <TextString String, typename Integer>
Result<String> format(LocaleHandle* handle, FormatInteger<Integer, char16_t>* service,
                      Integer value, bool shows_sign, const IntegerFormat& format) {
  const int digits = minimum_digits(format, shows_sign);
  const std::int64_t room =
      std::min(UnitBuffer::capacity, usual_room + std::max(digits, format.width));
  UnitBuffer buffer;
  const Status status{service(handle, value, format.width, digits, flags_of(format), buffer.units,
                              room, &buffer.length)};
  if (status != Status::ok) {
    return failure(status, std::string("integer ") + std::to_string(value) + ": " +
                               status_text(handle, status));
  }
  return buffer.text<String>();
}

}  // namespace

template <TextString String>
Result<String> Locale::format_signed(std::int64_t value, const IntegerFormat& asked) const {
  if (asked.radix != Radix::decimal) {
    return format_unsigned<String>(static_cast<std::uint64_t>(value), asked);
  }
  if (const auto usable = check(asked); !usable) return tl::unexpected<Error>(usable.error());
  const bool shows_sign = value < 0 || asked.sign != SignDisplay::negative;
  return format<String>(handle(), handle()->services.format_int64, value, shows_sign, asked);
}

template <TextString String>
Result<String> Locale::format_unsigned(std::uint64_t value, const IntegerFormat& asked) const {
  if (const auto usable = check(asked); !usable) return tl::unexpected<Error>(usable.error());
  // The unsigned services show no sign.
  if (asked.sign != SignDisplay::negative) {
    if (value <= std::uint64_t{std::numeric_limits<std::int64_t>::max()}) {
      return format_signed<String>(static_cast<std::int64_t>(value), asked);
    }
    return failure(Status::not_possible, std::string("integer ") + std::to_string(value) +
                                             ": above 9223372036854775807 no sign is shown");
  }
  return format<String>(handle(), handle()->services.format_uint64, value, false, asked);
}

#define JWNLS_INSTANTIATE(String)                                                          \
  template Result<String> Locale::format_signed(std::int64_t, const IntegerFormat&) const; \
  template Result<String> Locale::format_unsigned(std::uint64_t, const IntegerFormat&) const

JWNLS_INSTANTIATE(std::string);
JWNLS_INSTANTIATE(std::u16string);
#undef JWNLS_INSTANTIATE

}  // namespace jwnls::client
