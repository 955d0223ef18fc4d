#include "module/frame/handle_teardown.h"

#include "module/host_calls/typed_calls.h"

namespace jwnls {

void destroy_parts(LocaleHandle* handle) noexcept {
  host_calls::destroy(handle->zone_lock);
  host_calls::destroy(handle->zone_track);
  host_calls::destroy(handle->message_lock);
  host_calls::destroy(handle->message_track);
  host_calls::destroy(handle->messages);
}

std::uint32_t destroy_cached_handle(TrackEntry* entry) noexcept {
  auto* handle = static_cast<LocaleHandle*>(entry->value);
  if (handle == nullptr) return 0;
  Pool* pool = handle->context->pool;
  destroy_parts(handle);
  host_calls::free(pool, handle->record);
  host_calls::free(pool, handle);
  return 0;
}

std::uint32_t destroy_handle(void* entry) noexcept {
  return destroy_cached_handle(static_cast<TrackEntry*>(entry));
}

}  // namespace jwnls
