// The module's way in, as functions of the language: exports.cpp gives them the names by which a
// host finds them in a file, and a program that has the module linked in calls them as they are.

#ifndef JWNLS_MODULE_FRAME_ENTRY_POINTS_H_
#define JWNLS_MODULE_FRAME_ENTRY_POINTS_H_

#include "abi/locale_handle.h"
#include "module/frame/factory.h"

namespace jwnls {

/// Keeps the kernel handle, which must outlive the module's use. Returns 0.
std::uint32_t accept_kernel(Kernel* kernel);

/// The same, and reports the interface version. Returns 0.
std::uint32_t report_interface(Kernel* kernel, std::int64_t* major, std::int64_t* minor);

}  // namespace jwnls

#endif  // JWNLS_MODULE_FRAME_ENTRY_POINTS_H_
