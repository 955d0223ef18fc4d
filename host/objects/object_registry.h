// Every pool, lock, track and journal that a host has made and nobody has destroyed yet. What is
// left when the host ends is destroyed with it, so a careless user costs no memory.

#ifndef JWNLS_HOST_OBJECTS_OBJECT_REGISTRY_H_
#define JWNLS_HOST_OBJECTS_OBJECT_REGISTRY_H_

#include <array>
#include <cstddef>
#include <memory>
#include <mutex>
#include <new>
#include <unordered_map>
#include <utility>

#include "host/objects/memory_refusals.h"

namespace jwnls::host {

class ObjectRegistry;

/// In the order in which objects that are left end: the destructors of tracks' entries reach into
/// everything else, and all memory of users stands in pools.
enum class ObjectKind { track, lock, journal, pool };

/// What all registered objects share.
class KernelObject {
 public:
  KernelObject(ObjectRegistry& registry, ObjectKind kind) : registry_(registry), kind_(kind) {}
  virtual ~KernelObject() = default;
  KernelObject(const KernelObject&) = delete;
  KernelObject& operator=(const KernelObject&) = delete;

 protected:
  [[nodiscard]] ObjectRegistry& registry() const noexcept { return registry_; }

 private:
  friend class ObjectRegistry;

  ObjectRegistry& registry_;
  const ObjectKind kind_;
};

class ObjectRegistry {
 public:
  ObjectRegistry() = default;
  ~ObjectRegistry() { destroy_all(); }
  ObjectRegistry(const ObjectRegistry&) = delete;
  ObjectRegistry& operator=(const ObjectRegistry&) = delete;

  /// A new object of a host type, constructed with the registry and `arguments`; null without
  /// memory. Any thread.
  template <typename Object, typename... Arguments>
  Object* make(Arguments&&... arguments) noexcept {
    try {
      auto object = std::make_unique<Object>(*this, std::forward<Arguments>(arguments)...);
      Object* made = object.get();
      const std::lock_guard guard(mutex_);
      of_kind(static_cast<KernelObject*>(made)->kind_).emplace(made, std::move(object));
      return made;
    } catch (const std::bad_alloc&) {
      ++memory_refusals;
      return nullptr;
    }
  }

  /// Destroys an object, whose destructor may destroy others. Any thread.
  void destroy(KernelObject* object) noexcept;

  /// Destroys whatever is left, kind by kind. No other thread may use the host.
  void destroy_all() noexcept;

 private:
  using Objects = std::unordered_map<KernelObject*, std::unique_ptr<KernelObject>>;

  Objects& of_kind(ObjectKind kind) noexcept { return objects_[static_cast<std::size_t>(kind)]; }

  std::mutex mutex_;
  std::array<Objects, 4> objects_;  // by kind
};

}  // namespace jwnls::host

#endif  // JWNLS_HOST_OBJECTS_OBJECT_REGISTRY_H_
