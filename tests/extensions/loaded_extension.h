// An extension of this build, loaded as a host loads it, with an object made by its factory.

#ifndef JWNLS_TESTS_EXTENSIONS_LOADED_EXTENSION_H_
#define JWNLS_TESTS_EXTENSIONS_LOADED_EXTENSION_H_

#include <dlfcn.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>
#include <string_view>

#include "abi/host_tables.h"
#include "abi/locale_handle.h"
#include "abi/message_texts.h"
#include "abi/status.h"
#include "tests/support/fake_host.h"

namespace jwnls::test {

class ExtensionLibrary {
 public:
  explicit ExtensionLibrary(const std::string& name)
      : name_(name),
        library_(dlopen((JWNLS_BUILD_DIR "/" + name + ".so").c_str(), RTLD_NOW | RTLD_LOCAL)) {
    if (library_ == nullptr) {
      ADD_FAILURE() << dlerror();
      std::abort();
    }
  }
  ~ExtensionLibrary() { dlclose(library_); }
  ExtensionLibrary(const ExtensionLibrary&) = delete;
  ExtensionLibrary& operator=(const ExtensionLibrary&) = delete;

  template <typename Function>
  Function* symbol(const std::string& name) const {
    return reinterpret_cast<Function*>(dlsym(library_, name.c_str()));
  }

  /// A new object; the caller destroys it.
  void* make(Kernel* kernel, ErrorSink* errors) const {
    return symbol<void*(Kernel*, ErrorSink*)>(name_)(kernel, errors);
  }

 private:
  std::string name_;
  void* library_;
};

/// An ASCII name in the form in which names cross the boundary.
inline std::u16string widened(std::string_view name) { return {name.begin(), name.end()}; }

/// Destroys an extension's object through its word 2, as the type that it has.
template <typename Table>
void destroy_object(Table* object) {
  object->destroy(object);
}
inline void destroy_object(MessageTexts* texts) { destroy_object(&texts->base); }

/// The object of the extension named Table, which has that layout.
template <typename Table>
class LoadedExtension {
 public:
  explicit LoadedExtension(const std::string& name)
      : library_(name), object_(static_cast<Table*>(library_.make(&host_.kernel, nullptr))) {}
  ~LoadedExtension() { destroy_object(object_); }
  LoadedExtension(const LoadedExtension&) = delete;
  LoadedExtension& operator=(const LoadedExtension&) = delete;

  Table* operator->() const { return object_; }

 private:
  FakeHost host_;
  ExtensionLibrary library_;
  Table* object_;
};

/// The locale database.
class Database {
 public:
  /// Fills a record whose every byte was `before`.
  Status fill(std::u16string_view name, LocaleRecord& record, int before = 0xA5) const {
    std::memset(static_cast<void*>(&record), before, sizeof record);
    return Status{database_->fill(&record, name.data(), static_cast<std::int64_t>(name.size()))};
  }

  /// The record of a locale that there is.
  std::unique_ptr<LocaleRecord> record(std::string_view name) const {
    auto record = std::make_unique<LocaleRecord>();
    EXPECT_EQ(fill(widened(name), *record), Status::ok) << name;
    return record;
  }

 private:
  LoadedExtension<LocaleDatabase> database_{"jwnlsldb"};
};

}  // namespace jwnls::test

#endif  // JWNLS_TESTS_EXTENSIONS_LOADED_EXTENSION_H_
