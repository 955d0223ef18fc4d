// What one -c says: which columns, what kind of value they hold, and how it is read and written.
//
//   spec     = selector {"," selector} ["=" kind] {":" word}
//   selector = NAME | '"' NAME '"' | N | N "-" [N] | "-" N | NAME with "*" | "/" REGEX "/"
//   kind     = one of kinds.h, by name or alias
//   word     = LOCALE | key "=" VALUE | flag      the layout's option words, and of the table
//   alone:
//                                                 from= to= as= currency-as=
//
// A name or a VALUE in quotes may hold any character; a quote in it is written twice. A name of
// digits is a number, counted from 1; in quotes it is a name.

#ifndef JWNLS_TOOL_TABLES_COLUMN_SPEC_H_
#define JWNLS_TOOL_TABLES_COLUMN_SPEC_H_

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "tool/kinds.h"

namespace jwnls::tool {

struct ColumnSelector {
  enum class Form { name, range, glob, expression };

  Form form = Form::name;
  std::string text;       // the name, the glob, the expression; of a range as it was written
  std::size_t first = 0;  // of a range, from 1
  std::size_t last = 0;   // 0: to the last column
};

struct ColumnSpec {
  std::string text;  // as it was written, for messages
  std::vector<ColumnSelector> selectors;
  const KindRow* kind = nullptr;         // null: that of the command
  std::vector<std::string> words = {};   // of the layout
  std::string locale = {};               // empty: that of the command
  std::optional<std::string> from = {};  // of `convert`
  std::optional<std::string> to = {};
  std::optional<std::string> as = {};
  std::optional<std::string> currency_as = {};
};

/// Reads one -c. Throws Failure: usage for what is wrong, with what and where; unavailable for a
/// word that is neither a word of layouts nor a locale.
[[nodiscard]] ColumnSpec read_column_spec(const std::string& text);

/// The kind of that name or alias. Throws Failure{usage}; `where` begins its message.
[[nodiscard]] const KindRow& kind_of_name(const std::string& name, const std::string& where);

}  // namespace jwnls::tool

#endif  // JWNLS_TOOL_TABLES_COLUMN_SPEC_H_
