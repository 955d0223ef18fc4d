// An extension's four exports: the only names that a host can find in its file.
//   JWNLS_FACTORY  the factory's name there, which is the extension's
//   JWNLS_CREATE   the function behind it

#include "extensions/entry_points.h"
#include "module/frame/version_record.h"

#define JWNLS_EXPORT extern "C" __attribute__((visibility("default")))

JWNLS_EXPORT std::uint32_t jwextent(jwnls::Kernel* /*kernel*/) { return 0; }

JWNLS_EXPORT std::uint32_t jwextver(jwnls::Kernel* kernel, std::int64_t* major,
                                    std::int64_t* minor) {
  return jwnls::extension_interface(kernel, major, minor);
}

JWNLS_EXPORT void* JWNLS_FACTORY(jwnls::Kernel* kernel, jwnls::ErrorSink* errors) {
  return jwnls::JWNLS_CREATE(kernel, errors);
}

JWNLS_EXPORT std::uint32_t jwvercn1(void* record) {
  jwnls::copy_version_record(record);
  return 0;
}

static_assert(std::is_same_v<decltype(jwextent), jwnls::JwExtent> &&
              std::is_same_v<decltype(jwextver), jwnls::JwExtver> &&
              std::is_same_v<decltype(JWNLS_FACTORY), jw_extension_export> &&
              std::is_same_v<decltype(jwvercn1), jwnls::JwVersionRecord>);
