// The host and the handles that the module's side of every contest uses.

#ifndef JWNLS_BENCH_HANDLES_H_
#define JWNLS_BENCH_HANDLES_H_

#include <string_view>

#include "abi/locale_handle.h"

namespace jwnls::bench {

/// Starts the host of this run and loads the module; false, with a message, when it cannot.
bool start_host();

/// A private handle of a locale in UTC, for the rest of the run. Ends the program when there is
/// none.
LocaleHandle* handle_of(std::u16string_view locale);

/// Replaces a pattern in a private handle's record.
void set_pattern(TextEntry& entry, std::u16string_view pattern);

/// How long a handle takes that exists already, and a new one.
void enter_handle_creation();

}  // namespace jwnls::bench

#endif  // JWNLS_BENCH_HANDLES_H_
