// What every extension's object has in common: it fills a pool of its own, and destroying the
// object destroys the pool.

#ifndef JWNLS_EXTENSIONS_EXTENSION_OBJECT_H_
#define JWNLS_EXTENSIONS_EXTENSION_OBJECT_H_

#include "abi/host_tables.h"
#include "abi/status.h"

namespace jwnls {

/// A zeroed object in a new pool of the kernel, which its member `pool` then names. Null when the
/// kernel gave no pool, or the pool no memory: the latter is reported to `errors` (which may be
/// null) and leaves nothing behind.
template <typename Object>
Object* create_in_own_pool(Kernel* kernel, ErrorSink* errors, const char* pool_name) noexcept {
  Pool* pool = kernel->create_pool(kernel, &pool_parameters, errors, pool_name);
  if (pool == nullptr) return nullptr;  // the kernel has the error sink and reports it
  auto* object = static_cast<Object*>(pool->allocate(pool, sizeof(Object), allocate_zeroed));
  if (object == nullptr) {
    if (errors != nullptr) errors->report(errors, severity_error, code(Status::out_of_memory));
    pool->destroy(pool);
    return nullptr;
  }
  object->pool = pool;
  return object;
}

}  // namespace jwnls

#endif  // JWNLS_EXTENSIONS_EXTENSION_OBJECT_H_
