#include "module/frame/entry_points.h"

#include "module/host_calls/kernel_handle.h"

namespace jwnls {
namespace {
constexpr std::int64_t interface_major = 6;
constexpr std::int64_t interface_minor = 1;
}  // namespace

std::uint32_t accept_kernel(Kernel* kernel) {
  store_kernel_handle(kernel);
  return 0;
}

std::uint32_t report_interface(Kernel* kernel, std::int64_t* major, std::int64_t* minor) {
  *major = interface_major;
  *minor = interface_minor;
  store_kernel_handle(kernel);
  return 0;
}

}  // namespace jwnls
