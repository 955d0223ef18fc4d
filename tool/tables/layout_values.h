// The three ways from text to text: what `read`, `format` and `convert` make of a value, on a line
// or in a column.
//
//   read     a locale's text -> the value as programs write it
//   format   the value as programs write it -> a locale's text
//   convert  a locale's text -> another locale's
//
// Values as programs write them:
//
//   number, integer, amount, percent  digits, exactly: "1234.50"; of percentages the fraction
//   date, period                      2024-03-15
//   time                              14:30:05, and a fraction where there is one
//   datetime                          2024-03-15T14:30:05
//   instant                           2024-03-15T14:30:05Z
//
// `format` also takes "now", "@SECONDS" since 1970, and all that iso8601.h reads.

#ifndef JWNLS_TOOL_TABLES_LAYOUT_VALUES_H_
#define JWNLS_TOOL_TABLES_LAYOUT_VALUES_H_

#include <memory>
#include <string>
#include <string_view>

#include "jwnls/jwnls.hpp"
#include "tool/tables/column_values.h"
#include "tool/tables/missing_words.h"

namespace jwnls::tool {

class LayoutValues : public ColumnValues {
 public:
  /// The whole message about a refused text that stands alone: kind, text, reason, and what would
  /// be read.
  [[nodiscard]] virtual std::string message(std::string_view text) const = 0;
};

using LayoutValuesPointer = std::shared_ptr<const LayoutValues>;

/// `facts`: those that are told of values; none of texts that somebody has decided about.
constexpr std::uint8_t all_facts = JWNLS_TWO_WAYS | JWNLS_DECIDES;
[[nodiscard]] LayoutValuesPointer read_values(const Layout& layout, MissingWords missing,
                                              std::uint8_t facts = all_facts);

/// `zone`: whose clocks show instants, for the kinds that have no place on the time line; empty:
/// the system's.
[[nodiscard]] LayoutValuesPointer format_values(const Layout& layout, std::string zone,
                                                MissingWords missing);

/// Amounts keep their currency.
[[nodiscard]] LayoutValuesPointer convert_values(const Layout& source, const Layout& target,
                                                 MissingWords missing,
                                                 std::uint8_t facts = all_facts);

/// Whether values of the kind are digits.
[[nodiscard]] bool is_numeric(Kind kind);

/// Why the layout does not read a text: in whole, and without kind, text and what would be read.
[[nodiscard]] std::string refusal_message(const Layout& layout, std::string_view text);
[[nodiscard]] std::string refusal_reason(const Layout& layout, std::string_view text);

}  // namespace jwnls::tool

#endif  // JWNLS_TOOL_TABLES_LAYOUT_VALUES_H_
