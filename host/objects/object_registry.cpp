#include "host/objects/object_registry.h"

#include <array>

namespace jwnls::host {

std::string KernelObject::title() const { return std::string(kind_) + " '" + name_ + "'"; }

void ObjectRegistry::destroy(KernelObject* object) noexcept {
  std::unique_ptr<KernelObject> ending;
  {
    const std::lock_guard guard(mutex_);
    const auto found = objects_.find(object);
    if (found != objects_.end()) {
      ending = std::move(found->second);
      objects_.erase(found);
    }
  }
  if (ending == nullptr) {
    // Only a checking host still has the object to name.
    if (checking_) faults_.add(object->title() + " destroyed twice");
    return;
  }
  ending->end();  // may destroy other objects: a track's destructor does
  if (!checking_) return;
  const std::lock_guard guard(mutex_);
  destroyed_.push_back(std::move(ending));
}

void ObjectRegistry::end_all() noexcept {
  constexpr std::array<std::string_view, 4> order = {"track", "lock", "journal", "pool"};
  for (const std::string_view kind : order) {
    std::vector<KernelObject*> left;
    for_each([&](KernelObject& object) {
      if (object.kind_ == kind) left.push_back(&object);
    });
    for (KernelObject* object : left) {
      if (!objects_.contains(object)) continue;  // the end of another destroyed it
      if (checking_ && !object->host_owned_) faults_.add(object->title() + " never destroyed");
      destroy(object);
    }
  }
}

void ObjectRegistry::for_each(const std::function<void(KernelObject&)>& visit) const {
  const std::lock_guard guard(mutex_);
  for (const auto& [object, owner] : objects_) visit(*object);
}

}  // namespace jwnls::host
