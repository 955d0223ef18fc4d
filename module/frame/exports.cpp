// The module's four exports: the only names that a host can find in its file.

#include "module/frame/entry_points.h"
#include "module/frame/version_record.h"

#define JWNLS_EXPORT extern "C" __attribute__((visibility("default")))

JWNLS_EXPORT std::uint32_t jwextent(jwnls::Kernel* kernel) { return jwnls::accept_kernel(kernel); }

JWNLS_EXPORT std::uint32_t jwextver(jwnls::Kernel* kernel, std::int64_t* major,
                                    std::int64_t* minor) {
  return jwnls::report_interface(kernel, major, minor);
}

JWNLS_EXPORT jwnls::Factory* jwnlsloc(jwnls::Kernel* kernel, jwnls::ErrorSink* errors) {
  return jwnls::create_factory(kernel, errors);
}

JWNLS_EXPORT std::uint32_t jwvercn1(void* record) {
  jwnls::copy_version_record(record);
  return 0;
}

static_assert(std::is_same_v<decltype(jwextent), jwnls::JwExtent> &&
              std::is_same_v<decltype(jwextver), jwnls::JwExtver> &&
              std::is_same_v<decltype(jwnlsloc), jwnls::JwFactory> &&
              std::is_same_v<decltype(jwvercn1), jwnls::JwVersionRecord>);
