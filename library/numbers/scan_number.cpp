#include "library/numbers/scan_number.h"

#include <algorithm>
#include <iterator>

#include "include/jwnls/jwnls.h"
#include "library/numbers/character_cursor.h"
#include "library/numbers/group_runs.h"

namespace jwnls::library {
namespace {

constexpr int furthest_exponent = 100'000;

// Currency symbols and percent signs, as far as they say what somebody meant.
bool is_unit(char32_t c) {
  return c == U'$' || c == U'%' || (c >= 0xA2 && c <= 0xA5) || c == 0x2030 || c == 0x066A ||
         (c >= 0x20A0 && c <= 0x20CF) || c == 0xFF05 || c == 0xFF04 || c == 0xFFE5;
}

class NumberScanner : CharacterCursor {
 public:
  NumberScanner(const NumberSyntax& syntax, std::string_view text, ScannedNumber& number)
      : CharacterCursor(text), syntax_(syntax), number_(number) {}

  void scan() {
    skip_pad();
    if (ended()) return refuse(Refusal::blank);
    if (syntax_.module_missing && scan_missing()) return;
    if (scan_front() && scan_core() && scan_exponent() && scan_back()) check_whole();
  }

 private:
  void refuse(Refusal refusal) { refuse(refusal, at_); }
  void refuse(Refusal refusal, std::size_t at) {
    number_.refusal = valid_ ? refusal : Refusal::not_utf8;
    number_.at = valid_ ? at : invalid_at_;
  }
  bool no(Refusal refusal) {
    refuse(refusal);
    return false;
  }
  bool no(Refusal refusal, std::size_t at) {
    refuse(refusal, at);
    return false;
  }

  // ".", "._" and ".A" to ".Z" and nothing else.
  bool scan_missing() {
    if (c_ != U'.') return false;
    std::string_view rest = text_.substr(at_ + 1);
    char name = '.';
    if (!rest.empty()) {
      const char letter = rest.front();
      const bool small = letter >= 'a' && letter <= 'z';
      if (small || (letter >= 'A' && letter <= 'Z') || letter == '_') {
        name = small ? static_cast<char>(letter - 'a' + 'A') : letter;
        rest.remove_prefix(1);
      }
    }
    for (; !rest.empty(); rest.remove_prefix(first_character(rest).bytes)) {
      const char32_t c = first_character(rest).value;
      if (!is_blank(c) && !is_mark(c)) return false;
    }
    number_.missing = name;
    refuse(Refusal::blank);
    return true;
  }

  [[nodiscard]] bool has_units() const { return syntax_.unit != UnitKind::none; }

  // A sign, where one stands; of all the text has one, or a pair of parentheses, or nothing.
  bool scan_sign(char sign) {
    if (has_sign_ || opened_) return no(Refusal::two_signs);
    has_sign_ = true;
    number_.negative = sign == '-';
    advance();
    return true;
  }

  // Signs, parenthesis and unit in front of the digits.
  bool scan_front() {
    while (true) {
      skip_pad();
      if (const char sign = sign_of(c_, syntax_.triangle_minus); sign != '\0') {
        if (!scan_sign(sign)) return false;
      } else if (c_ == U'(') {
        if (has_sign_) return no(Refusal::two_signs);
        if (opened_ || !(has_units() || syntax_.signs_anywhere)) return no(Refusal::parenthesis);
        opened_ = true;
        number_.negative = true;
        advance();
      } else if (!scan_unit()) {
        return number_.refusal == Refusal::none;
      }
    }
  }

  // The unit, where one stands: false where none does, and where it is refused.
  bool scan_unit() {
    if (!has_units() || ended()) return false;
    std::size_t bytes = bytes_;
    if (syntax_.unit == UnitKind::percent) {
      const int power = percent_power(c_);
      if (power == 0) return false;
      if (units_++ != 0) return no(Refusal::two_units);
      unit_power_ = power;
    } else {
      if (!syntax_.unit_begins.has(text_[at_])) return false;
      const UnitName* const unit =
          match_unit(syntax_.units, text_.substr(at_), syntax_.decimal_character, bytes);
      if (unit == nullptr) return false;
      if (units_ == 2 || (units_ == 1 && unit->code != number_.currency)) {
        return no(Refusal::two_units);
      }
      ++units_;
      unit->code.copy(number_.currency, sizeof number_.currency - 1);
      currency_decimals_ = unit->decimals;
    }
    at_ += bytes;
    look();
    return true;
  }

  // What stands where nothing of the layout does: something that means a unit?
  [[nodiscard]] Refusal unit_refusal(Refusal otherwise) const {
    const auto is_letter = [this](std::size_t i) {
      const char c = at_ + i < text_.size() ? text_[at_ + i] : '\0';
      return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
    };
    if (syntax_.unit != UnitKind::currency) {
      return is_unit(c_) ? Refusal::unit_not_allowed : otherwise;
    }
    if (percent_power(c_) != 0) return Refusal::unit_not_allowed;
    const bool is_code = is_letter(0) && is_letter(1) && is_letter(2) && !is_letter(3);
    return is_unit(c_) || is_code ? Refusal::other_currency : otherwise;
  }

  std::size_t scan_ascii_digits() {
    const std::size_t begin = at_;
    const auto is_digit = [](char c) { return c >= '0' && c <= '9'; };
    for (; !ended() && is_digit(text_[at_]); ++at_) number_.text[number_.digits++] = text_[at_];
    if (at_ != begin) {
      zero_ = U'0';
      look();
    }
    return at_ - begin;
  }

  // The digits that stand here, at the end of number_.text.
  bool scan_digits(std::size_t& count) {
    count = 0;
    if (zero_ == 0 || zero_ == U'0') count = scan_ascii_digits();
    for (Digit digit = digit_of(c_); digit.zero != 0; digit = digit_of(c_)) {
      if (zero_ != 0 && digit.zero != zero_) return no(Refusal::mixed_digits);
      zero_ = digit.zero;
      number_.text[number_.digits++] = static_cast<char>('0' + digit.value);
      ++count;
      advance();
    }
    return true;
  }

  bool scan_core() {
    GroupRuns groups;
    if (!scan_integer_part(groups)) return false;
    const bool has_decimal = !ended() && syntax_.is_decimal(separator());
    const std::size_t integers = number_.digits;
    if (integers == 0 && !(has_decimal && digit_behind())) {
      return no(unit_refusal(Refusal::no_number));
    }
    if (has_decimal && !syntax_.fraction) return no(Refusal::fraction_of_integer);
    if (!check_groups(groups, has_decimal)) return false;
    if (has_decimal) {
      advance();
      if (!scan_digits(number_.decimals)) return false;
      if (!scan_dash(integers) && !check_behind_fraction()) return false;
    }
    const bool two_ways =
        groups.count != 0
            ? groups.count == 1 && !has_decimal && groups.separator != Separator::blank
            : has_decimal && number_.decimals == 3 && integers >= 1 && integers <= 3 &&
                  number_.text[0] != '0';
    ambiguous_fraction_ = two_ways && has_decimal;
    const bool marked = groups.count != 0 || has_decimal;
    number_.facts = two_ways ? JWNLS_TWO_WAYS : marked ? JWNLS_DECIDES : 0;
    return true;
  }

  [[nodiscard]] Separator separator() const { return syntax_.separator(c_); }

  // Digits and separators, up to what is neither.
  bool scan_integer_part(GroupRuns& groups) {
    const bool any = syntax_.groups == groups_any;
    while (true) {
      if (!scan_digits(groups.last)) return false;
      if (ended() || number_.digits == 0) return true;
      const Separator here = separator();
      if (here == Separator::none || syntax_.is_decimal(here)) return true;
      if (!digit_behind()) {
        // With groups=any the symbols stand anywhere behind the first digit; blanks end the number.
        if (!any || here == Separator::blank) return true;
      } else if (syntax_.groups == groups_none) {
        return no(Refusal::groups_not_allowed);
      }
      if (groups.count != 0 && here != groups.separator) {
        const bool foreign_decimal =
            !syntax_.is_own(here) && (here == Separator::point || here == Separator::comma);
        return no(foreign_decimal ? Refusal::foreign_decimal : Refusal::mixed_groups);
      }
      groups.separator = here;
      groups.add(groups.last, at_);
      advance();
    }
  }

  bool check_groups(const GroupRuns& groups, bool has_decimal) {
    if (groups.count == 0) return true;
    const bool any = syntax_.groups == groups_any;
    const bool own = syntax_.is_own(groups.separator);
    if (own && any) return true;
    const bool certain = groups.count >= 2 || has_decimal;
    const auto fits = [&](GroupSizes sizes) {
      // Who groups 12,34,567 also meets 1,234,567, where that is no 1,23,456 gone wrong.
      const bool by_three = sizes.secondary != sizes.primary && certain;
      return groups.fit(sizes) || (by_three && groups.fit({sizes.primary, sizes.primary}));
    };
    const bool sized = std::any_of(std::begin(syntax_.sizes), std::end(syntax_.sizes), fits);
    if (!own && !certain && !(any && sized)) {
      return no(sized ? Refusal::foreign_group : Refusal::foreign_decimal, groups.first_at);
    }
    if (number_.text[0] == '0') return no(Refusal::group_led_by_zero, groups.first_at);
    if (sized) return true;
    const bool last_fits =
        std::any_of(std::begin(syntax_.sizes), std::end(syntax_.sizes),
                    [&groups](GroupSizes sizes) { return groups.last == sizes.primary; });
    return no(Refusal::group_size, last_fits ? groups.first_at : groups.last_at);
  }

  // "12,-": a dash, or two, in place of decimals.
  bool scan_dash(std::size_t integers) {
    if (syntax_.unit != UnitKind::currency || integers == 0 || number_.decimals != 0 ||
        !is_dash(c_) || text_.substr(at_, 3) == "---") {
      return false;
    }
    const bool twice = c_ == U'-' && text_.substr(at_, 2) == "--";
    advance();
    if (twice) advance();
    return true;
  }

  // What may not follow decimals: a second decimal symbol, or groups.
  bool check_behind_fraction() {
    if (ended()) return true;
    const Separator here = separator();
    if (here == Separator::none) return true;
    if (syntax_.is_decimal(here)) return no(Refusal::decimal_twice);
    if (!digit_behind()) return true;
    const bool is_symbol = here == Separator::point || here == Separator::comma;
    return no(is_symbol && number_.decimals == 3 ? Refusal::foreign_decimal
                                                 : Refusal::group_in_fraction);
  }

  bool scan_exponent() {
    if (has_units() || (c_ != U'e' && c_ != U'E')) return true;
    const std::size_t letter_at = at_;
    if (!syntax_.exponent) return no(Refusal::exponent);
    advance();
    const bool negative = c_ == U'-';
    if (negative || c_ == U'+') advance();
    if (digit_of(c_).zero == 0) return no(Refusal::exponent, letter_at);
    for (Digit digit = digit_of(c_); digit.zero != 0; digit = digit_of(c_)) {
      if (digit.zero != zero_) return no(Refusal::mixed_digits);
      number_.exponent = std::min(10 * number_.exponent + digit.value, furthest_exponent);
      advance();
    }
    if (negative) number_.exponent = -number_.exponent;
    has_exponent_ = true;
    return true;
  }

  // Parenthesis, signs and unit behind the digits, up to the end of the text.
  bool scan_back() {
    const std::size_t end_of_core = at_;
    while (true) {
      skip_pad();
      if (ended()) return true;
      if (c_ == U')') {
        if (!opened_ || closed_ || has_exponent_) return no(Refusal::parenthesis);
        closed_ = true;
        advance();
      } else if (const char sign = sign_of(c_, syntax_.triangle_minus); sign != '\0') {
        if (has_sign_ || opened_) return no(Refusal::two_signs, end_of_core);
        if (!(has_units() || syntax_.signs_anywhere) || has_exponent_) {
          return no(Refusal::sign_behind, end_of_core);
        }
        if (!scan_sign(sign)) return false;
      } else if (!scan_unit() && !scan_credit()) {
        return number_.refusal == Refusal::none && refuse_rest(end_of_core);
      }
    }
  }

  bool refuse_rest(std::size_t end_of_core) {
    const bool exponent = has_units() && (c_ == U'e' || c_ == U'E') && digit_behind();
    const Refusal refusal = exponent ? Refusal::exponent : unit_refusal(Refusal::trailing);
    while (!ended()) advance();  // whether all of it is UTF-8
    return no(refusal, end_of_core);
  }

  // "CR" or "DR" at the end of an amount: banks and ledgers mean opposite signs.
  bool scan_credit() {
    if (syntax_.unit != UnitKind::currency) return false;
    const std::string_view rest = text_.substr(at_);
    const auto small = [rest](std::size_t i) { return i < rest.size() ? rest[i] | 0x20 : 0; };
    const bool credit = small(0) == 'c';
    if ((!credit && small(0) != 'd') || small(1) != 'r') return false;
    const std::size_t dot = rest.substr(2, 1) == "." ? 1 : 0;
    if (small(2 + dot) >= 'a' && small(2 + dot) <= 'z') return false;
    if (syntax_.credit == credit_refuse) return no(Refusal::credit);
    const bool minus = credit == (syntax_.credit == credit_minus);
    if (has_sign_ || opened_) return no(Refusal::two_signs);
    has_sign_ = true;
    number_.negative = minus;
    at_ += 2 + dot;
    look();
    return true;
  }

  // What no single place shows.
  void check_whole() {
    if (opened_ != closed_) return refuse(Refusal::parenthesis);
    if (!has_units()) return;
    if (syntax_.unit_required && units_ == 0) return refuse(Refusal::unit_missing);
    const int decimals = units_ != 0 ? currency_decimals_ : syntax_.currency_decimals;
    if (syntax_.unit == UnitKind::currency && ambiguous_fraction_ && decimals != 3 &&
        !syntax_.any_fraction) {
      return refuse(Refusal::three_decimals);
    }
    if (syntax_.unit == UnitKind::percent) number_.exponent -= unit_power_;
  }

  const NumberSyntax& syntax_;
  ScannedNumber& number_;
  char32_t zero_ = 0;  // of the digits' script
  bool has_exponent_ = false;
  bool has_sign_ = false;
  bool opened_ = false;  // a parenthesis
  bool closed_ = false;
  bool ambiguous_fraction_ = false;  // three decimals that may be a group
  int units_ = 0;
  int unit_power_ = 2;  // of percentages, also without their sign
  int currency_decimals_ = 0;
};

}  // namespace

void scan_number(const NumberSyntax& syntax, std::string_view text,
                 ScannedNumber& number) noexcept {
  if (text.size() > longest_text) {
    number.refusal = Refusal::too_long;
    return;
  }
  NumberScanner(syntax, text, number).scan();
}

void read_number(const NumberSyntax& syntax, std::string_view text,
                 ScannedNumber& number) noexcept {
  // Most that have none of the bytes from the first letter of ASCII on are numbers.
  if (text.size() <= longest_text && !is_before_letters(text) && !syntax.bytes.has_all(text)) {
    number.refusal = Refusal::trailing;
    return;
  }
  scan_number(syntax, text, number);
}

}  // namespace jwnls::library
