// A module or extension that is part of the file which the host is in.

#ifndef JWNLS_HOST_LOADING_LINKED_MODULE_H_
#define JWNLS_HOST_LOADING_LINKED_MODULE_H_

#include <string_view>

#include "abi/locale_handle.h"

namespace jwnls::host {

/// What a loadable file exports, as functions. Variables of its own are there once, so one host of
/// a process at a time may use it.
struct LinkedModule {
  std::string_view name;                       // "jwnlsloc"; static
  JwExtver* version = nullptr;                 //
  JwFactory* make_factory = nullptr;           // the module's
  jw_extension_export* make_object = nullptr;  // an extension's, in place of it
};

}  // namespace jwnls::host

#endif  // JWNLS_HOST_LOADING_LINKED_MODULE_H_
