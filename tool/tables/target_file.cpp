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
#include <utility>

#include "tool/exit_code.h"

namespace jwnls::tool {
namespace {

constexpr int interrupting[] = {SIGINT, SIGTERM, SIGHUP};

// Paths that a signal's handler removes. The handler may do nothing that allocates, so they stand
// here; the output, the file of rejects and the report are all there are.
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
  static void remove_all() {
    for (const Entry& entry : entries_) {
      if (entry.is_used != 0) (void)::unlink(entry.path);
    }
  }

 private:
  struct Entry {
    volatile std::sig_atomic_t is_used;
    char path[PATH_MAX];
  };
  static void handle(int number) {
    remove_all();
    (void)::raise(number);  // by now it does what it does by default
  }
  static std::array<Entry, 3> entries_;
};

std::array<Interruption::Entry, 3> Interruption::entries_;

// While it lives, these signals wait: between a file and its being remembered there is a moment.
class HeldSignals {
 public:
  HeldSignals() {
    sigset_t held = {};  // which is an empty one
    for (const int number : interrupting) (void)::sigaddset(&held, number);
    (void)::pthread_sigmask(SIG_BLOCK, &held, &before_);
  }
  ~HeldSignals() { (void)::pthread_sigmask(SIG_SETMASK, &before_, nullptr); }
  HeldSignals(const HeldSignals&) = delete;
  HeldSignals& operator=(const HeldSignals&) = delete;

 private:
  sigset_t before_;
};

// Where a path's last name begins.
std::size_t name_at(const std::string& path) { return path.rfind('/') + 1; }

// The path without links and dots; as it is, where it leads nowhere.
std::string resolved(const std::string& path) {
  char* const behind = ::realpath(path.c_str(), nullptr);
  if (behind == nullptr) return path;
  std::string real = behind;
  std::free(behind);
  return real;
}

// The name under which a descriptor's file can be linked.
std::string path_of(int descriptor) { return "/proc/self/fd/" + std::to_string(descriptor); }

// A file in a folder that has no name, which not even SIGKILL leaves behind; below 0 where the file
// system has no such files, or they could get no name later.
int open_nameless(const std::string& folder) {
#ifdef O_TMPFILE
  const int descriptor = ::open(folder.c_str(), O_TMPFILE | O_WRONLY | O_CLOEXEC, 0600);
  if (descriptor < 0 || ::access(path_of(descriptor).c_str(), F_OK) == 0) return descriptor;
  ::close(descriptor);
#endif
  return -1;
}

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
  forget_temporary(true);
}

void TargetFile::forget_temporary(bool removes) {
  if (temporary_.empty()) return;
  if (removes) (void)::unlink(temporary_.c_str());
  Interruption::forget(temporary_);
  temporary_.clear();
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
    path_ = resolved(path_);
  } else if (errno != ENOENT) {
    fail(errno);
  } else {
    const std::size_t name = name_at(path_);
    path_ = resolved(name == 0 ? "./" : path_.substr(0, name)) + "/" + path_.substr(name);
  }
  open_beside();
}

void TargetFile::open_beside() {
  const std::size_t name = name_at(path_);
  beside_ = path_.substr(0, name) + "." + path_.substr(name, 200) + ".XXXXXX";
  descriptor_ = open_nameless(path_.substr(0, name));
  is_nameless_ = descriptor_ >= 0;
  if (!is_nameless_) open_temporary();
  const mode_t mode = old_ ? old_->st_mode & 07777U : 0666U & ~mask_of_modes();
  // The owner first: changing it takes away bits of the mode. Most may not; the group then stays.
  if (old_ && ::fchown(descriptor_, old_->st_uid, old_->st_gid) != 0) {
    (void)!::fchown(descriptor_, static_cast<uid_t>(-1), old_->st_gid);
  }
  if (::fchmod(descriptor_, mode) != 0) fail(errno);
}

void TargetFile::open_temporary() {
  const HeldSignals held;
  temporary_ = beside_;
  descriptor_ = ::mkostemp(temporary_.data(), O_CLOEXEC);
  if (descriptor_ < 0) {
    temporary_.clear();
    const int error = errno;
    if (error != EACCES && error != EROFS) fail(error);
    throw Failure{ExitCode::io,
                  name_ + ": no file can be made in its folder: " + std::strerror(error)};
  }
  Interruption::remember(temporary_);
}

// A link takes no other file's place: where there is one, the file gets a name of its own first.
void TargetFile::name_nameless() {
  const std::string file = path_of(descriptor_);
  const auto link_as = [&](const std::string& path) {
    return ::linkat(AT_FDCWD, file.c_str(), AT_FDCWD, path.c_str(), AT_SYMLINK_FOLLOW) == 0;
  };
  constexpr int attempts = 100;
  for (int attempt = 0; attempt < attempts; ++attempt) {
    const HeldSignals held;
    std::string path = beside_;
    // A name that is free; somebody may take it before the link does.
    const int placeholder = ::mkostemp(path.data(), O_CLOEXEC);
    if (placeholder < 0) fail(errno);
    ::close(placeholder);
    (void)::unlink(path.c_str());
    if (link_as(path)) {
      Interruption::remember(path);
      temporary_ = std::move(path);
      return;
    }
    if (errno != EEXIST) fail(errno);
  }
  fail(EEXIST);
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
  if (beside_.empty() || descriptor_ < 0) return;
  if (is_nameless_) name_nameless();
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
  forget_temporary(false);
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

bool TargetFile::is_same_as(const TargetFile& other) const {
  return !beside_.empty() && path_ == other.path_;
}

bool TargetFile::is_terminal() const { return descriptor_ >= 0 && ::isatty(descriptor_) == 1; }

void remove_unfinished_files() noexcept { Interruption::remove_all(); }

}  // namespace jwnls::tool
