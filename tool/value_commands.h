// `jwnls format`, `jwnls read` and `jwnls convert`: values in, texts of a locale out, and back.

#ifndef JWNLS_TOOL_VALUE_COMMANDS_H_
#define JWNLS_TOOL_VALUE_COMMANDS_H_

#include <string>

#include "tool/exit_code.h"
#include "tool/kinds.h"
#include "tool/layout_words.h"
#include "tool/value_lines.h"

namespace jwnls::tool {

/// What one of these commands was asked for.
struct ValueOptions {
  std::string locale;  // empty: the environment's
  std::string target;  // of convert: the locale to write in
  std::string zone;    // of format: whose clocks show instants; empty: the system's
  LayoutWords words;
  ValueLines lines;
};

/// Writes values as a locale does.
ExitCode run_format(const KindRow& kind, const ValueOptions& options);

/// Reads a locale's texts and writes their values as programs do.
ExitCode run_read(const KindRow& kind, const ValueOptions& options);

/// Reads a locale's texts and writes them as another locale does. Amounts keep their currency.
ExitCode run_convert(const KindRow& kind, const ValueOptions& options);

}  // namespace jwnls::tool

#endif  // JWNLS_TOOL_VALUE_COMMANDS_H_
