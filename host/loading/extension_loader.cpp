#include "host/loading/extension_loader.h"

#include <algorithm>
#include <cstdint>
#include <exception>
#include <system_error>
#include <utility>

#include "abi/locale_handle.h"

namespace jwnls::host {
namespace {

constexpr std::int64_t interface_major = 6;
constexpr std::int64_t interface_minor = 1;

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

ExtensionLoader::ExtensionLoader(std::vector<std::filesystem::path> folders, Kernel* kernel,
                                 ErrorSink* errors)
    : folders_(absolute(std::move(folders))), kernel_(kernel), errors_(errors) {}

void* ExtensionLoader::load(std::u16string_view name) noexcept {
  try {
    std::string error;
    const std::string plain = plain_name(name);
    const Extension* extension = nullptr;
    if (plain.empty()) {
      error = "the name of an extension has 1 to 64 letters, digits, \"_\" and \"-\"";
    } else {
      const std::lock_guard guard(mutex_);
      extension = open(plain, &error);
    }
    void* object = nullptr;
    if (extension != nullptr) {
      // Outside the lock: a factory may load other extensions.
      object = extension->make(kernel_, errors_);
      if (object == nullptr) error = extension->file.string() + ": its factory made no object";
    }
    if (object == nullptr) {
      const std::lock_guard guard(mutex_);
      error_ = std::move(error);
    }
    return object;
  } catch (const std::exception&) {
    return nullptr;
  }
}

std::string ExtensionLoader::error() const {
  const std::lock_guard guard(mutex_);
  return error_;
}

const ExtensionLoader::Extension* ExtensionLoader::open(const std::string& name,
                                                        std::string* error) {
  const auto known = extensions_.find(name);
  if (known != extensions_.end()) return &known->second;

  Extension extension;
  extension.file = find(name, error);
  if (extension.file.empty()) return nullptr;
  extension.library = ExtensionLibrary::open(extension.file, error);
  if (!extension.library) {
    *error = "cannot load " + extension.file.string() + ": " + *error;
    return nullptr;
  }
  auto* version = reinterpret_cast<JwExtver*>(extension.library.symbol("jwextver"));
  extension.make = reinterpret_cast<NewObject>(extension.library.symbol(name.c_str()));
  if (version == nullptr || extension.make == nullptr) {
    *error = extension.file.string() + ": does not export \"" +
             (version == nullptr ? "jwextver" : name) + "\"";
    return nullptr;
  }
  std::int64_t major = 0;
  std::int64_t minor = 0;
  version(kernel_, &major, &minor);
  if (major != interface_major || minor != interface_minor) {
    *error = extension.file.string() + ": has interface version " + version_text(major, minor) +
             ", not " + version_text(interface_major, interface_minor);
    return nullptr;
  }
  return &extensions_.emplace(name, std::move(extension)).first->second;
}

std::filesystem::path ExtensionLoader::find(const std::string& name, std::string* error) const {
  std::string searched;
  for (const std::filesystem::path& folder : folders_) {
    std::filesystem::path file = folder / (name + ".so");
    std::error_code ignored;
    if (std::filesystem::exists(file, ignored)) return file;
    searched += (searched.empty() ? "" : ", ") + folder.string();
  }
  *error = "cannot find " + name + ".so in " +
           (searched.empty() ? "the extension path, which is empty" : searched);
  return {};
}

}  // namespace jwnls::host
