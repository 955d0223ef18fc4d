#include "host/objects/object_registry.h"

namespace jwnls::host {

void ObjectRegistry::destroy(KernelObject* object) noexcept {
  std::unique_ptr<KernelObject> ending;  // ends outside the lock
  const std::lock_guard guard(mutex_);
  Objects& objects = of_kind(object->kind_);
  const auto found = objects.find(object);
  if (found == objects.end()) return;
  ending = std::move(found->second);
  objects.erase(found);
}

// Without memory of its own, for there may be none.
void ObjectRegistry::destroy_all() noexcept {
  for (const ObjectKind kind :
       {ObjectKind::track, ObjectKind::lock, ObjectKind::journal, ObjectKind::pool}) {
    Objects& left = of_kind(kind);  // the end of one may destroy others
    while (!left.empty()) destroy(left.begin()->first);
  }
}

}  // namespace jwnls::host
