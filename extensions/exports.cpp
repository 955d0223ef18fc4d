// The exports that all extensions share. Each adds its factory, under its own name.
//
// Objects get all they need from the kernel that their factory is given, so the one that is handed
// over here is not kept.

#include "abi/locale_handle.h"
#include "module/frame/version_record.h"

#define JWNLS_EXPORT extern "C" __attribute__((visibility("default")))

JWNLS_EXPORT std::uint32_t jwextent(jwnls::Kernel* /*kernel*/) { return 0; }

JWNLS_EXPORT std::uint32_t jwextver(jwnls::Kernel* /*kernel*/, std::int64_t* major,
                                    std::int64_t* minor) {
  *major = 6;
  *minor = 1;
  return 0;
}

JWNLS_EXPORT std::uint32_t jwvercn1(void* record) {
  jwnls::copy_version_record(record);
  return 0;
}

static_assert(std::is_same_v<decltype(jwextent), jwnls::JwExtent> &&
              std::is_same_v<decltype(jwextver), jwnls::JwExtver> &&
              std::is_same_v<decltype(jwvercn1), jwnls::JwVersionRecord>);
