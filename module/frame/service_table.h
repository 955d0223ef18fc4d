// The service table that every handle carries.

#ifndef JWNLS_MODULE_FRAME_SERVICE_TABLE_H_
#define JWNLS_MODULE_FRAME_SERVICE_TABLE_H_

#include "abi/locale_handle.h"

namespace jwnls {

/// Every service in slot order; copied into each handle at once.
extern const ServiceTable services;

}  // namespace jwnls

#endif  // JWNLS_MODULE_FRAME_SERVICE_TABLE_H_
