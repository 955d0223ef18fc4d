#include "host/loading/private_copy.h"

#include <dlfcn.h>
#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdlib>
#include <string>
#include <system_error>
#include <utility>

namespace jwnls::host {
namespace {

constexpr int open_mode = RTLD_NOW | RTLD_LOCAL;

std::string reason_of(int error_number) { return std::generic_category().message(error_number); }

// A file descriptor that closes itself.
struct Descriptor {
  explicit Descriptor(int opened) noexcept : number(opened) {}
  ~Descriptor() {
    const int kept = errno;  // the reason for what failed before
    if (number >= 0) close(number);
    errno = kept;
  }
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;

  int number;  // -1: none
};

bool write_all(int target, const char* bytes, std::size_t count) {
  while (count > 0) {
    const ssize_t written = write(target, bytes, count);
    if (written < 0 && errno == EINTR) continue;
    if (written <= 0) return false;
    bytes += written;
    count -= static_cast<std::size_t>(written);
  }
  return true;
}

// False with errno set when a byte could not be read or written.
bool copy_bytes(const std::filesystem::path& file, int target) {
  const Descriptor source(::open(file.c_str(), O_RDONLY | O_CLOEXEC));
  if (source.number < 0) return false;
  std::array<char, 1 << 16> block;
  for (;;) {
    const ssize_t count = read(source.number, block.data(), block.size());
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0) return count == 0;
    if (!write_all(target, block.data(), static_cast<std::size_t>(count))) return false;
  }
}

std::string name_in_proc(int descriptor) { return "/proc/self/fd/" + std::to_string(descriptor); }

// The system's loader knows a library by the name that it was opened by. Where a library stays in
// the process after it was closed, its descriptor's number can come back, so a free name is sought.
bool take_free_descriptor(int& descriptor) {
  while (is_open_as_library(name_in_proc(descriptor).c_str())) {
    const int next = fcntl(descriptor, F_DUPFD_CLOEXEC, descriptor + 1);
    if (next < 0) return false;
    close(descriptor);
    descriptor = next;
  }
  return true;
}

OpenedCopy open_in_memory(const std::filesystem::path& file, std::string* error) {
  Descriptor copy(memfd_create(file.filename().c_str(), MFD_CLOEXEC));
  if (copy.number < 0 || !copy_bytes(file, copy.number) || !take_free_descriptor(copy.number)) {
    *error = reason_of(errno);
    return {};
  }
  void* handle = open_as_library(name_in_proc(copy.number).c_str(), error);
  if (handle == nullptr) return {};
  return {handle, std::exchange(copy.number, -1)};
}

// A new file that has its name as long as this lives, and is its owner's alone.
struct TemporaryFile {
  explicit TemporaryFile(const std::string& folder)
      : name(folder + "/jwnls-XXXXXX"), descriptor(mkostemp(name.data(), O_CLOEXEC)) {}
  ~TemporaryFile() {
    if (descriptor.number >= 0) unlink(name.c_str());
  }
  TemporaryFile(const TemporaryFile&) = delete;
  TemporaryFile& operator=(const TemporaryFile&) = delete;

  std::string name;
  const Descriptor descriptor;
};

void* open_in_folder(const std::filesystem::path& file, const std::string& folder,
                     std::string* error) {
  const TemporaryFile copy(folder);
  if (copy.descriptor.number < 0 || !copy_bytes(file, copy.descriptor.number)) {
    *error = reason_of(errno);
    return nullptr;
  }
  if (is_open_as_library(copy.name.c_str())) {  // a name of before, chosen again by chance
    return open_in_folder(file, folder, error);
  }
  return open_as_library(copy.name.c_str(), error);
}

}  // namespace

bool is_open_as_library(const char* file) {
  void* handle = dlopen(file, open_mode | RTLD_NOLOAD);
  if (handle == nullptr) {
    dlerror();  // not being open is no error to report later
    return false;
  }
  dlclose(handle);
  return true;
}

void* open_as_library(const char* file, std::string* error) {
  void* handle = dlopen(file, open_mode);
  if (handle == nullptr) {
    const char* text = dlerror();
    *error = text != nullptr ? text : "unknown reason";
  }
  return handle;
}

OpenedCopy open_private_copy(const std::filesystem::path& file, std::string* error) {
  std::string why;
  OpenedCopy copy = open_in_memory(file, &why);
  if (copy.handle != nullptr) return copy;
  *error = "no copy of its own for this host: in memory: " + why;
  const char* named = secure_getenv("TMPDIR");
  for (const char* folder : {named, "/tmp", "/var/tmp", "/dev/shm"}) {
    if (folder == nullptr || *folder != '/') continue;
    copy.handle = open_in_folder(file, folder, &why);
    if (copy.handle != nullptr) return copy;
    *error += "; in " + std::string(folder) + ": " + why;
  }
  return copy;
}

}  // namespace jwnls::host
