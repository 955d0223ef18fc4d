// The scanner of locale integers, over UTF-16 and UTF-8.
//
//   decimal      = blanks [ sign ] blanks digit { digit | grouping symbol } [ fraction ]
//   hexadecimal  = blanks [ "0x" | "0X" ] hexadecimal digit { hexadecimal digit }
//   fraction     = decimal symbol { digit }
//
// Blanks are spaces alone. The scanner lives in registers, as number_scanner.h explains.

#ifndef JWNLS_MODULE_READ_NUMBERS_INTEGER_SCANNER_H_
#define JWNLS_MODULE_READ_NUMBERS_INTEGER_SCANNER_H_

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>
#include <type_traits>

#include "abi/locale_record.h"
#include "abi/number_flags.h"
#include "abi/status.h"
#include "module/text/digit_words.h"
#include "module/text/unit_encoding.h"
#include "module/text/utf8_encoding.h"

namespace jwnls {

template <typename Integer>
struct IntegerReading {
  Status status;
  Integer value;
  std::int64_t consumed;  // units
};

template <typename Integer, typename Unit>
class IntegerScanner {
  static constexpr bool is_signed = std::is_signed_v<Integer>;

 public:
  using Reading = IntegerReading<Integer>;

  /// `length` is 0 or more.
  IntegerScanner(const Unit* text, std::int64_t length, std::uint32_t flags,
                 const LocaleRecord& record) noexcept
      : text_(text),
        length_(length),
        flags_(flags),
        decimal_(record.decimal_symbol),
        grouping_(record.grouping_symbol) {}

  [[nodiscard, gnu::always_inline]] Reading read() noexcept {
    const bool hexadecimal = !is_signed && has(integer_input_flags::hexadecimal);
    negative_ = is_signed && at('-');
    at_ = negative_ ? 1 : 0;
    if (digit() <= 9 && !hexadecimal) [[likely]]
      return read_decimal();
    negative_ = false;
    at_ = 0;
    return read_start(*this);
  }

 private:
  static constexpr auto largest = static_cast<std::uint64_t>(std::numeric_limits<Integer>::max());

  bool has(std::uint32_t flag) const noexcept { return (flags_ & flag) != 0; }
  bool at_end() const noexcept { return at_ == length_; }
  bool at(char ascii) const noexcept { return !at_end() && text_[at_] == static_cast<Unit>(ascii); }
  void skip_blanks() noexcept {
    while (at(' ')) ++at_;
  }
  // The units of a symbol that stands here; 0 when it does not.
  std::int64_t symbol_units(char16_t symbol) const noexcept {
    if (at_end()) return 0;
    if (sizeof(Unit) == 2 || symbol < 0x80) return unit_value(text_[at_]) == symbol ? 1 : 0;
    char encoded[longest_utf8_unit];
    const auto bytes = static_cast<std::int64_t>(encode_utf8_unit(symbol, encoded));
    const bool here = length_ - at_ >= bytes &&
                      std::memcmp(text_ + at_, encoded, static_cast<std::size_t>(bytes)) == 0;
    return here ? bytes : 0;
  }
  std::int64_t grouping_units() const noexcept {
    const std::int64_t units = symbol_units(grouping_);
    if (units != 0 || !at(' ')) return units;
    return has(integer_input_flags::blank_groups) && grouping_ == 0xA0 ? 1 : 0;
  }
  // The value of the unit here as a digit; above 9, or above 15, when it is none.
  std::uint32_t digit() const noexcept {
    return at_end() ? 99 : unit_value(text_[at_]) - std::uint32_t{'0'};
  }
  std::uint32_t hexadecimal_digit() const noexcept {
    if (digit() <= 9 || at_end()) return digit();
    const std::uint32_t letter = (unit_value(text_[at_]) | 0x20) - std::uint32_t{'a'};
    return letter < 6 ? letter + 10 : 99;
  }

  // Takes what stands before the digits.
  [[gnu::noinline]] static Reading read_start(IntegerScanner copy) noexcept {
    copy.skip_blanks();
    if (copy.at_end()) return copy.finish(Status::ok);
    if constexpr (!is_signed) {
      if (copy.at('-')) return copy.finish(Status::invalid_number);
      if (copy.has(integer_input_flags::hexadecimal)) return copy.read_hexadecimal();
    }
    if (copy.at('-') || copy.at('+')) {
      copy.negative_ = copy.at('-');
      ++copy.at_;
      copy.skip_blanks();
    }
    return copy.read_decimal();
  }

  [[gnu::always_inline]] Reading read_decimal() noexcept {
    const bool grouping_is_digit = grouping_ >= u'0' && grouping_ <= u'9';
    if (grouping_is_digit) [[unlikely]]
      return read_single_digits(*this);
    return read_runs<false>();
  }
  // Begins anew at the first digit, for there are more than any sum is sure to hold.
  [[gnu::noinline]] static Reading read_long(IntegerScanner copy, std::int64_t first) noexcept {
    copy.at_ = first;
    copy.sum_ = 0;
    return copy.read_runs<true>();
  }

  // Runs of digits with grouping symbols between them; checked: they may overflow the sum.
  template <bool checked>
  [[gnu::always_inline]] Reading read_runs() noexcept {
    const std::int64_t first = at_;
    std::int64_t symbols = 0;  // their units
    if (digit() > 9 && grouping_units() != 0) return finish(Status::invalid_number);
    for (;;) {
      add_digits<checked>();
      if (at_end()) break;
      const std::int64_t units = grouping_units();
      if (units == 0) break;
      at_ += units;
      symbols += units;
    }
    constexpr std::int64_t safe_digits = 19;
    if (!checked && at_ - first - symbols > safe_digits) [[unlikely]] {
      return read_long(*this, first);
    }
    if (overflowed()) [[unlikely]]
      return finish_overflow();
    if (at_end() && at_ != first) [[likely]]
      return finish(Status::ok);
    return read_rest(*this, at_ != first);
  }

  // Where a digit is the grouping symbol.
  [[gnu::noinline]] static Reading read_single_digits(IntegerScanner copy) noexcept {
    const std::int64_t first = copy.at_;
    for (; copy.digit() <= 9; ++copy.at_) {
      if (copy.grouping_units() == 0) {
        copy.add_checked(copy.digit(), 10);
      } else if (copy.at_ == first) {
        return copy.finish(Status::invalid_number);
      }
    }
    if (copy.overflowed()) return copy.finish_overflow();
    return read_rest(copy, copy.at_ != first);
  }

  template <bool checked>
  [[gnu::always_inline]] void add_digits() noexcept {
    FewDigits few = {};
    do {
      few = DigitWord<Unit>::load(text_, length_, at_).leading_digits('0');
      if constexpr (checked) {
        add_checked(few.value, powers_of_ten_to_4[few.count]);
      } else {
        sum_ = sum_ * powers_of_ten_to_4[few.count] + few.value;
      }
      at_ += few.count;
    } while (few.count == 4);
  }

  void add_checked(std::uint64_t value, std::uint64_t scale) noexcept {
    overflow_ |= __builtin_mul_overflow(sum_, scale, &sum_);
    overflow_ |= __builtin_add_overflow(sum_, value, &sum_);
  }
  // The magnitude of the lowest value is one above that of the highest.
  bool overflowed() const noexcept { return overflow_ || sum_ > largest + (negative_ ? 1 : 0); }

  // Behind the integer's digits: a fraction, whose digits are dropped, and the end.
  [[gnu::noinline]] static Reading read_rest(IntegerScanner copy, bool has_digits) noexcept {
    const std::int64_t units =
        copy.has(integer_input_flags::fraction) ? copy.symbol_units(copy.decimal_) : 0;
    Status status = Status::ok;
    if (units != 0) {
      copy.at_ += units;
      for (; copy.digit() <= 9; ++copy.at_) {
        has_digits = true;
        if (copy.digit() != 0) status = Status::does_not_fit;
      }
    }
    return copy.end(has_digits, status);
  }

  Reading read_hexadecimal() noexcept {
    if (length_ - at_ >= 2 && at('0') && (text_[at_ + 1] | 0x20) == 'x') at_ += 2;
    const std::int64_t first = at_;
    for (; hexadecimal_digit() <= 15; ++at_) add_checked(hexadecimal_digit(), 16);
    return overflowed() ? finish_overflow() : end(at_ != first, Status::ok);
  }

  // Behind all digits: the end, a zero unit, or blanks; `status` is that of a text which may end
  // here. Blanks are not counted as read.
  Reading end(bool has_digits, Status status) noexcept {
    Reading reading = finish(status);
    const bool trailing_blanks = has(integer_input_flags::trailing_blanks);
    if (trailing_blanks) skip_blanks();
    const bool ends = at_end() || at('\0') || (!trailing_blanks && at(' '));
    if (!has_digits || !ends) reading.status = Status::invalid_number;
    return reading;
  }

  Reading finish(Status status) const noexcept {
    const std::uint64_t magnitude = negative_ ? 0 - sum_ : sum_;
    return {status, static_cast<Integer>(magnitude), at_};
  }
  Reading finish_overflow() const noexcept { return {Status::integer_overflow, 0, at_}; }

  const Unit* text_;
  std::int64_t length_;
  std::int64_t at_ = 0;
  std::uint32_t flags_;
  char16_t decimal_;
  char16_t grouping_;
  bool negative_ = false;
  bool overflow_ = false;  // of sum_
  std::uint64_t sum_ = 0;
};

}  // namespace jwnls

#endif  // JWNLS_MODULE_READ_NUMBERS_INTEGER_SCANNER_H_
