// `jwnls format`, `jwnls read` and `jwnls convert` on values: arguments, or lines of standard
// input.

#ifndef JWNLS_TOOL_COMMANDS_VALUE_COMMANDS_H_
#define JWNLS_TOOL_COMMANDS_VALUE_COMMANDS_H_

#include "tool/exit_code.h"
#include "tool/given_options.h"
#include "tool/kinds.h"

namespace jwnls::tool {

/// format: writes values as a locale does. read: reads a locale's texts and writes their values as
/// programs do. convert: reads a locale's texts and writes them as another locale does.
ExitCode run_values(Command command, const KindRow& kind, const GivenOptions& options);

}  // namespace jwnls::tool

#endif  // JWNLS_TOOL_COMMANDS_VALUE_COMMANDS_H_
