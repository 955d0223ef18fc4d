// A short decimal as "-1234567.89", for callers with decimals of their own.

#ifndef JWNLS_LIBRARY_NUMBERS_SHORT_CANONICAL_H_
#define JWNLS_LIBRARY_NUMBERS_SHORT_CANONICAL_H_

#include <algorithm>
#include <cstddef>
#include <cstring>

#include "library/numbers/short_decimal.h"
#include "library/texts/give_text.h"

namespace jwnls::library {

/// Writes as write_canonical(), with the same room and codes as jwnls_read_decimal().
[[nodiscard]] inline int give_canonical(ShortDecimal number, char* out, std::size_t room,
                                        std::size_t* length) noexcept {
  // Sixteen bytes at a time, whatever the count of digits.
  constexpr std::size_t most = 2 + 2 * short_digits;
  char scratch[most];
  const Wide digits = wide_digits(number.mantissa);
  const unsigned count = std::max(digit_count(number.mantissa), number.decimals + 1);
  const Wide front = digits >> (8 * (short_digits - count));
  const Wide fraction = digits >> (8 * (short_digits - number.decimals)) % 128;
  char* const text = room >= most ? out : scratch;
  char* end = text;
  *end = '-';
  end += number.negative ? 1 : 0;
  std::memcpy(end, &front, sizeof front);
  end += count - number.decimals;
  *end = '.';
  std::memcpy(end + 1, &fraction, sizeof fraction);
  end += number.decimals != 0 ? number.decimals + 1 : 0;
  *length = static_cast<std::size_t>(end - text);
  return text == out ? JWNLS_OK : give_text({text, *length}, out, room, length);
}

}  // namespace jwnls::library

#endif  // JWNLS_LIBRARY_NUMBERS_SHORT_CANONICAL_H_
