// `jwnls show`: what a locale's layouts write and read, and what they are made of.

#ifndef JWNLS_TOOL_COMMANDS_SHOW_COMMAND_H_
#define JWNLS_TOOL_COMMANDS_SHOW_COMMAND_H_

#include <string>

#include "tool/exit_code.h"

namespace jwnls::tool {

struct ShowOptions {
  std::string locale;  // empty: the environment's
  std::string zone;    // empty: the system's
  std::string page;    // a file to write a page to, "-" for standard output; empty: none
  bool json = false;
};

ExitCode run_show(const ShowOptions& options);

}  // namespace jwnls::tool

#endif  // JWNLS_TOOL_COMMANDS_SHOW_COMMAND_H_
