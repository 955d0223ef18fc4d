#include "module/format_numbers/plain_kinds.h"

#include <cstdint>
#include <type_traits>

#include "module/digits/decimal.h"
#include "module/digits/exact_digits.h"
#include "module/placement/decimal_body.h"
#include "module/placement/delivery.h"
#include "module/placement/exponent_suffix.h"
#include "module/placement/grouped_digits.h"
#include "module/placement/symbols.h"

namespace jwnls {
namespace {

// Lays a decimal out and delivers it.
template <typename Unit>
[[gnu::always_inline]] inline Status lay_out(const NumberCall<Unit>& call,
                                             const Decimal& decimal) noexcept {
  const NumberRequest& request = call.request;
  const DecimalShape& shape = decimal.shape;
  Placement placement;
  placement.sign = call.negative ? u'-' : request.sign ? u'+' : request.blank ? u' ' : u'\0';
  const bool point = shape.decimals != 0 || request.point;
  placement.body_length = decimal.shown() + (point ? 1 : 0) +
                          (shape.has_exponent ? exponent_suffix_length(shape.exponent) : 0);
  int separators = 0;
  if (request.group && !shape.has_exponent) {
    separators = count_separators(call.record, shape.integers);
    const std::int64_t room =
        call.output.capacity - placement.body_length - (placement.sign != 0 ? 1 : 0);
    if (separators < 0 || separators > room) {
      separators = 0;
      placement.status = Status::grouping_failed;
    }
    placement.body_length += separators;
  }
  placement.place(request.field, call.output.capacity);

  const auto write_body = [&](auto* body) {
    using BodyUnit = std::remove_pointer_t<decltype(body)>;
    body = write_digits(Symbols<BodyUnit>{call.record}, decimal, separators, point, body);
    if (shape.has_exponent) write_exponent_suffix(shape.exponent, request.capital, body);
  };
  if constexpr (sizeof(Unit) == 1) {
    if (!Symbols<Unit>{call.record}.narrow(separators != 0)) {
      return deliver_encoded(placement, write_body, call.output);
    }
  }
  return deliver(placement, write_body, call.output);
}

// Apart from the quick way, which it would burden with its buffer.
template <typename Unit>
[[gnu::noinline]] Status format_exactly(const NumberCall<Unit>& call) noexcept {
  const NumberRequest& request = call.request;
  ExactDigits exact;
  Decimal decimal;
  const Status status = exact_decimal(request.form(), call.magnitude, request.decimals,
                                      request.trailing_zeros, exact, decimal);
  return status == Status::ok ? lay_out(call, decimal) : status;
}

}  // namespace

template <typename Unit>
Status format_plain(const NumberCall<Unit>& call) noexcept {
  const NumberRequest& request = call.request;
  Decimal decimal;
  if (quick_decimal(request.form(), call.magnitude, request.decimals, request.trailing_zeros,
                    decimal)) [[likely]] {
    return lay_out(call, decimal);
  }
  return format_exactly(call);
}

template Status format_plain(const NumberCall<char16_t>&) noexcept;
template Status format_plain(const NumberCall<char>&) noexcept;

}  // namespace jwnls
