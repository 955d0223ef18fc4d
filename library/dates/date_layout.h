// What layouts of dates, datetimes and instants have found out at their opening.

#ifndef JWNLS_LIBRARY_DATES_DATE_LAYOUT_H_
#define JWNLS_LIBRARY_DATES_DATE_LAYOUT_H_

#include <array>
#include <bitset>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "abi/locale_record.h"
#include "library/dates/date_names.h"
#include "library/dates/date_writer.h"
#include "library/locale_data/byte_set.h"
#include "library/locale_data/date_characters.h"
#include "library/options/options.h"
#include "library/process/process.h"

namespace jwnls::library {

/// The texts around the three numbers of one of the locale's own patterns: "" "年" "月" "日".
/// Folded, without blanks and commas.
struct OwnMarks {
  std::string lead, first_gap, second_gap, tail;
  bool month_first;  // of the two that are not the year
  bool has_words;    // in the gaps: they say what each number is
};

/// The same texts exactly as the locale writes them, blanks and commas too.
struct WrittenMarks {
  std::string lead, first_gap, second_gap, tail;
  std::size_t own;  // of the layout's own marks
};

/// The bytes of ASCII but letters, digits and the marks that every locale reads.
inline constexpr ByteSet foreign_everywhere = [] {
  constexpr std::string_view known = " \t\n\v\f\r.,-/()'";
  ByteSet bytes;
  for (unsigned byte = 0; byte < 0x80; ++byte) {
    const char each = static_cast<char>(byte);
    const bool is_known = is_letter(each) || is_digit(each) || known.find(each) != known.npos;
    if (!is_known) bytes.add(each);
  }
  return bytes;
}();

/// What single bytes can be in a text of a date; letters of ASCII in lower case stand for both.
class DateBytes {
 public:
  void add(const OwnMarks& marks);
  /// Marks that names have.
  void add(const DateNames& names);
  /// What may stand between a date and what follows it.
  void add_joint(std::string_view text);

  /// Whether no date of numbers has it, wherever it stands.
  [[nodiscard]] bool is_foreign(char byte) const noexcept { return foreign_.has(byte); }
  /// Whether a text has bytes that no date has, whatever its names.
  [[nodiscard]] bool has_foreign(std::string_view text) const noexcept {
    return foreign_to_names_.has_any(text);
  }
  /// The same of a date with what joins it to what follows.
  [[nodiscard]] bool has_foreign_in_front(std::string_view text) const noexcept {
    return foreign_in_front_.has_any(text);
  }
  /// Whether some own marks begin with it: in front of the numbers (0), between them (1, 2), behind
  /// them (3); '\0' where they are empty.
  [[nodiscard]] bool own_begins(std::size_t place, char byte) const noexcept {
    return own_begin_[place][index_of(byte)];
  }

 private:
  static constexpr std::size_t index_of(char byte) noexcept {
    const bool is_capital = byte >= 'A' && byte <= 'Z';
    return static_cast<unsigned char>(is_capital ? byte | 0x20 : byte);
  }

  ByteSet foreign_ = foreign_everywhere;
  ByteSet foreign_to_names_ = foreign_everywhere;
  ByteSet foreign_in_front_ = foreign_everywhere;
  std::array<std::bitset<256>, 4> own_begin_;
};

/// What stands around a date and a time.
struct Joint {
  bool time_first = false;
  std::string before, between, behind;                       // UTF-8
  std::u16string before_units, between_units, behind_units;  //
  std::string mark;                                          // between them, without blanks
};

// Of the Thai calendar.
inline constexpr std::int32_t first_buddhist_year = 2400;
inline constexpr std::int32_t last_buddhist_year = 2700;

struct DateLayout {
  std::shared_ptr<const DateNames> names;
  Order order = order_dmy;             // of three numbers
  bool short_years = true;             // two digits may be a year
  bool leading_short_years = false;    // also in front, where the year is written there
  bool short_years_with_names = true;  // "15-Mar-24"
  bool buddhist = false;               // years 2400 to 2700 are of that era
  const char* calendar = nullptr;      // another one that the locale's people count years by
  std::int32_t century = 1960;         // the first year that two digits stand for
  std::vector<OwnMarks> own_marks;
  DateBytes bytes;
  std::vector<WrittenMarks> written_marks;   // but those that plain_date.h reads
  bool months_are_numbers = false;           // with words around them, as in Japanese
  std::array<std::string_view, 4> ordinals;  // that may follow a day: "st", "nd"; folded

  // Datetimes.
  std::vector<std::string> joining_words;  // between date and time, folded: "um"
  std::vector<Joint> joints;               // of all styles
  std::vector<std::string> quick_joints;   // between a date and a time, the longest first
  bool time_first = false;                 // in one of them, as Vietnamese has it
  bool has_ends = false;                   // some joint has texts before or behind it all
  bool colon_joins = false;                // likewise, ":" directly in front of the time
  std::uint16_t date_style = 1;            // the style of the date service
  bool is_composed = false;                // date and time are written apart, with `joint`
  Joint joint;                             // of the layout's style
  std::string day_halves[2];               // "AM" and "PM", which may stand before the hour

  std::unique_ptr<const DateWriter> writer;  // null: the services write

  [[nodiscard]] bool is_ordinal(std::string_view folded) const noexcept {
    return folded.size() <= 8 && is_ordinal(DateNames::key_of(folded), folded.size());
  }
  /// The same, with the bytes as the names have them.
  [[nodiscard]] bool is_ordinal(std::uint64_t key, std::size_t size) const noexcept {
    for (const std::string_view each : ordinals) {
      if (!each.empty() && each.size() == size && DateNames::key_of(each) == key) return true;
    }
    return false;
  }
};

/// Null for other kinds. Throws a Failure where the options ask for what the locale's data does not
/// have, and bad_alloc.
std::unique_ptr<const DateLayout> make_date_layout(const Locale& locale, int kind,
                                                   const Options& options);

}  // namespace jwnls::library

#endif  // JWNLS_LIBRARY_DATES_DATE_LAYOUT_H_
