// The choice of form works on an estimate of the integer digits, the fixed form on a value that is
// nudged upward in plain double steps before its digits are cut off. Both are kept to the letter:
// their results differ from exact rounding here and there, and stored reports rely on them.

#include "module/numfmt/width_bound_kinds.h"

#include <algorithm>
#include <bit>

#include "module/numfmt/digit_text.h"
#include "module/numfmt/exact_decimal.h"
#include "module/numfmt/exponent_writer.h"
#include "module/numfmt/grouped_digits.h"
#include "module/numfmt/leading_digits.h"

namespace jwnls {
namespace {

constexpr std::int64_t widest_field = 32;
constexpr std::int64_t narrowest_exponent_field = 7;

// 0.5 * 10^-d, the double nearest to it.
constexpr double rounding_addends[] = {
    0.5,     0.5e-1,  0.5e-2,  0.5e-3,  0.5e-4,  0.5e-5,  0.5e-6,  0.5e-7,  0.5e-8,
    0.5e-9,  0.5e-10, 0.5e-11, 0.5e-12, 0.5e-13, 0.5e-14, 0.5e-15, 0.5e-16, 0.5e-17,
    0.5e-18, 0.5e-19, 0.5e-20, 0.5e-21, 0.5e-22, 0.5e-23, 0.5e-24, 0.5e-25, 0.5e-26,
    0.5e-27, 0.5e-28, 0.5e-29, 0.5e-30, 0.5e-31, 0.5e-32};
constexpr double upward_nudge = 1.0000000000000002;  // 1 + 2^-52

bool is_whole(double magnitude) noexcept {
  constexpr double no_fractions_from = 9007199254740992.0;  // 2^53
  return magnitude >= no_fractions_from ||
         magnitude == static_cast<double>(static_cast<std::int64_t>(magnitude));
}

// The fixed form of a value in a field of `room` places, without its sign.
class FixedForm {
 public:
  // Rounds and cuts the value to `decimals`; false when it needs more than `room` places.
  bool fits(double magnitude, int estimate, int decimals, int room) noexcept {
    const double rounded = nudged(magnitude, estimate, decimals);
    leading_ = truncated_digits(rounded);
    decimals_ = decimals;
    integers_ = rounded < 1 ? 0 : leading_.exponent + 1;
    return places() <= room;
  }

  // Takes trailing zeros of the fraction away.
  void trim() noexcept {
    while (decimals_ > 0 && digit(decimals_) == u'0') --decimals_;
  }

  // Writes the text, with a "0" before the point of a value below 1 where `room` has a place for
  // it. Returns where the integer digits end.
  int write(int room, char16_t decimal_symbol, BoundText& out) const noexcept {
    char16_t* position = out.units;
    if (integers_ == 0 && (decimals_ == 0 || places() < room)) *position++ = u'0';
    for (int place = -integers_ + 1; place <= 0; ++place) *position++ = digit(place);
    const int integer_end = static_cast<int>(position - out.units);
    if (decimals_ > 0) *position++ = decimal_symbol;
    for (int place = 1; place <= decimals_; ++place) *position++ = digit(place);
    out.length = static_cast<int>(position - out.units);
    return integer_end;
  }

 private:
  static double nudged(double magnitude, int estimate, int decimals) noexcept {
    if (is_whole(magnitude)) return magnitude;
    if (decimals <= shown_digits - estimate) magnitude += rounding_addends[decimals];
    return magnitude * upward_nudge;
  }

  int places() const noexcept {
    const int fraction = decimals_ > 0 ? 1 + decimals_ : 0;
    return integers_ + fraction == 0 ? 1 : integers_ + fraction;
  }

  // The digit at a place: 0 the units, 1 the first decimal. Places past the fifteenth significant
  // digit are "0", deliberately.
  char16_t digit(int place) const noexcept {
    const int index = leading_.exponent + place;
    if (index < 0 || index >= shown_digits) return u'0';
    return static_cast<char16_t>(u'0' +
                                 leading_.digits / powers_of_ten[shown_digits - 1 - index] % 10);
  }

  LeadingDigits leading_;
  int decimals_ = 0;
  int integers_ = 0;
};

class WidthBoundFormatter {
 public:
  WidthBoundFormatter(const LocaleRecord& record, const NumberRequest& request, double magnitude,
                      bool negative, int places, NumberField& field) noexcept
      : record_(record),
        request_(request),
        magnitude_(magnitude),
        negative_(negative),
        places_(places),
        room_(places - (negative ? 1 : 0)),
        field_(field) {
    // The exponent of the value as a fraction from 1/2 to below 1 times a power of two; 0 of 0.
    const auto [mantissa, binary_exponent] = binary_parts(magnitude);
    const int exponent = mantissa == 0 ? 0 : binary_exponent + 64 - std::countl_zero(mantissa);
    // 77/256 approximates log10(2); the estimate can be one below the true digit count, which the
    // exact count repairs.
    estimate_ = exponent * 77 >> 8;
  }

  void format() noexcept {
    switch (request_.kind) {
      case NumberKind::exponent_only:
        // Fills the room: one digit, the point and a suffix of up to five, and decimals in the
        // rest.
        return show_exponent(std::min(7 - places_, -1));
      case NumberKind::bound_exponent:
        return show_exponent(-request_.decimals);
      default:
        return choose();
    }
  }

 private:
  bool best_fit() const noexcept { return request_.kind == NumberKind::best_fit; }

  // Best-fit and decimal-aligned.
  void choose() noexcept {
    if (estimate_ > room_ || estimate_ == widest_field) return show_exponent(as_many_as_fit);
    if (room_ == 0) {
      // A field of one place never shows a minus sign.
      if (magnitude_ >= 0.5) return show_exponent(as_many_as_fit);
      negative_ = false;
      room_ = 1;
    }
    int decimals = best_fit() ? as_many_as_fit : request_.decimals;
    if (best_fit() && estimate_ < 1 && room_ > 2) {
      if (asks_for_exponent() && try_exponent()) return;
      decimals = room_ - 2 < 2 ? room_ - 1 : room_ - 2;
    } else {
      const int digits = std::max(estimate_, 0);
      if (digits > room_ - decimals - (decimals > 0 ? 1 : 0)) {
        decimals = digits == room_ ? 0 : room_ - digits - 1;
        drop();
      }
    }
    show_fixed(decimals);
  }

  // A small value that the fixed form would show few digits of.
  bool asks_for_exponent() const noexcept {
    const int needed = 3 + (estimate_ < -9 ? 1 : 0) + (estimate_ < -99 ? 1 : 0);
    if (estimate_ < -9 && room_ > needed) return true;
    return room_ > 4 && ((magnitude_ != 0 && magnitude_ < 0.00001) || room_ + estimate_ < 3);
  }

  void show_fixed(int decimals) noexcept {
    FixedForm form;
    if (!form.fits(magnitude_, estimate_, decimals, room_)) {
      // The estimate was low, or the rounding gained a digit: once more with one decimal fewer.
      if (decimals == 0 || !form.fits(magnitude_, estimate_, decimals - 1, room_)) {
        return show_exponent(as_many_as_fit);
      }
      drop();
    }
    if (best_fit()) form.trim();
    BoundText text;
    const int integer_end = form.write(room_, record_.decimal_symbol, text);
    set_body(text, integer_end);
  }

  // Decimals that a decimal-aligned number asked for are not shown.
  void drop() noexcept {
    if (!best_fit()) field_.status = Status::decimals_dropped;
  }

  bool try_exponent() noexcept {
    BoundText text;
    if (write_exponent_form(magnitude_, room_, as_many_as_fit, true, record_.decimal_symbol,
                            text) != Status::ok) {
      return false;
    }
    set_body(text, 0);
    return true;
  }

  void show_exponent(std::int32_t decimals) noexcept {
    BoundText text;
    const Status status =
        write_exponent_form(magnitude_, room_, decimals, best_fit(), record_.decimal_symbol, text);
    if (status == Status::does_not_fit) {
      field_.fill_with_stars(places_, places_, status);
      return;
    }
    field_.status = status;
    if (request_.kind == NumberKind::decimal_aligned) field_.status = Status::decimals_dropped;
    set_body(text, 0);
  }

  // Right-aligns a text, its first `integer_digits` units grouped if that is asked for and they are
  // not those of an exponent form.
  void set_body(const BoundText& text, int integer_digits) noexcept {
    int length = text.length;
    const int sign = negative_ ? 1 : 0;
    int grouped = 0;
    if (request_.group && integer_digits > 0) grouped = group(text, integer_digits, sign);
    if (grouped > 0) {
      std::copy(text.units + integer_digits, text.units + text.length, field_.body + grouped);
      length += grouped - integer_digits;
    } else {
      std::copy(text.units, text.units + text.length, field_.body);
    }
    field_.sign = negative_ ? u'-' : u'\0';
    field_.body_length = static_cast<std::size_t>(length);
    field_.blanks_before = places_ - length - sign;
    field_.length = places_;
  }

  int group(const BoundText& text, int integer_digits, int sign) noexcept {
    char digits[48];
    std::transform(text.units, text.units + integer_digits, digits,
                   [](char16_t unit) { return static_cast<char>(unit); });
    const int most = places_ - sign - (text.length - integer_digits);
    const std::size_t grouped =
        write_grouped(record_, digits, static_cast<std::size_t>(integer_digits), most, field_.body);
    if (grouped == 0) field_.status = Status::grouping_failed;
    return static_cast<int>(grouped);
  }

  const LocaleRecord& record_;
  const NumberRequest& request_;
  double magnitude_;
  bool negative_;
  int places_;  // of the field
  int room_;    // for the text without its sign
  int estimate_;
  NumberField& field_;
};

}  // namespace

void format_width_bound(const LocaleRecord& record, const NumberRequest& request, double magnitude,
                        bool negative, std::int64_t capacity, NumberField& field) noexcept {
  const bool exponent_kind =
      request.kind == NumberKind::exponent_only || request.kind == NumberKind::bound_exponent;
  const std::int64_t width = request.width;
  if (width < 1) return field.refuse(Status::invalid_width);
  const std::int64_t places = std::min(width, capacity);
  if (width > widest_field || (exponent_kind && width < narrowest_exponent_field)) {
    return field.fill_with_stars(places, places, Status::invalid_width);
  }
  if (places == 0) return field.fill_with_stars(0, 0, Status::does_not_fit);
  WidthBoundFormatter(record, request, magnitude, negative, static_cast<int>(places), field)
      .format();
}

}  // namespace jwnls
