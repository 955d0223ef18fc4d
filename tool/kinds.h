// The kinds of values, as the command line names and explains them.

#ifndef JWNLS_TOOL_KINDS_H_
#define JWNLS_TOOL_KINDS_H_

#include <span>

#include "jwnls/jwnls.hpp"

namespace jwnls::tool {

struct KindRow {
  Kind kind;
  const char* name;             // the library's
  const char* alias;            // another; null: none
  const char* plural;           // "dates"
  const char* locale_category;  // "LC_TIME": the environment variable that names its locale
  const char* values_help;      // what `format` takes
  const char* format_examples;  // null: not a kind of `format` and `convert`
  const char* read_examples;
  const char* convert_examples;
};

[[nodiscard]] std::span<const KindRow> kinds();

}  // namespace jwnls::tool

#endif  // JWNLS_TOOL_KINDS_H_
