// What texts of times have in common, found out once from the patterns that the service tries, so
// that most other texts are refused without asking it. The service reads a date and a time, too,
// and forgets the date: such a text is no time here.

#ifndef JWNLS_LIBRARY_MOMENTS_TIME_SHAPE_H_
#define JWNLS_LIBRARY_MOMENTS_TIME_SHAPE_H_

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

#include "abi/locale_record.h"
#include "library/locale_data/byte_set.h"
#include "library/locale_data/date_characters.h"
#include "library/locale_data/number_runs.h"

namespace jwnls::library {

class TimeShape {
 public:
  /// Of no text anything is known.
  TimeShape() = default;
  /// Throws bad_alloc.
  explicit TimeShape(const LocaleRecord& record);

  [[nodiscard]] bool is_known() const noexcept { return is_known_; }

  /// Whether a trimmed text is certainly no time. False says nothing.
  [[nodiscard]] bool is_hopeless(std::string_view text, const NumberRuns& numbers) const noexcept;

  /// Whether neither a time that the service reads nor an offset ends with a text's last byte.
  /// False says nothing.
  [[nodiscard]] bool is_wrong_end(char last) const noexcept {
    return is_known_ && is_ascii(last) && !ends_.has(last);
  }

  /// Whether the last numbers of a text and what stands between and behind them could be a time.
  [[nodiscard]] bool could_end(std::string_view text,
                               std::span<const NumberRuns::Run> numbers) const noexcept;

  /// The same of the first numbers of a text, whatever stands behind the last of them.
  [[nodiscard]] bool could_begin(std::string_view text,
                                 std::span<const NumberRuns::Run> numbers) const noexcept;

  static constexpr std::size_t most_numbers = 3;

 private:
  friend class TimeShapeMaker;

  // Of a number and of what follows it, up to the next number or the end.
  struct Slot {
    std::uint16_t most = 0;  // that the number may be; any_number: whatever
    bool is_mark = true;     // one mark stands behind it, and blanks
    ByteSet behind;          // with which of the rest, without blanks, begins; '\0': its end
  };
  struct Form {
    bool is_possible = false;
    ByteSet lead;                  // with which what stands before the first number begins
    ByteSet head;                  // that stand before it
    ByteSet tail;                  // that stand behind the last one
    std::size_t longest_tail = 0;  // bytes, without blanks, at most
    std::array<Slot, most_numbers> slots;
  };
  static constexpr std::uint16_t any_number = 0xFFFF;

  [[nodiscard]] static bool fits(const Form& form, std::string_view text,
                                 std::span<const NumberRuns::Run> numbers) noexcept;
  [[nodiscard]] static bool fits(const Slot& slot, std::string_view text,
                                 NumberRuns::Run number) noexcept;
  [[nodiscard]] static bool fits_alone(const Slot& slot, std::string_view text,
                                       NumberRuns::Run number) noexcept;
  [[nodiscard]] static bool has_head(const Form& form, std::string_view head) noexcept;
  [[nodiscard]] static bool has_tail(const Form& form, std::string_view tail) noexcept;

  bool is_known_ = false;
  ByteSet ends_;                              // of ASCII: the last one
  std::array<Form, most_numbers + 1> forms_;  // by how many numbers there are
};

}  // namespace jwnls::library

#endif  // JWNLS_LIBRARY_MOMENTS_TIME_SHAPE_H_
