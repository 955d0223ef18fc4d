// `jwnls locales` and `jwnls zones`: what there is to choose from.

#ifndef JWNLS_TOOL_COMMANDS_LIST_COMMANDS_H_
#define JWNLS_TOOL_COMMANDS_LIST_COMMANDS_H_

#include <string>

#include "tool/exit_code.h"

namespace jwnls::tool {

struct ListOptions {
  std::string filter;       // part of a name; empty: everything
  bool names_only = false;  // for scripts
  bool json = false;
};

/// Lists the locales: name, English name, own name. The filter, or else each word of it, stands in
/// one of these, in any case, or begins an adjective of the territory ("swiss"). When nothing
/// matches, names what may have been meant: bad_values.
ExitCode run_locales(const ListOptions& options);

/// Lists the time zones: name, and what holds there now: abbreviation and offset from UTC.
ExitCode run_zones(const ListOptions& options);

}  // namespace jwnls::tool

#endif  // JWNLS_TOOL_COMMANDS_LIST_COMMANDS_H_
