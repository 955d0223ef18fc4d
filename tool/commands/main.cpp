#include <csignal>

#include "tool/commands/command_line.h"

int main(int argument_count, char** arguments) {
  // A closed pipe is then an error of the write, which is reported like any other.
  (void)std::signal(SIGPIPE, SIG_IGN);
  return static_cast<int>(jwnls::tool::run(argument_count, arguments));
}
