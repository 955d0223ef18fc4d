#include "tool/tables/byte_source.h"

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>

#include "tool/exit_code.h"

namespace jwnls::tool {
namespace {

constexpr std::size_t look_ahead_bytes = 64 * 1024;
constexpr int wait_milliseconds = 200;

}  // namespace

ByteSource::ByteSource(const std::string& path)
    : name_(path), is_standard_input_(path.empty() || path == "-") {
  if (is_standard_input_) name_ = "standard input";
  descriptor_ = is_standard_input_ ? STDIN_FILENO : ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
  if (descriptor_ < 0 || ::fstat(descriptor_, &facts_) != 0) {
    throw Failure{ExitCode::io, name_ + ": " + std::strerror(errno)};
  }
}

ByteSource::~ByteSource() {
  if (!is_standard_input_) ::close(descriptor_);
}

// Files are always ready; while the rest is not, on_wait_ gets its turns.
bool ByteSource::wait() const {
  if (S_ISREG(facts_.st_mode)) return true;
  pollfd events = {descriptor_, POLLIN, 0};
  while (true) {
    if (::poll(&events, 1, wait_milliseconds) > 0) return true;
    if (on_wait_ && !on_wait_()) return false;
  }
}

bool ByteSource::is_ready() const {
  if (S_ISREG(facts_.st_mode) || at_end_ || given_ < ahead_.size()) return true;
  pollfd events = {descriptor_, POLLIN, 0};
  return ::poll(&events, 1, 0) > 0;
}

std::size_t ByteSource::read_descriptor(char* bytes, std::size_t room) {
  if (at_end_) return 0;  // a terminal would go on after its end
  while (wait()) {
    const auto count = ::read(descriptor_, bytes, room);
    if (count < 0 && (errno == EINTR || errno == EAGAIN)) continue;
    if (count < 0) throw Failure{ExitCode::io, name_ + ": " + std::strerror(errno)};
    at_end_ = count == 0;
    return static_cast<std::size_t>(count);
  }
  at_end_ = true;
  return 0;
}

std::size_t ByteSource::read(char* bytes, std::size_t room) {
  const std::size_t count = std::min(room, ahead_.size() - given_);
  if (count == 0) return read_descriptor(bytes, room);
  ahead_.copy(bytes, count, given_);
  given_ += count;
  if (given_ == ahead_.size()) {
    ahead_ = {};
    given_ = 0;
  }
  return count;
}

bool ByteSource::look_ahead() {
  const std::size_t before = ahead_.size();
  ahead_.resize(before + look_ahead_bytes);
  const std::size_t count = read_descriptor(ahead_.data() + before, look_ahead_bytes);
  ahead_.resize(before + count);
  return count > 0;
}

std::string ByteSource::place(std::uint64_t line) const {
  const std::string number = std::to_string(line);
  return is_standard_input_ ? "line " + number + ": " : name_ + ":" + number + ": ";
}

}  // namespace jwnls::tool
