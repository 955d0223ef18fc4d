// How often hosts could not get memory.

#ifndef JWNLS_HOST_OBJECTS_MEMORY_REFUSALS_H_
#define JWNLS_HOST_OBJECTS_MEMORY_REFUSALS_H_

#include <atomic>
#include <cstdint>

namespace jwnls::host {

/// Counts up with each. A status does not always say that memory was what failed: an embedder
/// looks whether the count changed.
inline constinit std::atomic<std::uint64_t> memory_refusals{0};

}  // namespace jwnls::host

#endif  // JWNLS_HOST_OBJECTS_MEMORY_REFUSALS_H_
