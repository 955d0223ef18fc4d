#include "host/loading/extension_loader.h"

#include <algorithm>
#include <cstdint>
#include <exception>
#include <system_error>
#include <utility>

#include "abi/locale_handle.h"
#include "host/objects/memory_refusals.h"

namespace jwnls::host {
namespace {

constexpr std::int64_t interface_major = 6;
constexpr std::int64_t interface_minor = 1;

// What makes a locale factory; all others make objects of extensions.
constexpr std::string_view module_name = "jwnlsloc";

std::string version_text(std::int64_t major, std::int64_t minor) {
  return std::to_string(major) + "." + std::to_string(minor);
}

bool may_stand_in_name(char16_t unit) {
  return (unit >= u'a' && unit <= u'z') || (unit >= u'A' && unit <= u'Z') ||
         (unit >= u'0' && unit <= u'9') || unit == u'_' || unit == u'-';
}

// name = 1 to 64 of letter | digit | "_" | "-"
// Such a name is a file's name too, and never leads out of a folder. Empty for any other.
std::string plain_name(std::u16string_view name) {
  constexpr std::size_t longest = 64;
  if (name.size() > longest || !std::all_of(name.begin(), name.end(), may_stand_in_name)) return {};
  std::string plain(name.size(), '\0');
  std::transform(name.begin(), name.end(), plain.begin(),
                 [](char16_t unit) { return static_cast<char>(unit); });
  return plain;
}

// Every path becomes absolute: a name without a folder would be sought on the system's own path.
std::vector<std::filesystem::path> absolute(std::vector<std::filesystem::path> folders) {
  for (std::filesystem::path& folder : folders) {
    std::error_code ignored;
    const std::filesystem::path whole = std::filesystem::absolute(folder, ignored);
    if (!ignored) folder = whole;
  }
  return folders;
}

}  // namespace

ExtensionLoader::ExtensionLoader(ModulePlaces places, Kernel* kernel, ErrorSink* errors)
    : places_{absolute(std::move(places.folders)), std::move(places.linked),
              absolute(std::move(places.last_folders))},
      kernel_(kernel),
      errors_(errors) {}

LoadedObject ExtensionLoader::load(std::u16string_view name) noexcept {
  LoadedObject loaded;
  try {
    const std::string plain = plain_name(name);
    if (plain.empty()) {
      loaded.error = "the name of an extension has 1 to 64 letters, digits, \"_\" and \"-\"";
      return loaded;
    }
    const Opened* opened = nullptr;
    {
      const std::lock_guard guard(mutex_);
      opened = open(plain, &loaded.error);
    }
    if (opened == nullptr) return loaded;
    // Outside the lock: a factory may load other extensions.
    loaded.object = opened->make(kernel_, errors_);
    if (loaded.object == nullptr) loaded.error = opened->place + ": its factory made no object";
  } catch (const std::exception&) {
    ++memory_refusals;
    loaded.error.clear();
  }
  return loaded;
}

// Each through a pointer of its own type.
void* ExtensionLoader::Opened::make(Kernel* kernel, ErrorSink* errors) const {
  return exports.make_factory != nullptr ? exports.make_factory(kernel, errors)
                                         : exports.make_object(kernel, errors);
}

const ExtensionLoader::Opened* ExtensionLoader::open(const std::string& name, std::string* error) {
  const auto known = opened_.find(name);
  if (known != opened_.end()) return &known->second;

  Opened opened;
  if (!find(name, opened, error)) return nullptr;
  std::int64_t major = 0;
  std::int64_t minor = 0;
  opened.exports.version(kernel_, &major, &minor);
  if (major != interface_major || minor != interface_minor) {
    *error = opened.place + ": has interface version " + version_text(major, minor) + ", not " +
             version_text(interface_major, interface_minor);
    return nullptr;
  }
  return &opened_.emplace(name, std::move(opened)).first->second;
}

// In the order of the places. A file that is there and cannot be used is a failure: what stands
// first was put there to be used.
bool ExtensionLoader::find(const std::string& name, Opened& opened, std::string* error) const {
  std::string searched;
  const auto find_file = [&](const std::vector<std::filesystem::path>& folders) {
    for (const std::filesystem::path& folder : folders) {
      const std::filesystem::path file = folder / (name + ".so");
      std::error_code ignored;
      if (std::filesystem::exists(file, ignored)) {
        opened.place = file.string();
        return true;
      }
      searched += (searched.empty() ? "" : ", ") + folder.string();
    }
    return false;
  };
  if (find_file(places_.folders)) return open_file(name, opened, error);
  const auto linked =
      std::find_if(places_.linked.begin(), places_.linked.end(),
                   [&name](const LinkedModule& module) { return module.name == name; });
  if (linked != places_.linked.end()) {
    opened.place = name + ", which is linked in";
    opened.exports = *linked;
    return true;
  }
  if (find_file(places_.last_folders)) return open_file(name, opened, error);
  *error = "cannot find " + name + ".so in " +
           (searched.empty() ? "the extension path, which is empty" : searched);
  return false;
}

bool ExtensionLoader::open_file(const std::string& name, Opened& opened, std::string* error) const {
  opened.library = ExtensionLibrary::open(opened.place, error);
  if (!opened.library) {
    *error = "cannot load " + opened.place + ": " + *error;
    return false;
  }
  opened.exports.version = reinterpret_cast<JwExtver*>(opened.library.symbol("jwextver"));
  void* make = opened.library.symbol(name.c_str());
  if (name == module_name) {
    opened.exports.make_factory = reinterpret_cast<JwFactory*>(make);
  } else {
    opened.exports.make_object = reinterpret_cast<jw_extension_export*>(make);
  }
  if (opened.exports.version == nullptr || make == nullptr) {
    *error = opened.place + ": does not export \"" +
             (opened.exports.version == nullptr ? "jwextver" : name) + "\"";
    return false;
  }
  return true;
}

}  // namespace jwnls::host
