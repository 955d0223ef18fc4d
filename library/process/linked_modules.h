// The module and the extensions that are linked into the library.

#ifndef JWNLS_LIBRARY_PROCESS_LINKED_MODULES_H_
#define JWNLS_LIBRARY_PROCESS_LINKED_MODULES_H_

#include <vector>

#include "host/loading/linked_module.h"

namespace jwnls::library {

/// Empty where the library was built without them. For one host at a time.
std::vector<host::LinkedModule> linked_modules();

}  // namespace jwnls::library

#endif  // JWNLS_LIBRARY_PROCESS_LINKED_MODULES_H_
