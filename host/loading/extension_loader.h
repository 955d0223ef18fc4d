// The module and the extensions: finds each by name, opens it once, and makes objects with its
// factory.

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
#include "host/loading/linked_module.h"

namespace jwnls::host {

/// Where they are sought, in this order.
struct ModulePlaces {
  std::vector<std::filesystem::path> folders;       // for `<name>.so`
  std::vector<LinkedModule> linked;                 // then among these
  std::vector<std::filesystem::path> last_folders;  // then for `<name>.so` again
};

/// An object that was made, or why there is none.
struct LoadedObject {
  void* object = nullptr;
  std::string error;
};

class ExtensionLoader {
 public:
  /// `kernel` and `errors` are what the extensions are given.
  ExtensionLoader(ModulePlaces places, Kernel* kernel, ErrorSink* errors);

  /// A new object of an extension, or the module's factory, made by the function of that name; the
  /// caller destroys it before the loader goes. Null when any step fails; the error then says
  /// which, where and why, and is empty only where there is no memory for it. Any thread.
  ///   name  letters, digits, "_" and "-"
  LoadedObject load(std::u16string_view name) noexcept;

 private:
  struct Opened {
    std::string place;         // the file, for messages
    ExtensionLibrary library;  // empty where it is linked in
    LinkedModule exports;      // its `name` is not set
    void* make(Kernel* kernel, ErrorSink* errors) const;
  };

  const Opened* open(const std::string& name, std::string* error);
  bool find(const std::string& name, Opened& opened, std::string* error) const;
  bool open_file(const std::string& name, Opened& opened, std::string* error) const;

  const ModulePlaces places_;
  Kernel* const kernel_;
  ErrorSink* const errors_;
  std::mutex mutex_;  // guards what follows
  std::map<std::string, Opened> opened_;
};

}  // namespace jwnls::host

#endif  // JWNLS_HOST_LOADING_EXTENSION_LOADER_H_
