// The body of a plain number, which is all but its sign and fill: integer digits in their groups,
// the point, decimals, the exponent.

#ifndef JWNLS_MODULE_PLACEMENT_DECIMAL_BODY_H_
#define JWNLS_MODULE_PLACEMENT_DECIMAL_BODY_H_

#include <cstdint>

#include "module/digits/decimal.h"
#include "module/digits/digit_block.h"
#include "module/digits/powers_of_ten.h"
#include "module/placement/grouped_digits.h"
#include "module/placement/groups_of_three.h"
#include "module/placement/symbols.h"

namespace jwnls {

/// Writes the digits of a decimal in a word, ungrouped, with the decimal symbol where decimals are
/// shown. Whole blocks are written. Returns the text's end.
template <typename Unit>
[[gnu::always_inline]] inline Unit* write_word_digits(Symbols<Unit> symbols, const Decimal& decimal,
                                                      Unit* out) noexcept {
  const int shown = decimal.shown();
  if (decimal.count > block_digits) {
    // One digit is in front of a whole block.
    const std::uint64_t first = over_ten_to_16(decimal.number);
    *out = static_cast<Unit>('0' + first);
    out[1] = symbols.decimal();
    DigitBlock(decimal.number - first * ten_to_16, block_digits).write(block_digits, out + 2);
    return out + shown + 1;
  }
  const DigitBlock block(decimal.number, decimal.count);
  if (decimal.shape.zeros != 0) {
    // "0", the point and up to three zeros before the digits.
    *out = Unit{'0'};
    out[1] = symbols.decimal();
    for (int i = 2; i < 6; ++i) out[i] = Unit{'0'};
    block.write(shown - decimal.shape.zeros, out + 1 + decimal.shape.zeros);
    return out + shown + 1;
  }
  if (decimal.shape.decimals == 0) {
    block.write(shown, out);
    return out + shown;
  }
  if (decimal.shape.has_exponent) {
    block.write_first_parted(symbols.decimal(), shown, out);
    return out + shown + 1;
  }
  block.write_parted(decimal.shape.integers, symbols.decimal(), shown, out);
  return out + shown + 1;
}

/// Stores digits from memory, and nothing behind them, where the memory holds what the stack held
/// before and no output may show.
template <typename Unit>
inline Unit* store_digits(const char* digits, int count, Unit* out) noexcept {
  const auto store = [=](int from, int size) {
    for (int i = from; i < from + size; ++i) {
      out[i] = static_cast<Unit>(static_cast<unsigned char>(digits[i]));
    }
  };
  if (count < block_digits) {
    store(0, count);
    return out + count;
  }
  int done = 0;
  for (; done + block_digits <= count; done += block_digits) store(done, block_digits);
  store(count - block_digits, block_digits);  // over the end of the block before
  return out + count;
}

/// Writes the digits of any decimal.
///   separators  among its integer digits, as count_separators() tells
///   point       shows the decimal symbol; where decimals are shown it is true
/// Returns the text's end.
template <typename Unit>
Unit* write_digits(Symbols<Unit> symbols, const Decimal& decimal, int separators, bool point,
                   Unit* out) noexcept {
  const int integers = decimal.shape.integers;
  const int decimals = decimal.shape.decimals;
  const char* text = decimal.text;
  char characters[block_digits];
  if (text == nullptr) {
    if (separators == 0) {
      out = write_word_digits(symbols, decimal, out);
      if (point && decimals == 0) *out++ = symbols.decimal();
      return out;
    }
    if (groups_by_three(symbols.record)) {
      out = write_groups_of_three(symbols, decimal.number, integers, decimal.count - integers,
                                  decimals, out);
      if (point && decimals == 0) *out++ = symbols.decimal();
      return out;
    }
    DigitBlock(decimal.number, decimal.count).write(decimal.count, characters);
    text = characters;
  }
  if (separators != 0) {
    write_grouped(symbols, text, integers, separators, out);
    out += integers + separators;
  } else {
    out = store_digits(text, integers, out);
  }
  if (point) *out++ = symbols.decimal();
  return store_digits(text + integers, decimals, out);
}

}  // namespace jwnls

#endif  // JWNLS_MODULE_PLACEMENT_DECIMAL_BODY_H_
