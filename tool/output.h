// Standard output and standard error, with every write checked.

#ifndef JWNLS_TOOL_OUTPUT_H_
#define JWNLS_TOOL_OUTPUT_H_

#include <string>
#include <string_view>

namespace jwnls::tool {

/// Standard output, buffered. Throws Failure{io} when a write fails; a closed pipe without a
/// message, as nobody is left to miss the rest.
class Output {
 public:
  Output();

  void write(std::string_view text);
  void line(std::string_view text) {
    write(text);
    write("\n");
  }
  /// Writes what is buffered. To be called before anything that may block, and at the end.
  void flush();

  /// True when one reader gets this and standard error: a terminal, a file or a pipe that both are.
  [[nodiscard]] bool is_beside_errors() const { return is_beside_errors_; }

 private:
  std::string buffer_;
  bool is_beside_errors_;
};

/// Writes text of several lines on standard error, as it is. False when that fails.
bool write_error(std::string_view text);

/// Whether messages are coloured: "always", "never", or "auto", as it is by default: on a terminal
/// that is not dumb, unless NO_COLOR is set.
void colour_messages(std::string_view when);

/// Writes "jwnls: <message>" as one line on standard error, with whatever a terminal would obey
/// escaped. Failures to do so are ignored.
void report(std::string_view message);

}  // namespace jwnls::tool

#endif  // JWNLS_TOOL_OUTPUT_H_
