// Values as programs write them, 2024-03-15 and -1234.5, from and to texts of a layout.
//
//   number, integer, amount, percent  digits, exactly: "1234.50"; of percentages the fraction
//   date, period                      2024-03-15
//   time                              14:30:05, and a fraction where there is one
//   datetime                          2024-03-15T14:30:05
//   instant                           2024-03-15T14:30:05Z
//
// Written are also "now", "@SECONDS" since 1970, and all that iso8601.h reads. A missing value is
// an empty text.

#ifndef JWNLS_TOOL_PLAIN_VALUES_H_
#define JWNLS_TOOL_PLAIN_VALUES_H_

#include <string>
#include <string_view>

#include "jwnls/jwnls.hpp"

namespace jwnls::tool {

/// What a layout's text is: the value, of amounts the ISO code, and what is known of it.
struct PlainValue {
  std::string text;
  std::string currency;
  bool two_ways = false;
  bool decides = false;
};

[[nodiscard]] Result<PlainValue> read_plain(const Layout& layout, std::string_view text);

/// The layout's text of a value; the error tells the reason and the value.
///   zone  whose clocks show instants, for the kinds that have no place on the time line; empty:
///         the system's
[[nodiscard]] Result<std::string> write_plain(const Layout& layout, std::string_view value,
                                              const std::string& zone);

}  // namespace jwnls::tool

#endif  // JWNLS_TOOL_PLAIN_VALUES_H_
