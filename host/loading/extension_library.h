// A shared library with an extension in it.

#ifndef JWNLS_HOST_LOADING_EXTENSION_LIBRARY_H_
#define JWNLS_HOST_LOADING_EXTENSION_LIBRARY_H_

#include <filesystem>
#include <string>

namespace jwnls::host {

/// An opened library. Two hosts of a process never share one: what a library keeps in variables of
/// its own, such as the kernel that it was given, is one host's.
class ExtensionLibrary {
 public:
  ExtensionLibrary() = default;
  ~ExtensionLibrary();
  ExtensionLibrary(ExtensionLibrary&& other) noexcept;
  ExtensionLibrary& operator=(ExtensionLibrary&& other) noexcept;

  /// Opens the file, or a copy of it when the process has it open already. Empty with *error set
  /// when that fails.
  static ExtensionLibrary open(const std::filesystem::path& file, std::string* error);

  [[nodiscard]] explicit operator bool() const noexcept { return handle_ != nullptr; }

  /// The address of an exported name, or null.
  [[nodiscard]] void* symbol(const char* name) const noexcept;

 private:
  void* handle_ = nullptr;
  int copy_ = -1;  // the descriptor of a copy in memory, which keeps its name taken
};

}  // namespace jwnls::host

#endif  // JWNLS_HOST_LOADING_EXTENSION_LIBRARY_H_
