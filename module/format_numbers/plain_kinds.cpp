#include "module/format_numbers/plain_kinds.h"

#include <type_traits>

#include "module/digits/decimal.h"
#include "module/placement/delivery.h"
#include "module/placement/exponent_suffix.h"
#include "module/placement/grouped_digits.h"

namespace jwnls {
namespace {

template <typename Unit>
void write_plain_body(const LocaleRecord& record, DigitRun digits, const DecimalShape& shape,
                      int separators, bool point, bool capital, Unit* body) noexcept {
  if (separators != 0) {
    write_grouped(record, digits, shape.integers, separators, body);
  } else {
    store_digits(digits, 0, shape.integers, body);
  }
  body += shape.integers + separators;
  if (point) *body++ = static_cast<Unit>(record.decimal_symbol);
  store_digits(digits, shape.integers, shape.decimals, body);
  body += shape.decimals;
  if (shape.has_exponent) write_exponent_suffix(shape.exponent, capital, body);
}

// Digits in a word; whole blocks are written.
template <typename Unit>
void write_plain_body(const LocaleRecord& record, const ShortDigits& digits,
                      const DecimalShape& shape, int separators, bool point, bool capital,
                      Unit* body) noexcept {
  const DigitBlock block(digits.number, digits.count);
  const int shown = shape.integers + shape.decimals;
  if (separators != 0) {
    char text[block_digits];
    block.write(digits.count, text);
    return write_plain_body(record, DigitRun{text}, shape, separators, point, capital, body);
  }
  const auto symbol = static_cast<Unit>(record.decimal_symbol);
  if (shape.decimals != 0) {
    block.write_parted(shape.integers, symbol, shown, body);
  } else {
    block.write(shown, body);
    if (point) body[shown] = symbol;
  }
  body += shown + (point ? 1 : 0);
  if (shape.has_exponent) write_exponent_suffix(shape.exponent, capital, body);
}

// Digits of either kind, laid out and delivered.
template <typename Unit, typename Digits>
[[gnu::always_inline]] inline Status lay_out(const LocaleRecord& record,
                                             const NumberRequest& request, Digits digits,
                                             const DecimalShape& shape, bool negative, Unit* out,
                                             std::int64_t capacity, std::int64_t* length) noexcept {
  NumberPlacement placement;
  placement.sign = negative ? u'-' : request.sign ? u'+' : request.blank ? u' ' : u'\0';
  const bool point = shape.decimals != 0 || request.point;
  placement.body_length = shape.integers + (point ? 1 : 0) + shape.decimals +
                          (shape.has_exponent ? exponent_suffix_length(shape.exponent) : 0);
  int separators = 0;
  if (request.group && !shape.has_exponent) {
    separators = count_separators(record, shape.integers);
    const std::int64_t room = capacity - placement.body_length - (placement.sign != 0 ? 1 : 0);
    if (separators < 0 || separators > room) {
      separators = 0;
      placement.status = Status::grouping_failed;
    }
    placement.body_length += separators;
  }
  placement.place(request, capacity);

  const auto write_body = [&](auto* body) {
    write_plain_body(record, digits, shape, separators, point, request.capital, body);
  };
  if constexpr (sizeof(Unit) == 1) {
    const bool narrow =
        record.decimal_symbol < 0x80 && (separators == 0 || record.grouping_symbol < 0x80);
    if (!narrow) return deliver_encoded(placement, write_body, out, capacity, length);
  }
  return deliver(placement, write_body, out, capacity, length);
}

// Apart from the quick way, which it would burden with its buffers.
template <typename Unit>
[[gnu::noinline]] Status format_exactly(const LocaleRecord& record, const NumberRequest& request,
                                        double magnitude, bool negative, Unit* out,
                                        std::int64_t capacity, std::int64_t* length) noexcept {
  ExactDecimal decimal;
  if (const Status status = decimal.set(request, magnitude); status != Status::ok) return status;
  return lay_out(record, request, decimal.digits(), decimal.shape(), negative, out, capacity,
                 length);
}

}  // namespace

template <typename Unit>
Status format_plain(const LocaleRecord& record, const NumberRequest& request, double magnitude,
                    bool negative, Unit* out, std::int64_t capacity,
                    std::int64_t* length) noexcept {
  ShortDigits digits;
  DecimalShape shape;
  if (quick_decimal(request, magnitude, digits, shape)) [[likely]] {
    return lay_out(record, request, digits, shape, negative, out, capacity, length);
  }
  return format_exactly(record, request, magnitude, negative, out, capacity, length);
}

template Status format_plain(const LocaleRecord&, const NumberRequest&, double, bool, char16_t*,
                             std::int64_t, std::int64_t*) noexcept;
template Status format_plain(const LocaleRecord&, const NumberRequest&, double, bool, char*,
                             std::int64_t, std::int64_t*) noexcept;

}  // namespace jwnls
