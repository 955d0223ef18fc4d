#include <algorithm>
#include <cstdint>
#include <limits>
#include <string_view>

#include "abi/locale_record.h"
#include "abi/number_flags.h"
#include "abi/status.h"
#include "module/format_numbers/number_services.h"

namespace jwnls {
namespace {

// A width less the places that are taken. Below 0 the formatter left-justifies.
constexpr std::int32_t reduced(std::int32_t width, std::int64_t taken) noexcept {
  return static_cast<std::int32_t>(
      std::max<std::int64_t>(width - taken, std::numeric_limits<std::int32_t>::min()));
}

}  // namespace

std::uint32_t format_currency(LocaleHandle* handle, double value, std::int32_t width,
                              std::int32_t decimals, std::uint32_t flags, char16_t* out,
                              std::int64_t capacity, std::int64_t* length) noexcept {
  const std::u16string_view symbol = currency_symbol_of(*handle->record);
  const auto taken = static_cast<std::int64_t>(symbol.size());
  if (capacity < taken) {
    *length = taken;
    return code(Status::does_not_fit);
  }
  std::fill_n(out, taken, u' ');
  const std::uint32_t kind = (flags & currency_flags::integer_first) != 0
                                 ? number_flags::integer_first
                                 : number_flags::fixed;
  *length = 0;
  const std::uint32_t status =
      format_number(handle, value, reduced(width, taken), decimals, kind | number_flags::group,
                    out + taken, capacity - taken, length);
  const std::int64_t produced = std::max<std::int64_t>(*length, 0);
  *length = produced + taken;
  if (status != code(Status::ok) && status != code(Status::grouping_failed)) return status;

  // Right-justified numbers have blanks in front: the symbol stands after them, touching the
  // number, and never before the output's start.
  const std::int64_t end =
      std::min<std::int64_t>({std::max<std::int64_t>(width, 0), capacity, produced + taken});
  std::int64_t first = taken;
  while (first < end && out[first] == u' ') ++first;
  if (first >= end) first = taken;
  std::copy(symbol.begin(), symbol.end(), out + first - taken);
  return code(Status::ok);
}

std::uint32_t format_percent(LocaleHandle* handle, double value, std::int32_t width,
                             std::int32_t decimals, std::uint32_t flags, char16_t* out,
                             std::int64_t capacity, std::int64_t* length) noexcept {
  const bool parentheses = value < 0 && (flags & percent_flags::parentheses) != 0;
  const std::int64_t taken = parentheses ? 2 : 1;
  capacity = std::max<std::int64_t>(capacity, 0);
  *length = 0;
  const std::uint32_t status =
      format_number(handle, value * 100.0, reduced(width, taken), decimals, number_flags::fixed,
                    out, std::max<std::int64_t>(capacity - taken, 0), length);
  const std::int64_t produced = std::max<std::int64_t>(*length, 0);
  *length = produced + taken;
  if (status != code(Status::ok) || produced > capacity - taken) return status;
  out[produced] = u'%';
  if (!parentheses) return status;
  out[produced + 1] = u')';
  const bool sign_in_front = out[0] == u'-';
  out[0] = u'(';
  // A sign at the edge has become the parenthesis; one further right becomes a blank, but the minus
  // of an exponent stays.
  char16_t* const end = out + produced;
  char16_t* const sign = sign_in_front ? end : std::find(out, end, u'-');
  if (sign != end) *sign = u' ';
  return status;
}

}  // namespace jwnls
