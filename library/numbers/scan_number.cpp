#include "library/numbers/scan_number.h"

#include <algorithm>

#include "include/jwnls/jwnls.h"
#include "library/texts/utf8.h"

namespace jwnls::library {
namespace {

constexpr int furthest_exponent = 100'000;

// Currency symbols and percent signs, as far as they say what somebody meant.
bool is_unit(char32_t c) {
  return c == U'$' || c == U'%' || (c >= 0xA2 && c <= 0xA5) || c == 0x2030 || c == 0x066A ||
         (c >= 0x20A0 && c <= 0x20CF) || c == 0xFF05 || c == 0xFF04 || c == 0xFFE5;
}

// The groups in front of the decimal symbol, as far as sizes go.
struct Groups {
  Separator separator = Separator::none;
  int count = 0;           // of separators
  std::size_t first = 0;   // digits of the first group, of all those between, of the last
  std::size_t middle = 0;  // 0: none
  std::size_t last = 0;
  bool uneven = false;       // groups between of two sizes
  std::size_t first_at = 0;  // where the first and the last separator stand
  std::size_t last_at = 0;

  void add(std::size_t digits, std::size_t at) {
    if (count == 0) {
      first = digits;
      first_at = at;
    } else {
      uneven = uneven || (middle != 0 && middle != digits);
      middle = digits;
    }
    last_at = at;
    ++count;
  }

  [[nodiscard]] bool fit(GroupSizes sizes) const {
    return last == sizes.primary && !uneven && (middle == 0 || middle == sizes.secondary) &&
           first <= sizes.secondary;
  }
};

class NumberScanner {
 public:
  NumberScanner(const NumberSyntax& syntax, std::string_view text, ScannedNumber& number)
      : syntax_(syntax), text_(text), number_(number) {
    look();
  }

  void scan() {
    skip_pad();
    if (ended()) return refuse(Refusal::blank);
    if (syntax_.module_missing && scan_missing()) return;
    const bool parenthesis = c_ == U'(';
    if (parenthesis) {
      if (!syntax_.signs_anywhere) return refuse(Refusal::parenthesis);
      advance();
      skip_pad();
      number_.negative = true;
    }
    bool has_sign = false;
    if (!scan_sign(has_sign)) return;
    if (has_sign && parenthesis) return refuse(Refusal::two_signs);
    if (!scan_core() || !scan_exponent()) return;
    scan_end(parenthesis, has_sign);
  }

 private:
  [[nodiscard]] bool ended() const { return at_ == text_.size(); }

  // Looks at the character at at_: 0 at the end.
  void look() {
    if (ended()) {
      c_ = 0;
      bytes_ = 0;
      return;
    }
    if (const auto byte = static_cast<unsigned char>(text_[at_]); byte < 0x80) [[likely]] {
      c_ = byte;
      bytes_ = 1;
      return;
    }
    const Utf8Character next = first_character(text_.substr(at_));
    if (!next.valid && valid_) {
      valid_ = false;
      invalid_at_ = at_;
    }
    c_ = next.value;
    bytes_ = next.bytes;
  }
  void advance() {
    at_ += bytes_;
    look();
  }
  // Whether a digit follows the present character.
  [[nodiscard]] bool digit_behind() const {
    const std::string_view rest = text_.substr(at_ + bytes_);
    if (rest.empty()) return false;
    const auto byte = static_cast<unsigned char>(rest.front());
    if (byte < 0x80) return byte >= '0' && byte <= '9';
    return digit_of(first_character(rest).value).zero != 0;
  }

  void skip_pad() {
    while (!ended() && (is_blank(c_) || is_mark(c_))) advance();
  }

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

  bool scan_sign(bool& has_sign) {
    const char sign = sign_of(c_, syntax_.triangle_minus);
    if (sign == '\0') return true;
    has_sign = true;
    number_.negative = number_.negative || sign == '-';
    advance();
    skip_pad();
    return sign_of(c_, syntax_.triangle_minus) == '\0' || no(Refusal::two_signs);
  }

  // The digits that stand here, at the end of number_.text.
  bool scan_digits(std::size_t& count) {
    count = 0;
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
    Groups groups;
    if (!scan_integer_part(groups)) return false;
    const bool has_decimal = !ended() && syntax_.is_decimal(separator());
    const std::size_t integers = number_.digits;
    if (integers == 0 && !(has_decimal && digit_behind())) {
      return no(is_unit(c_) ? Refusal::unit_not_allowed : Refusal::no_number);
    }
    if (has_decimal && !syntax_.fraction) return no(Refusal::fraction_of_integer);
    if (!check_groups(groups, has_decimal)) return false;
    if (has_decimal) {
      advance();
      if (!scan_digits(number_.decimals) || !check_behind_fraction()) return false;
    }
    const bool two_ways =
        groups.count != 0
            ? groups.count == 1 && !has_decimal && groups.separator != Separator::blank
            : has_decimal && number_.decimals == 3 && integers >= 1 && integers <= 3 &&
                  number_.text[0] != '0';
    const bool marked = groups.count != 0 || has_decimal;
    number_.facts = two_ways ? JWNLS_TWO_WAYS : marked ? JWNLS_DECIDES : 0;
    return true;
  }

  [[nodiscard]] Separator separator() const { return syntax_.separator(c_); }

  // Digits and separators, up to what is neither.
  bool scan_integer_part(Groups& groups) {
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

  bool check_groups(const Groups& groups, bool has_decimal) {
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
    const bool sized = fits(syntax_.sizes[0]) || fits(syntax_.sizes[1]);
    if (!own && !certain && !(any && sized)) {
      return no(sized ? Refusal::foreign_group : Refusal::foreign_decimal, groups.first_at);
    }
    if (number_.text[0] == '0') return no(Refusal::group_led_by_zero, groups.first_at);
    if (sized) return true;
    const bool last_fits =
        groups.last == syntax_.sizes[0].primary || groups.last == syntax_.sizes[1].primary;
    return no(Refusal::group_size, last_fits ? groups.first_at : groups.last_at);
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
    if (c_ != U'e' && c_ != U'E') return true;
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

  void scan_end(bool parenthesis, bool has_sign) {
    const std::size_t end_of_core = at_;
    skip_pad();
    if (parenthesis) {
      if (c_ != U')' || has_exponent_) return refuse(Refusal::parenthesis);
      advance();
      skip_pad();
    } else if (const char sign = sign_of(c_, syntax_.triangle_minus); sign != '\0') {
      if (has_sign) return refuse(Refusal::two_signs, end_of_core);
      if (!syntax_.signs_anywhere || has_exponent_) {
        return refuse(Refusal::sign_behind, end_of_core);
      }
      number_.negative = sign == '-';
      advance();
      skip_pad();
    }
    if (ended()) return;
    const bool unit = is_unit(c_);
    while (!ended()) advance();  // whether all of it is UTF-8
    refuse(unit ? Refusal::unit_not_allowed : Refusal::trailing, end_of_core);
  }

  const NumberSyntax& syntax_;
  const std::string_view text_;
  ScannedNumber& number_;
  std::size_t at_ = 0;
  char32_t c_ = 0;         // the character at at_
  std::size_t bytes_ = 0;  // that it takes
  char32_t zero_ = 0;      // of the digits' script
  bool valid_ = true;      // what was looked at is UTF-8, or else where it is not
  std::size_t invalid_at_ = 0;
  bool has_exponent_ = false;
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

}  // namespace jwnls::library
