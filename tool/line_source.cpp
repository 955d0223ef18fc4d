#include "tool/line_source.h"

#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <utility>

#include "tool/exit_code.h"

namespace jwnls::tool {
namespace {

constexpr std::size_t block_bytes = 64 * 1024;
constexpr std::string_view byte_order_mark = "\xEF\xBB\xBF";

}  // namespace

LineSource::LineSource(int descriptor, std::function<void()> before_read, std::string name)
    : descriptor_(descriptor),
      before_read_(std::move(before_read)),
      name_(std::move(name)),
      block_(block_bytes, '\0') {}

bool LineSource::next(std::string_view& line) {
  for (std::string_view skipped; more(skipped);) continue;
  if (rest_.empty() && !fill()) return false;
  ++number_;
  const std::size_t end = rest_.find('\n');
  if (end != std::string_view::npos) {
    line = rest_.substr(0, end);
    rest_.remove_prefix(end + 1);
  } else {
    line = gather();
  }
  if (number_ == 1 && line.starts_with(byte_order_mark)) line.remove_prefix(byte_order_mark.size());
  hold_carriage_return(line);
  too_long_ = line.size() > longest_line;
  beyond_ = line.substr(std::min(line.size(), longest_line));
  line = line.substr(0, longest_line);
  return true;
}

bool LineSource::more(std::string_view& piece) {
  piece = std::exchange(beyond_, {});
  while (piece.empty() && is_open_) {
    if (rest_.empty() && !fill()) {
      is_open_ = false;
      return false;
    }
    const std::size_t end = rest_.find('\n');
    is_open_ = end == std::string_view::npos;
    piece = rest_.substr(0, end);
    rest_.remove_prefix(is_open_ ? rest_.size() : end + 1);
    if (held_ && !piece.empty()) {
      gathered_ = '\r';
      gathered_ += piece;
      piece = gathered_;
    }
    if (!piece.empty()) hold_carriage_return(piece);
  }
  return !piece.empty();
}

// Takes it off the end of a text: it belongs to the line's end, or to the text behind.
void LineSource::hold_carriage_return(std::string_view& text) {
  held_ = text.ends_with('\r');
  if (held_) text.remove_suffix(1);
}

// A line that goes on past the block: its pieces up to its end or that of the input, or as much as
// tells that it is too long.
std::string_view LineSource::gather() {
  constexpr std::size_t kept_bytes = longest_line + byte_order_mark.size() + 2;
  gathered_.clear();
  while (true) {
    const std::size_t end = rest_.find('\n');
    const std::string_view piece = rest_.substr(0, std::min(end, kept_bytes - gathered_.size()));
    gathered_.append(piece);
    rest_.remove_prefix(piece.size());
    is_open_ = rest_.empty() || rest_.front() != '\n';
    if (!is_open_) rest_.remove_prefix(1);
    if (!is_open_ || gathered_.size() == kept_bytes) return gathered_;
    if (!fill()) {
      is_open_ = false;
      return gathered_;
    }
  }
}

// Replaces the block by the next one; false at the end of input.
bool LineSource::fill() {
  rest_ = {};
  if (at_end_) return false;  // a terminal would go on after its end
  before_read_();
  while (true) {
    const auto bytes = ::read(descriptor_, block_.data(), block_.size());
    if (bytes < 0 && errno == EINTR) continue;
    if (bytes < 0) {
      throw Failure{ExitCode::io, name_ + ": " + std::strerror(errno)};
    }
    rest_ = std::string_view(block_).substr(0, static_cast<std::size_t>(bytes));
    at_end_ = bytes == 0;
    return !at_end_;
  }
}

}  // namespace jwnls::tool
