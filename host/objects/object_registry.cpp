#include "host/objects/object_registry.h"

#include <vector>

namespace jwnls::host {

void ObjectRegistry::destroy(KernelObject* object) noexcept {
  std::unique_ptr<KernelObject> ending;  // ends outside the lock
  const std::lock_guard guard(mutex_);
  const auto found = objects_.find(object);
  if (found == objects_.end()) return;
  ending = std::move(found->second);
  objects_.erase(found);
}

void ObjectRegistry::destroy_all() noexcept {
  for (const ObjectKind kind :
       {ObjectKind::track, ObjectKind::lock, ObjectKind::journal, ObjectKind::pool}) {
    std::vector<KernelObject*> left;
    for (const auto& [object, owner] : objects_) {
      if (object->kind_ == kind) left.push_back(object);
    }
    for (KernelObject* object : left) destroy(object);  // unless the end of another destroyed it
  }
}

}  // namespace jwnls::host
