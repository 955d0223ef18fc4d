#include "tool/output.h"

#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>

#include "client/utf8.h"
#include "tool/exit_code.h"

namespace jwnls::tool {
namespace {

constexpr std::size_t buffer_bytes = 64 * 1024;
constexpr std::size_t quoted_bytes = 80;  // longer texts are cut in messages

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

// The most bytes of `text`, at most `limit`, that end between two characters.
std::string_view cut(std::string_view text, std::size_t limit) {
  if (text.size() <= limit) return text;
  while (limit > 0 && (static_cast<unsigned char>(text[limit]) & 0xC0) == 0x80) --limit;
  return text.substr(0, limit);
}

}  // namespace

Output::Output() : is_terminal_(::isatty(STDOUT_FILENO) == 1) { buffer_.reserve(buffer_bytes); }

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

void report(std::string_view message) {
  std::string line = "jwnls: ";
  line.append(message).append("\n");
  (void)write_all(STDERR_FILENO, line);
}

std::string in_quotes(std::string_view text) {
  const std::string_view shown = cut(text, quoted_bytes);
  const bool valid = client::to_utf16(shown).has_value();
  std::string out = "'";
  for (const char byte : shown) {
    const auto value = static_cast<unsigned char>(byte);
    if (value < 0x20 || value == 0x7F || (value >= 0x80 && !valid)) {
      char escape[5];
      (void)std::snprintf(escape, sizeof escape, "\\x%02X", value);
      out += escape;
    } else {
      out += byte;
    }
  }
  return out + (shown.size() < text.size() ? "...'" : "'");
}

}  // namespace jwnls::tool
