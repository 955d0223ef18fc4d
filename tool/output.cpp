#include "tool/output.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <optional>

#include "tool/exit_code.h"
#include "tool/message_colour.h"
#include "tool/terminal_text.h"

namespace jwnls::tool {
namespace {

constexpr std::size_t buffer_bytes = 64 * 1024;

// Writes all of `text`, or gives the errno of the write that failed.
int write_all(int descriptor, std::string_view text) {
  while (!text.empty()) {
    const auto written = ::write(descriptor, text.data(), text.size());
    if (written < 0 && errno == EINTR) continue;
    if (written < 0) return errno;
    text.remove_prefix(static_cast<std::size_t>(written));
  }
  return 0;
}

// Whether messages are coloured; none: not yet asked. Messages come from one thread at a time.
std::optional<bool> message_colour;

bool wants_colour() {
  const char* const refused = std::getenv("NO_COLOR");
  if (refused != nullptr && *refused != '\0') return false;
  const char* const terminal = std::getenv("TERM");
  const bool is_dumb = terminal != nullptr && std::string_view(terminal) == "dumb";
  return !is_dumb && ::isatty(STDERR_FILENO) == 1;
}

bool is_one_file(int one, int other) {
  struct stat left = {};
  struct stat right = {};
  return ::fstat(one, &left) == 0 && ::fstat(other, &right) == 0 && left.st_dev == right.st_dev &&
         left.st_ino == right.st_ino;
}

}  // namespace

Output::Output() : is_beside_errors_(is_one_file(STDOUT_FILENO, STDERR_FILENO)) {
  buffer_.reserve(buffer_bytes);
}

void Output::write(std::string_view text) {
  if (buffer_.size() + text.size() > buffer_bytes) flush();
  buffer_.append(text);
}

void Output::flush() {
  const int error = write_all(STDOUT_FILENO, buffer_);
  buffer_.clear();
  if (error == 0) return;
  throw Failure{ExitCode::io, error == EPIPE
                                  ? std::string()
                                  : std::string("standard output: ") + std::strerror(error)};
}

bool write_error(std::string_view text) { return write_all(STDERR_FILENO, text) == 0; }

void colour_messages(std::string_view when) {
  if (when != "auto") message_colour = when == "always";
}

void report(std::string_view message) {
  if (!message_colour) message_colour = wants_colour();
  std::string line = "jwnls: ";
  const std::string text = escaped(message);
  line.append(*message_colour ? coloured(text) : text).append("\n");
  (void)write_error(line);  // there is no other place to say so
}

}  // namespace jwnls::tool
