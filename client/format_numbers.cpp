// Floating numbers, amounts and percentages, through the UTF-16 services.

#include <algorithm>
#include <charconv>
#include <cmath>
#include <string>

#include "abi/locale_handle.h"
#include "abi/number_flags.h"
#include "client/locale.h"
#include "client/locale_state.h"
#include "client/unit_buffer.h"

namespace jwnls::client {
namespace {

constexpr int infinity_width = 4;   // "-Inf"
constexpr int general_digits = 15;  // that every double shows without noise
constexpr int aligned_decimals = 2;
constexpr std::uint8_t symbol_is_given = 0x1;  // of FloatOptions

std::string number_text(double value) {
  char text[32];
  const auto [end, error] = std::to_chars(text, text + sizeof text, value);
  return {text, end};
}

// The fewest digits that tell a finite number from every other double, as d.ddd times 10^exponent.
struct ShortestDecimal {
  int digits;
  int exponent;
};

ShortestDecimal shortest_decimal(double value) {
  char text[32];
  const char* const end =
      std::to_chars(text, text + sizeof text, std::abs(value), std::chars_format::scientific).ptr;
  const char* const letter = std::find(static_cast<const char*>(text), end, 'e');
  const auto before_letter = static_cast<int>(letter - text);
  ShortestDecimal shortest = {before_letter > 1 ? before_letter - 1 : 1, 0};  // less the point
  (void)std::from_chars(letter[1] == '+' ? letter + 2 : letter + 1, end, shortest.exponent);
  return shortest;
}

// Decimals of the fixed notation that show all digits of the shortest form, `moved` places further
// left. One more than the count that cannot be asked for.
int fixed_decimals(double value, int moved) {
  const ShortestDecimal shortest = shortest_decimal(value);
  const int decimals = std::max(shortest.digits - 1 - shortest.exponent - moved, 0);
  return decimals == no_such_decimals ? decimals + 1 : decimals;
}

int default_decimals(NumberKind kind, double value) {
  if (!std::isfinite(value)) return 0;
  switch (kind) {
    case NumberKind::fixed:
      return fixed_decimals(value, 0);
    case NumberKind::general:
      return std::max(general_digits, shortest_decimal(value).digits);
    case NumberKind::exponent:
      return shortest_decimal(value).digits - 1;
    case NumberKind::decimal_aligned:
      return aligned_decimals;
    default:
      return 0;
  }
}

std::uint32_t kind_flags(NumberKind kind, bool capital) {
  using namespace number_flags;
  switch (kind) {
    case NumberKind::general:
      return capital ? general_capital : general;
    case NumberKind::exponent:
      return capital ? exponent_capital : exponent_small;
    case NumberKind::best_fit:
      return best_fit;
    case NumberKind::decimal_aligned:
      return decimal_aligned;
    default:
      return fixed;
  }
}

// True when the locale has groups at all. Without a pattern the service would take groups of 3.
bool has_groups(const LocaleRecord& record) {
  return !grouping_of(record).empty() && record.grouping_symbol != 0;
}

std::uint32_t flags_of(const NumberFormat& format, const LocaleRecord& record) {
  const auto given = [](bool asked, std::uint32_t flag) { return asked ? flag : 0; };
  const bool group = format.group.value_or(format.kind == NumberKind::fixed);
  return kind_flags(format.kind, format.capital) |
         given(group && has_groups(record), number_flags::group) |
         given(format.sign == SignDisplay::always, number_flags::sign) |
         given(format.sign == SignDisplay::blank, number_flags::blank) |
         given(format.zero_fill, number_flags::zero_fill) | given(format.left, number_flags::left) |
         given(format.trailing_zeros, number_flags::trailing_zeros);
}

tl::unexpected<Error> refused(const char* kind, double value, Status status,
                              const std::string& reason) {
  return failure(status, std::string(kind) + " " + number_text(value) + ": " + reason);
}

tl::unexpected<Error> refused_by_service(LocaleHandle* handle, const char* kind, double value,
                                         int width, Status status) {
  switch (status) {
    case Status::not_possible:
      return refused(kind, value, status,
                     "takes more than " + std::to_string(most_digits) + " digits");
    case Status::does_not_fit:
      return refused(kind, value, status, "does not fit a width of " + std::to_string(width));
    case Status::no_missing_symbol:
      return failure(status, std::string(kind) + ": no symbol to show a missing value");
    default:
      return refused(kind, value, status, status_text(handle, status));
  }
}

// Lays a field out where the service does not: the text without the blanks in front of it, then
// blanks on the side that is free.
void justify(UnitBuffer& buffer, std::int64_t width, bool left) {
  char16_t* const begin = buffer.units;
  char16_t* const end = begin + buffer.length;
  char16_t* const text = std::find_if(begin, end, [](char16_t unit) { return unit != u' '; });
  const std::int64_t text_length = end - text;
  const std::int64_t blanks = std::max<std::int64_t>(width - text_length, 0);
  std::copy(text, end, begin);
  std::fill_n(begin + text_length, blanks, u' ');
  if (!left) std::rotate(begin, begin + text_length, begin + text_length + blanks);
  buffer.length = text_length + blanks;
}

}  // namespace

template <TextString String>
Result<String> Locale::format_number(double value, const NumberFormat& format, Status* note) const {
  if (note != nullptr) *note = Status::ok;
  if (const auto usable = check(format); !usable) return tl::unexpected<Error>(usable.error());
  const bool best_fit = format.kind == NumberKind::best_fit;
  const bool bound = best_fit || format.kind == NumberKind::decimal_aligned;
  // The service neither pads infinities nor lets them outgrow a field.
  const bool infinite = std::isinf(value);
  int width = format.width;
  if (best_fit && width == 0) width = widest_bound_field;
  if (infinite && !bound) width = infinity_width;
  UnitBuffer buffer;
  const FloatOptions options = {symbol_is_given, {}, format.missing_symbol};
  const Status status{handle()->services.format_number_with_options(
      handle(), value, width, format.decimals.value_or(default_decimals(format.kind, value)),
      flags_of(format, record()), buffer.units, UnitBuffer::capacity, &buffer.length, &options)};
  if (status == Status::decimals_dropped || status == Status::grouping_failed) {
    if (note != nullptr) *note = status;
  } else if (status != Status::ok) {
    return refused_by_service(handle(), "number", value, width, status);
  }
  if (infinite || best_fit) justify(buffer, format.width, format.left);
  return buffer.text<String>();
}

template <TextString String>
Result<String> Locale::format_currency(double value, const CurrencyFormat& format) const {
  if (const auto usable = check(format); !usable) return tl::unexpected<Error>(usable.error());
  if (!std::isfinite(value)) {
    return format_number<String>(value, {.width = format.width, .left = format.left});
  }
  // The service's field takes the symbol and at least a digit, or it left-justifies the digits.
  const int least_width = static_cast<int>(currency_symbol_of(record()).size()) + 1;
  const int width = format.left ? least_width : std::max(format.width, least_width);
  UnitBuffer buffer;
  const Status status{handle()->services.format_currency(
      handle(), value, width, format.decimals.value_or(currency_decimals(record())), 0,
      buffer.units, UnitBuffer::capacity, &buffer.length)};
  if (status != Status::ok) return refused_by_service(handle(), "amount", value, width, status);
  if (format.left) justify(buffer, format.width, true);
  return buffer.text<String>();
}

template <TextString String>
Result<String> Locale::format_percent(double value, const PercentFormat& format) const {
  if (const auto usable = check(format); !usable) return tl::unexpected<Error>(usable.error());
  if (!std::isfinite(value)) {
    return format_number<String>(value, {.width = format.width, .left = format.left});
  }
  if (std::isinf(value * 100)) {
    return refused("percentage of", value, Status::out_of_range,
                   "its hundredfold is too large for a double");
  }
  const int decimals = format.decimals ? *format.decimals : fixed_decimals(value, 2);
  const int width = format.left ? 0 : format.width;
  UnitBuffer buffer;
  const Status status{handle()->services.format_percent(
      handle(), value, width, decimals, format.parentheses ? percent_flags::parentheses : 0,
      buffer.units, UnitBuffer::capacity, &buffer.length)};
  if (status != Status::ok) {
    return refused_by_service(handle(), "percentage of", value, width, status);
  }
  if (format.left) justify(buffer, format.width, true);
  return buffer.text<String>();
}

#define JWNLS_INSTANTIATE(String)                                                            \
  template Result<String> Locale::format_number(double, const NumberFormat&, Status*) const; \
  template Result<String> Locale::format_currency(double, const CurrencyFormat&) const;      \
  template Result<String> Locale::format_percent(double, const PercentFormat&) const

JWNLS_INSTANTIATE(std::string);
JWNLS_INSTANTIATE(std::u16string);
#undef JWNLS_INSTANTIATE

}  // namespace jwnls::client
