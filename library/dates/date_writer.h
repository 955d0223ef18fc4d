// Writes dates and datetimes by a pattern that was taken apart before. The patterns and names are
// those of the record, but for full dates, "Freitag, 15. März 2024", which no service writes.

#ifndef JWNLS_LIBRARY_DATES_DATE_WRITER_H_
#define JWNLS_LIBRARY_DATES_DATE_WRITER_H_

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "abi/locale_record.h"
#include "library/locale_data/date_data.h"

namespace jwnls::library {

/// A pattern and its names in one encoding.
template <typename Unit>
class DateTexts {
 public:
  /// Of a pattern; false when it has a directive that is not known here. Throws bad_alloc.
  bool add_pattern(std::string_view pattern);
  void add_literal(std::string_view literal);
  /// Takes the names that the patterns have; false when the texts are too long. Throws bad_alloc.
  bool finish(const LocaleRecord& record, const DatePatternData* data);

  /// Writes a day, counted as the calendar does, and a second of it, and gives the units; more than
  /// `room` when they do not fit. Nothing behind the room is touched.
  std::size_t write(std::int32_t day, std::int32_t second, Unit* out,
                    std::size_t room) const noexcept;

 private:
  static constexpr std::size_t most_units = 4000;
  // Texts are copied in blocks, which may be longer than they are.
  static constexpr std::size_t block = 16 / sizeof(Unit);
  struct Text {  // of the texts below
    std::uint32_t begin = 0;
    std::uint32_t size = 0;
  };
  enum class Field : std::uint8_t {
    literal,
    day,
    padded_day,
    month,
    padded_month,
    year,
    hour,
    padded_hour,
    half_hour,  // 1 to 12
    padded_half_hour,
    minute,
    second,
    full_month,
    short_month,
    full_weekday,
    short_weekday,
    day_half
  };
  struct Part {
    Field field;
    Text text;  // the literal, or where its names begin
  };
  struct FieldName {
    char directive;
    bool bare;  // with a "#"
    Field field;
  };
  static const FieldName field_names[16];

  void add_names(Field field, const LocaleRecord& record, const DatePatternData* data);
  Text add_text(std::string_view text);
  Text add_text(std::u16string_view text);
  static Unit* put(Unit* at, const Unit* texts, const Text& text) noexcept;
  static Unit* put_pair(Unit* at, std::int32_t value) noexcept;
  static Unit* put_number(Unit* at, std::int32_t value) noexcept;
  Unit* put_all(std::int32_t day, std::int32_t second, Unit* at) const noexcept;
  [[gnu::noinline, gnu::cold]] std::size_t write_with_care(std::int32_t day, std::int32_t second,
                                                           Unit* out,
                                                           std::size_t room) const noexcept;

  std::vector<Part> parts_;
  std::vector<Text> names_;        // of the parts that want names, one list behind the other
  std::basic_string<Unit> texts_;  // one behind the other, and zeros of a block
  std::size_t longest_ = block;    // that a text can be, and a block
};

struct DateWriter {
  DateTexts<char> narrow;
  DateTexts<char16_t> wide;

  template <typename Unit>
  [[nodiscard]] const DateTexts<Unit>& texts() const noexcept {
    if constexpr (sizeof(Unit) == 1) {
      return narrow;
    } else {
      return wide;
    }
  }
};

/// The texts of a layout, one behind the other: patterns, and literals between them.
struct DateWriterPart {
  bool is_pattern;
  std::string_view text;
};
/// Null where a pattern has something that only the services write. `data` may be null: names then
/// are the record's. Throws bad_alloc.
std::unique_ptr<const DateWriter> make_date_writer(const LocaleRecord& record,
                                                   const DatePatternData* data,
                                                   const std::vector<DateWriterPart>& parts);

extern template class DateTexts<char>;
extern template class DateTexts<char16_t>;

}  // namespace jwnls::library

#endif  // JWNLS_LIBRARY_DATES_DATE_WRITER_H_
