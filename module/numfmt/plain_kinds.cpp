#include "module/numfmt/plain_kinds.h"

#include <cstdlib>

#include "module/numfmt/decimal_text.h"
#include "module/numfmt/grouped_digits.h"
#include "module/text/bounded_writer.h"

namespace jwnls {
namespace {

// Widens ASCII digits, in whole blocks of sixteen: `out` has room for them.
inline void widen(const char* digits, std::size_t count, char16_t* out) noexcept {
  for (std::size_t done = 0; done < count; done += 16) {
    for (std::size_t i = 0; i < 16; ++i) {
      out[done + i] = static_cast<unsigned char>(digits[done + i]);
    }
  }
}

Status make_digits(const NumberRequest& request, double magnitude, DecimalText& text) noexcept {
  switch (request.kind) {
    case NumberKind::general:
      return text.set_general(magnitude, request.decimals, request.trailing_zeros);
    case NumberKind::exponent:
      return text.set_exponent(magnitude, request.decimals);
    case NumberKind::fraction:
      return text.set_fraction(magnitude, request.decimals);
    default:
      return text.set_fixed(magnitude, request.decimals);
  }
}

// "e", the sign and at least two digits.
std::size_t write_suffix(int exponent, bool capital, char16_t* out) noexcept {
  const auto size = static_cast<unsigned>(std::abs(exponent));
  char16_t* position = out;
  *position++ = capital ? u'E' : u'e';
  *position++ = exponent < 0 ? u'-' : u'+';
  if (size >= 100) *position++ = static_cast<char16_t>(u'0' + size / 100);
  const auto& pair = digit_pairs<char16_t>[size % 100];
  *position++ = pair[0];
  *position++ = pair[1];
  return static_cast<std::size_t>(position - out);
}

}  // namespace

void format_plain(const LocaleRecord& record, const NumberRequest& request, double magnitude,
                  bool negative, std::int64_t capacity, NumberField& field) noexcept {
  DecimalText text;
  if (const Status status = make_digits(request, magnitude, text); status != Status::ok) {
    field.refuse(status);
    return;
  }
  field.sign = negative ? u'-' : request.sign ? u'+' : request.blank ? u' ' : u'\0';

  const auto integers = static_cast<std::size_t>(text.integer_count());
  const auto decimals = static_cast<std::size_t>(text.fraction_count());
  const bool point = decimals != 0 || request.point;
  const std::size_t behind = decimals + (point ? 1 : 0);
  std::size_t length = 0;
  if (request.group && !text.has_exponent()) {
    const std::int64_t room =
        capacity - static_cast<std::int64_t>(behind) - (field.sign != 0 ? 1 : 0);
    length = write_grouped(record, text.digits(), integers, room, field.body);
    if (length == 0) field.status = Status::grouping_failed;
  }
  if (length == 0) {
    widen(text.digits(), integers, field.body);
    length = integers;
  }
  if (point) {
    field.body[length++] = record.decimal_symbol;
    widen(text.digits() + integers, decimals, field.body + length);
    length += decimals;
  }
  if (text.has_exponent())
    length += write_suffix(text.exponent(), request.capital, field.body + length);
  field.body_length = length;
  field.place(request, capacity);
}

}  // namespace jwnls
