// A work area of fixed size that a service composes its text in, over both kinds of unit.
//
// Appending never writes outside the area: behind its limit lies slack for everything that a
// pattern of 60 units can still append, and one name. A writer asks outgrown() after each name, so
// no second one follows; what has outgrown the limit is cut when the text is delivered. Short names
// are copied in fixed blocks, which is faster than a copy of unforeseen length.

#ifndef JWNLS_MODULE_TEXT_BOUNDED_WRITER_H_
#define JWNLS_MODULE_TEXT_BOUNDED_WRITER_H_

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>

#include "abi/locale_record.h"
#include "abi/status.h"
#include "module/text/copy_text.h"
#include "module/text/trimming.h"
#include "module/text/utf8_encoding.h"

namespace jwnls {

/// How a number below 100 is written: which table of digit pairs, and below which number only the
/// first unit of the pair is text.
struct NumberStyle {
  std::uint8_t first_pair;
  std::uint8_t single_below;
};
inline constexpr NumberStyle zero_padded = {0, 0};  // first, as append_pair() relies on
inline constexpr NumberStyle blank_padded = {100, 0};
inline constexpr NumberStyle unpadded = {200, 10};

/// The two units of each number below 100, three times: zero-padded, blank-padded, unpadded.
template <typename Unit>
inline constexpr auto digit_pairs = [] {
  std::array<std::array<Unit, 2>, 300> pairs{};
  for (unsigned i = 0; i < 100; ++i) {
    const auto tens = static_cast<Unit>('0' + i / 10);
    const auto ones = static_cast<Unit>('0' + i % 10);
    pairs[zero_padded.first_pair + i] = {tens, ones};
    pairs[blank_padded.first_pair + i] = {i < 10 ? Unit{' '} : tens, ones};
    pairs[unpadded.first_pair + i] = {i < 10 ? ones : tens, ones};
  }
  return pairs;
}();

/// The memory that a BoundedWriter writes into.
template <typename Unit, std::size_t limit>
struct WorkArea {
  static constexpr std::size_t slack = 2 * text_entry_capacity * longest_utf8_unit;
  Unit units[limit + slack];
};

/// The writer is a position and nothing else, so that a loop can keep it in a register.
template <typename Unit, std::size_t limit>
class BoundedWriter {
 public:
  explicit BoundedWriter(WorkArea<Unit, limit>& area) noexcept
      : begin_(area.units), limit_(area.units + limit), position_(area.units) {}

  bool outgrown() const noexcept { return position_ > limit_; }
  std::size_t room() const noexcept { return outgrown() ? 0 : limit - length(); }

  /// Appends one unit of a pattern or name, in the area's encoding.
  void append(char16_t unit) noexcept {
    if (sizeof(Unit) == 2 || unit < 0x80) [[likely]] {
      *position_++ = static_cast<Unit>(unit);
    } else if constexpr (sizeof(Unit) == 1) {
      position_ += encode_utf8_unit(unit, position_);
    }
  }

  /// Appends a character below 128, or a unit that the 8-bit form narrows to its low byte.
  void append_narrow(char16_t unit) noexcept { *position_++ = static_cast<Unit>(unit); }

  /// Appends a number below 10.
  void append_digit(unsigned number) noexcept { *position_++ = static_cast<Unit>('0' + number); }

  /// Appends a number below 100 as two digits.
  void append_pair(unsigned number) noexcept {
    std::memcpy(position_, digit_pairs<Unit>[number].data(), 2 * sizeof(Unit));
    position_ += 2;
  }

  /// Appends a number below 100.
  void append_number(unsigned number, NumberStyle style) noexcept {
    const auto& pair = digit_pairs<Unit>[style.first_pair + number];
    std::memcpy(position_, pair.data(), sizeof pair);
    position_ += number < style.single_below ? 1 : 2;
  }

  /// Appends ":", two digits, ":" and two digits.
  void append_clock_pairs(unsigned minute, unsigned second) noexcept {
    append_narrow(u':');
    append_pair(minute);
    append_narrow(u':');
    append_pair(second);
  }

  /// Appends two numbers below 100 in a row.
  void append_numbers(unsigned first, unsigned second, NumberStyle style) noexcept {
    if (style.single_below != 0) [[unlikely]] {
      append_number(first, style);
      append_number(second, style);
      return;
    }
    const auto& pairs = digit_pairs<Unit>;
    std::memcpy(position_, pairs[style.first_pair + first].data(), 2 * sizeof(Unit));
    std::memcpy(position_ + 2, pairs[style.first_pair + second].data(), 2 * sizeof(Unit));
    position_ += 4;
  }

  /// Appends the text of an entry.
  void append(const TextEntry& entry) noexcept {
    auto length = static_cast<std::size_t>(entry.length);
    if (length > block) [[unlikely]]
      length = text_of(entry).size();  // a corrupt one, negative ones among them, is bounded
    if constexpr (sizeof(Unit) == 2) {
      std::memcpy(position_, entry.units, block * sizeof(Unit));
      if (length > block) [[unlikely]]
        std::memcpy(position_, entry.units, sizeof entry.units);
      position_ += length;
    } else {
      append_encoded(entry, length);
    }
  }

  /// Takes the text's trailing blanks away and copies what fits into `out`; `*length` becomes what
  /// was delivered. Returns does_not_fit when the text outgrew the area or `capacity`, else ok.
  Status deliver(Unit* out, std::int64_t capacity, std::int64_t* delivered) const noexcept {
    const std::size_t produced = length_without_trailing_blanks(begin_, std::min(length(), limit));
    const auto capacity_units = static_cast<std::size_t>(std::max<std::int64_t>(capacity, 0));
    const std::size_t fitting = std::min(produced, capacity_units);
    copy_text(out, begin_, fitting * sizeof(Unit));
    *delivered = static_cast<std::int64_t>(fitting);
    return outgrown() || produced > capacity_units ? Status::does_not_fit : Status::ok;
  }

 private:
  static constexpr std::size_t block = 16;  // units; most names are shorter

  std::size_t length() const noexcept { return static_cast<std::size_t>(position_ - begin_); }

  static bool is_ascii_block(const char16_t* units) noexcept {
    const auto word = [units](std::size_t at) {
      std::uint64_t four_units = 0;
      std::memcpy(&four_units, units + at, sizeof four_units);
      return four_units;
    };
    static_assert(block == 16);
    return ((word(0) | word(4) | word(8) | word(12)) & 0xFF80FF80FF80FF80) == 0;
  }

  // ASCII names, the most by far, are narrowed a block at a time; others go unit by unit.
  void append_encoded(const TextEntry& entry, std::size_t length) noexcept {
    if (length <= block && is_ascii_block(entry.units)) [[likely]] {
      std::array<Unit, block> narrowed;
      for (std::size_t i = 0; i < block; ++i) narrowed[i] = static_cast<Unit>(entry.units[i]);
      std::memcpy(position_, narrowed.data(), sizeof narrowed);
      position_ += length;
      return;
    }
    for (std::size_t i = 0; i < length; ++i) append(entry.units[i]);
  }

  Unit* begin_;
  const Unit* limit_;
  Unit* position_;
};

}  // namespace jwnls

#endif  // JWNLS_MODULE_TEXT_BOUNDED_WRITER_H_
