#include "tool/tables/target_file.h"

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <climits>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "tool/exit_code.h"

namespace jwnls::tool {
namespace {

constexpr int interrupting[] = {SIGINT, SIGTERM, SIGHUP};

// Paths that a signal's handler removes. The handler may do nothing that allocates, so they stand
// here; the output and the file of rejects are all there are.
class Interruption {
 public:
  static void remember(const std::string& path) {
    if (path.size() >= PATH_MAX) return;
    for (Entry& entry : entries_) {
      if (entry.is_used != 0) continue;
      path.copy(entry.path, path.size());
      entry.path[path.size()] = '\0';
      entry.is_used = 1;
      break;
    }
    for (const int number : interrupting) {
      struct sigaction current = {};
      if (::sigaction(number, nullptr, &current) != 0 || current.sa_handler != SIG_DFL) continue;
      struct sigaction ours = {};
      ours.sa_handler = &Interruption::handle;
      ours.sa_flags = static_cast<int>(SA_RESETHAND);
      (void)::sigaction(number, &ours, nullptr);
    }
  }
  static void forget(const std::string& path) {
    for (Entry& entry : entries_) {
      if (entry.is_used != 0 && path == entry.path) entry.is_used = 0;
    }
  }

 private:
  struct Entry {
    volatile std::sig_atomic_t is_used;
    char path[PATH_MAX];
  };
  static void handle(int number) {
    for (const Entry& entry : entries_) {
      if (entry.is_used != 0) (void)::unlink(entry.path);
    }
    (void)::raise(number);  // by now it does what it does by default
  }
  static std::array<Entry, 2> entries_;
};

std::array<Interruption::Entry, 2> Interruption::entries_;

// While it lives, these signals wait: between a file and its being remembered there is a moment.
class HeldSignals {
 public:
  HeldSignals() {
    sigset_t held;
    (void)::sigemptyset(&held);
    for (const int number : interrupting) (void)::sigaddset(&held, number);
    (void)::pthread_sigmask(SIG_BLOCK, &held, &before_);
  }
  ~HeldSignals() { (void)::pthread_sigmask(SIG_SETMASK, &before_, nullptr); }
  HeldSignals(const HeldSignals&) = delete;
  HeldSignals& operator=(const HeldSignals&) = delete;

 private:
  sigset_t before_;
};

mode_t mask_of_modes() {
  const mode_t mask = ::umask(0);
  (void)::umask(mask);
  return mask;
}

}  // namespace

TargetFile::TargetFile(const std::string& path) : name_(path), path_(path) {
  if (!path.empty()) {
    open_file();
    return;
  }
  name_ = "standard output";
  descriptor_ = STDOUT_FILENO;
}

TargetFile::~TargetFile() {
  if (descriptor_ > STDERR_FILENO) ::close(descriptor_);
  if (temporary_.empty()) return;
  (void)::unlink(temporary_.c_str());
  Interruption::forget(temporary_);
}

void TargetFile::fail(int error) const {
  throw Failure{ExitCode::io, error == EPIPE ? std::string() : name_ + ": " + std::strerror(error)};
}

void TargetFile::open_file() {
  struct stat facts = {};
  if (::stat(path_.c_str(), &facts) == 0) {
    old_ = facts;
    if (S_ISDIR(facts.st_mode)) fail(EISDIR);
    // Who may not write to it shall not replace it either.
    if (::access(path_.c_str(), W_OK) != 0) fail(errno);
    if (!S_ISREG(facts.st_mode)) {
      descriptor_ = ::open(path_.c_str(), O_WRONLY | O_CLOEXEC);
      if (descriptor_ < 0) fail(errno);
      return;
    }
    if (char* behind = ::realpath(path_.c_str(), nullptr)) {
      path_ = behind;
      std::free(behind);
    }
  } else if (errno != ENOENT) {
    fail(errno);
  }
  open_beside();
}

void TargetFile::open_beside() {
  const std::size_t slash = path_.rfind('/');
  const std::size_t name = slash == std::string::npos ? 0 : slash + 1;
  temporary_ = path_.substr(0, name) + "." + path_.substr(name, 200) + ".XXXXXX";
  const HeldSignals held;
  descriptor_ = ::mkostemp(temporary_.data(), O_CLOEXEC);
  if (descriptor_ < 0) {
    temporary_.clear();
    fail(errno);
  }
  Interruption::remember(temporary_);
  const mode_t mode = old_ ? old_->st_mode & 07777U : 0666U & ~mask_of_modes();
  // The owner first: changing it takes away bits of the mode. Most may not; the group then stays.
  if (old_ && ::fchown(descriptor_, old_->st_uid, old_->st_gid) != 0) {
    (void)!::fchown(descriptor_, static_cast<uid_t>(-1), old_->st_gid);
  }
  if (::fchmod(descriptor_, mode) != 0) fail(errno);
}

void TargetFile::write(std::string_view text) {
  while (!text.empty()) {
    const auto written = ::write(descriptor_, text.data(), text.size());
    if (written < 0 && errno == EINTR) continue;
    if (written < 0 && errno == EAGAIN) {  // whoever shares it does not want to wait
      pollfd events = {descriptor_, POLLOUT, 0};
      (void)::poll(&events, 1, -1);
      continue;
    }
    if (written < 0) fail(errno);
    text.remove_prefix(static_cast<std::size_t>(written));
  }
}

void TargetFile::commit(const std::string& kept_suffix) {
  if (temporary_.empty()) return;
  const int descriptor = descriptor_;
  descriptor_ = -1;
  if (::close(descriptor) != 0) fail(errno);
  if (!kept_suffix.empty() && old_) {
    const std::string kept = path_ + kept_suffix;
    (void)::unlink(kept.c_str());
    // A second name, where files may have two: at no moment is there nothing under the first.
    if (::link(path_.c_str(), kept.c_str()) != 0 && std::rename(path_.c_str(), kept.c_str()) != 0) {
      fail(errno);
    }
  }
  if (std::rename(temporary_.c_str(), path_.c_str()) != 0) fail(errno);
  Interruption::forget(temporary_);
  temporary_.clear();
}

bool TargetFile::is_same_as(const struct stat& other) const {
  struct stat facts = {};
  if (old_) {
    facts = *old_;
  } else if (::fstat(descriptor_, &facts) != 0) {
    return false;
  }
  return facts.st_dev == other.st_dev && facts.st_ino == other.st_ino;
}

bool TargetFile::is_terminal() const { return descriptor_ >= 0 && ::isatty(descriptor_) == 1; }

}  // namespace jwnls::tool
