// What every extension's object has in common: it fills a pool of its own, and destroying the
// object destroys the pool. The extensions' only place that calls the host's tables.

#ifndef JWNLS_EXTENSIONS_EXTENSION_OBJECT_H_
#define JWNLS_EXTENSIONS_EXTENSION_OBJECT_H_

#include "abi/host_tables.h"
#include "abi/status.h"

namespace jwnls {

/// A zeroed object in a new pool of the kernel, which its member `pool` then names. Null when the
/// kernel gave no pool, or the pool no memory, and when the word that gives either is null: what
/// the kernel cannot report itself is reported to `errors` (which may be null). Leaves nothing
/// behind.
template <typename Object>
Object* create_in_own_pool(Kernel* kernel, ErrorSink* errors, const char* pool_name) noexcept {
  const auto report_no_memory = [errors] {
    if (errors == nullptr || errors->report == nullptr) return;
    errors->report(errors, severity_error, code(Status::out_of_memory));
  };
  if (kernel == nullptr || kernel->create_pool == nullptr) {
    report_no_memory();
    return nullptr;
  }
  Pool* pool = kernel->create_pool(kernel, &pool_parameters, errors, pool_name);
  if (pool == nullptr) return nullptr;  // the kernel has the error sink and reports it
  Object* object = nullptr;
  if (pool->allocate != nullptr && pool->destroy != nullptr) {
    object = static_cast<Object*>(pool->allocate(pool, sizeof(Object), allocate_zeroed));
  }
  if (object == nullptr) {
    report_no_memory();
    if (pool->destroy != nullptr) pool->destroy(pool);
    return nullptr;
  }
  object->pool = pool;
  return object;
}

/// Destroys an object that create_in_own_pool() made.
template <typename Object>
void destroy_with_own_pool(Object* object) noexcept {
  object->pool->destroy(object->pool);
}

}  // namespace jwnls

#endif  // JWNLS_EXTENSIONS_EXTENSION_OBJECT_H_
