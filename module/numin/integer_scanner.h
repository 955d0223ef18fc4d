// The scanner of locale integers, over UTF-16 and UTF-8.
//
//   decimal      = blanks [ sign ] blanks digit { digit | grouping symbol } [ fraction ]
//   hexadecimal  = blanks [ "0x" | "0X" ] hexadecimal digit { hexadecimal digit }
//   fraction     = decimal symbol { digit }
//
// Blanks are spaces alone.

#ifndef JWNLS_MODULE_NUMIN_INTEGER_SCANNER_H_
#define JWNLS_MODULE_NUMIN_INTEGER_SCANNER_H_

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>
#include <type_traits>

#include "module/numin/unit_encoding.h"
#include "module/record/locale_record.h"
#include "module/record/number_flags.h"
#include "module/record/status.h"
#include "module/text/utf8_unit.h"

namespace jwnls {

/// A symbol of the record as units of a text.
template <typename Unit>
struct EncodedSymbol {
  Unit units[longest_utf8_unit] = {};
  std::int64_t length = 1;

  explicit EncodedSymbol(char16_t symbol) noexcept {
    if constexpr (sizeof(Unit) == 1) {
      length = static_cast<std::int64_t>(encode_utf8_unit(symbol, units));
    } else {
      units[0] = symbol;
    }
  }
};

template <typename Integer>
struct IntegerReading {
  Status status;
  Integer value;
  std::int64_t consumed;  // units
};

template <typename Integer, typename Unit>
class IntegerScanner {
  static constexpr bool is_signed = std::is_signed_v<Integer>;
  using Magnitude = std::make_unsigned_t<Integer>;

 public:
  using Reading = IntegerReading<Integer>;

  /// `length` is 0 or more.
  IntegerScanner(const Unit* text, std::int64_t length, std::uint32_t flags,
                 const LocaleRecord& record) noexcept
      : text_(text),
        length_(length),
        flags_(flags),
        decimal_(record.decimal_symbol),
        grouping_(record.grouping_symbol),
        blank_groups_(has(integer_input_flags::blank_groups) && record.grouping_symbol == 0xA0) {}

  [[nodiscard]] Reading read() noexcept {
    skip_blanks();
    if (at_end()) return finish(Status::ok);
    if constexpr (!is_signed) {
      if (at('-')) return finish(Status::invalid_number);
      if (has(integer_input_flags::hexadecimal)) return read_hexadecimal();
    }
    if (at('-') || at('+')) {
      negative_ = at('-');
      ++at_;
      skip_blanks();
    }
    return read_decimal();
  }

 private:
  static constexpr Magnitude largest = std::numeric_limits<Integer>::max();

  bool has(std::uint32_t flag) const noexcept { return (flags_ & flag) != 0; }
  bool at_end() const noexcept { return at_ == length_; }
  bool at(char ascii) const noexcept { return !at_end() && text_[at_] == static_cast<Unit>(ascii); }
  bool at(const EncodedSymbol<Unit>& symbol) const noexcept {
    if (length_ - at_ < symbol.length || text_[at_] != symbol.units[0]) return false;
    return symbol.length == 1 ||
           std::memcmp(text_ + at_, symbol.units,
                       static_cast<std::size_t>(symbol.length) * sizeof(Unit)) == 0;
  }
  void skip_blanks() noexcept {
    while (at(' ')) ++at_;
  }

  // The units of the grouping symbol here; 0 when there is none.
  std::int64_t grouping_units() const noexcept {
    if (at(grouping_)) return grouping_.length;
    return blank_groups_ && at(' ') ? 1 : 0;
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

  Reading finish(Status status) const noexcept {
    const Magnitude magnitude = negative_ ? Magnitude{0} - sum_ : sum_;
    return {status, static_cast<Integer>(magnitude), at_};
  }

  Reading read_decimal() noexcept {
    if (grouping_units() != 0) return finish(Status::invalid_number);
    // The magnitude of the lowest value is one above that of the highest.
    const std::uint32_t last_digit = largest % 10 + (negative_ ? 1 : 0);
    const std::int64_t first = at_;
    bool overflow = false;
    while (!at_end()) {
      if (const std::int64_t units = grouping_units(); units != 0) {
        at_ += units;
        continue;
      }
      const std::uint32_t value = digit();
      if (value > 9) break;
      overflow |= sum_ > largest / 10 || (sum_ == largest / 10 && value > last_digit);
      sum_ = static_cast<Magnitude>(sum_ * 10 + value);
      ++at_;
    }
    if (overflow) {
      sum_ = 0;
      return finish(Status::integer_overflow);
    }
    if (has(integer_input_flags::fraction) && at(decimal_)) return read_fraction(at_ != first);
    return end(at_ != first, Status::ok);
  }

  // The fraction's digits are dropped.
  Reading read_fraction(bool has_digits) noexcept {
    at_ += decimal_.length;
    Status status = Status::ok;
    for (; digit() <= 9; ++at_) {
      has_digits = true;
      if (digit() != 0) status = Status::does_not_fit;
    }
    return end(has_digits, status);
  }

  Reading read_hexadecimal() noexcept {
    if (length_ - at_ >= 2 && at('0') && (text_[at_ + 1] | 0x20) == 'x') at_ += 2;
    const std::int64_t first = at_;
    bool overflow = false;
    for (; hexadecimal_digit() <= 15; ++at_) {
      overflow |= sum_ > largest / 16;
      sum_ = static_cast<Magnitude>(sum_ * 16 + hexadecimal_digit());
    }
    if (overflow) {
      sum_ = 0;
      return finish(Status::integer_overflow);
    }
    return end(at_ != first, Status::ok);
  }

  // Behind the digits: the end, a zero unit, or blanks; `status` is that of a text which may end
  // here. Blanks are not counted as read.
  Reading end(bool has_digits, Status status) noexcept {
    Reading reading = finish(status);
    const bool trailing_blanks = has(integer_input_flags::trailing_blanks);
    if (trailing_blanks) skip_blanks();
    const bool ends = at_end() || at('\0') || (!trailing_blanks && at(' '));
    if (!has_digits || !ends) reading.status = Status::invalid_number;
    return reading;
  }

  const Unit* text_;
  std::int64_t length_;
  std::int64_t at_ = 0;
  std::uint32_t flags_;
  EncodedSymbol<Unit> decimal_;
  EncodedSymbol<Unit> grouping_;
  bool blank_groups_;
  bool negative_ = false;
  Magnitude sum_ = 0;
};

}  // namespace jwnls

#endif  // JWNLS_MODULE_NUMIN_INTEGER_SCANNER_H_
