#include <unistd.h>

#include <csignal>
#include <new>

#include "tool/commands/command_line.h"
#include "tool/exit_code.h"
#include "tool/output.h"
#include "tool/tables/target_file.h"

namespace {

// No code of the parser of arguments, and none that writes a message, can be relied on to go on
// without memory: the program ends as soon as some is refused, and leaves targets as they were.
[[noreturn]] void end_without_memory() {
  jwnls::tool::remove_unfinished_files();
  (void)jwnls::tool::write_error("jwnls: out of memory\n");
  ::_exit(static_cast<int>(jwnls::tool::ExitCode::unavailable));
}

}  // namespace

int main(int argument_count, char** arguments) {
  // A closed pipe is then an error of the write, which is reported like any other.
  (void)std::signal(SIGPIPE, SIG_IGN);
  std::set_new_handler(end_without_memory);
  return static_cast<int>(jwnls::tool::run(argument_count, arguments));
}
