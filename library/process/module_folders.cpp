#include "library/process/module_folders.h"

#include <dlfcn.h>

#include <cstddef>
#include <system_error>

namespace jwnls::library {

std::vector<std::filesystem::path> absolute_folders(std::string_view list) {
  std::vector<std::filesystem::path> folders;
  while (!list.empty()) {
    const std::size_t end = list.find(':');
    const std::string_view folder = list.substr(0, end);
    if (folder.starts_with('/')) folders.emplace_back(folder);
    list.remove_prefix(end == std::string_view::npos ? list.size() : end + 1);
  }
  return folders;
}

std::vector<std::filesystem::path> folders_beside_library() {
  Dl_info own = {};
  // NOLINTNEXTLINE(bugprone-casting-through-void): dladdr() asks for any address of the file
  if (dladdr(reinterpret_cast<const void*>(&folders_beside_library), &own) == 0 ||
      own.dli_fname == nullptr) {
    return {};
  }
  std::error_code error;
  std::filesystem::path file = std::filesystem::weakly_canonical(own.dli_fname, error);
  // The loader gives a program as it was called, which may be no path.
  if (error || !std::filesystem::exists(file, error)) {
    file = std::filesystem::read_symlink("/proc/self/exe", error);
    if (error) return {};
  }
  const std::filesystem::path folder = file.parent_path();
  return {folder, folder / "jwnls", folder.parent_path() / "lib" / "jwnls"};
}

}  // namespace jwnls::library
