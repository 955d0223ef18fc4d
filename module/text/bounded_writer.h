// A work area of fixed size that a service composes its text in, over both kinds of unit.
//
// Appending never writes outside the area: behind its limit lies slack for the longest single
// piece, and once a piece has ended past the limit the text counts as outgrown and its writer
// stops. Short pieces are copied in fixed blocks, which is faster than a copy of unforeseen length;
// the slack holds their overhang too.

#ifndef JWNLS_MODULE_TEXT_BOUNDED_WRITER_H_
#define JWNLS_MODULE_TEXT_BOUNDED_WRITER_H_

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>

#include "module/record/locale_record.h"
#include "module/record/status.h"
#include "module/text/joining.h"
#include "module/text/utf8_unit.h"

namespace jwnls {

/// "00" to "99", ready to be stored as a pair of units.
template <typename Unit>
inline constexpr auto digit_pairs = [] {
  std::array<std::array<Unit, 2>, 100> pairs{};
  for (unsigned i = 0; i < 100; ++i) {
    pairs[i] = {static_cast<Unit>('0' + i / 10), static_cast<Unit>('0' + i % 10)};
  }
  return pairs;
}();

/// Every append needs a text that is not outgrown yet, so outgrown() is asked after each piece.
template <typename Unit, std::size_t limit>
class BoundedWriter {
 public:
  bool outgrown() const noexcept { return length_ > limit; }
  std::size_t room() const noexcept { return limit - length_; }

  /// Appends one unit of a pattern or name, in the area's encoding.
  void append(char16_t unit) noexcept {
    if constexpr (sizeof(Unit) == 2) {
      area_[length_++] = unit;
    } else {
      length_ += encode_utf8_unit(unit, area_ + length_);
    }
  }

  /// Appends one character below 128, or a unit narrowed to its low byte in the 8-bit form.
  void append_narrow(char16_t unit) noexcept { area_[length_++] = static_cast<Unit>(unit); }

  /// Appends a number below 10.
  void append_digit(unsigned number) noexcept {
    area_[length_++] = static_cast<Unit>('0' + number);
  }

  /// Appends a number below 100 as two digits.
  void append_pair(unsigned number) noexcept {
    std::memcpy(area_ + length_, digit_pairs<Unit>[number].data(), 2 * sizeof(Unit));
    length_ += 2;
  }

  /// Appends the text of an entry.
  void append(const TextEntry& entry) noexcept {
    const std::size_t length = text_of(entry).size();
    if constexpr (sizeof(Unit) == 2) {
      std::memcpy(area_ + length_, entry.units, block * sizeof(Unit));
      if (length > block) [[unlikely]] {
        std::memcpy(area_ + length_, entry.units, sizeof entry.units);
      }
      length_ += length;
    } else {
      append_encoded(entry, length);
    }
  }

  /// Takes the text's trailing blanks away and copies what fits into `out`; `*length` becomes what
  /// was delivered. Returns does_not_fit when the text outgrew the area or `capacity`, else ok.
  Status deliver(Unit* out, std::int64_t capacity, std::int64_t* length) const noexcept {
    const std::size_t produced = length_without_trailing_blanks(area_, std::min(length_, limit));
    const auto room = static_cast<std::size_t>(std::max<std::int64_t>(capacity, 0));
    const std::size_t delivered = std::min(produced, room);
    if (delivered != 0) std::memcpy(out, area_, delivered * sizeof(Unit));
    *length = static_cast<std::int64_t>(delivered);
    return outgrown() || produced > room ? Status::does_not_fit : Status::ok;
  }

 private:
  static constexpr std::size_t block = 16;  // units; most names are shorter
  static constexpr std::size_t slack =
      text_entry_capacity * (sizeof(Unit) == 2 ? 1 : longest_utf8_unit);

  // ASCII names, the most by far, are narrowed a block at a time; others go unit by unit.
  void append_encoded(const TextEntry& entry, std::size_t length) noexcept {
    if (length <= block) {
      char16_t all = 0;
      for (std::size_t i = 0; i < block; ++i) {
        all |= entry.units[i];
        area_[length_ + i] = static_cast<Unit>(entry.units[i]);
      }
      if (all < 0x80) [[likely]] {
        length_ += length;
        return;
      }
    }
    for (std::size_t i = 0; i < length; ++i) append(entry.units[i]);
  }

  std::size_t length_ = 0;
  Unit area_[limit + slack];
};

}  // namespace jwnls

#endif  // JWNLS_MODULE_TEXT_BOUNDED_WRITER_H_
