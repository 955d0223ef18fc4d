// The extensions' ways in, as functions of the language: exports.cpp gives them the names by which
// a host finds them in a file, and a program that has them linked in calls them as they are.

#ifndef JWNLS_EXTENSIONS_ENTRY_POINTS_H_
#define JWNLS_EXTENSIONS_ENTRY_POINTS_H_

#include "abi/locale_handle.h"

namespace jwnls {

/// Every extension's interface version. Returns 0. Objects get all they need from the kernel that
/// their factory is given, so the one that is handed over here is not kept.
inline std::uint32_t extension_interface(Kernel* /*kernel*/, std::int64_t* major,
                                         std::int64_t* minor) {
  *major = 6;
  *minor = 1;
  return 0;
}

/// The factories. Each gives an object that the caller owns and destroys through its word 2 - a
/// LocaleDatabase and a MessageTexts -, or null, with the reason reported to `errors` (which may be
/// null).
void* create_jwnlsldb(Kernel* kernel, ErrorSink* errors);
void* create_jwemsg(Kernel* kernel, ErrorSink* errors);

}  // namespace jwnls

#endif  // JWNLS_EXTENSIONS_ENTRY_POINTS_H_
