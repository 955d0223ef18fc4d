#include "module/frame/factory.h"

#include "abi/status.h"
#include "module/frame/handle_creation.h"
#include "module/frame/handle_teardown.h"
#include "module/host_calls/typed_calls.h"

namespace jwnls {
namespace {

// The two version queries differ on purpose; hosts rely on both answers.
std::uint32_t version_a(Factory* /*factory*/, std::int64_t* a, std::int64_t* b, std::int64_t* c) {
  *a = 6;
  *b = 1;
  *c = 1;
  return 0;
}

std::uint32_t version_b(Factory* /*factory*/, std::int64_t* a, std::int64_t* b, std::int64_t* c) {
  *a = 6;
  *b = 0;
  *c = 0;
  return 0;
}

std::uint32_t destroy_factory(Factory* factory) {
  if (factory != nullptr) host_calls::destroy(factory->pool);  // frees the factory too
  return 0;
}

}  // namespace

Factory* create_factory(Kernel* kernel, ErrorSink* errors) noexcept {
  if (kernel == nullptr || kernel->create_pool == nullptr) {
    host_calls::report(errors, Status::out_of_memory);
    return nullptr;
  }
  Pool* pool = host_calls::create_pool(kernel, errors, "jwnlsloc pool");
  if (pool == nullptr) return nullptr;  // the kernel has the error sink and reports it
  const bool usable = pool->allocate != nullptr && pool->destroy != nullptr;
  auto* factory = usable ? host_calls::allocate_zeroed<Factory>(pool) : nullptr;
  if (factory == nullptr) {
    host_calls::report(errors, Status::out_of_memory);
    host_calls::destroy(pool);
    return nullptr;
  }
  factory->tag = object_tag;
  factory->version_a = version_a;
  factory->version_b = version_b;
  factory->kernel = kernel;
  factory->destroy = destroy_factory;
  factory->pool = pool;
  factory->create_handle = create_handle;
  factory->destroy_handle = destroy_handle;
  return factory;
}

}  // namespace jwnls
