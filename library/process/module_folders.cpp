#include "library/process/module_folders.h"

#include <dlfcn.h>
#include <link.h>

#include <array>
#include <climits>
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

namespace {

// The file that this code was loaded from; empty where nobody knows.
std::filesystem::path own_file() {
  Dl_info own = {};
  void* entry = nullptr;  // a link_map
  // NOLINTNEXTLINE(bugprone-casting-through-void): dladdr1() asks for any address of the file
  if (dladdr1(reinterpret_cast<const void*>(&folders_beside_library), &own, &entry,
              RTLD_DL_LINKMAP) == 0 ||
      entry == nullptr) {
    return {};
  }
  std::error_code error;
  const std::string_view name = static_cast<const link_map*>(entry)->l_name;
  // The program has no name there, and elsewhere the one that it was called by, which another file
  // in the current folder may have.
  if (name.empty()) return std::filesystem::read_symlink("/proc/self/exe", error);
  if (name.starts_with('/')) return std::filesystem::weakly_canonical(name, error);
  // A library that was opened by a relative path: the loader knows its folder from that moment.
  std::array<char, PATH_MAX> folder = {};
  void* library = dlopen(own.dli_fname, RTLD_LAZY | RTLD_NOLOAD);
  if (library == nullptr) {
    dlerror();
    return {};
  }
  const bool known = dlinfo(library, RTLD_DI_ORIGIN, folder.data()) == 0;
  dlclose(library);
  if (!known) return {};
  return std::filesystem::path(folder.data()) / std::filesystem::path(name).filename();
}

}  // namespace

std::vector<std::filesystem::path> folders_beside_library() {
  const std::filesystem::path file = own_file();
  if (!file.is_absolute()) return {};
  const std::filesystem::path folder = file.parent_path();
  // The last is where the modules of an installed program stand, as seen from it.
  return {folder, folder / "jwnls", (folder / JWNLS_MODULES_FROM_PROGRAM).lexically_normal()};
}

}  // namespace jwnls::library
