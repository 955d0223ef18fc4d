#include "module/frame/handle_teardown.h"

namespace jwnls {
namespace {

template <typename Object>
void destroy(Object* object) noexcept {
  if (object != nullptr) object->destroy(object);
}

}  // namespace

void destroy_parts(LocaleHandle* handle) noexcept {
  destroy(handle->zone_lock);
  destroy(handle->zone_track);
  destroy(handle->message_lock);
  destroy(handle->message_track);
  destroy(handle->messages);
}

std::uint32_t destroy_cached_handle(TrackEntry* entry) noexcept {
  auto* handle = static_cast<LocaleHandle*>(entry->value);
  if (handle == nullptr) return 0;
  Pool* pool = handle->context->pool;
  destroy_parts(handle);
  pool->free(pool, handle->record);
  pool->free(pool, handle);
  return 0;
}

std::uint32_t destroy_handle(void* entry) noexcept {
  return destroy_cached_handle(static_cast<TrackEntry*>(entry));
}

}  // namespace jwnls
