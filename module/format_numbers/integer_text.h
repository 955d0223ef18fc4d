// An integer's digits in their radix, grouped where that is asked for: the middle of its text.

#ifndef JWNLS_MODULE_FORMAT_NUMBERS_INTEGER_TEXT_H_
#define JWNLS_MODULE_FORMAT_NUMBERS_INTEGER_TEXT_H_

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

#include "abi/locale_record.h"
#include "module/digits/digit_block.h"
#include "module/digits/powers_of_ten.h"
#include "module/placement/group_sizes.h"
#include "module/placement/groups_of_three.h"
#include "module/placement/symbols.h"
#include "module/text/utf8_encoding.h"

namespace jwnls {

/// Digits without leading zeros; none for 0.
template <typename Unit>
class IntegerText {
 public:
  IntegerText() noexcept {}  // the buffers stay as they are: only what is written is read

  const Unit* begin() const noexcept { return begin_; }
  std::size_t length() const noexcept { return length_; }

  void set_decimal(std::uint64_t value) noexcept {
    int count = value == 0 ? 0 : digit_count(value);
    length_ = static_cast<std::size_t>(count);
    Unit* position = units_;
    if (count > block_digits) [[unlikely]] {
      count -= block_digits;
      DigitBlock(over_ten_to_16(value), count).write(count, position);
      position += count;
      value -= over_ten_to_16(value) * ten_to_16;
      count = block_digits;
    }
    DigitBlock(value, count).write(count, position);
    begin_ = units_;
  }

  void set_grouped(std::uint64_t value, const LocaleRecord& record) noexcept {
    const Symbols<Unit> symbols{record};
    const int count = value == 0 ? 0 : digit_count(value);
    if (!groups_by_three(record) || !symbols.narrow_grouping() || count > most_grouped_digits ||
        count == 0) [[unlikely]] {
      return group_backward(value, count, grouping_of(record), record.grouping_symbol);
    }
    const auto& place = place_of_groups(count, 0);
    write_groups_of_three(value, place, 0, symbols.grouping(), units_);
    begin_ = units_;
    length_ = static_cast<std::size_t>(place.length);
  }

  /// Radix 8 or 16 (bits 3 or 4).
  void set_power_of_two(std::uint64_t value, unsigned bits, const char* digits) noexcept {
    Unit* const end = units_ + capacity;
    Unit* position = end;
    const std::uint64_t mask = (std::uint64_t{1} << bits) - 1;
    for (; value != 0; value >>= bits) {
      *--position = static_cast<Unit>(static_cast<unsigned char>(digits[value & mask]));
    }
    begin_ = position;
    length_ = static_cast<std::size_t>(end - position);
  }

 private:
  static constexpr std::size_t most_digits = 20;
  // Digits, and between them separators of up to three bytes; and room for whole blocks.
  static constexpr std::size_t capacity = most_digits + (most_digits - 1) * longest_utf8_unit + 8;

  void group_backward(std::uint64_t value, int count, std::u16string_view pattern,
                      char16_t separator) noexcept {
    char encoded[longest_utf8_unit] = {};
    const std::size_t encoded_length = sizeof(Unit) == 1 ? encode_utf8_unit(separator, encoded) : 1;
    IntegerGroupSizes groups(pattern);
    Unit* const end = units_ + capacity;
    Unit* position = end;
    std::size_t in_group = 0;
    for (int i = 0; i < count; ++i, ++in_group) {
      if (groups.size() != 0 && in_group == groups.size()) {
        position -= encoded_length;
        if constexpr (sizeof(Unit) == 1) {
          std::memcpy(position, encoded, encoded_length);
        } else {
          *position = separator;
        }
        groups.advance();
        in_group = 0;
      }
      *--position = static_cast<Unit>('0' + value % 10);
      value /= 10;
    }
    begin_ = position;
    length_ = static_cast<std::size_t>(end - position);
  }

  const Unit* begin_ = nullptr;
  std::size_t length_ = 0;
  Unit units_[capacity];
};

}  // namespace jwnls

#endif  // JWNLS_MODULE_FORMAT_NUMBERS_INTEGER_TEXT_H_
