#include "tool/line_source.h"

#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>

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
  if (line.ends_with('\r')) line.remove_suffix(1);
  too_long_ = line.size() > longest_line;
  line = line.substr(0, longest_line);
  return true;
}

// A line that goes on past the block: its pieces up to its end or that of the input, of which only
// as much is kept as tells that it is too long.
std::string_view LineSource::gather() {
  constexpr std::size_t kept_bytes = longest_line + byte_order_mark.size() + 2;
  gathered_.clear();
  while (true) {
    const std::size_t end = rest_.find('\n');
    gathered_.append(rest_.substr(0, std::min(end, kept_bytes - gathered_.size())));
    if (end != std::string_view::npos) {
      rest_.remove_prefix(end + 1);
      return gathered_;
    }
    if (!fill()) return gathered_;
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
