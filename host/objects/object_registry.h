// Every pool, lock, track and journal that a host has made and nobody has destroyed yet.
//
// What is left when the host ends is destroyed with it, so a careless user costs no memory. A
// checking host reports what was left, and keeps destroyed objects to recognise a second destroy.

#ifndef JWNLS_HOST_OBJECTS_OBJECT_REGISTRY_H_
#define JWNLS_HOST_OBJECTS_OBJECT_REGISTRY_H_

#include <functional>
#include <memory>
#include <mutex>
#include <new>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "host/objects/fault_log.h"

namespace jwnls::host {

class ObjectRegistry;

/// What all registered objects share. The name is for people, and for faults.
class KernelObject {
 public:
  KernelObject(ObjectRegistry& registry, std::string_view kind, const char* name)
      : registry_(registry), kind_(kind), name_(name != nullptr ? name : "") {}
  virtual ~KernelObject() = default;
  KernelObject(const KernelObject&) = delete;
  KernelObject& operator=(const KernelObject&) = delete;

  /// Frees what the object holds; called once, before the object goes or is put aside.
  virtual void end() noexcept = 0;

  /// "lock 'jwnls Locale JWZ lock'"
  [[nodiscard]] std::string title() const;

  /// Says that the host itself ends the object, so that one that is left at the end is no fault.
  void belong_to_host() noexcept { host_owned_ = true; }

 protected:
  [[nodiscard]] bool host_owned() const noexcept { return host_owned_; }
  [[nodiscard]] ObjectRegistry& registry() const noexcept { return registry_; }

 private:
  friend class ObjectRegistry;

  ObjectRegistry& registry_;
  std::string_view kind_;
  std::string name_;
  bool host_owned_ = false;
};

class ObjectRegistry {
 public:
  ObjectRegistry(FaultLog& faults, bool checking) : faults_(faults), checking_(checking) {}
  ~ObjectRegistry() { end_all(); }
  ObjectRegistry(const ObjectRegistry&) = delete;
  ObjectRegistry& operator=(const ObjectRegistry&) = delete;

  [[nodiscard]] bool checking() const noexcept { return checking_; }
  [[nodiscard]] FaultLog& faults() const noexcept { return faults_; }

  /// A new object of a host type, constructed with the registry and `arguments`; null without
  /// memory. Any thread.
  template <typename Object, typename... Arguments>
  Object* make(Arguments&&... arguments) noexcept {
    try {
      auto object = std::make_unique<Object>(*this, std::forward<Arguments>(arguments)...);
      Object* made = object.get();
      const std::lock_guard guard(mutex_);
      objects_.emplace(made, std::move(object));
      return made;
    } catch (const std::bad_alloc&) {
      return nullptr;
    }
  }

  /// Ends an object and lets it go. Any thread.
  void destroy(KernelObject* object) noexcept;

  /// Ends whatever is left, reporting each object when checking: tracks first, since their
  /// destructors reach into everything else, and pools last. No other thread may use the host.
  void end_all() noexcept;

  /// Calls `visit` for every object that is left. Other threads wait meanwhile.
  void for_each(const std::function<void(KernelObject&)>& visit) const;

 private:
  FaultLog& faults_;
  const bool checking_;
  mutable std::mutex mutex_;
  std::unordered_map<KernelObject*, std::unique_ptr<KernelObject>> objects_;
  std::vector<std::unique_ptr<KernelObject>> destroyed_;  // when checking
};

}  // namespace jwnls::host

#endif  // JWNLS_HOST_OBJECTS_OBJECT_REGISTRY_H_
