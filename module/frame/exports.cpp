// The module's four exports: the only names that a host can find in it.

#include "abi/locale_handle.h"
#include "module/frame/factory.h"
#include "module/frame/version_record.h"
#include "module/host_calls/kernel_handle.h"

#define JWNLS_EXPORT extern "C" __attribute__((visibility("default")))

namespace {
constexpr std::int64_t interface_major = 6;
constexpr std::int64_t interface_minor = 1;
}  // namespace

JWNLS_EXPORT std::uint32_t jwextent(jwnls::Kernel* kernel) {
  jwnls::store_kernel_handle(kernel);
  return 0;
}

JWNLS_EXPORT std::uint32_t jwextver(jwnls::Kernel* kernel, std::int64_t* major,
                                    std::int64_t* minor) {
  *major = interface_major;
  *minor = interface_minor;
  jwnls::store_kernel_handle(kernel);
  return 0;
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
