// The making of a handle, from its memory to its open time zone.

#ifndef JWNLS_MODULE_FRAME_HANDLE_MAKING_H_
#define JWNLS_MODULE_FRAME_HANDLE_MAKING_H_

#include <cstdint>
#include <string_view>

#include "abi/locale_handle.h"
#include "abi/status.h"
#include "module/host_calls/time_zone.h"

namespace jwnls {

/// How a step of a creation failed: the status that the caller is to see with a null handle; or
/// success, when the step went well. A failure with status ok is possible, deliberately: hosts
/// test the handle, not only the status.
struct [[nodiscard]] Failure {
  constexpr Failure() noexcept = default;
  constexpr Failure(std::uint32_t a_status) noexcept : failed(true), status(a_status) {}
  constexpr Failure(Status a_status) noexcept : Failure(code(a_status)) {}
  constexpr explicit operator bool() const noexcept { return failed; }

  bool failed = false;
  std::uint32_t status = 0;
};
inline constexpr Failure success;

/// What a creation comes to: a handle and ok, or null and the status of its failure.
struct Outcome {
  LocaleHandle* handle;
  std::uint32_t status;
};

/// A locale as the host resolved its name.
struct CanonicalLocale {
  std::u16string_view name;  // 1 to 60 units; the host's
  std::uint32_t status;      // ok, or the warning that it is a near locale
};

/// Makes a handle, all but its registration.
///   cache  where the caller means to register the handle; null: nowhere
/// On failure nothing of the handle is left. To be called under the creation lock.
Outcome make_handle(NlsContext*, const CanonicalLocale&, const ZoneName&,
                    const Track* cache) noexcept;

/// Takes a made handle back that could not be registered.
void undo_handle(LocaleHandle*) noexcept;

/// The outcome where the host's tables lack a word that the finding of a handle calls. Says which
/// to the journal.
Outcome refuse_host(NlsContext*) noexcept;

}  // namespace jwnls

#endif  // JWNLS_MODULE_FRAME_HANDLE_MAKING_H_
