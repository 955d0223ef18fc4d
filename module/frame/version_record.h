// What this build says of itself, in the layout of abi/version_record.h.

#ifndef JWNLS_MODULE_FRAME_VERSION_RECORD_H_
#define JWNLS_MODULE_FRAME_VERSION_RECORD_H_

#include "abi/version_record.h"

namespace jwnls {

/// Copies the record into a buffer of 208 bytes.
void copy_version_record(void* out) noexcept;

}  // namespace jwnls

#endif  // JWNLS_MODULE_FRAME_VERSION_RECORD_H_
