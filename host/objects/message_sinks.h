// The embedder's own functions that receive what the host has to tell.

#ifndef JWNLS_HOST_OBJECTS_MESSAGE_SINKS_H_
#define JWNLS_HOST_OBJECTS_MESSAGE_SINKS_H_

#include <cstdint>
#include <functional>
#include <string_view>

namespace jwnls::host {

/// Receives every message that module and extensions write to a journal. Called by one thread at a
/// time, whichever writes; it may use handles, but opens none. What it throws is dropped.
using JournalSink = std::function<void(std::uint32_t level, std::u16string_view message)>;

/// Receives every error that is reported to the host's error sink; called like a JournalSink.
using ErrorReporter = std::function<void(std::uint32_t severity, std::uint32_t status)>;

}  // namespace jwnls::host

#endif  // JWNLS_HOST_OBJECTS_MESSAGE_SINKS_H_
