// The choice of form works on an estimate of the integer digits, the fixed form on a value that is
// nudged upward in plain double steps before its digits are cut off. Both are kept to the letter:
// their results differ from exact rounding here and there, and stored reports rely on them.

#include "module/format_numbers/width_bound_kinds.h"

#include <algorithm>
#include <cstring>

#include "module/digits/digit_block.h"
#include "module/digits/leading_digits.h"
#include "module/format_numbers/width_bound_exponent.h"
#include "module/format_numbers/width_bound_rounding.h"
#include "module/placement/decimal_body.h"
#include "module/placement/grouped_digits.h"
#include "module/placement/symbols.h"

namespace jwnls {
namespace {

constexpr std::int64_t widest_field = 32;
constexpr std::int64_t narrowest_exponent_field = 7;

// The fixed form of a value in a field of `room` places, without its sign.
class FixedForm {
 public:
  // Rounds and cuts the value to `decimals`; false when it needs more than `room` places.
  bool fits(double magnitude, int estimate, int decimals, int room) noexcept {
    const LeadingDigits leading = truncated_digits(nudged(magnitude, estimate, decimals));
    // A first digit that far below the point is never shown.
    const bool visible = leading.exponent >= -zeros_around;
    exponent_ = visible ? leading.exponent : 0;
    std::memset(text_, '0', sizeof text_);
    // Fifteen digits, and a sixteenth that is "0" like all behind it: deliberately, no more are
    // shown.
    write_16_digits(visible ? leading.digits * 10 : 0, text_ + zeros_around);
    integers_ = leading.digits != 0 && leading.exponent >= 0 ? leading.exponent + 1 : 0;
    decimals_ = decimals;
    return places() <= room;
  }

  // Takes trailing zeros of the fraction away.
  void trim() noexcept {
    const char* const first = fraction_digits();
    while (decimals_ > 0 && first[decimals_ - 1] == '0') --decimals_;
  }

  // How many integer digits are shown: a "0" before the point of a value below 1 where `room` has a
  // place for it.
  int integers(int room) const noexcept {
    if (integers_ != 0) return integers_;
    return decimals_ == 0 || places() < room ? 1 : 0;
  }
  int decimals() const noexcept { return decimals_; }

  const char* integer_digits() const noexcept {
    return integers_ != 0 ? text_ + zeros_around : text_;
  }
  const char* fraction_digits() const noexcept { return text_ + zeros_around + exponent_ + 1; }

 private:
  static constexpr int zeros_around = 40;

  int places() const noexcept {
    const int fraction = decimals_ > 0 ? 1 + decimals_ : 0;
    return integers_ + fraction == 0 ? 1 : integers_ + fraction;
  }

  int exponent_ = 0;
  int integers_ = 0;
  int decimals_ = 0;
  char text_[zeros_around + 16 + 2 * zeros_around];  // zeros on both sides of the digits
};

class WidthBoundFormatter {
 public:
  WidthBoundFormatter(const LocaleRecord& record, const NumberRequest& request, double magnitude,
                      bool negative, int places, ShortNumber& out) noexcept
      : symbols_{record},
        request_(request),
        magnitude_(magnitude),
        negative_(negative),
        places_(places),
        room_(places - (negative ? 1 : 0)),
        placement_(out.placement),
        body_(out.body) {
    estimate_ = estimated_digits(magnitude);
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
      // A field of one place never shows a minus sign. Below one half it shows "0"; the addend
      // alone would make a 1 of the value next to one half.
      if (magnitude_ >= 0.5) return show_exponent(as_many_as_fit);
      magnitude_ = 0;
      negative_ = false;
      room_ = 1;
    }
    int decimals = best_fit() ? as_many_as_fit : request_.decimals;
    if (best_fit() && estimate_ < 1 && room_ > 2) {
      if (asks_for_exponent() && try_exponent()) return;
      decimals = best_fit_decimals_below_ten(room_);
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
    write_fixed(form);
  }

  void write_fixed(const FixedForm& form) noexcept {
    const int integers = form.integers(room_);
    const int decimals = form.decimals();
    int length = integers + (decimals > 0 ? 1 + decimals : 0);
    char16_t* position = body_;
    const int separators =
        request_.group && integers > 0 ? count_separators(symbols_.record, integers) : 0;
    if (separators < 0 || length + separators > room_) {
      placement_.status = Status::grouping_failed;
    } else if (separators > 0) {
      write_grouped(symbols_, form.integer_digits(), integers, separators, position);
      length += separators;
      position += separators;
    }
    if (position == body_) store_digits(form.integer_digits(), integers, position);
    position += integers;
    if (decimals > 0) {
      *position++ = symbols_.decimal();
      store_digits(form.fraction_digits(), decimals, position);
    }
    place(length);
  }

  // Decimals that a decimal-aligned number asked for are not shown.
  void drop() noexcept {
    if (!best_fit()) placement_.status = Status::decimals_dropped;
  }

  bool try_exponent() noexcept {
    int length = 0;
    if (write_exponent_form(magnitude_, room_, as_many_as_fit, true, symbols_.decimal(), body_,
                            length) != Status::ok) {
      return false;
    }
    place(length);
    return true;
  }

  void show_exponent(std::int32_t decimals) noexcept {
    int length = 0;
    const Status status = write_exponent_form(magnitude_, room_, decimals, best_fit(),
                                              symbols_.decimal(), body_, length);
    if (status == Status::does_not_fit) {
      placement_.fill_with_stars(places_, places_, status);
      return;
    }
    placement_.status = status;
    if (request_.kind == NumberKind::decimal_aligned) {
      placement_.status = Status::decimals_dropped;
    }
    place(length);
  }

  // Right-aligns the body.
  void place(int length) noexcept {
    placement_.sign = negative_ ? u'-' : u'\0';
    placement_.body_length = length;
    placement_.blanks_before = places_ - length - (negative_ ? 1 : 0);
    placement_.length = places_;
  }

  Symbols<char16_t> symbols_;
  const NumberRequest& request_;
  double magnitude_;
  bool negative_;
  int places_;  // of the field
  int room_;    // for the text without its sign
  int estimate_;
  Placement& placement_;
  char16_t* body_;
};

}  // namespace

void format_width_bound(const LocaleRecord& record, const NumberRequest& request, double magnitude,
                        bool negative, std::int64_t capacity, ShortNumber& out) noexcept {
  Placement& placement = out.placement;
  const bool exponent_kind =
      request.kind == NumberKind::exponent_only || request.kind == NumberKind::bound_exponent;
  const std::int64_t width = request.field.width;
  if (width < 1) return placement.refuse(Status::invalid_width);
  const std::int64_t places = std::min(width, capacity);
  if (width > widest_field || (exponent_kind && width < narrowest_exponent_field)) {
    return placement.fill_with_stars(places, places, Status::invalid_width);
  }
  if (places == 0) return placement.fill_with_stars(0, 0, Status::does_not_fit);
  WidthBoundFormatter(record, request, magnitude, negative, static_cast<int>(places), out).format();
}

}  // namespace jwnls
