// Extensions: finds `<name>.so` on a path list, opens it once, and makes objects with its factory.

#ifndef JWNLS_HOST_LOADING_EXTENSION_LOADER_H_
#define JWNLS_HOST_LOADING_EXTENSION_LOADER_H_

#include <filesystem>
#include <map>
#include <mutex>
#include <string>
#include <string_view>
#include <vector>

#include "abi/host_tables.h"
#include "host/loading/extension_library.h"

namespace jwnls::host {

class ExtensionLoader {
 public:
  /// `kernel` and `errors` are what the extensions are given.
  ExtensionLoader(std::vector<std::filesystem::path> folders, Kernel* kernel, ErrorSink* errors);

  /// A new object of an extension, made by its factory; the caller destroys it before the loader
  /// goes. Null when any step fails; error() then says which, where and why. Any thread.
  ///   name  letters, digits, "_" and "-"
  void* load(std::u16string_view name) noexcept;

  /// Why the latest load failed; empty while none has.
  [[nodiscard]] std::string error() const;

 private:
  using NewObject = void* (*)(Kernel*, ErrorSink*);
  struct Extension {
    ExtensionLibrary library;
    std::filesystem::path file;
    NewObject make = nullptr;
  };

  const Extension* open(const std::string& name, std::string* error);
  [[nodiscard]] std::filesystem::path find(const std::string& name, std::string* error) const;

  const std::vector<std::filesystem::path> folders_;
  Kernel* const kernel_;
  ErrorSink* const errors_;
  mutable std::mutex mutex_;  // guards everything below
  std::map<std::string, Extension> extensions_;
  std::string error_;
};

}  // namespace jwnls::host

#endif  // JWNLS_HOST_LOADING_EXTENSION_LOADER_H_
