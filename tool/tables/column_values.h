// What a converted column makes of each of its fields: the seam between the rows of a table and the
// layouts that read and write their values.

#ifndef JWNLS_TOOL_TABLES_COLUMN_VALUES_H_
#define JWNLS_TOOL_TABLES_COLUMN_VALUES_H_

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "jwnls/jwnls.hpp"
#include "tool/tables/value_batch.h"

namespace jwnls::tool {

enum class FieldOutcome : std::uint8_t { read, missing, refused };

struct FieldValue {
  std::size_t length = 0;  // bytes that were written
  FieldOutcome outcome = FieldOutcome::refused;
  std::uint8_t facts = 0;  // JWNLS_TWO_WAYS, JWNLS_DECIDES
  char currency[4] = {};   // ISO code of an amount that was read; else ""
};

/// One column's way from text to text: what the command does (read, format, convert), with one
/// layout or two, and the words that stand for missing values. Immutable; any number of threads
/// convert at once. Nothing allocates but reason() and convert_all().
class ColumnValues {
 public:
  /// Room in bytes that convert() may use, whatever the text.
  static constexpr std::size_t room = ValueBatch::value_room;

  virtual ~ColumnValues() = default;

  /// Writes what a field's text becomes. `text` is without the quotes around it and with inner ones
  /// undoubled; what is written has no quotes of a table either. Missing and refused write nothing.
  virtual FieldValue convert(std::string_view text, char* out) const noexcept = 0;

  /// The same into a value that stays where it is: what is written member by member and soon copied
  /// as a whole waits for memory, which takes longer than reading a number.
  virtual void convert_into(std::string_view text, char* out, FieldValue& value) const noexcept {
    value = convert(text, out);
  }

  /// The same with many texts at once; `values` is filled anew. Allocates where there is no
  /// room for their values yet.
  virtual void convert_all(const TextBatch& texts, ValueBatch& values) const;

  /// Why a text is refused: what stands behind "date '30.02.2024': " in a message.
  [[nodiscard]] virtual std::string reason(std::string_view text) const = 0;

  /// Of a text that could be meant otherwise: what it is read as, and what else it could mean, as
  /// meanings() of two_ways.h has it.
  [[nodiscard]] virtual std::string meanings(std::string_view) const { return {}; }

  /// The kind as messages name it, "date".
  [[nodiscard]] virtual std::string_view kind_name() const = 0;

  /// The layout, or both, as one line: "de_DE date".
  [[nodiscard]] virtual std::string description() const { return {}; }

  /// The value of a text that convert() read, as programs write it: digits, or a moment as ISO 8601
  /// has it. `written` is what convert() wrote, `out` has its room.
  [[nodiscard]] virtual std::string_view value_of(std::string_view, std::string_view written,
                                                  char*) const noexcept {
    return written;
  }

  /// Of columns of dates as people write them: whether the month stands before the day. None: of
  /// other columns.
  [[nodiscard]] virtual std::optional<bool> month_first() const { return std::nullopt; }

  /// The characters that all that convert() writes consists of; "": any.
  [[nodiscard]] virtual std::string_view alphabet() const { return {}; }
  /// Whether some of it stands in quotes where this separates fields.
  [[nodiscard]] bool may_need_quotes(char separator) const {
    return alphabet().empty() || alphabet().find(separator) != std::string_view::npos;
  }

  /// Whether what convert() writes stands in JSON without quotes.
  [[nodiscard]] virtual bool is_json_number() const = 0;
};

}  // namespace jwnls::tool

#endif  // JWNLS_TOOL_TABLES_COLUMN_VALUES_H_
