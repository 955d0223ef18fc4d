// The module's only global state: the kernel handle that the host handed in at load.

#ifndef JWNLS_MODULE_HOST_CALLS_KERNEL_HANDLE_H_
#define JWNLS_MODULE_HOST_CALLS_KERNEL_HANDLE_H_

#include <atomic>

#include "abi/host_tables.h"

namespace jwnls {

// Written by jwextent and jwextver, before any handle is made, and never cleared. Atomic only so
// that a host which loads twice while handles are in use hands over one pointer or the other,
// whole.
inline constinit std::atomic<Kernel*> kernel_handle_word = nullptr;

inline void store_kernel_handle(Kernel* kernel) noexcept {
  kernel_handle_word.store(kernel, std::memory_order_release);
}

/// The kernel handle, or null before the host has handed one in.
inline Kernel* kernel_handle() noexcept {
  return kernel_handle_word.load(std::memory_order_acquire);
}

}  // namespace jwnls

#endif  // JWNLS_MODULE_HOST_CALLS_KERNEL_HANDLE_H_
