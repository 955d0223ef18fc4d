#include "module/digits/decimal.h"

#include <cstring>

namespace jwnls {
namespace {

// Rounds `kept` digits half up by the one behind them, in place. A carry out of the first digit
// leaves zeros and returns true.
bool round_half_up(char* digits, int kept) noexcept {
  if (digits[kept] <= '4') return false;
  int i = kept - 1;
  while (i >= 0 && digits[i] == '9') digits[i--] = '0';
  if (i < 0) return true;
  ++digits[i];
  return false;
}

// The integer digits that count towards the limit; a value below 1 has none.
constexpr int counted_integers(int exponent) noexcept { return std::max(exponent + 1, 0); }

// The part behind the point of a value of at least 1; exact.
double fraction_of(double magnitude) noexcept {
  constexpr double no_fractions_from = 9007199254740992.0;  // 2^53
  if (magnitude >= no_fractions_from) return 0;
  return magnitude - static_cast<double>(static_cast<std::uint64_t>(magnitude));
}

void set_zero(DecimalForm form, int wanted, ExactDigits& exact, Decimal& out) noexcept {
  const int decimals = form == DecimalForm::general ? wanted - 1 : wanted;
  std::memset(exact.first, '0', static_cast<std::size_t>(decimals) + 1);
  out.text = exact.first;
  out.shape = {1, decimals, 0, 0, form == DecimalForm::exponent};
}

// Rounds the exact digits, which reach at least one place below those that the form shows, in
// place. The integer zero and the decimals before the first digit of a value below 1 go into the
// room in front of it.
void round_exact(DecimalForm form, int wanted, ExactDigits& exact, Decimal& out) noexcept {
  out.shape = shape_of(form, wanted, exact.exponent, 0);
  char* first = exact.first - out.shape.zeros;
  first[-1] = '0';
  if (out.shape.zeros != 0) std::memset(first, '0', static_cast<std::size_t>(out.shape.zeros));
  if (round_half_up(first, out.shown())) {
    *--first = '1';
    out.shape = shape_of(form, wanted, exact.exponent, 1);
  }
  out.text = first;
}

void remove_trailing_zeros(Decimal& out) noexcept {
  const char* end = out.text + out.shown();
  while (out.shape.decimals > 0 && end[-1] == '0') {
    --end;
    --out.shape.decimals;
  }
}

Status check_limit(int exponent, int wanted) noexcept {
  return counted_integers(exponent) + wanted > most_decimals ? Status::not_possible : Status::ok;
}

Status set_exactly(DecimalForm form, double magnitude, int wanted, ExactDigits& exact,
                   Decimal& out) noexcept {
  const bool fixed = form == DecimalForm::fixed;
  exact.count = 0;
  if (magnitude != 0) {
    if (fixed) {
      exact_digits_to(magnitude, -wanted - 1, exact);
    } else {
      const int leading = form == DecimalForm::general ? wanted : wanted + 1;
      exact_significant_digits(magnitude, leading + 1, exact);
    }
  }
  // A first digit below the one that decides the rounding leaves zeros.
  if (exact.count == 0 || (fixed && exact.exponent < -wanted - 1)) {
    set_zero(form, wanted, exact, out);
    return Status::ok;
  }
  const Status status = check_limit(exact.exponent, wanted);
  if (status == Status::ok) round_exact(form, wanted, exact, out);
  return status;
}

}  // namespace

Status exact_decimal(DecimalForm form, double magnitude, int wanted, bool keep_zeros,
                     ExactDigits& exact, Decimal& out) noexcept {
  if (form == DecimalForm::fraction) {
    if (magnitude >= 1) {
      exact_significant_digits(magnitude, 1, exact);
      if (const Status status = check_limit(exact.exponent, wanted); status != Status::ok) {
        return status;
      }
      magnitude = fraction_of(magnitude);
    }
    form = DecimalForm::fixed;
  }
  const Status status = set_exactly(form, magnitude, wanted, exact, out);
  if (status == Status::ok && form == DecimalForm::general && !keep_zeros) {
    remove_trailing_zeros(out);
  }
  return status;
}

}  // namespace jwnls
