// The locale factory: a small object of its own pool whose slots create and destroy locale handles.

#ifndef JWNLS_MODULE_FRAME_FACTORY_H_
#define JWNLS_MODULE_FRAME_FACTORY_H_

#include "abi/locale_handle.h"

namespace jwnls {

/// Makes a factory. Null when the kernel gave no pool, or the pool no memory, and when the word
/// that gives either, or the pool's word for its end, is null: what the kernel cannot report itself
/// is reported to `errors` (which may be null). Leaves nothing behind.
Factory* create_factory(Kernel* kernel, ErrorSink* errors) noexcept;

}  // namespace jwnls

#endif  // JWNLS_MODULE_FRAME_FACTORY_H_
