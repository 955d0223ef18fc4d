#include "host/loading/extension_library.h"

#include <dlfcn.h>
#include <fcntl.h>
#include <sys/mman.h>
#include <sys/sendfile.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <mutex>
#include <string>
#include <system_error>
#include <utility>

namespace jwnls::host {
namespace {

constexpr int open_mode = RTLD_NOW | RTLD_LOCAL;

std::string loader_error() {
  const char* text = dlerror();
  return text != nullptr ? text : "unknown reason";
}

bool is_open_already(const char* file) {
  void* handle = dlopen(file, open_mode | RTLD_NOLOAD);
  if (handle == nullptr) {
    dlerror();  // not being open is no error to report later
    return false;
  }
  dlclose(handle);
  return true;
}

// A file without a name that holds the same bytes; -1, with errno set, when that fails.
int copy_in_memory(const std::filesystem::path& file) {
  const int source = ::open(file.c_str(), O_RDONLY | O_CLOEXEC);
  if (source < 0) return -1;
  const int copy = memfd_create(file.filename().c_str(), MFD_CLOEXEC);
  struct stat about = {};
  bool copied = copy >= 0 && fstat(source, &about) == 0;
  for (off_t done = 0; copied && done < about.st_size;) {
    copied = sendfile(copy, source, &done, static_cast<std::size_t>(about.st_size - done)) > 0;
  }
  const int failure = errno;
  close(source);
  if (!copied && copy >= 0) {
    close(copy);
    errno = failure;
    return -1;
  }
  return copy;
}

std::string path_of(int descriptor) { return "/proc/self/fd/" + std::to_string(descriptor); }

// The system's loader knows a library by the name that it was opened by. Where a library stays in
// the process after it was closed, its descriptor's number can come back, so a free name is sought.
void* open_copy(int& copy, std::string* error) {
  std::string name = path_of(copy);
  while (is_open_already(name.c_str())) {
    const int next = fcntl(copy, F_DUPFD_CLOEXEC, copy + 1);
    if (next < 0) {
      *error = std::generic_category().message(errno);
      return nullptr;
    }
    close(copy);
    copy = next;
    name = path_of(copy);
  }
  void* handle = dlopen(name.c_str(), open_mode);
  if (handle == nullptr) *error = loader_error();
  return handle;
}

}  // namespace

ExtensionLibrary ExtensionLibrary::open(const std::filesystem::path& file, std::string* error) {
  // Between the question whether the file is open and its opening no other host may open it.
  static std::mutex opening;
  const std::lock_guard guard(opening);
  ExtensionLibrary library;
  if (!is_open_already(file.c_str())) {
    library.handle_ = dlopen(file.c_str(), open_mode);
    if (library.handle_ == nullptr) *error = loader_error();
    return library;
  }
  library.copy_ = copy_in_memory(file);
  if (library.copy_ < 0) {
    *error = "cannot copy it for a second host: " + std::generic_category().message(errno);
    return library;
  }
  library.handle_ = open_copy(library.copy_, error);
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
