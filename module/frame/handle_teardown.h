// The end of a locale handle.

#ifndef JWNLS_MODULE_FRAME_HANDLE_TEARDOWN_H_
#define JWNLS_MODULE_FRAME_HANDLE_TEARDOWN_H_

#include "abi/locale_handle.h"

namespace jwnls {

/// Destroys the handle in the third word of `entry`, with everything that it owns. Returns 0.
/// Nobody may use the handle any more. A factory slot.
std::uint32_t destroy_handle(void* entry) noexcept;

/// The same, as the element destructor of a handle cache.
std::uint32_t destroy_cached_handle(TrackEntry* entry) noexcept;

/// Destroys the locks, tracks and message extension that a handle has, each only if present and
/// if it can be destroyed.
/// The zones go with their track.
void destroy_parts(LocaleHandle*) noexcept;

}  // namespace jwnls

#endif  // JWNLS_MODULE_FRAME_HANDLE_TEARDOWN_H_
