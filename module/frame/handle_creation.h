// The making of a locale handle, or the finding of one that exists.

#ifndef JWNLS_MODULE_FRAME_HANDLE_CREATION_H_
#define JWNLS_MODULE_FRAME_HANDLE_CREATION_H_

#include "abi/locale_handle.h"

namespace jwnls {

/// The factory's create slot; see Factory::create_handle. Any thread: the context's creation lock
/// serialises look-up, creation and registration, so two threads that ask for one locale and zone
/// get the same handle.
LocaleHandle* create_handle(NlsContext*, const char16_t* name, std::int64_t length,
                            std::uint32_t* status, const CreationOptions*) noexcept;

}  // namespace jwnls

#endif  // JWNLS_MODULE_FRAME_HANDLE_CREATION_H_
