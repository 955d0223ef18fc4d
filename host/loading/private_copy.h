// A copy of a loadable file that belongs to one host.

#ifndef JWNLS_HOST_LOADING_PRIVATE_COPY_H_
#define JWNLS_HOST_LOADING_PRIVATE_COPY_H_

#include <filesystem>
#include <string>

namespace jwnls::host {

/// What a copy was opened as.
struct OpenedCopy {
  void* handle = nullptr;  // dlopen()'s
  int descriptor = -1;     // of a copy in memory, which keeps its name taken; to be closed after
};

/// Opens a copy of a file: in memory, or where the system has no such files (or no /proc to name
/// them by), in a temporary file whose name is gone again when this returns. Without a handle
/// *error says what failed.
OpenedCopy open_private_copy(const std::filesystem::path& file, std::string* error);

/// Whether the process has the file open as a library.
bool is_open_as_library(const char* file);

/// dlopen() with all names bound and none shown; null with *error set.
void* open_as_library(const char* file, std::string* error);

}  // namespace jwnls::host

#endif  // JWNLS_HOST_LOADING_PRIVATE_COPY_H_
