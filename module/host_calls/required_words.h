// The words of the host's tables that the module cannot do without, and what a host that lacks one
// is told.
//
// They are looked at once, while a handle is made. The services that the handle then offers call
// them as they stand. Words that may be null are no rows here: see typed_calls.h.

#ifndef JWNLS_MODULE_HOST_CALLS_REQUIRED_WORDS_H_
#define JWNLS_MODULE_HOST_CALLS_REQUIRED_WORDS_H_

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>

#include "abi/host_tables.h"
#include "abi/status.h"

namespace jwnls {

/// The objects of the host, by what the module has them for.
enum class HostObject : std::uint8_t {
  context,
  creation_lock,
  handle_cache,
  pool,
  kernel,
  messages,
  host_service,
  database,
  message_lock,
  zone_lock,
  message_track,
  zone_track,
  zone_service,
  count
};

struct RequiredWord {
  HostObject object;
  std::size_t offset;  // bytes from the object's begin; a multiple of 8
  /// What the creation of a handle fails with: the status of the step that would have called the
  /// word. None: that of the locale's resolution, ok or its warning.
  std::optional<Status> status;
};

/// Some of the host's objects, by HostObject; null where there is none (yet).
class HostObjects {
 public:
  const void*& operator[](HostObject object) noexcept {
    return addresses_[static_cast<std::size_t>(object)];
  }
  const void* operator[](HostObject object) const noexcept {
    return addresses_[static_cast<std::size_t>(object)];
  }

 private:
  std::array<const void*, static_cast<std::size_t>(HostObject::count)> addresses_{};
};

/// The objects that a host has before a handle is made.
HostObjects objects_before_creation(const NlsContext&, const Kernel*) noexcept;

/// The first required word that is null in an object, which itself is not; null when all are there.
const RequiredWord* missing_word(HostObject object, const void* address) noexcept;

/// The same of all `objects` that are there. An object that is not is not judged: where it is
/// required, it is itself a word of the context.
const RequiredWord* missing_word(const HostObjects& objects) noexcept;

/// Tells a journal, where there is one, which word is missing.
void write_missing_word(Journal*, const RequiredWord&) noexcept;

/// True when the context has the words that the finding of an existing handle calls: a few of the
/// required ones, for a look that costs next to nothing.
inline bool can_find_handles(const NlsContext& context) noexcept {
  const Lock* lock = context.creation_lock;
  return context.normalise_zone != nullptr && context.os_zone != nullptr && lock != nullptr &&
         lock->take != nullptr && lock->release != nullptr && context.resolve_locale != nullptr;
}

/// The same of the handle cache, which is not null.
inline bool can_look_up(const Track& cache) noexcept {
  return cache.look_up != nullptr && cache.release_entry != nullptr;
}

}  // namespace jwnls

#endif  // JWNLS_MODULE_HOST_CALLS_REQUIRED_WORDS_H_
