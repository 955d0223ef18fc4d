#include "host/loading/extension_library.h"

#include <dlfcn.h>
#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <string>
#include <thread>
#include <utility>

#include "host/loading/private_copy.h"

namespace jwnls::host {
namespace {

// A lock on the file itself: it holds between the hosts of a process whatever copy of this code
// they are in, since each opens the file anew. (Between processes too, which does no harm.)
class FileLock {
 public:
  explicit FileLock(const std::filesystem::path& file)
      : descriptor_(::open(file.c_str(), O_RDONLY | O_CLOEXEC)) {
    // Others hold it for milliseconds. Who never gives it back must not stop us.
    constexpr auto longest_wait = std::chrono::seconds(2);
    const auto end = std::chrono::steady_clock::now() + longest_wait;
    while (descriptor_ >= 0 && !(held_ = flock(descriptor_, LOCK_EX | LOCK_NB) == 0)) {
      if (errno != EWOULDBLOCK && errno != EINTR) break;  // a file system without locks
      if (std::chrono::steady_clock::now() > end) break;
      std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
  }
  ~FileLock() {
    // Said aloud: a child that was forked meanwhile has the same descriptor.
    if (held_) flock(descriptor_, LOCK_UN);
    if (descriptor_ >= 0) close(descriptor_);
  }
  FileLock(const FileLock&) = delete;
  FileLock& operator=(const FileLock&) = delete;

  [[nodiscard]] bool held() const noexcept { return held_; }

 private:
  int descriptor_;
  bool held_ = false;
};

}  // namespace

ExtensionLibrary ExtensionLibrary::open(const std::filesystem::path& file, std::string* error) {
  // Between the question whether the file is open and its opening no other host may open it. A
  // copy serves where that cannot be had.
  ExtensionLibrary library;
  const FileLock lock(file);
  if (lock.held() && !is_open_as_library(file.c_str())) {
    library.handle_ = open_as_library(file.c_str(), error);
    return library;
  }
  const OpenedCopy copy = open_private_copy(file, error);
  library.handle_ = copy.handle;
  library.copy_ = copy.descriptor;
  return library;
}

ExtensionLibrary::~ExtensionLibrary() {
  if (handle_ != nullptr) dlclose(handle_);
  if (copy_ >= 0) close(copy_);
}

ExtensionLibrary::ExtensionLibrary(ExtensionLibrary&& other) noexcept
    : handle_(std::exchange(other.handle_, nullptr)), copy_(std::exchange(other.copy_, -1)) {}

ExtensionLibrary& ExtensionLibrary::operator=(ExtensionLibrary&& other) noexcept {
  std::swap(handle_, other.handle_);
  std::swap(copy_, other.copy_);
  return *this;
}

void* ExtensionLibrary::symbol(const char* name) const noexcept { return dlsym(handle_, name); }

}  // namespace jwnls::host
