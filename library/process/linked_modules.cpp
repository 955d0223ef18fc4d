#include "library/process/linked_modules.h"

#ifdef JWNLS_EMBED
#include "extensions/entry_points.h"
#include "module/frame/entry_points.h"
#endif

namespace jwnls::library {

std::vector<host::LinkedModule> linked_modules() {
#ifdef JWNLS_EMBED
  return {{"jwnlsloc", report_interface, create_factory, nullptr},
          {"jwnlsldb", extension_interface, nullptr, create_jwnlsldb},
          {"jwemsg", extension_interface, nullptr, create_jwemsg}};
#else
  return {};
#endif
}

}  // namespace jwnls::library
