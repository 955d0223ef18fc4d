// Standard input or a file, line by line, in constant memory.

#ifndef JWNLS_TOOL_LINE_SOURCE_H_
#define JWNLS_TOOL_LINE_SOURCE_H_

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

namespace jwnls::tool {

class LineSource {
 public:
  /// Bytes; of longer lines next() gives the begin. No value is anywhere near as long.
  static constexpr std::size_t longest_line = 4096;

  /// Reads `descriptor` to its end. `before_read` is called before each read, which may block;
  /// `name` is what messages call the input.
  LineSource(int descriptor, std::function<void()> before_read,
             std::string name = "standard input");

  /// The next line without its end ("\n" or "\r\n"), valid until the next call; false at the end of
  /// input. Throws Failure{io} when the input cannot be read.
  bool next(std::string_view& line);

  /// The number of the line that next() gave, from 1.
  [[nodiscard]] std::uint64_t number() const { return number_; }

  /// True when that line goes on behind what next() gave.
  [[nodiscard]] bool too_long() const { return too_long_; }

  /// What follows of such a line, piece by piece, each valid until the next call; false at the
  /// line's end. What is not asked for is skipped. Throws Failure{io}.
  bool more(std::string_view& piece);

 private:
  std::string_view gather();
  bool fill();
  void hold_carriage_return(std::string_view& text);

  int descriptor_;
  std::function<void()> before_read_;
  std::string name_;
  std::string block_;
  std::string_view rest_;    // of the block: what is not yet given
  std::string gathered_;     // a line that goes over the end of a block
  std::string_view beyond_;  // of the line: what is there of it behind its begin
  bool is_open_ = false;     // the line's end is not there yet
  bool held_ = false;        // the last piece ended with a carriage return, which may end the line
  std::uint64_t number_ = 0;
  bool too_long_ = false;
  bool at_end_ = false;
};

}  // namespace jwnls::tool

#endif  // JWNLS_TOOL_LINE_SOURCE_H_
