// How the program ends, and the failure that ends it early.

#ifndef JWNLS_TOOL_EXIT_CODE_H_
#define JWNLS_TOOL_EXIT_CODE_H_

#include <string>

namespace jwnls::tool {

enum class ExitCode {
  ok = 0,
  bad_values = 1,   // one or more values could not be worked on; the others were
  usage = 2,        // a wrong command line
  unavailable = 3,  // an unknown locale or time zone, a module that cannot be loaded, or no memory
  io = 4,           // input that cannot be read, output that cannot be written
  undecided = 5,    // with --proved: values that could mean another, and none that decides; of
                    // detect, and of columns with several locales: no single reading
};

/// Thrown where a command cannot go on. An empty message: nothing is left to say.
struct Failure {
  ExitCode code;
  std::string message;
};

}  // namespace jwnls::tool

#endif  // JWNLS_TOOL_EXIT_CODE_H_
