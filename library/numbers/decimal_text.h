// Decimals as text on their way out: "-1234567.89" taken apart and rounded.

#ifndef JWNLS_LIBRARY_NUMBERS_DECIMAL_TEXT_H_
#define JWNLS_LIBRARY_NUMBERS_DECIMAL_TEXT_H_

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "library/numbers/decimal_value.h"
#include "library/numbers/lay_out.h"

namespace jwnls::library {

/// The digits of a number that will be laid out, and the room that they stand in.
class DecimalText {
 public:
  /// From "-1234567.89" or "1.5E+3". OK; MISSING for an empty text, UNREAD for what is no number,
  /// RANGE where an exponent takes more than longest_text zeros.
  [[nodiscard]] int read(std::string_view text) noexcept;

  /// The shortest decimal that gives this finite double, or float, back.
  void shortest(double value) noexcept;
  void shortest(float value) noexcept;

  /// All digits that a finite double has, of which there may be a thousand.
  void exact(double value) noexcept;

  /// Drops decimals beyond a count, rounding them; zeros fill up what is less.
  void round(std::int32_t decimals, bool half_even) noexcept;

  /// Moves the decimal symbol some places to the right, two at most.
  void shift(int places) noexcept;

  /// True when all decimals are zeros, which are then gone.
  [[nodiscard]] bool drop_fraction() noexcept;

  [[nodiscard]] const NumberDigits& digits() const noexcept { return number_; }

 private:
  template <typename Float>
  void shortest_of(Float value) noexcept;
  void split(const char* text, std::size_t length) noexcept;
  void add_one() noexcept;

  NumberDigits number_;
  // The first for rounding to grow into, two behind for shift().
  char room_[1 + canonical_room + 2 + digits_margin];
};

}  // namespace jwnls::library

#endif  // JWNLS_LIBRARY_NUMBERS_DECIMAL_TEXT_H_
