// The host's own formatter of floating values, to which services hand over where the host asks.

#ifndef JWNLS_MODULE_HOST_CALLS_HOST_FORMATTER_H_
#define JWNLS_MODULE_HOST_CALLS_HOST_FORMATTER_H_

#include <cstdint>

#include "abi/locale_handle.h"
#include "module/host_calls/kernel_handle.h"

namespace jwnls {

/// The host's formatter, where the host asks for it: its state word is 0 and it has one. Else null.
inline const HostFormatting* host_formatting() noexcept {
  const Kernel* kernel = kernel_handle();
  if (kernel == nullptr || kernel->formatter_state != 0) return nullptr;
  const HostFormatting* formatting = kernel->formatting;
  return formatting != nullptr && formatting->format_float != nullptr ? formatting : nullptr;
}

/// Has `host` write a value, with the arguments of format_number_with_options. Returns its status.
inline std::uint32_t call_host_formatter(const HostFormatting* host, LocaleHandle* handle,
                                         double value, std::int32_t width, std::int32_t decimals,
                                         std::uint32_t flags, char16_t* out, std::int64_t capacity,
                                         std::int64_t* length,
                                         const FloatOptions* options) noexcept {
  return host->format_float(handle, value, width, decimals, flags, out, capacity, length, options);
}

}  // namespace jwnls

#endif  // JWNLS_MODULE_HOST_CALLS_HOST_FORMATTER_H_
