// The scanner of locale numbers, over every encoding.
//
//   text      = blanks [ number | missing ] blanks
//   missing   = "." | "." letter | "._"
//   number    = [ sign ] mantissa [ exponent ]
//   mantissa  = digits and grouping symbols [ decimal digits ] | decimal digits
//   exponent  = ( "E" | "e" | "D" | "d" ) [ sign ] digits and grouping symbols
//
// Blanks are spaces and tabs. Group sizes are not checked. A text that is blank or a lone period
// is the standard missing value.
//
// The scanner lives in registers: the steps that nearly every number takes are inlined, and those
// that few take are static functions of a copy, for a scanner whose address is handed to a call
// would live in memory. A place is an index, not a pointer: places are what the caller is told, and
// a word of digits near the end is loaded from before it (digit_words.h).

#ifndef JWNLS_MODULE_READ_NUMBERS_NUMBER_SCANNER_H_
#define JWNLS_MODULE_READ_NUMBERS_NUMBER_SCANNER_H_

#include <bit>
#include <cstdint>

#include "abi/missing_value.h"
#include "abi/status.h"
#include "module/read_numbers/decimal_accumulator.h"
#include "module/text/digit_words.h"
#include "module/text/unit_encoding.h"

namespace jwnls {

/// What a text is read with, as units of its encoding. A symbol that no unit of the encoding can
/// equal does not occur in the text.
struct NumberSymbols {
  std::uint32_t decimal = '.';
  std::uint32_t grouping = ',';
  bool blank_groups = false;  // a space with a digit behind it counts as a grouping symbol
};

/// What a number's text amounts to.
struct NumberReading {
  Status status = Status::ok;
  double value = missing_value();
  std::int64_t consumed = 0;  // units; where the text offends when it is no number
};

template <typename Encoding>
class NumberScanner {
 public:
  using Unit = typename Encoding::Unit;

  /// `length` is 0 or more.
  NumberScanner(const Unit* text, std::int64_t length, const NumberSymbols& symbols) noexcept
      : text_(text), length_(length), symbols_(symbols) {}

  [[nodiscard, gnu::always_inline]] NumberReading read() noexcept {
    const bool negative = unit_is(0, Encoding::of('-'));
    at_ = negative ? 1 : 0;
    if (is_digit(at_) && length_ <= ExactAccumulator::most_digits) [[likely]] {
      return read_number<ExactAccumulator>(negative, no_fraction);
    }
    at_ = 0;
    return read_start(*this);
  }

 private:
  static constexpr std::int64_t no_fraction = 0;  // a fraction has a decimal symbol before it
  static constexpr std::int32_t highest_exponent = 30800;

  bool at_end() const noexcept { return at_ == length_; }
  std::uint32_t unit(std::int64_t at) const noexcept { return unit_value(text_[at]); }
  std::uint32_t digit(std::int64_t at) const noexcept { return unit(at) - Encoding::of('0'); }
  // False at the end.
  bool is_digit(std::int64_t at) const noexcept { return at < length_ && digit(at) <= 9; }
  bool unit_is(std::int64_t at, std::uint32_t value) const noexcept {
    return at < length_ && unit(at) == value;
  }
  bool is_blank(std::int64_t at) const noexcept {
    return unit_is(at, Encoding::of(' ')) || unit_is(at, Encoding::of('\t'));
  }
  void skip_blanks() noexcept {
    while (is_blank(at_)) ++at_;
  }

  static NumberReading invalid(std::int64_t at) noexcept {
    return {Status::invalid_number, missing_value(), at};
  }

  // A symbol that may not stand here. As a text's last unit it is a symbol without anything behind
  // it, and the end is where that is missing.
  NumberReading invalid_symbol() const noexcept {
    return invalid(at_ + 1 == length_ ? length_ : at_);
  }

  // What follows the text's content, which ends at at_: blanks, or nothing.
  NumberReading finish(double value) noexcept {
    const std::int64_t end = at_;
    skip_blanks();
    return at_end() ? NumberReading{Status::ok, value, end} : invalid(at_);
  }

  // A period with no digit behind it.
  NumberReading read_missing() noexcept {
    ++at_;
    if (at_end() || is_blank(at_)) return finish(missing_value());
    const std::uint32_t letter = Encoding::upper_case(unit(at_));
    if (letter == Encoding::of('_')) return finish_special('_');
    for (char each = 'A'; each <= 'Z'; ++each) {
      if (letter == Encoding::of(each)) return finish_special(each);
    }
    return invalid(at_);
  }
  NumberReading finish_special(char character) noexcept {
    ++at_;
    return finish(missing_value(character));
  }

  // Any text.
  [[gnu::noinline]] static NumberReading read_start(NumberScanner copy) noexcept {
    return copy.read_any();
  }
  NumberReading read_any() noexcept {
    skip_blanks();
    if (at_end()) return {Status::ok, missing_value(), length_};
    bool negative = false;
    std::int64_t fraction = no_fraction;
    if (!is_digit(at_)) {
      const std::uint32_t start = unit(at_);
      const bool period = start == Encoding::of('.');
      if (start == Encoding::of('+') || start == Encoding::of('-')) {
        negative = start == Encoding::of('-');
        if (unit_is(++at_, symbols_.decimal)) fraction = ++at_;
      } else if (period && !is_digit(at_ + 1)) {
        return read_missing();
      } else if (start == symbols_.decimal) {
        fraction = ++at_;
      } else {
        return invalid(period ? at_ : 0);
      }
      if (!is_digit(at_)) return invalid(at_);
    }
    return read_number<DecimalAccumulator>(negative, fraction);
  }

  template <typename Accumulator>
  [[gnu::always_inline]] void read_digits(Accumulator& digits) noexcept {
    FewDigits few = {};
    do {
      few = DigitWord<Unit>::load(text_, length_, at_).leading_digits(Encoding::of('0'));
      digits.add(few);
      at_ += few.count;
    } while (few.count == 4);
  }

  // From the first digit on; the fraction begins at `fraction`, or nowhere so far.
  template <typename Accumulator>
  [[gnu::always_inline]] NumberReading read_number(bool negative, std::int64_t fraction) noexcept {
    Accumulator digits;
    read_digits(digits);
    for (; !at_end(); read_digits(digits)) {
      const std::uint32_t symbol = unit(at_);
      if (symbol == symbols_.decimal) {
        if (fraction != no_fraction) return invalid_symbol();
        fraction = ++at_;
      } else if (symbol == symbols_.grouping) {
        if (fraction != no_fraction) return invalid_symbol();
        if (++at_ == length_) return invalid(length_);
      } else if (symbols_.blank_groups && symbol == Encoding::of(' ') && fraction == no_fraction &&
                 is_digit(at_ + 1)) {
        ++at_;
      } else {
        break;
      }
    }
    const std::int64_t exponent = fraction == no_fraction ? 0 : fraction - at_;
    const Exponent end = at_end() ? Exponent{} : read_exponent(*this);
    if (end.status != Status::ok) return {end.status, missing_value(), end.place};
    const Scaled scaled = scale(digits.sum(), exponent + end.value);
    if (scaled.status != Status::ok) return {scaled.status, missing_value(), 0};
    const std::uint64_t sign = std::uint64_t{negative} << 63;  // without a branch
    return {Status::ok, std::bit_cast<double>(std::bit_cast<std::uint64_t>(scaled.value) ^ sign),
            at_end() ? at_ : end.place};
  }

  // What is written behind the mantissa.
  struct Exponent {
    Status status = Status::ok;
    std::int32_t value = 0;
    std::int64_t place = 0;  // where the number ends; where the text offends
  };
  [[gnu::noinline]] static Exponent read_exponent(NumberScanner copy) noexcept {
    return copy.read_behind();
  }
  Exponent read_behind() noexcept {
    Exponent exponent;
    if (!is_blank(at_)) exponent = read_written_exponent();
    if (exponent.status != Status::ok) return exponent;
    const NumberReading rest = finish(0);
    return {rest.status, exponent.value, rest.consumed};
  }

  Exponent read_written_exponent() noexcept {
    const auto offends = [this] { return Exponent{Status::invalid_number, 0, at_}; };
    const std::uint32_t letter = unit(at_);
    if (letter != Encoding::of('E') && letter != Encoding::of('e') && letter != Encoding::of('D') &&
        letter != Encoding::of('d')) {
      return offends();
    }
    ++at_;
    const bool negative = unit_is(at_, Encoding::of('-'));
    if (negative || unit_is(at_, Encoding::of('+'))) ++at_;
    std::int32_t value = 0;
    do {
      if (!is_digit(at_)) return offends();
      value = value * 10 + static_cast<std::int32_t>(digit(at_++));
      if (value > highest_exponent) return {Status::out_of_range, 0, 0};
      if (!is_digit(at_) && unit_is(at_, symbols_.grouping)) {
        ++at_;
        if (!is_digit(at_)) return offends();
      }
    } while (is_digit(at_));
    if (!at_end() && !unit_is(at_, Encoding::of(' ')))
      return offends();  // a tab may not stand here
    return {Status::ok, negative ? -value : value, at_};
  }

  const Unit* text_;
  std::int64_t length_;
  std::int64_t at_ = 0;
  NumberSymbols symbols_;
};

}  // namespace jwnls

#endif  // JWNLS_MODULE_READ_NUMBERS_NUMBER_SCANNER_H_
