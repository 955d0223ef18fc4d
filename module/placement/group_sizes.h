// Digit grouping: the two ways of reading a grouping pattern, and the separators of floating
// values.
//
// The floating family reads numbers of several digits, one delimiter apart ("3;2"); the integer
// family reads one size a digit. Both count groups from the point leftward, and the last size
// repeats.

#ifndef JWNLS_MODULE_PLACEMENT_GROUP_SIZES_H_
#define JWNLS_MODULE_PLACEMENT_GROUP_SIZES_H_

#include <cstddef>
#include <string_view>

namespace jwnls {

/// The group sizes of floating values, one after the other.
class FloatGroupSizes {
 public:
  explicit FloatGroupSizes(std::u16string_view pattern) noexcept : rest_(pattern) {
    // A pattern without a number at its start groups by three.
    if (!read_number(size_)) size_ = 3;
  }

  /// The size of the current group; 0, which only the first can be, means that grouping fails.
  std::size_t size() const noexcept { return size_; }

  /// Goes on to the next group. Where the pattern is used up, or holds no number or a 0 there, the
  /// size stays for all further groups.
  void advance() noexcept {
    if (rest_.empty()) return;
    rest_.remove_prefix(1);  // the delimiter
    std::size_t next = 0;
    if (read_number(next) && next != 0) {
      size_ = next;
    } else {
      rest_ = {};
    }
  }

 private:
  bool read_number(std::size_t& number) noexcept {
    std::size_t digits = 0;
    std::size_t value = 0;
    while (digits < rest_.size() && rest_[digits] >= u'0' && rest_[digits] <= u'9') {
      // No text is longer than this bound, so larger sizes need not be told apart.
      constexpr std::size_t bound = 1'000'000;
      value = value * 10 + (rest_[digits] - u'0');
      if (value > bound) value = bound;
      ++digits;
    }
    if (digits == 0) return false;
    rest_.remove_prefix(digits);
    number = value;
    return true;
  }

  std::u16string_view rest_;
  std::size_t size_ = 0;
};

/// The group sizes of integers: one digit, one size; "-" or a 0 ends the grouping; other units are
/// passed over. Without any size nothing is grouped.
class IntegerGroupSizes {
 public:
  explicit IntegerGroupSizes(std::u16string_view pattern) noexcept : rest_(pattern) { advance(); }

  /// The digits of the current group; 0 when nothing more is grouped.
  std::size_t size() const noexcept { return size_; }

  void advance() noexcept {
    while (!rest_.empty()) {
      const char16_t unit = rest_.front();
      rest_.remove_prefix(1);
      const bool is_size = unit >= u'0' && unit <= u'9';
      if (!is_size && unit != u'-') continue;
      size_ = is_size ? static_cast<std::size_t>(unit - u'0') : 0;
      if (size_ == 0) rest_ = {};
      return;
    }
  }

 private:
  std::u16string_view rest_;
  std::size_t size_ = 0;
};

}  // namespace jwnls

#endif  // JWNLS_MODULE_PLACEMENT_GROUP_SIZES_H_
