// `jwnls detect`: which kind a column of texts is, and which locales read it.

#ifndef JWNLS_TOOL_DETECT_COMMAND_H_
#define JWNLS_TOOL_DETECT_COMMAND_H_

#include <string>

#include "tool/exit_code.h"

namespace jwnls::tool {

struct DetectOptions {
  std::string locales;  // names separated by commas or blanks; empty: all
  std::string file;     // a value a line; empty or "-": standard input
  bool all = false;     // names all locales, not the first ones
};

/// Writes what the column is as one line, "KIND  N of M  VERDICT", and lines on values that no
/// locale reads and on values that could be meant otherwise. Undecided where a person has to choose
/// or nothing reads the column.
ExitCode run_detect(const DetectOptions& options);

}  // namespace jwnls::tool

#endif  // JWNLS_TOOL_DETECT_COMMAND_H_
