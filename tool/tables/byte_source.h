// The bytes of a file or of standard input, of which the first may be looked at before they are
// read.

#ifndef JWNLS_TOOL_TABLES_BYTE_SOURCE_H_
#define JWNLS_TOOL_TABLES_BYTE_SOURCE_H_

#include <sys/stat.h>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

namespace jwnls::tool {

class ByteSource {
 public:
  /// Opens a file; empty or "-" is standard input. Throws Failure{io}.
  explicit ByteSource(const std::string& path);
  ~ByteSource();
  ByteSource(const ByteSource&) = delete;
  ByteSource& operator=(const ByteSource&) = delete;

  /// While nothing arrives, `on_wait` is called several times a second; false ends the input.
  void set_on_wait(std::function<bool()> on_wait) { on_wait_ = std::move(on_wait); }

  /// Reads at most `room` bytes, at least one; 0 at the end. Throws Failure{io}.
  std::size_t read(char* bytes, std::size_t room);

  /// Whether read() would return at once.
  [[nodiscard]] bool is_ready() const;

  /// What was looked at and is not yet read; valid up to the next call.
  [[nodiscard]] std::string_view ahead() const { return std::string_view(ahead_).substr(given_); }
  /// Looks further ahead; false at the end. Throws Failure{io}.
  bool look_ahead();
  /// Skips bytes that were looked at.
  void skip(std::size_t count) { given_ += count; }

  /// What a message about a line begins with: "FILE:LINE: ", of standard input "line LINE: ".
  [[nodiscard]] std::string place(std::uint64_t line) const;
  /// The file's name, or "standard input".
  [[nodiscard]] const std::string& name() const { return name_; }
  [[nodiscard]] bool is_standard_input() const { return is_standard_input_; }
  /// Of the open file: what it is, and its size.
  [[nodiscard]] const struct stat& facts() const { return facts_; }

 private:
  std::size_t read_descriptor(char* bytes, std::size_t room);
  bool wait() const;

  std::string name_;
  bool is_standard_input_;
  int descriptor_ = -1;
  struct stat facts_ = {};
  std::function<bool()> on_wait_;
  std::string ahead_;
  std::size_t given_ = 0;
  bool at_end_ = false;
};

}  // namespace jwnls::tool

#endif  // JWNLS_TOOL_TABLES_BYTE_SOURCE_H_
